// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureLookup.h"

#include "ObjectSpace.h"
#include "Structure.h"
#include "StructureCode.h"

namespace TAMBO {

StructureLookup::StructureLookup()
{
    ObjectSpace &space = ObjectSpace::get();
    for (std::size_t i = space.objectCount(); i-- > 0;) {
        if (auto *const structure = dynamic_cast<Structure *>(space.object(i)))
            m_Structures[structureCode(structure->code())].push_back(structure);
    }
    // What somebody has called a structure comes behind those whose files are called like that.
    for (std::size_t i = space.objectCount(); i-- > 0;) {
        auto *const structure = dynamic_cast<Structure *>(space.object(i));
        if (structure != nullptr &&
            structureCode(structure->Name()) != structureCode(structure->code()))
            m_Structures[structureCode(structure->Name())].push_back(structure);
    }
}

std::vector<Structure *> StructureLookup::find(const std::string &name) const
{
    if (isEmpty() || name.empty())
        return {};
    const auto found = m_Structures.find(structureCode(name));
    return found == m_Structures.end() ? std::vector<Structure *>() : found->second;
}

NamedStructures StructureLookup::findWithChain(const std::string &name) const
{
    NamedStructures found{find(name), {}};
    if (!found.structures.empty())
        return found;
    if (std::optional<ChainName> parts = chainNameOf(name))
        found = {find(parts->structure), std::move(parts->chain)};
    return found;
}

} // namespace TAMBO
