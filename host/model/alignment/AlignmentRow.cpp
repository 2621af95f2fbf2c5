// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentRow.h"

#include "AlignmentAnnotation.h"
#include "TextBytes.h"

#include <utility>

namespace TAMBO {

namespace {

std::size_t bytesOf(const StructureLink &link) noexcept
{
    return textBytes(link.structure) + textBytes(link.chain) + textBytes(link.first) +
           textBytes(link.last) + textBytes(link.lastChain);
}

} // namespace

AlignmentRow::AlignmentRow(Peptide &sequence, OccupancyRow cells, RowLabel label,
                           std::uint32_t firstResidue)
    : m_Sequence(&sequence), m_Cells(std::move(cells))
{
    if (firstResidue > 0)
        setResidues({{firstResidue, m_Cells.residues()}});
    if (!label.name.empty() || !label.description.empty() || !label.link.structure.empty() ||
        !label.chainBreaks.empty() || !label.annotations.empty() ||
        !label.residueAnnotations.empty())
        m_Label = std::make_shared<RowLabel>(std::move(label));
}

std::string AlignmentRow::name() const
{
    return m_Label != nullptr && !m_Label->name.empty() ? m_Label->name
                                                        : m_Sequence->sequenceName();
}

std::size_t AlignmentRow::segmentOf(std::uint32_t ordinal) const noexcept
{
    const auto behind = std::ranges::upper_bound(m_Segments, ordinal, {}, &Segment::ordinal);
    return behind == m_Segments.begin() ? 0 : std::size_t(behind - m_Segments.begin()) - 1;
}

std::uint32_t AlignmentRow::residueIndex(std::uint32_t ordinal) const noexcept
{
    if (m_Segments.empty())
        return ordinal;
    const Segment &segment = m_Segments[segmentOf(ordinal)];
    return segment.index + (ordinal - segment.ordinal);
}

std::vector<ResidueRun> AlignmentRow::residueRuns(std::uint32_t begin, std::uint32_t end) const
{
    std::vector<ResidueRun> result;
    if (begin >= end)
        return result;
    if (m_Segments.empty())
        return {{begin, end - begin}};
    for (std::size_t i = segmentOf(begin); i < m_Segments.size(); ++i) {
        const Segment &segment = m_Segments[i];
        if (segment.ordinal >= end)
            break;
        const std::uint32_t from = std::max(begin, segment.ordinal);
        const std::uint32_t to =
            i + 1 < m_Segments.size() ? std::min(end, m_Segments[i + 1].ordinal) : end;
        result.push_back({segment.index + (from - segment.ordinal), to - from});
    }
    return result;
}

// Columns are mostly removed one beside the other, so that the residues next to the place tell
// which ones are missing; then a removed column costs the undo step one bit a row.
ResidueRun AlignmentRow::impliedResidues(std::uint32_t ordinal, std::uint32_t count,
                                         std::uint32_t total) const
{
    if (ordinal < total) {
        const std::uint32_t next = residueIndex(ordinal);
        return {next >= count ? next - count : 0, count};
    }
    return {ordinal > 0 ? residueIndex(ordinal - 1) + 1 : 0, count};
}

void AlignmentRow::takeOut(Column begin, Column count, std::vector<ResidueRun> &removed)
{
    const std::uint32_t total = m_Cells.residues();
    const std::uint32_t first = m_Cells.rank(begin);
    const std::uint32_t last = m_Cells.rank(begin + count);
    if (first == last) {
        m_Cells.removeColumns(begin, count);
        return;
    }
    const std::vector<ResidueRun> runs = residueRuns(first, last);
    std::vector<ResidueRun> kept = residueRuns(0, first);
    const std::vector<ResidueRun> behind = residueRuns(last, total);
    kept.insert(kept.end(), behind.begin(), behind.end());
    m_Cells.removeColumns(begin, count);
    setResidues(kept);
    if (runs.size() != 1 ||
        runs.front() != impliedResidues(first, last - first, m_Cells.residues()))
        removed.insert(removed.end(), runs.begin(), runs.end());
}

void AlignmentRow::putBack(Column begin, Column count, const std::vector<OccupancyRow::Word> &bits,
                           std::vector<ResidueRun> residues)
{
    const std::uint32_t total = m_Cells.residues();
    const std::uint32_t first = m_Cells.rank(begin);
    m_Cells.insertGaps(begin, count);
    m_Cells.setColumns(begin, count, bits);
    const std::uint32_t added = m_Cells.residues() - total;
    if (added == 0)
        return;
    if (residues.empty())
        residues = {impliedResidues(first, added, total)};
    std::vector<ResidueRun> all = residueRuns(0, first);
    const std::vector<ResidueRun> behind = residueRuns(first, total);
    all.insert(all.end(), residues.begin(), residues.end());
    all.insert(all.end(), behind.begin(), behind.end());
    setResidues(all);
}

void AlignmentRow::setResidues(const std::vector<ResidueRun> &runs)
{
    std::vector<Segment> segments;
    std::uint32_t ordinal = 0;
    std::uint32_t next = 0;
    for (const ResidueRun &run : runs) {
        if (segments.empty() || run.index != next)
            segments.push_back({ordinal, run.index});
        ordinal += run.count;
        next = run.index + run.count;
    }
    if (segments.size() == 1 && segments.front().index == 0)
        segments.clear();
    segments.shrink_to_fit();
    m_Segments = std::move(segments);
}

std::size_t AlignmentRow::bytes() const noexcept
{
    std::size_t sum = sizeof(*this) + m_Cells.bytes() + m_Segments.capacity() * sizeof(Segment);
    if (m_Label != nullptr)
        sum += sizeof(RowLabel) + textBytes(m_Label->name) + textBytes(m_Label->description) +
               bytesOf(m_Label->link) + m_Label->chainBreaks.capacity() * sizeof(ChainBreak) +
               bytesOf(m_Label->annotations) + bytesOf(m_Label->residueAnnotations);
    return sum;
}

} // namespace TAMBO
