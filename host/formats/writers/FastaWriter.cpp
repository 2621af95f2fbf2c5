// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWriters.h"

#include "CellText.h"

#include <algorithm>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kFastaLine = 60;

std::string header(const FittedAlignment &alignment, std::size_t row)
{
    std::string text = '>' + alignment.name(row);
    if (const std::string description = alignment.description(row); !description.empty())
        text += ' ' + description;
    return text + '\n';
}

} // namespace

void writeFasta(const FittedAlignment &alignment, TextSink &sink)
{
    const std::size_t lineLength =
        alignment.options().lineLength == 0 ? kFastaLine : alignment.options().lineLength;
    std::string text;
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        text = header(alignment, row);
        CellText cells(alignment.cells(row));
        for (std::uint64_t left = alignment.cells(row).width; left > 0;) {
            const std::uint64_t count = std::min<std::uint64_t>(left, lineLength);
            cells.append(count, '-', text);
            text += '\n';
            left -= count;
        }
        sink.write(text);
    }
}

void writeInsertions(const FittedAlignment &alignment, TextSink &sink)
{
    const std::size_t lineLength = alignment.options().lineLength;
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        std::string text = header(alignment, row);
        const std::string cells = alignment.insertionText(row);
        const std::size_t step = lineLength == 0 ? cells.size() : lineLength;
        for (std::size_t begin = 0; begin < cells.size(); begin += step) {
            text.append(cells, begin, step);
            text += '\n';
        }
        sink.write(text);
    }
}

} // namespace TAMBO::formats
