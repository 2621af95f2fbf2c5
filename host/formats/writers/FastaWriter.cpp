// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWriters.h"

#include "CellText.h"
#include "TextBuffer.h"

#include <algorithm>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kFastaLine = 60;

void appendHeader(const FittedAlignment &alignment, std::size_t row, TextBuffer &text)
{
    text.append('>');
    text.append(alignment.name(row));
    if (const std::string description = alignment.description(row); !description.empty()) {
        text.append(' ');
        text.append(description);
    }
    text.append('\n');
}

void appendLines(const GappedView &row, std::uint64_t lineLength, TextBuffer &text)
{
    CellText cells(row);
    text.appendLines(cells, row.width, lineLength, '-');
    if (row.width % lineLength != 0)
        text.append('\n');
}

} // namespace

void writeFasta(const FittedAlignment &alignment, TextSink &sink)
{
    const std::size_t lineLength =
        alignment.options().lineLength == 0 ? kFastaLine : alignment.options().lineLength;
    TextBuffer text(sink);
    for (std::size_t row = 0; row < alignment.rowCount() && text.isOpen(); ++row) {
        appendHeader(alignment, row, text);
        appendLines(alignment.cells(row), lineLength, text);
    }
    text.flush();
}

void writeInsertions(const FittedAlignment &alignment, TextSink &sink)
{
    const std::size_t lineLength = alignment.options().lineLength;
    TextBuffer text(sink);
    for (std::size_t row = 0; row < alignment.rowCount() && text.isOpen(); ++row) {
        appendHeader(alignment, row, text);
        if (!alignment.hasInsertions()) {
            const GappedView cells = alignment.cells(row);
            appendLines(cells, lineLength == 0 ? cells.width : lineLength, text);
            continue;
        }
        const std::string cells = alignment.insertionText(row);
        const std::size_t step = lineLength == 0 ? cells.size() : lineLength;
        for (std::size_t begin = 0; begin < cells.size(); begin += step) {
            text.append(std::string_view(cells).substr(begin, step));
            text.append('\n');
        }
    }
    text.flush();
}

} // namespace TAMBO::formats
