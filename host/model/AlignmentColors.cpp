// SPDX-License-Identifier: GPL-3.0-or-later
// The plug-ins' door to colouring and selecting many residues of an alignment at once.
#include "Alignment.h"

#include "AlignmentTable.h"
#include "ChangeScope.h"
#include "LetterColors.h"

#include <algorithm>

namespace TAMBO {

namespace {

// Calls visit(begin, end) for the residues of the row's sequence that have the letters, those side
// by side in the sequence at once.
template <typename Visit>
void forEachMatch(const AlignmentRow &row, const std::vector<char> &letters, Visit visit)
{
    const std::string_view residues = row.sequence().letters();
    std::size_t begin = 0;
    std::size_t end = 0;
    const auto take = [&](std::size_t first, std::size_t behind) {
        if (first != end) {
            if (begin < end)
                visit(begin, end);
            begin = first;
        }
        end = behind;
    };
    row.forEachRun(0, letters.size(),
                   [&](unsigned long col, std::uint32_t index, std::uint32_t count) {
                       for (std::uint32_t i = 0; i < count; ++i) {
                           const std::uint32_t first = i;
                           while (i < count && residues[index + i] == letters[col + i])
                               ++i;
                           if (first < i)
                               take(index + first, index + i);
                       }
                   });
    if (begin < end)
        visit(begin, end);
}

bool isEmpty(const std::vector<char> &letters)
{
    return std::ranges::all_of(letters, [](char letter) { return letter == '\0'; });
}

} // namespace

void Alignment::colorByLetter(const std::array<Color, 256> &colors)
{
    const ChangeScope scope;
    const LetterColors prepared(colors);
    for (unsigned long i = 0; i < height(); ++i) {
        const AlignmentRow &row = m_Table->row(i);
        for (const ResidueRun &run : row.residueRuns(0, row.cells().residues()))
            row.sequence().setColors(run.index, std::size_t(run.index) + run.count, prepared);
    }
}

void Alignment::colorSelected(const Color &color)
{
    const ChangeScope scope;
    const LetterColors prepared(color);
    for (unsigned long i = 0; i < height(); ++i) {
        const AlignmentRow &row = m_Table->row(i);
        Peptide &sequence = row.sequence();
        if (sequence.selectedCount() == 0)
            continue;
        for (const ResidueRun &run : row.residueRuns(0, row.cells().residues()))
            sequence.forEachSelected(run.index, std::size_t(run.index) + run.count,
                                     [&](std::size_t begin, std::size_t end) {
                                         sequence.setColors(begin, end, prepared);
                                     });
    }
}

void Alignment::colorLetters(const std::vector<char> &letters, const Color &color)
{
    if (isEmpty(letters))
        return;
    const ChangeScope scope;
    const LetterColors prepared(color);
    for (unsigned long i = 0; i < height(); ++i) {
        const AlignmentRow &row = m_Table->row(i);
        forEachMatch(row, letters, [&](std::size_t begin, std::size_t end) {
            row.sequence().setColors(begin, end, prepared);
        });
    }
}

void Alignment::selectLetters(const std::vector<char> &letters)
{
    if (isEmpty(letters))
        return;
    const ChangeScope scope;
    for (unsigned long i = 0; i < height(); ++i) {
        const AlignmentRow &row = m_Table->row(i);
        forEachMatch(row, letters, [&](std::size_t begin, std::size_t end) {
            row.sequence().setSelected(begin, end, true);
        });
    }
}

void Alignment::selectInRow(unsigned long row, const Range &range)
{
    const unsigned long end = std::min(range.second, m_Width);
    if (row >= height() || range.first >= end)
        return;
    const ChangeScope scope;
    const AlignmentRow &line = m_Table->row(row);
    for (const ResidueRun &run :
         line.residueRuns(line.cells().rank(range.first), line.cells().rank(end)))
        line.sequence().setSelected(run.index, std::size_t(run.index) + run.count, true);
}

} // namespace TAMBO
