// SPDX-License-Identifier: GPL-3.0-or-later
// What can be chosen of a file that is written, and the names and endings that choose it.
#pragma once

#include "FormatTable.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO {

struct WriteOptions
{
    FileFormat format = FileFormat::Pir;
    // PIR, FASTA: columns a line; A2M and A3M have a line a row. Clustal, MSF, PHYLIP and NEXUS:
    // columns a block. 0 for what is usual.
    std::size_t lineLength = 0;
    // PHYLIP: names of any length but without blanks, instead of ten characters.
    bool hasLongNames = false;
    // PHYLIP: one row after the other instead of blocks.
    bool isSequential = false;

    friend bool operator==(const WriteOptions &, const WriteOptions &) = default;
};

// A format's name, or "phylip-relaxed", "phylip-sequential", "phylip-relaxed-sequential".
[[nodiscard]] std::optional<WriteOptions> writeOptionsNamed(std::string_view name);
[[nodiscard]] std::vector<std::string_view> writeFormatNames();
// By a file name's ending, ".gz" aside, in any case of letters.
[[nodiscard]] std::optional<WriteOptions> writeOptionsFor(const std::filesystem::path &file);
// A name by which writeOptionsFor() finds the format: as it is when it does, else with the format's
// usual ending, in place of another format's or behind the name. ".gz" stays at the end.
[[nodiscard]] std::string withEndingOf(std::string name, FileFormat format);

} // namespace TAMBO
