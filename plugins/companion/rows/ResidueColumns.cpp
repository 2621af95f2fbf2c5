// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueColumns.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "RowPass.h"
#include "Texts.h"

#include <algorithm>

namespace companion {

namespace {

// As people see numbers: 0.3 of ten is three.
constexpr double kShareRounding = 1e-9;
// To ask for the letter of a cell takes as long as reading so many of a row.
constexpr std::size_t kCellsOfAQuestion = 16;

// Columns without a residue in what was looked at so far.
class EmptySoFar
{
public:
    void begin(unsigned long columns)
    {
        m_Columns.resize(columns);
        for (unsigned long col = 0; col < columns; ++col)
            m_Columns[col] = col;
    }
    // False when none is left.
    bool look(const TAMBO::Alignment &alignment, unsigned long row)
    {
        if (m_Columns.size() > alignment.width() / kCellsOfAQuestion) {
            const std::string text = alignment.GetSequence(row, false);
            std::erase_if(m_Columns, [&](unsigned long col) { return text[col] != '-'; });
        } else {
            std::erase_if(m_Columns,
                          [&](unsigned long col) { return alignment.letterAt(row, col) != '\0'; });
        }
        return !m_Columns.empty();
    }
    [[nodiscard]] std::vector<bool> others(unsigned long columns) const
    {
        std::vector<bool> flags(columns, true);
        for (const unsigned long col : m_Columns)
            flags[col] = false;
        return flags;
    }

private:
    std::vector<unsigned long> m_Columns;
};

template <typename IsWanted>
std::optional<std::vector<bool>> withResidues(TAMBO::AlignmentWindow &window,
                                              const IsWanted &isWanted)
{
    EmptySoFar empty;
    RowPass pass(
        window, [&](const TAMBO::Alignment &alignment) { empty.begin(alignment.width()); },
        [&](const TAMBO::Alignment &alignment, unsigned long row) {
            return !isWanted(row) || empty.look(alignment, row);
        });
    if (!finish(pass, tr("Looking for empty columns…"), window))
        return std::nullopt;
    return empty.others(window.alignment()->width());
}

} // namespace

std::optional<std::vector<bool>> columnsWithResidues(TAMBO::AlignmentWindow &window,
                                                     const std::vector<bool> &rows)
{
    return withResidues(window,
                        [&rows](unsigned long row) { return row < rows.size() && rows[row]; });
}

std::optional<std::vector<bool>> columnsWithResidues(TAMBO::AlignmentWindow &window)
{
    return withResidues(window, [](unsigned long) { return true; });
}

void countResidues(const std::string &row, std::span<std::uint32_t> counts)
{
    const std::size_t columns = std::min(row.size(), counts.size());
    for (std::size_t col = 0; col < columns; ++col)
        counts[col] += row[col] != '-' ? 1 : 0;
}

GappyColumns gappyColumns(std::span<const std::uint32_t> residues, unsigned long rows, double share)
{
    GappyColumns found;
    found.columns.resize(residues.size());
    for (std::size_t col = 0; col < residues.size(); ++col) {
        const double gaps = double(rows) - double(residues[col]);
        if (gaps <= double(rows) * (share + kShareRounding))
            continue;
        found.columns[col] = true;
        ++found.count;
        found.residues += residues[col];
    }
    return found;
}

} // namespace companion
