// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWriters.h"

#include "CellText.h"
#include "Text.h"
#include "TextBuffer.h"

#include <algorithm>
#include <vector>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kNexusBlock = 60;

// Without quotation marks "_" means a blank, a number a row by its place, and most other characters
// something else.
bool isNexusWord(std::string_view name) noexcept
{
    return !isAllDigits(name) && std::all_of(name.begin(), name.end(), [](char c) {
        return isLetter(c) || isDigit(c) || c == '.' || c == '|';
    });
}

// As it stands in the file.
std::string nexusName(std::string_view name)
{
    if (isNexusWord(name))
        return std::string(name);
    std::string quoted = "'";
    for (const char character : name)
        quoted.append(character == '\'' ? 2 : 1, character);
    return quoted + '\'';
}

} // namespace

void writeNexus(const FittedAlignment &alignment, TextSink &sink)
{
    const std::uint64_t block =
        alignment.options().lineLength == 0 ? kNexusBlock : alignment.options().lineLength;
    const bool isInterleaved = alignment.width() > block;
    std::vector<CellText> rows;
    std::size_t longest = 0;
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        rows.emplace_back(alignment.cells(row));
        longest = std::max(longest, characterCount(nexusName(alignment.name(row))));
    }
    TextBuffer text(sink);
    text.append("#NEXUS\n\nBEGIN DATA;\n    DIMENSIONS NTAX=" + std::to_string(rows.size()) +
                " NCHAR=" + std::to_string(alignment.width()) +
                ";\n    FORMAT DATATYPE=PROTEIN MISSING=? GAP=-" +
                (isInterleaved ? " INTERLEAVE" : "") + ";\n    MATRIX\n");
    for (std::uint64_t begin = 0; begin < alignment.width(); begin += block) {
        const std::uint64_t count = std::min(block, alignment.width() - begin);
        if (begin > 0)
            text.append('\n');
        for (std::size_t row = 0; row < rows.size() && text.isOpen(); ++row) {
            text.appendPadded(nexusName(alignment.name(row)), longest + 1);
            prefetchBehind(rows, row);
            text.append(rows[row], count, '-');
            text.append('\n');
        }
    }
    text.append("    ;\nEND;\n");
    text.flush();
}

} // namespace TAMBO::formats
