// SPDX-License-Identifier: GPL-3.0-or-later
#include "PiecedRows.h"

#include "CellReader.h"
#include "FormatText.h"
#include "OrderedWork.h"

#include <algorithm>
#include <utility>

namespace TAMBO::formats {

Rare<RowLabel> &PiecedRows::label(std::size_t row)
{
    if (m_Labels.size() <= row)
        m_Labels.resize(row + 1);
    return m_Labels[row];
}

std::size_t PiecedRows::add(std::string_view name)
{
    const std::size_t row = size();
    const std::size_t place = m_Names.size();
    m_Rows.push_back({place, 0, 0});
    if (isPlainText(name)) {
        m_Names.add(name);
    } else {
        m_Names.add(cleanText(name));
        m_NamesInFile.emplace(place, name);
    }
    m_Expected = row + 1;
    return row;
}

std::string_view PiecedRows::nameInFile(std::size_t row) const
{
    if (m_NamesInFile.empty())
        return name(row);
    const auto found = m_NamesInFile.find(m_Rows[row].place);
    return found == m_NamesInFile.end() ? name(row) : found->second;
}

std::optional<std::size_t> PiecedRows::find(std::string_view name)
{
    const auto isNamed = [&](std::size_t row) { return row < size() && this->name(row) == name; };
    if (isNamed(m_Expected))
        return m_Expected++;
    // The row before is asked for again when something is said of it.
    if (isNamed(m_Expected - 1))
        return m_Expected - 1;
    for (; m_IndexedRows < size(); ++m_IndexedRows)
        m_RowOf.add(nameInFile(m_IndexedRows), m_IndexedRows);
    const auto found = m_RowOf.find(name, [&](std::size_t row) {
        return this->name(row) == name || this->name(row) == cleanText(name);
    });
    if (!found)
        return std::nullopt;
    m_Expected = *found + 1;
    return found;
}

void PiecedRows::append(std::size_t row, const RowLine &line)
{
    append(row, line.cells, line.stops, line.number);
}

void PiecedRows::append(std::size_t row, const GappedView &cells, std::uint64_t stops,
                        std::uint64_t line)
{
    // A copy of what is as long takes as long as the rest of the reading.
    constexpr std::uint64_t longPiece = 4096;
    const std::size_t place = m_Rows[row].place;
    if (m_Rows[row].width == 0 && cells.width >= longPiece) {
        m_LongRows.try_emplace(place, PackedRow{SequenceText(name(row), cells.letters),
                                                OccupancyRow(cells.occupancy),
                                                cells.width,
                                                {}});
    } else {
        if (auto before = m_LongRows.extract(place)) {
            const PackedRow &piece = before.mapped();
            const std::vector<std::uint64_t> words = piece.cells.columns(0, piece.width);
            m_Pieces.add(place, {piece.text.letters(), words, piece.width});
        }
        m_Pieces.add(place, cells);
    }
    m_Rows[row].line = line;
    m_Rows[row].width += cells.width;
    m_Stops.add(stops, line, name(row));
}

std::size_t PiecedRows::append(std::size_t row, std::string_view text, std::uint64_t line)
{
    const std::size_t count = appendCells(text, m_Builder);
    append(row, m_Builder.cells(), m_Builder.stops(), line);
    m_Builder.begin();
    return count;
}

void PiecedRows::remove(const std::vector<std::size_t> &rows)
{
    if (rows.empty())
        return;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        const auto place = static_cast<std::ptrdiff_t>(*row);
        m_Rows.erase(m_Rows.begin() + place);
        if (*row < m_Labels.size())
            m_Labels.erase(m_Labels.begin() + place);
    }
    m_NamesInFile.clear();
    m_RowOf.clear();
    m_IndexedRows = 0;
    m_Expected = 0;
}

std::optional<std::size_t> PiecedRows::firstUneven() const noexcept
{
    for (std::size_t row = 1; row < size(); ++row) {
        if (width(row) != width(0))
            return row;
    }
    return std::nullopt;
}

std::vector<std::string> PiecedRows::remarks(const std::string &file) const
{
    return m_Stops.isEmpty() ? std::vector<std::string>() : std::vector{m_Stops.remark(file)};
}

namespace {

// The rows of one group of places, which are made anew while others are.
struct RowGroup
{
    void work()
    {
        rows = pieces.rows(names);
        pieces = {};
    }
    std::size_t first = 0;
    std::vector<std::string_view> names;
    PieceGroup pieces;
    std::vector<PackedRow> rows;
};

} // namespace

PackedRows PiecedRows::take(TextReader &reader, bool isWorthThreads)
{
    // No room beside the rows for what is needed no more.
    m_RowOf.clear();
    PackedRows result;
    std::size_t begun = 0;
    std::size_t row = 0;
    const auto takeGroup = [&]() -> std::unique_ptr<RowGroup> {
        if (begun >= m_Names.size() || !reader.goesOn())
            return nullptr;
        auto group = std::make_unique<RowGroup>();
        group->first = begun;
        const std::size_t end = std::min(begun + PieceStore::kGroup, m_Names.size());
        for (std::size_t place = begun; place < end; ++place)
            group->names.push_back(m_Names[place]);
        group->pieces = m_Pieces.take(begun / PieceStore::kGroup);
        begun = end;
        return group;
    };
    const auto putGroup = [&](const std::unique_ptr<RowGroup> &group) {
        for (; row < size() && m_Rows[row].place < group->first + group->rows.size(); ++row) {
            const auto whole = m_LongRows.find(m_Rows[row].place);
            PackedRow &made = result.add(std::move(
                whole != m_LongRows.end() ? whole->second
                                          : group->rows[m_Rows[row].place - group->first]));
            made.width = m_Rows[row].width;
            if (row < m_Labels.size())
                made.label = std::move(m_Labels[row]);
        }
    };
    workInOrder<RowGroup>(isWorthThreads, takeGroup, putGroup);
    *this = {};
    return result;
}

} // namespace TAMBO::formats
