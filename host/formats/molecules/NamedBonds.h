// SPDX-License-Identifier: GPL-3.0-or-later
// Bonds as files name them, and the atoms that they mean. Shared by both formats.
#pragma once

#include "Records.h"

#include <optional>
#include <string>
#include <vector>

namespace TAMBO::formats {

struct NamedAtom
{
    std::string chain;
    SequenceNumber number;
    std::string name;
};

struct NamedBond
{
    NamedAtom first;
    NamedAtom second;
    // Told by the atoms when the file does not say.
    std::optional<BondKind> kind;
};

// Those between two different atoms that there are, each once, as what is said of it first. Of
// several chains of one name, or residues of one number, the first is meant.
void addBonds(const std::vector<NamedBond> &named, StructureRecord &structure);

} // namespace TAMBO::formats
