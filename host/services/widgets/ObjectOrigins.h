// SPDX-License-Identifier: GPL-3.0-or-later
// What the workbench knows of objects and the dialogs of plug-ins do not: the files that they come
// from, and which of them the user has picked in the tree.
#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace TAMBO {
class Compound;
}

namespace TAMBO::services {

class ObjectOrigins
{
public:
    using FileOf = std::function<QString(const Compound &object)>;
    using Picked = std::function<std::vector<Compound *>()>;

    // The workbench's; without them no file is known, and nothing is picked.
    static void install(FileOf fileOf, Picked picked);
    static void remove();

    // With its folders. Of a sequence that no file holds by itself, that of an alignment that has
    // it as a row; empty when none is known.
    [[nodiscard]] static QString fileOf(const Compound &object);
    // The same for many, which costs one look at the alignments.
    [[nodiscard]] static std::vector<QString> filesOf(const std::vector<const Compound *> &objects);
    [[nodiscard]] static std::vector<Compound *> picked();
};

} // namespace TAMBO::services
