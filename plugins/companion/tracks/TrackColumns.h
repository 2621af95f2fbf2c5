// SPDX-License-Identifier: GPL-3.0-or-later
// What tracks show of the columns in sight, computed in small parts, so that the window stays quick
// at any number of rows, and kept as the alignment is edited.
#pragma once

#include "Alignment.h"
#include "ColumnCounts.h"
#include "LayoutChanges.h"
#include "Logo.h"
#include "RowEdits.h"
#include "SpreadSum.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <unordered_map>
#include <vector>

namespace companion {

struct TrackColumn
{
    ColumnCounts counts;
    double conservation = 0;
    double occupancy = 0;
    double bits = 0;
    // From the bottom.
    std::vector<LogoLetter> logo;
    // Nothing as long as it was not wanted.
    std::optional<ColumnSpread> spread;
};

// An edit touches some columns, and the others move along with it. Counts of those that a moved gap
// or a new row touches follow it at once; what else is touched is computed anew, and shown as it
// was until then.
class TrackColumns
{
public:
    // Beyond so many only those that are wanted stay.
    static constexpr std::size_t kMostKept = 8192;
    // Computed in one pass over the rows.
    static constexpr unsigned long kAtOnce = 64;

    // The alignment has become another one.
    void clear();
    // Which columns are to be known; half-open.
    void want(unsigned long begin, unsigned long end);
    // Whether the distances of their residues are, too.
    void wantSpread(bool isWanted);
    // The alignment, or where its structures are, may have changed. goOn() does it by itself.
    void follow(const TAMBO::Alignment &alignment);
    // Looks at further rows, for about that time and at one at least; false when all that is wanted
    // is known. The alignment is the same one until clear().
    bool goOn(const TAMBO::Alignment &alignment, std::chrono::microseconds most);
    [[nodiscard]] bool isDone() const noexcept { return !hasPass() && m_Next >= wantedEnd(); }
    // Null as long as nothing is known; as it was before the last edits until isKnown().
    [[nodiscard]] const TrackColumn *at(unsigned long col) const;
    // All that is wanted of the column, as it is now.
    [[nodiscard]] bool isKnown(unsigned long col) const;
    // How many columns have been computed, those that are no longer kept, too: letters of all of
    // their rows counted, and distances found.
    [[nodiscard]] std::size_t computed() const noexcept { return m_Computed; }
    [[nodiscard]] std::size_t spreads() const noexcept { return m_Spreads; }
    // How many rows have been read for it.
    [[nodiscard]] std::size_t rowsRead() const noexcept { return m_RowsRead; }

private:
    using Clock = std::chrono::steady_clock;

    struct Kept
    {
        TrackColumn column;
        // As it is now.
        bool hasCounts = false;
        bool hasSpread = false;
        // What follows from the counts is that of these counts.
        bool isScored = true;
    };
    enum class Stale { Counts, Spread, Both };

    static constexpr unsigned long kAllColumns = std::numeric_limits<unsigned long>::max();

    [[nodiscard]] unsigned long wantedEnd() const noexcept { return std::min(m_End, m_Width); }
    [[nodiscard]] bool hasPass() const noexcept { return m_PassBegin < m_PassEnd; }
    [[nodiscard]] bool lacksCounts(unsigned long col) const;
    [[nodiscard]] bool lacksSpread(unsigned long col) const;
    void beginPass();
    void endPass();
    void giveUpPass() noexcept { m_PassEnd = m_PassBegin; }
    void addRow(const TAMBO::Alignment &alignment);
    // False when it is too late to go on.
    bool sumUp(Clock::time_point end);
    void skipKnown();
    void beginAgain();

    void takeIn(const TAMBO::Alignment &alignment, const std::vector<RowEdit> &edits);
    void takeIn(const TAMBO::Alignment &alignment, const RowEdit &edit);
    void apply(const TAMBO::LayoutChange &change);
    void replaceColumns(const TAMBO::LayoutChange &change);
    void setStale(unsigned long begin, unsigned long end, Stale what);
    void cutAt(unsigned long width);

    // Scored when somebody looks.
    mutable std::unordered_map<unsigned long, Kept> m_Kept;
    std::size_t m_Computed = 0;
    std::size_t m_Spreads = 0;
    std::size_t m_RowsRead = 0;
    bool m_WantsSpread = false;
    // What the alignment and the structures were like; nothing before the first look.
    std::optional<std::uint64_t> m_Revision;
    std::uint64_t m_Structures = 0;
    unsigned long m_Width = kAllColumns;
    // Those that are wanted, as far as there are such, and the first of them that is not known.
    unsigned long m_Begin = 0;
    unsigned long m_End = 0;
    unsigned long m_Next = 0;
    // Those that are being computed, what of them, and in which row that goes on.
    unsigned long m_PassBegin = 0;
    unsigned long m_PassEnd = 0;
    bool m_PassCounts = false;
    bool m_PassSpread = false;
    unsigned long m_Row = 0;
    std::vector<ColumnCounts> m_Counts;
    std::vector<SpreadSum> m_Sums;
    std::size_t m_NextSum = 0;
    std::vector<TAMBO::AlignmentCell> m_Cells;
    std::vector<TAMBO::Vertex> m_Positions;
};

} // namespace companion
