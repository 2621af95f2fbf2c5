// SPDX-License-Identifier: GPL-3.0-or-later
#include "PiecedRows.h"

#include "CellReader.h"
#include "FormatText.h"

#include <utility>

namespace TAMBO::formats {

std::uint64_t PiecedRows::width(std::size_t row) const noexcept
{
    const std::unique_ptr<RowBuilder> &builder = m_Pieces[row].builder;
    return builder != nullptr ? builder->width() : m_Records[row].sequence.width;
}

std::size_t PiecedRows::add(std::string_view name)
{
    appendRow(m_Records, {}).name = cleanText(name);
    m_Pieces.emplace_back();
    m_RowOf.emplace(name, size() - 1);
    m_Expected = size();
    return size() - 1;
}

std::optional<std::size_t> PiecedRows::find(std::string_view name)
{
    const auto isNamed = [&](std::size_t row) {
        return row < size() && m_Records[row].name == name;
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
RowBuilder &PiecedRows::open(std::size_t row)
{
    GappedSequence &sequence = m_Records[row].sequence;
    std::unique_ptr<RowBuilder> &builder = m_Pieces[row].builder;
    if (sequence.width == 0 && builder == nullptr)
        return m_Builder;
    if (builder == nullptr) {
        builder = std::make_unique<RowBuilder>();
        builder->resume(std::move(sequence));
    }
    return *builder;
}

void PiecedRows::close(std::size_t row)
{
    if (m_Pieces[row].builder == nullptr)
        m_Records[row].sequence = m_Builder.take();
}

// What the row has so far is its sequence.
void PiecedRows::complete(std::size_t row)
{
    std::unique_ptr<RowBuilder> &builder = m_Pieces[row].builder;
    if (builder != nullptr)
        m_Records[row].sequence = builder->take();
    builder.reset();
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
    m_Records[row].sequence.appendGaps(count);
}

void PiecedRows::remove(const std::vector<std::size_t> &rows)
{
    if (rows.empty())
        return;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        const auto place = static_cast<std::ptrdiff_t>(*row);
        m_Records.erase(m_Records.begin() + place);
        m_Pieces.erase(m_Pieces.begin() + place);
    }
    m_RowOf.clear();
    for (std::size_t row = 0; row < size(); ++row)
        m_RowOf.emplace(m_Records[row].name, row);
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

std::vector<RowRecord> PiecedRows::take()
{
    for (std::size_t row = 0; row < size(); ++row)
        complete(row);
    m_Pieces.clear();
    m_RowOf.clear();
    m_Expected = 0;
    m_Stops = {};
    return std::exchange(m_Records, {});
}

} // namespace TAMBO::formats
