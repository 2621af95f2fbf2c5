// SPDX-License-Identifier: GPL-3.0-or-later
#include "PiecedRows.h"

#include "CellReader.h"
#include "FormatText.h"
#include "RowPacking.h"

#include <utility>

namespace TAMBO::formats {

std::uint64_t PiecedRows::width(std::size_t row) const noexcept
{
    const std::unique_ptr<RowBuilder> &builder = m_Pieces[row].builder;
    return builder != nullptr ? builder->width() : m_Rows[row].width;
}

std::size_t PiecedRows::add(std::string_view name)
{
    m_Rows.add({}).text = SequenceText(cleanText(name), {});
    if (m_Pieces.size() == m_Pieces.capacity())
        m_Pieces.reserve(m_Pieces.size() + m_Pieces.size() / 4 + 1);
    m_Pieces.emplace_back();
    m_RowOf.add(name, size() - 1);
    m_Expected = size();
    return size() - 1;
}

std::optional<std::size_t> PiecedRows::find(std::string_view name)
{
    const auto isNamed = [&](std::size_t row) { return row < size() && this->name(row) == name; };
    if (isNamed(m_Expected))
        return m_Expected++;
    // The row before is asked for again when something is said of it.
    if (isNamed(m_Expected - 1))
        return m_Expected - 1;
    const auto found = m_RowOf.find(name, [&](std::size_t row) {
        return this->name(row) == name || this->name(row) == cleanText(name);
    });
    if (!found)
        return std::nullopt;
    m_Expected = *found + 1;
    return found;
}

// A row that comes in one piece never has more room than it needs.
RowBuilder &PiecedRows::open(std::size_t row)
{
    std::unique_ptr<RowBuilder> &builder = m_Pieces[row].builder;
    if (m_Rows[row].width == 0 && builder == nullptr)
        return m_Builder;
    if (builder == nullptr) {
        builder = std::make_unique<RowBuilder>();
        RowRecord before = unpacked(std::exchange(m_Rows[row], {}));
        builder->resume(std::move(before.sequence));
        m_Rows[row] = packed(std::move(before));
    }
    return *builder;
}

void PiecedRows::close(std::size_t row)
{
    if (m_Pieces[row].builder == nullptr)
        store(row, m_Builder);
}

// What the row has so far is its sequence.
void PiecedRows::complete(std::size_t row)
{
    std::unique_ptr<RowBuilder> &builder = m_Pieces[row].builder;
    if (builder != nullptr)
        store(row, *builder);
    builder.reset();
}

void PiecedRows::store(std::size_t row, RowBuilder &builder)
{
    PackedRow complete = builder.pack(name(row));
    complete.label = std::move(m_Rows[row].label);
    m_Rows[row] = std::move(complete);
}

char PiecedRows::append(std::size_t row, TextReader &reader)
{
    m_Pieces[row].line = reader.line();
    RowBuilder &builder = open(row);
    const std::uint64_t stops = builder.stops();
    const char end = readCells(reader, builder);
    m_Stops.add(builder.stops() - stops, reader.line(), name(row));
    close(row);
    return end;
}

std::size_t PiecedRows::append(std::size_t row, std::string_view text, std::uint64_t line)
{
    m_Pieces[row].line = line;
    RowBuilder &builder = open(row);
    const std::uint64_t stops = builder.stops();
    const std::size_t count = appendCells(text, builder);
    m_Stops.add(builder.stops() - stops, line, name(row));
    close(row);
    return count;
}

void PiecedRows::appendGaps(std::size_t row, std::uint64_t count)
{
    complete(row);
    m_Rows[row].width += count;
}

void PiecedRows::remove(const std::vector<std::size_t> &rows)
{
    if (rows.empty())
        return;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        m_Pieces.erase(m_Pieces.begin() + static_cast<std::ptrdiff_t>(*row));
    m_Rows.remove(rows);
    m_RowOf.clear();
    for (std::size_t row = 0; row < size(); ++row)
        m_RowOf.add(name(row), row);
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

PackedRows PiecedRows::take()
{
    for (std::size_t row = 0; row < size(); ++row)
        complete(row);
    m_Pieces.clear();
    m_RowOf.clear();
    m_Expected = 0;
    m_Stops = {};
    return std::exchange(m_Rows, {});
}

} // namespace TAMBO::formats
