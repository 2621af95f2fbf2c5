// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWriters.h"

#include "CellText.h"
#include "TextBuffer.h"

#include <string>
#include <string_view>

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

void appendFullLines(std::string_view cells, std::uint64_t lineLength, TextBuffer &text)
{
    for (; cells.size() >= lineLength; cells.remove_prefix(lineLength)) {
        text.append(cells.substr(0, lineLength));
        text.append('\n');
    }
    text.append(cells);
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
        // The end has a line of its own when the last one is full.
        if (alignment.row(row).chainBreaks.empty()) {
            CellText cells(alignment.cells(row));
            text.appendLines(cells, alignment.cells(row).width, lineLength, '-');
        } else {
            appendFullLines(brokenText(alignment, row), lineLength, text);
        }
        text.append("*\n\n");
    }
    text.flush();
}

} // namespace TAMBO::formats
