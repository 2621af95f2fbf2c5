// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWriters.h"

#include "CellText.h"
#include "TextBuffer.h"

#include <algorithm>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kPirLine = 75;

// The row's columns with the breaks between chains on their gaps.
std::string brokenText(const FittedAlignment &alignment, std::size_t row)
{
    std::string text;
    CellText(alignment.cells(row)).append(alignment.cells(row).width, '-', text);
    for (const ChainBreak &chainBreak : alignment.row(row).chainBreaks) {
        if (chainBreak.column)
            text[*chainBreak.column] = '/';
    }
    return text;
}

} // namespace

void writePir(const FittedAlignment &alignment, TextSink &sink)
{
    const std::uint64_t lineLength =
        alignment.options().lineLength == 0 ? kPirLine : alignment.options().lineLength;
    TextBuffer text(sink);
    for (std::size_t row = 0; row < alignment.rowCount() && text.isOpen(); ++row) {
        text.append(">P1;");
        text.append(alignment.name(row));
        text.append('\n');
        text.append(alignment.description(row));
        text.append('\n');
        const bool isBroken = !alignment.row(row).chainBreaks.empty();
        const std::string broken = isBroken ? brokenText(alignment, row) : std::string();
        CellText cells(alignment.cells(row));
        const std::uint64_t width = alignment.cells(row).width;
        for (std::uint64_t begin = 0; begin < width; begin += lineLength) {
            const std::uint64_t count = std::min(width - begin, lineLength);
            if (isBroken)
                text.append(std::string_view(broken).substr(begin, count));
            else
                text.append(cells, count, '-');
            // The end has a line of its own when the last one is full.
            if (count == lineLength)
                text.append('\n');
        }
        text.append("*\n\n");
    }
    text.flush();
}

} // namespace TAMBO::formats
