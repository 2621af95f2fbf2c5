// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWriters.h"

#include "CellText.h"

#include <algorithm>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kPirLine = 75;

} // namespace

void writePir(const FittedAlignment &alignment, TextSink &sink)
{
    const std::size_t lineLength =
        alignment.options().lineLength == 0 ? kPirLine : alignment.options().lineLength;
    std::string cells;
    std::string text;
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        cells.clear();
        CellText(alignment.cells(row)).append(alignment.cells(row).width, '-', cells);
        for (const ChainBreak &chainBreak : alignment.row(row).chainBreaks) {
            if (chainBreak.column)
                cells[*chainBreak.column] = '/';
        }
        text = ">P1;" + alignment.name(row) + '\n' + alignment.description(row) + '\n';
        for (std::size_t begin = 0; begin < cells.size(); begin += lineLength) {
            text.append(cells, begin, lineLength);
            text += '\n';
        }
        // The end has a line of its own when the last one is full.
        if (cells.size() % lineLength != 0)
            text.pop_back();
        text += "*\n\n";
        sink.write(text);
    }
}

} // namespace TAMBO::formats
