// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWriters.h"

#include "CellText.h"
#include "TextBuffer.h"

#include <algorithm>
#include <vector>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kPhylipBlock = 60;
constexpr std::size_t kPhylipGroup = 10;

} // namespace

// Names fill ten columns in any case, so that readers of either kind of names find the rest. A row
// of the sequential kind is one line: broken rows can be mistaken for blocks.
void writePhylip(const FittedAlignment &alignment, TextSink &sink)
{
    const WriteOptions &options = alignment.options();
    std::size_t place = kShortPhylipName;
    std::vector<CellText> rows;
    for (std::size_t row = 0; row < alignment.rowCount(); ++row) {
        rows.emplace_back(alignment.cells(row));
        place = std::max(place, alignment.name(row).size());
    }
    const std::uint64_t block = options.isSequential      ? alignment.width()
                                : options.lineLength == 0 ? kPhylipBlock
                                                          : options.lineLength;
    TextBuffer text(sink);
    text.append(' ' + std::to_string(rows.size()) + ' ' + std::to_string(alignment.width()) + '\n');
    for (std::uint64_t begin = 0; begin < alignment.width(); begin += block) {
        const std::uint64_t end = std::min(begin + block, alignment.width());
        const std::uint64_t group = options.isSequential ? alignment.width() : kPhylipGroup;
        if (begin > 0)
            text.append('\n');
        for (std::size_t row = 0; row < rows.size() && text.isOpen(); ++row) {
            const std::string_view name = begin == 0 ? alignment.name(row) : std::string_view();
            text.append(name);
            text.append(place - name.size(), ' ');
            prefetchBehind(rows, row);
            text.appendGroups(rows[row], end - begin, group, '-');
            text.append('\n');
        }
    }
    text.flush();
}

} // namespace TAMBO::formats
