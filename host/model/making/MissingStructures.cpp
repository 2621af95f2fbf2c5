// SPDX-License-Identifier: GPL-3.0-or-later
#include "MissingStructures.h"

#include "RowPacking.h"
#include "StructureLookup.h"

#include <set>

namespace TAMBO {

std::vector<std::string> missingStructures(const AlignmentRecord &alignment)
{
    const StructureLookup loaded;
    std::vector<std::string> missing;
    std::set<std::string> known;
    forEachNamedStructure(alignment, [&](const std::string &name) {
        if (known.insert(name).second && loaded.findWithChain(name).structures.empty())
            missing.push_back(name);
    });
    return missing;
}

} // namespace TAMBO
