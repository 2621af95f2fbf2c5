// SPDX-License-Identifier: GPL-3.0-or-later
// How alignment files write the names of structures, and what all the ways of it have in common.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace TAMBO {

// What is left of the name of a structure or of its file: without directories, the usual endings
// and the "pdb" of the archive's file names ("pdb1abc.ent"), in lower case. Names with the same
// code mean the same structure.
[[nodiscard]] std::string structureCode(std::string_view name);

struct ChainName
{
    std::string structure;
    std::string chain;
};

// "1abc_A" may be chain A of 1abc. Nothing for a name that is not of this form.
[[nodiscard]] std::optional<ChainName> chainNameOf(std::string_view name);

} // namespace TAMBO
