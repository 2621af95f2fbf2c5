// SPDX-License-Identifier: GPL-3.0-or-later
// An alignment in the plainest form, cell by cell, to compare the real one with. It works by the
// descriptions of the operations, and knows nothing of bits, counts or caches.
#pragma once

#include "Alignment.h"
#include "Peptide.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

struct ReferenceAlignment
{
    // The index of a residue in its sequence, or -1 for a gap.
    using Cells = std::vector<long>;
    struct Row
    {
        TAMBO::Peptide *sequence = nullptr;
        Cells cells;
        // What is said of each residue of the sequence.
        std::string said;

        friend bool operator==(const Row &, const Row &) = default;
    };

    std::vector<Row> rows;
    std::size_t width = 0;
    std::pair<unsigned long, unsigned long> range{0, 0};
    // What is said of each column.
    std::vector<std::string> lines;

    friend bool operator==(const ReferenceAlignment &, const ReferenceAlignment &) = default;

    [[nodiscard]] std::size_t height() const { return width == 0 ? 0 : rows.size(); }

    void insertColumns(std::size_t column, std::size_t count)
    {
        if (column > width)
            return;
        for (Row &row : rows)
            row.cells.insert(row.cells.begin() + long(column), count, -1);
        for (std::string &line : lines)
            line.insert(column, count, '.');
        width += count;
        if (column <= range.first) {
            range.first += count;
            range.second += count;
        } else if (column < range.second) {
            range.second += count;
        }
    }
    void removeColumns(std::size_t begin, std::size_t end)
    {
        if (begin >= end || end > width)
            return;
        for (Row &row : rows)
            row.cells.erase(row.cells.begin() + long(begin), row.cells.begin() + long(end));
        for (std::string &line : lines)
            line.erase(begin, end - begin);
        width -= end - begin;
        const auto remaining = [&](std::size_t bound) {
            return bound - (std::min(bound, end) - std::min(bound, begin));
        };
        range = {remaining(range.first), remaining(range.second)};
    }
    [[nodiscard]] static std::size_t residues(const Row &row, std::size_t begin, std::size_t end)
    {
        return std::size_t(std::count_if(row.cells.begin() + long(begin),
                                         row.cells.begin() + long(end),
                                         [](long index) { return index >= 0; }));
    }
    [[nodiscard]] std::size_t mostResidues(std::size_t begin, std::size_t end) const
    {
        std::size_t most = 0;
        for (const Row &row : rows)
            most = std::max(most, residues(row, begin, end));
        return most;
    }
    // One list of count flags a row.
    void replaceColumns(std::size_t begin, std::size_t end, std::size_t count,
                        const std::vector<std::vector<char>> &isResidue)
    {
        const std::vector<Cells> formerColumns = columns(begin, end);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            Cells &cells = rows[i].cells;
            Cells former(cells.begin() + long(begin), cells.begin() + long(end));
            std::erase(former, -1);
            Cells placed;
            for (const char flag : isResidue[i]) {
                placed.push_back(flag != 0 ? former.front() : -1);
                if (flag != 0)
                    former.erase(former.begin());
            }
            cells.erase(cells.begin() + long(begin), cells.begin() + long(end));
            cells.insert(cells.begin() + long(begin), placed.begin(), placed.end());
        }
        const auto moved = [&](unsigned long bound) {
            return bound >= end ? bound - end + begin + count : std::min(bound, begin + count);
        };
        const std::vector<Cells> newColumns = columns(begin, begin + count);
        // Then what is said of columns without a residue stays as well.
        if (newColumns == formerColumns)
            return;
        for (std::string &line : lines) {
            std::string text;
            for (const Cells &column : newColumns) {
                const auto same = std::ranges::find(formerColumns, column);
                const bool isSame =
                    same != formerColumns.end() &&
                    std::ranges::any_of(column, [](long index) { return index >= 0; });
                text += isSame ? line[begin + std::size_t(same - formerColumns.begin())] : '.';
            }
            line.replace(begin, end - begin, text);
        }
        width = width - (end - begin) + count;
        range = {moved(range.first), moved(range.second)};
    }
    void removeRow(std::size_t row)
    {
        if (row < height())
            rows.erase(rows.begin() + long(row));
    }
    void moveRow(std::size_t from, std::size_t to)
    {
        if (from >= height() || to >= height())
            return;
        Row row = std::move(rows[from]);
        rows.erase(rows.begin() + long(from));
        rows.insert(rows.begin() + long(to), std::move(row));
    }
    void reorderRows(const std::vector<unsigned long> &order)
    {
        if (height() == 0 ||
            std::set<unsigned long>(order.begin(), order.end()).size() != height() ||
            order.size() != height() ||
            std::ranges::any_of(order, [this](unsigned long place) { return place >= height(); }))
            return;
        std::vector<Row> ordered;
        for (const unsigned long place : order)
            ordered.push_back(rows[place]);
        rows = std::move(ordered);
    }
    void insertGap(std::size_t row, std::size_t column)
    {
        if (row < height() && column < width)
            insertGaps(rows[row].cells, column, 1);
    }
    void insertGaps(std::size_t row, std::size_t column, std::size_t count)
    {
        for (; count > 0; --count)
            insertGap(row, column);
    }
    void moveGaps(std::size_t row, std::size_t from, std::size_t count, std::size_t to)
    {
        if (row >= height() || from + count > width || to + count > width)
            return;
        Cells &cells = rows[row].cells;
        if (std::all_of(cells.begin() + long(from), cells.begin() + long(from + count),
                        [](long index) { return index < 0; }))
            takeAndPut(cells, from, count, to);
    }
    void pushResidues(const std::vector<bool> &flags, std::size_t begin, std::size_t end,
                      bool toLeft)
    {
        if (begin >= end || end > width)
            return;
        for (std::size_t row = 0; row < std::min(flags.size(), height()); ++row) {
            if (flags[row])
                std::stable_partition(rows[row].cells.begin() + long(begin),
                                      rows[row].cells.begin() + long(end),
                                      [&](long index) { return (index >= 0) == toLeft; });
        }
    }
    // Column by column, and row by row. Flags that are missing say no.
    void removeColumns(const std::vector<bool> &flags)
    {
        for (std::size_t column = std::min(flags.size(), width); column > 0; --column) {
            if (flags[column - 1])
                removeColumns(column - 1, column);
        }
    }
    void removeRows(const std::vector<bool> &flags)
    {
        for (std::size_t row = std::min(flags.size(), height()); row > 0; --row) {
            if (flags[row - 1])
                removeRow(row - 1);
        }
    }
    void moveGap(std::size_t row, std::size_t from, std::size_t to, bool isPoint)
    {
        if (row >= height() || from >= width || to >= width)
            return;
        Cells &cells = rows[row].cells;
        if (cells[from] >= 0)
            slide(cells, from, to);
        else if (isPoint)
            takeAndPut(cells, from, 1, to);
        else
            moveRun(cells, from, to);
    }
    void addRows(const std::vector<TAMBO::Peptide *> &sequences)
    {
        for (TAMBO::Peptide *sequence : sequences) {
            Row row{sequence, {}, {}};
            for (std::size_t i = 0; i < sequence->residueCount(); ++i)
                row.cells.push_back(long(i));
            rows.push_back(std::move(row));
        }
        even();
    }

    // Walks along the first common sequence; each column of the result takes a column of this side,
    // of the other, or of both.
    void combine(const ReferenceAlignment &other)
    {
        std::vector<Row> remaining;
        for (const Row &row : other.rows) {
            if (std::ranges::none_of(rows, [&](auto &own) { return own.sequence == row.sequence; }))
                remaining.push_back(row);
        }
        if (remaining.empty())
            return;
        std::vector<std::pair<std::size_t, std::size_t>> matches = matchesWith(other);
        std::vector<std::pair<long, long>> merged;
        std::size_t here = 0;
        std::size_t there = 0;
        bool isHead = true;
        const auto emit = [&](std::size_t hereEnd, std::size_t thereEnd) {
            std::size_t hereSkip = 0;
            std::size_t thereSkip = 0;
            if (isHead && !matches.empty()) {
                const std::size_t longer = std::max(hereEnd - here, thereEnd - there);
                hereSkip = longer - (hereEnd - here);
                thereSkip = longer - (thereEnd - there);
            }
            while (here < hereEnd || there < thereEnd) {
                std::pair<long, long> column{-1, -1};
                if (hereSkip > 0)
                    --hereSkip;
                else if (here < hereEnd)
                    column.first = long(here++);
                if (thereSkip > 0)
                    --thereSkip;
                else if (there < thereEnd)
                    column.second = long(there++);
                merged.push_back(column);
            }
            isHead = false;
        };
        for (const auto &[hereColumn, thereColumn] : matches) {
            emit(hereColumn, thereColumn);
            merged.emplace_back(long(here++), long(there++));
        }
        emit(width, other.width);
        // Columns new to this side are opened one by one, so that the range moves as it should;
        // those behind its end come with the rows.
        for (std::size_t i = 0; i < std::min(merged.size(), width); ++i) {
            if (merged[i].first < 0)
                insertColumns(i, 1);
        }
        for (Row row : remaining) {
            Cells cells;
            for (const auto &column : merged)
                cells.push_back(column.second < 0 ? -1 : row.cells[std::size_t(column.second)]);
            rows.push_back({row.sequence, std::move(cells), row.said});
        }
        even();
    }

    [[nodiscard]] char letter(std::size_t row, std::size_t column) const
    {
        const long index = rows[row].cells[column];
        return index < 0 ? '\0' : rows[row].sequence->letter(std::size_t(index));
    }
    // What is said of the row's residues, one character a column.
    [[nodiscard]] std::string saidOf(const Row &row) const
    {
        std::string text(width, '.');
        for (std::size_t column = 0; column < width; ++column) {
            if (row.cells[column] >= 0)
                text[column] = row.said[std::size_t(row.cells[column])];
        }
        return text;
    }
    [[nodiscard]] std::pair<char, unsigned long> majority(std::size_t column) const
    {
        std::map<char, unsigned long> counts;
        for (std::size_t row = 0; row < height(); ++row) {
            if (letter(row, column) != '\0')
                ++counts[letter(row, column)];
        }
        std::pair<char, unsigned long> best{'-', 0};
        for (const auto &[letter, count] : counts) {
            if (count > best.second)
                best = {letter, count};
        }
        return best;
    }
    [[nodiscard]] bool isRowSelected(std::size_t row) const
    {
        return std::ranges::all_of(rows[row].cells, [&](long index) {
            return index < 0 || rows[row].sequence->isSelected(std::size_t(index));
        });
    }
    [[nodiscard]] bool isColumnSelected(std::size_t column) const
    {
        bool holdsResidue = false;
        for (const Row &row : rows) {
            const long index = row.cells[column];
            if (index >= 0 && !row.sequence->isSelected(std::size_t(index)))
                return false;
            holdsResidue = holdsResidue || index >= 0;
        }
        return holdsResidue;
    }

