// SPDX-License-Identifier: GPL-3.0-or-later
// The plug-ins' door to an alignment: what can be read, and what it is as a node of the tree.
#include "Alignment.h"

#include "AlignmentTable.h"
#include "ObjectOperations.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace TAMBO {

namespace {

constexpr Color kPlain(0xc8c8c8);

} // namespace

Alignment::Alignment(std::unique_ptr<AlignmentTable> table) : m_Table(std::move(table))
{
    m_Table->m_Alignment = this;
}

Alignment::~Alignment() = default;

// ---- Reading

Compound *Alignment::getItem(unsigned long row, unsigned long col) const
{
    if (row >= height() || col >= m_Width)
        return nullptr;
    const AlignmentRow &line = m_Table->row(row);
    if (!line.cells().isResidue(col))
        return nullptr;
    return line.sequence().residue(line.residueIndex(line.cells().rank(col)));
}

std::vector<Compound *> Alignment::getCol(unsigned long col) const
{
    std::vector<Compound *> result;
    if (col >= m_Width)
        return result;
    result.reserve(height());
    for (unsigned long row = 0; row < height(); ++row)
        result.push_back(getItem(row, col));
    return result;
}

std::vector<std::vector<Compound *>> Alignment::columns() const
{
    std::vector<std::vector<Compound *>> result(m_Width, std::vector<Compound *>(height()));
    for (unsigned long row = 0; row < height(); ++row) {
        const AlignmentRow &line = m_Table->row(row);
        line.forEachResidue(0, m_Width, [&](unsigned long col, std::uint32_t index) {
            result[col][row] = line.sequence().residue(index);
        });
    }
    return result;
}

Compound *Alignment::GetSeq(unsigned long row) const
{
    return row < height() ? &m_Table->row(row).sequence() : nullptr;
}

std::string Alignment::GetSeqName(unsigned long row) const
{
    return row < height() ? m_Table->row(row).name() : std::string();
}

std::string Alignment::GetSequence(unsigned long row, bool withoutGaps) const
{
    std::string result;
    if (row >= height())
        return result;
    const AlignmentRow &line = m_Table->row(row);
    const std::string_view letters = line.sequence().letters();
    if (withoutGaps)
        result.reserve(line.cells().residues());
    else
        result.assign(m_Width, '-');
    line.forEachRun(0, m_Width, [&](unsigned long col, std::uint32_t index, std::uint32_t count) {
        if (withoutGaps)
            result.append(letters, index, count);
        else
            letters.copy(result.data() + col, count, index);
    });
    return result;
}

char Alignment::letterAt(unsigned long row, unsigned long col) const
{
    if (row >= height() || col >= m_Width)
        return '\0';
    const AlignmentRow &line = m_Table->row(row);
    if (!line.cells().isResidue(col))
        return '\0';
    return line.sequence().letter(line.residueIndex(line.cells().rank(col)));
}

unsigned long Alignment::residueCount(unsigned long row, unsigned long end) const
{
    return row < height() ? m_Table->row(row).cells().rank(std::min(end, m_Width)) : 0;
}

unsigned long Alignment::columnOfResidue(unsigned long row, unsigned long residue) const
{
    if (row >= height())
        return m_Width;
    const OccupancyRow &cells = m_Table->row(row).cells();
    return residue < cells.residues() ? cells.columnOf(std::uint32_t(residue)) : m_Width;
}

void Alignment::readRow(unsigned long row, unsigned long begin, unsigned long end,
                        std::vector<AlignmentCell> &out) const
{
    end = std::min(end, m_Width);
    if (row >= height() || begin >= end)
        return;
    const AlignmentRow &line = m_Table->row(row);
    const std::size_t first = out.size();
    out.resize(first + (end - begin));
    line.forEachResidue(begin, end, [&](unsigned long col, std::uint32_t index) {
        out[first + (col - begin)] = {line.sequence().letter(index),
                                      line.sequence().displayColor(index)};
    });
}

void Alignment::readColumn(unsigned long col, std::vector<char> &out) const
{
    if (col < m_Width)
        m_Table->readColumn(col, out);
}

AlignmentMajority Alignment::majority(unsigned long col) const
{
    return col < m_Width ? m_Table->majority(col) : AlignmentMajority();
}

std::vector<AlignmentMajority> Alignment::majorities() const
{
    return m_Table->majorities();
}

bool Alignment::hasPositions(unsigned long row) const
{
    return row < height() && m_Table->row(row).sequence().hasAtoms();
}

void Alignment::readPositions(unsigned long row, unsigned long begin, unsigned long end,
                              std::vector<Vertex> &out) const
{
    end = std::min(end, m_Width);
    if (row >= height() || begin >= end)
        return;
    const std::size_t first = out.size();
    out.resize(first + (end - begin));
    const AlignmentRow &line = m_Table->row(row);
    line.forEachRun(begin, end, [&](unsigned long col, std::uint32_t index, std::uint32_t count) {
        line.sequence().readPositions(index, std::size_t(index) + count,
                                      out.data() + first + (col - begin));
    });
}

bool Alignment::isRowSelected(unsigned long row) const
{
    if (row >= height())
        return false;
    const AlignmentRow &line = m_Table->row(row);
    const std::size_t selected = line.sequence().selectedCount();
    if (selected == line.sequence().residueCount() || line.cells().residues() == 0)
        return true;
    if (selected == 0 || line.isComplete())
        return false;
    for (const ResidueRun &run : line.residueRuns(0, line.cells().residues())) {
        for (std::uint32_t index = run.index; index < run.index + run.count; ++index) {
            if (!line.sequence().isSelected(index))
                return false;
        }
    }
    return true;
}

bool Alignment::isColumnSelected(unsigned long col) const
{
    return col < m_Width && m_Table->isColumnSelected(col);
}

unsigned long Alignment::layoutRevision() const noexcept
{
    return m_Table->layoutRevision();
}

// ---- Compound

std::string Alignment::Name() const
{
    return m_Table->name();
}

char Alignment::TypeCode() const
{
    return '\0';
}

std::string Alignment::TypeName() const
{
    return "alignment";
}

Compound *Alignment::Parent() const
{
    return m_Table->state().parent;
}

// The sequences are not below the alignment: they live on when it is deleted.
std::size_t Alignment::ChildCount() const
{
    return 0;
}

Compound *Alignment::Child(std::size_t) const
{
    return nullptr;
}

bool Alignment::IsLocked() const
{
    return m_Table->state().isLocked;
}

Vertex Alignment::Position() const
{
    return {};
}

Color Alignment::OwnColor() const
{
    return m_Table->state().color.value_or(kPlain);
}

void Alignment::AssignColor(const Color &color)
{
    assignColor(*this, m_Table->state().color, color);
}

void Alignment::SetSelected(bool selected)
{
    assignSelected(*this, m_Table->state().isSelected, selected);
}

bool Alignment::IsSelected() const
{
    return m_Table->state().isSelected;
}

} // namespace TAMBO
