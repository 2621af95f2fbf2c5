// SPDX-License-Identifier: GPL-3.0-or-later
// What tracks show of the columns in sight, computed in small parts, so that the window stays quick
// at any number of rows, and kept as long as the alignment is as it was.
#pragma once

#include "Alignment.h"
#include "ColumnCounts.h"
#include "Logo.h"

#include <chrono>
#include <cstddef>
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
};

class TrackColumns
{
public:
    // Beyond so many only those that are wanted stay.
    static constexpr std::size_t kMostKept = 8192;
    // Computed in one pass over the rows.
    static constexpr unsigned long kAtOnce = 64;

    // The alignment has become another.
    void clear();
    // Which columns are to be known; half-open.
    void want(unsigned long begin, unsigned long end);
    // Looks at further rows, for about that time and at one at least; false when all that is wanted
    // is known. The alignment is the same until clear().
    bool goOn(const TAMBO::Alignment &alignment, std::chrono::microseconds most);
    [[nodiscard]] bool isDone() const noexcept { return !hasPass() && m_Next >= m_End; }
    // Null as long as it is not known.
    [[nodiscard]] const TrackColumn *at(unsigned long col) const;
    // How many columns have been computed, those that are no longer kept, too.
    [[nodiscard]] std::size_t computed() const noexcept { return m_Computed; }

private:
    [[nodiscard]] bool hasPass() const noexcept { return m_PassBegin < m_PassEnd; }
    void beginPass();
    void endPass();
    void giveUpPass() noexcept { m_PassEnd = m_PassBegin; }
    void addRow(const TAMBO::Alignment &alignment);
    void skipKnown();

    std::unordered_map<unsigned long, TrackColumn> m_Kept;
    std::size_t m_Computed = 0;
    // Those that are wanted, and the first of them that is not known.
    unsigned long m_Begin = 0;
    unsigned long m_End = 0;
    unsigned long m_Next = 0;
    // Those that are being counted, and in which row that goes on.
    unsigned long m_PassBegin = 0;
    unsigned long m_PassEnd = 0;
    unsigned long m_Row = 0;
    std::vector<ColumnCounts> m_Counts;
    std::vector<TAMBO::AlignmentCell> m_Cells;
};

} // namespace companion