private:
    // All rows as long as the longest.
    void even()
    {
        for (const Row &row : rows)
            width = std::max(width, row.cells.size());
        for (Row &row : rows)
            row.cells.resize(width, -1);
        for (std::string &line : lines)
            line.resize(width, '.');
    }
    // What the columns [begin, end) hold, row by row.
    [[nodiscard]] std::vector<Cells> columns(std::size_t begin, std::size_t end) const
    {
        std::vector<Cells> result(end - begin);
        for (const Row &row : rows) {
            for (std::size_t column = begin; column < end; ++column)
                result[column - begin].push_back(row.cells[column]);
        }
        return result;
    }
    void insertGaps(Cells &cells, std::size_t column, std::size_t count)
    {
        for (; count > 0; --count) {
            cells.insert(cells.begin() + long(column), -1);
            if (cells.back() < 0)
                cells.pop_back();
        }
        even();
    }
    void slide(Cells &cells, std::size_t from, std::size_t to)
    {
        if (to > from) {
            insertGaps(cells, from, to - from);
            return;
        }
        for (; from > to && cells[from - 1] < 0; --from) {
            cells.erase(cells.begin() + long(from) - 1);
            cells.push_back(-1);
        }
    }
    static void takeAndPut(Cells &cells, std::size_t from, std::size_t count, std::size_t to)
    {
        cells.erase(cells.begin() + long(from), cells.begin() + long(from + count));
        cells.insert(cells.begin() + long(to), count, -1);
    }
    static void moveRun(Cells &cells, std::size_t from, std::size_t to)
    {
        std::size_t begin = from;
        std::size_t end = from + 1;
        while (begin > 0 && cells[begin - 1] < 0)
            --begin;
        while (end < cells.size() && cells[end] < 0)
            ++end;
        long target = long(begin) + long(to) - long(from);
        target = std::clamp(target, 0L, long(cells.size() - (end - begin)));
        takeAndPut(cells, begin, end - begin, std::size_t(target));
    }
    [[nodiscard]] std::vector<std::pair<std::size_t, std::size_t>>
    matchesWith(const ReferenceAlignment &other) const
    {
        std::vector<std::pair<std::size_t, std::size_t>> matches;
        for (const Row &row : rows) {
            const auto partner = std::ranges::find(other.rows, row.sequence, &Row::sequence);
            if (partner == other.rows.end())
                continue;
            for (std::size_t i = 0; i < row.cells.size(); ++i) {
                const auto at = std::ranges::find(partner->cells, row.cells[i]);
                if (row.cells[i] >= 0 && at != partner->cells.end())
                    matches.emplace_back(i, at - partner->cells.begin());
            }
            break;
        }
        return matches;
    }
};
