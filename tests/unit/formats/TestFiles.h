// SPDX-License-Identifier: GPL-3.0-or-later
// Files for the readers' tests: those of tests/data with what is known about them, and files made
// for one case.
#pragma once

#include "FileReader.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::formats {

// A file that goes with the object, in a folder of its own.
class TemporaryFile
{
public:
    TemporaryFile(const std::string &name, std::string_view bytes);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    [[nodiscard]] const std::filesystem::path &path() const noexcept { return m_Path; }

private:
    std::filesystem::path m_Path;
};

// What every message about a file of no known format ends with.
inline const std::string kKnownFormats =
    "expected a structure (PDB, mmCIF) or an alignment (PIR, FASTA, A3M, Clustal, Stockholm, MSF, "
    "PHYLIP, NEXUS)";

[[nodiscard]] std::filesystem::path dataFile(const std::string &name);
[[nodiscard]] std::string bytesOf(const std::filesystem::path &path);
[[nodiscard]] std::string gzipped(std::string_view bytes);

// The rows of a table with a header line, by the names of its columns.
using Fact = std::map<std::string, std::string>;
[[nodiscard]] std::vector<Fact> facts(const std::string &table);

// What a text reads as; a failure fails the test.
[[nodiscard]] FileContents contentsOf(const std::filesystem::path &path);
[[nodiscard]] FileContents contentsOf(const std::string &name, std::string_view bytes);
// The message with which reading fails; a success fails the test.
// The one alignment of a file that is known by its text to be of that format.
[[nodiscard]] AlignmentRecord alignmentOf(const std::string &name, std::string_view bytes,
                                          const std::string &format);

[[nodiscard]] std::string messageOf(const std::filesystem::path &path);
[[nodiscard]] std::string messageOf(const std::string &name, std::string_view bytes);

// The rows as text, '-' for a gap.
[[nodiscard]] std::vector<std::string> rowTexts(const AlignmentRecord &alignment);
[[nodiscard]] std::vector<std::string> rowNames(const AlignmentRecord &alignment);

[[nodiscard]] bool hasAlphaCarbon(const ResidueRecord &residue);
// The letters of the residues with a CA atom.
[[nodiscard]] std::string sequenceOf(const ChainRecord &chain);

} // namespace TAMBO::formats
