// SPDX-License-Identifier: GPL-3.0-or-later
#include "CarriedColumns.h"

#include <unordered_map>

namespace TAMBO {

namespace {

using Column = AlignmentTable::Column;

// Columns are told apart by a sum over their residues, for which each of these must look random.
std::uint64_t mixed(std::uint64_t row, std::uint64_t ordinal) noexcept
{
    std::uint64_t value = (row << 32U) + ordinal + 1;
    value = (value ^ value >> 30U) * 0xbf58476d1ce4e5b9U;
    value = (value ^ value >> 27U) * 0x94d049bb133111ebU;
    return value ^ value >> 31U;
}

} // namespace

std::vector<std::optional<Column>> carriedColumns(const AlignmentTable &table,
                                                  const AlignmentTable::Range &range,
                                                  const std::vector<OccupancyRow> &cells,
                                                  Column count)
{
    std::vector<std::uint64_t> before(range.second - range.first);
    std::vector<std::uint64_t> after(count);
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        const OccupancyRow &former = table.row(row).cells();
        const std::uint32_t first = former.rank(range.first);
        for (std::uint32_t i = 0; i < cells[row].residues(); ++i) {
            before[former.columnOf(first + i) - range.first] += mixed(row, i);
            after[cells[row].columnOf(i)] += mixed(row, i);
        }
    }
    std::unordered_map<std::uint64_t, Column> columnOf;
    for (Column column = 0; column < before.size(); ++column) {
        // Nothing stands in a column of gaps that could go anywhere.
        if (before[column] != 0)
            columnOf.emplace(before[column], column);
    }
    std::vector<std::optional<Column>> carried(count);
    for (Column column = 0; column < count; ++column) {
        const auto found = columnOf.find(after[column]);
        if (found != columnOf.end())
            carried[column] = found->second;
    }
    return carried;
}

} // namespace TAMBO
