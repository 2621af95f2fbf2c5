// SPDX-License-Identifier: GPL-3.0-or-later
// What the workbench says about an object: its kind, its size, its properties in words.
#pragma once

#include <QString>

#include <utility>
#include <vector>

namespace TAMBO {
class Compound;
}

namespace TAMBO::app {

enum class ObjectKind {
    Structure,
    Chain,
    Sequence,
    Alignment,
    Residue,
    Group,
    Atom,
    Helix,
    Strand,
    Turn,
    Other
};

using Fact = std::pair<QString, QString>;

[[nodiscard]] ObjectKind kindOf(const Compound &object);
[[nodiscard]] QString kindText(ObjectKind kind);
// Short, for a column: "6 x 303", "223 residues".
[[nodiscard]] QString sizeText(const Compound &object);
[[nodiscard]] QString nameText(const Compound &object);
// For a list of them: "obp (6 × 303)", and what tells those of one name apart.
[[nodiscard]] std::vector<QString> listTexts(const std::vector<const Compound *> &objects);
// With what it is, and what it is a part of: "chain A of 1abc".
[[nodiscard]] QString fullNameText(const Compound &object);
// Names of residues and atoms come from their coordinates and stay.
[[nodiscard]] bool isRenamable(const Compound &object);
// For the properties dialog, in its order.
[[nodiscard]] std::vector<Fact> factsOf(const Compound &object);

} // namespace TAMBO::app
