// SPDX-License-Identifier: GPL-3.0-or-later
#include "SharedRows.h"

#include "AlignmentTable.h"

#include <functional>
#include <string>
#include <unordered_map>

namespace TAMBO {

namespace {

std::string lettersOf(const AlignmentRow &row)
{
    std::string letters;
    for (const ResidueRun &run : row.residueRuns(0, row.cells().residues()))
        letters.append(row.sequence().letters(), run.index, run.count);
    return letters;
}

bool areEqual(const AlignmentRow &row, const AlignmentRow &other)
{
    return row.cells().residues() > 0 && row.cells().residues() == other.cells().residues() &&
           row.name() == other.name() && lettersOf(row) == lettersOf(other);
}

// All rows of a file may have one name, so that the letters are needed to tell them apart.
std::size_t keyOf(const AlignmentRow &row)
{
    return std::hash<std::string>()(row.name() + '\n' + lettersOf(row));
}

} // namespace

SharedRows::SharedRows(const AlignmentTable &table, const AlignmentTable &other)
    : m_HasPartner(table.rowCount()), m_IsShared(other.rowCount())
{
    findSame(table, other);
    findEqual(table, other);
}

void SharedRows::findSame(const AlignmentTable &table, const AlignmentTable &other)
{
    std::unordered_map<const Peptide *, std::vector<std::size_t>> rowsOf;
    for (std::size_t i = 0; i < other.rowCount(); ++i)
        rowsOf[&other.row(i).sequence()].push_back(i);
    for (std::size_t i = 0; i < table.rowCount(); ++i) {
        const auto found = rowsOf.find(&table.row(i).sequence());
        if (found == rowsOf.end())
            continue;
        m_HasPartner[i] = true;
        for (const std::size_t row : found->second)
            m_IsShared[row] = true;
        if (!m_FirstSame)
            m_FirstSame = Partners{i, found->second.front(), true};
    }
}

// Two files may hold one sequence, of which there are two objects then.
void SharedRows::findEqual(const AlignmentTable &table, const AlignmentTable &other)
{
    // The first of each key at the back.
    std::unordered_map<std::size_t, std::vector<std::size_t>> rowsOf;
    for (std::size_t i = other.rowCount(); i-- > 0;) {
        if (!m_IsShared[i])
            rowsOf[keyOf(other.row(i))].push_back(i);
    }
    for (std::size_t i = 0; i < table.rowCount() && !rowsOf.empty(); ++i) {
        const auto found = m_HasPartner[i] ? rowsOf.end() : rowsOf.find(keyOf(table.row(i)));
        if (found == rowsOf.end() || found->second.empty() ||
            !areEqual(table.row(i), other.row(found->second.back())))
            continue;
        m_Equal.push_back({i, found->second.back(), false});
        m_IsShared[found->second.back()] = true;
        found->second.pop_back();
    }
}

const Partners *SharedRows::anchor() const noexcept
{
    if (m_FirstSame)
        return &*m_FirstSame;
    return m_Equal.empty() ? nullptr : &m_Equal.front();
}

} // namespace TAMBO
