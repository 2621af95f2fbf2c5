// SPDX-License-Identifier: GPL-3.0-or-later
// The formats that files are written in: their names, endings and what can be chosen of them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO {

enum class WriteFormat { Pir, Fasta, A2m, A3m, Clustal, Stockholm, Msf, Phylip, Pdb, Mmcif };

struct WriteOptions
{
    WriteFormat format = WriteFormat::Pir;
    // PIR, FASTA: columns a line; A2M and A3M have a line a row. Clustal, MSF and PHYLIP: columns a
    // block. 0 for what is usual.
    std::size_t lineLength = 0;
    // PHYLIP: names of any length but without blanks, instead of ten characters.
    bool hasLongNames = false;
    // PHYLIP: one row after the other instead of blocks.
    bool isSequential = false;

    friend bool operator==(const WriteOptions &, const WriteOptions &) = default;
};

// "pir", "fasta", ..., and "phylip-relaxed", "phylip-sequential", "phylip-relaxed-sequential".
[[nodiscard]] std::optional<WriteOptions> writeOptionsNamed(std::string_view name);
[[nodiscard]] std::vector<std::string_view> writeFormatNames();
// By a file name's ending, ".gz" aside, in any case of letters.
[[nodiscard]] std::optional<WriteOptions> writeOptionsFor(const std::filesystem::path &file);

// For people: "PIR", "Clustal".
[[nodiscard]] std::string formatTitle(WriteFormat format);
// With article: "a PIR file", "an MSF file".
[[nodiscard]] std::string fileOf(WriteFormat format);
// The usual endings, with the dot, the first one first.
[[nodiscard]] std::vector<std::string_view> fileEndings(WriteFormat format);
[[nodiscard]] bool isStructureFormat(WriteFormat format) noexcept;
// Whether a file can hold several alignments.
[[nodiscard]] bool holdsSeveral(WriteFormat format) noexcept;
// Whether something can be said of a row besides its name.
[[nodiscard]] bool holdsDescriptions(WriteFormat format) noexcept;

} // namespace TAMBO
