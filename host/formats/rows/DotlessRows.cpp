// SPDX-License-Identifier: GPL-3.0-or-later
#include "DotlessRows.h"

#include "Bits.h"
#include "RowBuilder.h"
#include "Text.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace TAMBO::formats {

namespace {

// A bit each, these are half a gigabyte.
constexpr std::uint64_t kMostCells = std::uint64_t{1} << 32U;

std::string cellsOf(const PackedRow &row)
{
    std::string cells(row.width, '-');
    std::size_t next = 0;
    for (std::size_t word = 0; word * bits::kPerWord < row.cells.end(); ++word)
        bits::forEach(row.cells.word(word), word * bits::kPerWord,
                      [&](std::size_t column) { cells[column] = row.text.letter(next++); });
    return cells;
}

// How many inserted residues stand before each column, and after the last one.
std::vector<std::uint32_t> insertionLengths(const std::string &cells)
{
    std::vector<std::uint32_t> lengths(1);
    for (const char cell : cells) {
        if (isSmallLetter(cell))
            ++lengths.back();
        else
            lengths.push_back(0);
    }
    return lengths;
}

std::string spread(const std::string &cells, const std::vector<std::uint32_t> &longest)
{
    std::string wide;
    std::size_t column = 0;
    std::uint32_t inserted = 0;
    const auto closeInsertion = [&] {
        wide.append(longest[column] - inserted, '-');
        inserted = 0;
        ++column;
    };
    for (const char cell : cells) {
        if (isSmallLetter(cell))
            ++inserted;
        else
            closeInsertion();
        wide += cell;
    }
    closeInsertion();
    return wide;
}

} // namespace

bool openDotlessRows(PackedRows &rows, std::vector<Annotation> &lines, WorkLooks &looks)
{
    std::vector<std::uint32_t> longest;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (!looks.goesOn(rows[row].width))
            return false;
        const std::vector<std::uint32_t> lengths = insertionLengths(cellsOf(rows[row]));
        longest.resize(std::max(longest.size(), lengths.size()));
        for (std::size_t i = 0; i < lengths.size(); ++i)
            longest[i] = std::max(longest[i], lengths[i]);
    }
    const std::uint64_t width =
        std::accumulate(longest.begin(), longest.end(), std::uint64_t{longest.size()} - 1);
    if (width > kMostCells / rows.size())
        return false;
    RowBuilder builder;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!looks.goesOn(width))
            return false;
        PackedRow &row = rows[i];
        std::string wide = spread(cellsOf(row), longest);
        wide.append(RowBuilder::kReadAhead, '\0');
        (void)builder.append(std::string_view(wide).substr(0, width));
        PackedRow opened = builder.pack(row.text.name());
        opened.label = std::move(row.label);
        row = std::move(opened);
    }
    for (Annotation &line : lines) {
        std::string wide(longest.front(), '.');
        for (std::size_t column = 0; column < line.text.size(); ++column) {
            wide += line.text[column];
            wide.append(longest[column + 1], '.');
        }
        line.text = std::move(wide);
    }
    return true;
}

} // namespace TAMBO::formats
