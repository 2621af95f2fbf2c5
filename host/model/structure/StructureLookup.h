// SPDX-License-Identifier: GPL-3.0-or-later
// Finds the loaded structure that an alignment file means.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace TAMBO {

class Structure;

struct NamedStructures
{
    std::vector<Structure *> structures;
    // Empty unless the name says which one.
    std::string chain;
};

class StructureLookup
{
public:
    // The structures in Space now.
    StructureLookup();

    [[nodiscard]] bool isEmpty() const noexcept { return m_Structures.empty(); }
    // By a name as written: of a structure or of its file, with or without directories and the
    // usual endings, in any case. The one loaded last comes first.
    [[nodiscard]] std::vector<Structure *> find(const std::string &name) const;
    // The same, or else by structure and chain: "1abc_A".
    [[nodiscard]] NamedStructures findWithChain(const std::string &name) const;

private:
    std::unordered_map<std::string, std::vector<Structure *>> m_Structures;
};

} // namespace TAMBO
