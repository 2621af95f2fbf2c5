// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWriters.h"

#include "CellText.h"
#include "MsfChecksum.h"
#include "Text.h"
#include "TextBuffer.h"

#include <algorithm>
#include <vector>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kMsfBlock = 50;
constexpr std::size_t kMsfGroup = 10;
constexpr char kMsfGap = '.';
constexpr unsigned kModulus = 10000;

std::string padded(const std::string &text, std::size_t width)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

} // namespace

void writeMsf(const FittedAlignment &alignment, TextSink &sink)
{
    const std::uint64_t block =
        alignment.options().lineLength == 0 ? kMsfBlock : alignment.options().lineLength;
    const std::string width = std::to_string(alignment.width());
    std::vector<unsigned> checks;
    unsigned total = 0;
    std::size_t longest = 0;
    std::string cells;
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        cells.clear();
        CellText(alignment.cells(row)).append(alignment.width(), kMsfGap, cells);
        checks.push_back(MsfChecksum::ofCells(cells));
        total = (total + checks.back()) % kModulus;
        longest = std::max(longest, characterCount(alignment.name(row)));
    }
    TextBuffer text(sink);
    text.append("!!AA_MULTIPLE_ALIGNMENT 1.0\n\n MSF: " + width +
                "  Type: P  Check: " + std::to_string(total) + " ..\n\n");
    std::vector<CellText> rows;
    for (std::size_t row = 0; row < alignment.rowCount() && text.isOpen(); ++row) {
        rows.emplace_back(alignment.cells(row));
        text.append(" Name: ");
        text.appendPadded(alignment.name(row), longest);
        text.append("  Len: " + padded(width, 5) +
                    "  Check: " + padded(std::to_string(checks[row]), 4) + "  Weight:  1.00\n");
    }
    text.append("\n//\n");
    for (std::uint64_t begin = 0; begin < alignment.width(); begin += block) {
        const std::uint64_t end = std::min(begin + block, alignment.width());
        text.append('\n');
        for (std::size_t row = 0; row < rows.size() && text.isOpen(); ++row) {
            text.appendPadded(alignment.name(row), longest + 1);
            prefetchBehind(rows, row);
            text.appendGroups(rows[row], end - begin, kMsfGroup, kMsfGap);
            text.append('\n');
        }
    }
    text.flush();
}

} // namespace TAMBO::formats
