// SPDX-License-Identifier: GPL-3.0-or-later
// How far apart the residues of each column of an alignment lie in space, kept as it is edited.
#pragma once

#include "Alignment.h"
#include "LayoutChanges.h"
#include "SpreadSum.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace companion {

// The distances of the CA atoms of a column.
struct PairSum
{
    std::uint32_t positions = 0;
    // Over all pairs, in Angstrom.
    double sum = 0;

    // A column of fewer has no distance.
    [[nodiscard]] bool hasMean() const noexcept { return positions > 1; }
    [[nodiscard]] double mean() const noexcept
    {
        const double count = positions;
        return hasMean() ? sum / (count * (count - 1) / 2) : 0;
    }

    friend bool operator==(const PairSum &, const PairSum &) = default;
};

// The mean over the columns that have one.
struct MeanOfColumns
{
    double sum = 0;
    std::size_t columns = 0;

    void add(const PairSum &column) noexcept
    {
        sum += column.mean();
        columns += column.hasMean() ? 1 : 0;
    }
    [[nodiscard]] std::optional<double> value() const noexcept
    {
        return columns == 0 ? std::nullopt : std::optional(sum / double(columns));
    }
};

// In slices, as an alignment may have any number of columns and of rows with structures. Edits
// touch some columns, and the others keep their sums.
class SpreadTable
{
public:
    // Read in one pass over the rows.
    static constexpr unsigned long kAtOnce = 64;

    // The alignment has become another one.
    void clear();
    // These columns first; half-open.
    void want(unsigned long begin, unsigned long end);
    // Takes in what has been edited or moved in space since the last call.
    void follow(const TAMBO::Alignment &alignment);
    // Goes on for about so long; false when everything is known. The alignment is the same one
    // until clear().
    bool goOn(const TAMBO::Alignment &alignment, std::chrono::microseconds most);

    // In ascending order; empty as long as they are being looked for.
    [[nodiscard]] const std::vector<unsigned long> &rows() const noexcept { return m_Rows; }
    [[nodiscard]] bool hasRows() const noexcept { return m_NextRow == kNone; }
    // Of columns behind the last one, which have only gaps, too.
    [[nodiscard]] bool isKnown(unsigned long col) const noexcept;
    [[nodiscard]] bool areKnown(unsigned long begin, unsigned long end) const noexcept;
    [[nodiscard]] PairSum at(unsigned long col) const noexcept;
    // Nothing until all columns are known.
    [[nodiscard]] std::optional<MeanOfColumns> total() const noexcept;
    // How many columns have been found.
    [[nodiscard]] std::size_t found() const noexcept { return m_Found; }
    // Grows when anything that was known is not any more.
    [[nodiscard]] std::size_t revision() const noexcept { return m_Revision; }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr unsigned long kNone = ~0UL;

    struct Column
    {
        PairSum pairs;
        bool isKnown = false;
    };

    void forgetAll(const TAMBO::Alignment &alignment);
    void forget(unsigned long begin, unsigned long end);
    bool takeIn(const TAMBO::Alignment &alignment, const TAMBO::LayoutChange &change);
    void findRows(const TAMBO::Alignment &alignment, Clock::time_point end);
    // The next column from one on that is not known, and before an end.
    [[nodiscard]] unsigned long unknown(unsigned long begin, unsigned long end) const noexcept;
    bool beginPass();
    // False when it was too late to come to its end.
    bool readRows(const TAMBO::Alignment &alignment, Clock::time_point end);
    bool sumUp(Clock::time_point end);
    void giveUpPass() noexcept { m_PassEnd = m_PassBegin; }

    std::vector<Column> m_Columns;
    std::size_t m_Unknown = 0;
    MeanOfColumns m_Total;
    std::size_t m_Found = 0;
    std::size_t m_Revision = 0;
    std::optional<std::uint64_t> m_Layout;
    std::uint64_t m_Structures = 0;
    // With positions; and the next one to be looked at.
    std::vector<unsigned long> m_Rows;
    unsigned long m_NextRow = 0;
    std::pair<unsigned long, unsigned long> m_Wanted{0, 0};
    // All before are known.
    unsigned long m_NextColumn = 0;
    // What is being read, and how far that is.
    unsigned long m_PassBegin = 0;
    unsigned long m_PassEnd = 0;
    std::size_t m_PassRow = 0;
    std::size_t m_PassSum = 0;
    std::vector<SpreadSum> m_Sums;
    std::vector<TAMBO::Vertex> m_Positions;
};

} // namespace companion
