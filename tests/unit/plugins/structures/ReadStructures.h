// SPDX-License-Identifier: GPL-3.0-or-later
// Structures of real files, as the workbench opens them.
#pragma once

#include "FileReader.h"
#include "MoleculeReading.h"
#include "ObjectFactory.h"
#include "Structure.h"
#include "StructureDetails.h"

#include <cctype>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace ReadStructures {

inline std::filesystem::path example(const char *name)
{
    return std::filesystem::path(SOURCE_DIR) / "examples" / name;
}

inline std::filesystem::path sample(const char *name)
{
    return std::filesystem::path(TEST_DATA_DIR) / "structures" / name;
}

// Nothing for a file that cannot be read.
inline std::vector<TAMBO::Structure *> open(const std::filesystem::path &file)
{
    std::vector<TAMBO::Structure *> opened;
    if (auto contents = TAMBO::readFile(file))
        for (TAMBO::StructureRecord &record : contents->structures)
            opened.push_back(TAMBO::ObjectFactory::adopt(std::move(record)));
    return opened;
}

// Names cases by the name of the file that their parameter has.
struct CaseName
{
    template <typename Param> std::string operator()(const Param &info) const
    {
        std::string name = info.param.name;
        for (char &c : name)
            if (!std::isalnum(static_cast<unsigned char>(c)))
                c = '_';
        return name;
    }
};

// Of a file with one structure.
inline structures::Molecule moleculeOf(const std::filesystem::path &file)
{
    const std::vector<TAMBO::Structure *> opened = open(file);
    if (opened.empty())
        return {};
    return structures::readMolecule(opened.front()->Name(),
                                    TAMBO::StructureDetails::read(opened.front()));
}

} // namespace ReadStructures
