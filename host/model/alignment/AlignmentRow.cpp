// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentRow.h"

#include <optional>
#include <utility>

namespace TAMBO {

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
        m_Extras.setLabel(std::make_shared<RowLabel>(std::move(label)));
}

void AlignmentRow::presetLabel(RowLabel label)
{
    if (const RowLabel *const former = this->label())
        label.chainBreaks = former->chainBreaks;
    m_Extras.setLabel(std::make_shared<RowLabel>(std::move(label)));
}

AlignmentRow::AlignmentRow(const AlignmentRow &other) = default;

AlignmentRow::~AlignmentRow() = default;

std::string AlignmentRow::name() const
{
    const RowLabel *const kept = label();
    return kept != nullptr && !kept->name.empty() ? kept->name : m_Sequence->sequenceName();
}

std::size_t AlignmentRow::segmentOf(std::span<const Segment> segments,
                                    std::uint32_t ordinal) noexcept
{
    const auto behind = std::ranges::upper_bound(segments, ordinal, {}, &Segment::ordinal);
    return behind == segments.begin() ? 0 : std::size_t(behind - segments.begin()) - 1;
}

std::uint32_t AlignmentRow::residueIndex(std::uint32_t ordinal) const noexcept
{
    if (!m_Extras.hasSegments())
        return ordinal;
    const RowExtras::Segments kept = m_Extras.segments();
    const Segment &segment = kept.all()[segmentOf(kept.all(), ordinal)];
    return segment.index + (ordinal - segment.ordinal);
}

std::vector<ResidueRun> AlignmentRow::residueRuns(std::uint32_t begin, std::uint32_t end) const
{
    std::vector<ResidueRun> result;
    if (begin >= end)
        return result;
    const RowExtras::Segments kept = m_Extras.segments();
    const std::span<const Segment> all = kept.all();
    if (all.empty())
        return {{begin, end - begin}};
    for (std::size_t i = segmentOf(all, begin); i < all.size(); ++i) {
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
    m_Cells.removeColumns(begin, count);
    dropResidues(first, first + (total - m_Cells.residues()), total, removed);
}

// Of a million rows each is mostly this short and plain.
std::optional<OccupancyRow::Word> AlignmentRow::takeFew(Column begin, unsigned count,
                                                        std::vector<ResidueRun> &removed)
{
    if (!m_Cells.isShort() || !m_Extras.isPlain())
        return std::nullopt;
    const std::uint32_t total = m_Cells.residues();
    const OccupancyRow::Taken taken = m_Cells.takeFromShort(begin, count);
    const std::uint32_t behind = taken.before + (total - m_Cells.residues());
    // Whether there was a residue is anybody's guess in each row, so nothing asks for it.
    if (!m_Extras.hasSegments() && behind < total)
        m_Extras.setSkip({taken.before, behind - taken.before});
    else
        dropResidues(taken.before, behind, total, removed);
    return taken.cells;
}

void AlignmentRow::dropResidues(std::uint32_t first, std::uint32_t last, std::uint32_t total,
                                std::vector<ResidueRun> &removed)
{
    if (first == last || leaveOut(first, last, total, removed))
        return;
    const std::vector<ResidueRun> runs = residueRuns(first, last);
    std::vector<ResidueRun> kept = residueRuns(0, first);
    const std::vector<ResidueRun> behind = residueRuns(last, total);
    kept.insert(kept.end(), behind.begin(), behind.end());
    setResidues(kept);
    const std::uint32_t count = last - first;
    if (runs.size() != 1 || runs.front() != impliedResidues(first, count, total - count))
        removed.insert(removed.end(), runs.begin(), runs.end());
}

bool AlignmentRow::leaveOut(std::uint32_t first, std::uint32_t last, std::uint32_t total,
                            std::vector<ResidueRun> &removed)
{
    const std::optional<RowExtras::Skip> skip = m_Extras.skip();
    const bool hasNone = skip && skip->count == 0;
    if (!skip || (!hasNone && first != skip->ordinal && last != skip->ordinal))
        return false;
    // Behind the last residue that stays nothing is left out.
    if (last == total)
        return hasNone;
    // What stays behind it does not tell that these were before the stretch.
    if (!hasNone && last == skip->ordinal)
        removed.push_back({first, last - first});
    m_Extras.setSkip({first, skip->count + (last - first)});
    return true;
}

void AlignmentRow::putBack(Column begin, Column count, std::span<const OccupancyRow::Word> bits,
                           const std::vector<ResidueRun> &residues)
{
    const std::uint32_t total = m_Cells.residues();
    m_Cells.insertColumns(begin, count, bits);
    const std::uint32_t added = m_Cells.residues() - total;
    if (added == 0)
        return;
    const std::uint32_t first = m_Cells.rank(begin);
    if (residues.empty() && takeBack(first, added, total))
        return;
    std::vector<ResidueRun> all = residueRuns(0, first);
    const std::vector<ResidueRun> behind = residueRuns(first, total);
    if (residues.empty())
        all.push_back(impliedResidues(first, added, total));
    else
        all.insert(all.end(), residues.begin(), residues.end());
    all.insert(all.end(), behind.begin(), behind.end());
    setResidues(all);
}

bool AlignmentRow::takeBack(std::uint32_t first, std::uint32_t count, std::uint32_t total)
{
    const std::optional<RowExtras::Skip> skip = m_Extras.skip();
    if (!skip)
        return false;
    if (first == total)
        return skip->count == 0;
    if (first != skip->ordinal || count > skip->count)
        return false;
    m_Extras.setSkip({first, skip->count - count});
    return true;
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
    m_Extras.setSegments(std::move(segments));
}

std::size_t AlignmentRow::bytes() const noexcept
{
    return sizeof(*this) + m_Cells.bytes() + m_Extras.bytes();
}

} // namespace TAMBO
