// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureLookup.h"

#include "ObjectSpace.h"
#include "Structure.h"

#include <string_view>

namespace TAMBO {

namespace {

// What is left of a file name without directories and endings, in lower case.
std::string bareName(std::string_view name)
{
    const std::size_t directories = name.find_last_of("/\\");
    if (directories != std::string_view::npos)
        name.remove_prefix(directories + 1);
    std::string bare(name);
    for (char &c : bare) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    const auto strip = [&bare](std::string_view ending) {
        if (bare.size() > ending.size() && std::string_view(bare).ends_with(ending))
            bare.resize(bare.size() - ending.size());
    };
    strip(".gz");
    for (const std::string_view ending : {".pdb", ".ent", ".cif", ".mmcif"})
        strip(ending);
    // Files of the archive: "pdb1abc.ent" holds 1abc.
    constexpr std::size_t kArchiveName = 7;
    if (bare.size() == kArchiveName && bare.starts_with("pdb") && bare[3] >= '0' && bare[3] <= '9')
        bare.erase(0, 3);
    return bare;
}

} // namespace

StructureLookup::StructureLookup()
{
    ObjectSpace &space = ObjectSpace::get();
    for (std::size_t i = space.objectCount(); i-- > 0;) {
        if (auto *const structure = dynamic_cast<Structure *>(space.object(i)))
            m_Structures[bareName(structure->Name())].push_back(structure);
    }
}

std::vector<Structure *> StructureLookup::find(const std::string &name) const
{
    if (isEmpty() || name.empty())
        return {};
    const auto found = m_Structures.find(bareName(name));
    return found == m_Structures.end() ? std::vector<Structure *>() : found->second;
}

} // namespace TAMBO
