// SPDX-License-Identifier: GPL-3.0-or-later
#include "PiecedRows.h"

#include "CellReader.h"
#include "FormatText.h"

#include <utility>

namespace TAMBO::formats {

std::uint64_t PiecedRows::width(std::size_t row) const noexcept
{
    const Row &found = m_Rows[row];
    return found.builder != nullptr ? found.builder->width() : found.record.sequence.width;
}

std::size_t PiecedRows::add(std::string_view name)
{
    m_Rows.emplace_back().record.name = cleanText(name);
    m_RowOf.emplace(name, m_Rows.size() - 1);
    m_Expected = m_Rows.size();
    return m_Rows.size() - 1;
}

std::optional<std::size_t> PiecedRows::find(std::string_view name)
{
    const auto isNamed = [&](std::size_t row) {
        return row < m_Rows.size() && m_Rows[row].record.name == name;
    };
    if (isNamed(m_Expected))
        return m_Expected++;
    // The row before is asked for again when something is said of it.
    if (isNamed(m_Expected - 1))
        return m_Expected - 1;
    const auto found = m_RowOf.find(name);
    if (found == m_RowOf.end())
        return std::nullopt;
    m_Expected = found->second + 1;
    return found->second;
}

// A row that comes in one piece never has more room than it needs.
RowBuilder &PiecedRows::open(Row &row)
{
    if (row.record.sequence.width == 0 && row.builder == nullptr)
        return m_Builder;
    if (row.builder == nullptr) {
        row.builder = std::make_unique<RowBuilder>();
        row.builder->resume(std::move(row.record.sequence));
    }
    return *row.builder;
}

void PiecedRows::close(Row &row)
{
    if (row.builder == nullptr)
        row.record.sequence = m_Builder.take();
}

char PiecedRows::append(std::size_t row, TextReader &reader)
{
    Row &changed = m_Rows[row];
    changed.line = reader.line();
    const char stop = readCells(reader, open(changed));
    close(changed);
    return stop;
}

std::size_t PiecedRows::append(std::size_t row, std::string_view text, std::uint64_t line)
{
    Row &changed = m_Rows[row];
    changed.line = line;
    const std::size_t count = appendCells(text, open(changed));
    close(changed);
    return count;
}

void PiecedRows::appendGaps(std::size_t row, std::uint64_t count)
{
    Row &changed = m_Rows[row];
    if (changed.builder != nullptr)
        changed.record.sequence = changed.builder->take();
    changed.builder.reset();
    changed.record.sequence.appendGaps(count);
}

void PiecedRows::remove(const std::vector<std::size_t> &rows)
{
    if (rows.empty())
        return;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        m_Rows.erase(m_Rows.begin() + static_cast<std::ptrdiff_t>(*row));
    m_RowOf.clear();
    for (std::size_t row = 0; row < m_Rows.size(); ++row)
        m_RowOf.emplace(m_Rows[row].record.name, row);
    m_Expected = 0;
}

std::optional<std::size_t> PiecedRows::firstUneven() const noexcept
{
    for (std::size_t row = 1; row < m_Rows.size(); ++row) {
        if (width(row) != width(0))
            return row;
    }
    return std::nullopt;
}

std::vector<RowRecord> PiecedRows::take()
{
    std::vector<RowRecord> records;
    records.reserve(m_Rows.size());
    for (Row &row : m_Rows) {
        if (row.builder != nullptr)
            row.record.sequence = row.builder->take();
        row.builder.reset();
        records.push_back(std::move(row.record));
    }
    m_Rows.clear();
    m_RowOf.clear();
    m_Expected = 0;
    return records;
}

} // namespace TAMBO::formats
