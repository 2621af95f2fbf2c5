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

AlignmentRow::AlignmentRow(Peptide &sequence, OccupancyRow cells, std::uint32_t firstResidue)
    : m_Sequence(&sequence), m_Cells(std::move(cells))
{
    if (firstResidue > 0)
        setResidues({{firstResidue, m_Cells.residues()}});
}

AlignmentRow::AlignmentRow(Peptide &sequence, OccupancyRow cells, RowLabel label,
                           std::uint32_t firstResidue)
    : AlignmentRow(sequence, std::move(cells), firstResidue)
{
    if (!label.name.empty() || !label.description.empty() || !label.link->structure.empty() ||
        !label.chainBreaks.empty() || !label.annotations.empty() ||
        !label.residueAnnotations.empty())
        extras().label = std::make_shared<RowLabel>(std::move(label));
}

AlignmentRow::AlignmentRow(const AlignmentRow &other)
    : m_Sequence(other.m_Sequence),
      m_Cells(other.m_Cells),
      m_Extras(other.m_Extras == nullptr ? nullptr : std::make_unique<Extras>(*other.m_Extras))
{ }

AlignmentRow::~AlignmentRow() = default;

AlignmentRow::Extras &AlignmentRow::extras()
{
    if (m_Extras == nullptr)
        m_Extras = std::make_unique<Extras>();
    return *m_Extras;
}

std::string AlignmentRow::name() const
{
    const RowLabel *const kept = label();
    return kept != nullptr && !kept->name.empty() ? kept->name : m_Sequence->sequenceName();
}

std::size_t AlignmentRow::segmentOf(std::uint32_t ordinal) const noexcept
{
    const std::span<const Segment> all = segments();
    const auto behind = std::ranges::upper_bound(all, ordinal, {}, &Segment::ordinal);
    return behind == all.begin() ? 0 : std::size_t(behind - all.begin()) - 1;
}

std::uint32_t AlignmentRow::residueIndex(std::uint32_t ordinal) const noexcept
{
    const std::span<const Segment> all = segments();
    if (all.empty())
        return ordinal;
    const Segment &segment = all[segmentOf(ordinal)];
    return segment.index + (ordinal - segment.ordinal);
}

std::vector<ResidueRun> AlignmentRow::residueRuns(std::uint32_t begin, std::uint32_t end) const
{
    std::vector<ResidueRun> result;
    if (begin >= end)
        return result;
    const std::span<const Segment> all = segments();
    if (all.empty())
        return {{begin, end - begin}};
    for (std::size_t i = segmentOf(begin); i < all.size(); ++i) {
        const Segment &segment = all[i];
        if (segment.ordinal >= end)
            break;
        const std::uint32_t from = std::max(begin, segment.ordinal);
        const std::uint32_t to = i + 1 < all.size() ? std::min(end, all[i + 1].ordinal) : end;
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
    if (!segments.empty())
        extras().segments = std::move(segments);
    else if (m_Extras != nullptr && m_Extras->label != nullptr)
        m_Extras->segments = {};
    else
        m_Extras.reset();
}

std::size_t AlignmentRow::bytes() const noexcept
{
    std::size_t sum = sizeof(*this) + m_Cells.bytes();
    if (m_Extras != nullptr)
        sum += sizeof(Extras) + m_Extras->segments.capacity() * sizeof(Segment);
    if (const RowLabel *const kept = label())
        sum += sizeof(RowLabel) + textBytes(kept->name) + textBytes(kept->description) +
               (kept->link.isUsual() ? 0 : sizeof(StructureLink) + bytesOf(*kept->link)) +
               kept->chainBreaks.capacity() * sizeof(ChainBreak) + bytesOf(kept->annotations) +
               bytesOf(kept->residueAnnotations);
    return sum;
}

} // namespace TAMBO
