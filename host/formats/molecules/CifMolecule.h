// SPDX-License-Identifier: GPL-3.0-or-later
// What we take from the text of an mmCIF file. Apart from its reader, and in C++17: the library's
// CIF headers name types before they are complete, which C++20's containers forbid.
#pragma once

#include "Result.h"

#include <gemmi/model.hpp>

#include <string>
#include <vector>

namespace TAMBO::formats {

struct CifElement
{
    std::string name;
    // 'H' or 'E'.
    char type = 'H';
    std::string chain;
    // Numbers with their insertion codes.
    std::string first;
    std::string last;
};

struct CifMolecule
{
    // Whether the file could be read.
    Result<void> outcome;
    // Has at least one model with atoms.
    gemmi::Structure structure;
    std::vector<CifElement> elements;
};

[[nodiscard]] CifMolecule readCif(const std::string &text, const std::string &file);

} // namespace TAMBO::formats
