// SPDX-License-Identifier: GPL-3.0-or-later
// What an alignment file says of a row besides its cells.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace TAMBO {

// What an alignment file says about the structure of a row.
struct StructureLink
{
    // As written: a file name or a code; empty when the row names no structure.
    std::string structure;
    // Empty when the file does not say.
    std::string chain;
    std::string first;
    std::string last;
    // Of a row that runs over several chains; otherwise the same chain, or empty.
    std::string lastChain;

    friend bool operator==(const StructureLink &, const StructureLink &) = default;
};

// A remark with its kind, as Stockholm files have them. The kind is one word ("ID", "SS"); the text
// has no line end.
struct Annotation
{
    std::string tag;
    std::string text;

    friend bool operator==(const Annotation &, const Annotation &) = default;
};

// Between two chains of one row.
struct ChainBreak
{
    // The number of letters before it.
    std::uint64_t letters = 0;
    // The gap on which it stands; nothing when there is none between its letters.
    std::optional<std::uint64_t> column;

    friend bool operator==(const ChainBreak &, const ChainBreak &) = default;
};

} // namespace TAMBO
