// SPDX-License-Identifier: GPL-3.0-or-later
#include "Comparison.h"

#include <algorithm>
#include <utility>

namespace companion {

namespace {

using PlaceList = std::vector<std::uint32_t>;

constexpr std::uint32_t kNone = ComparedColumns::kNone;
// PlaceList of residues that are gathered at a time.
constexpr std::size_t kMostGathered = std::size_t(1) << 22;
constexpr unsigned long kFewestColumns = 16;
constexpr unsigned long kMostColumnsAtOnce = 1024;
constexpr std::size_t kCellsBetweenLooks = std::size_t(1) << 18;

std::uint64_t pairsAmong(std::uint64_t residues)
{
    return residues * (residues - (residues > 0 ? 1 : 0)) / 2;
}

// How many of the counts before each place are not 0.
PlaceList filledBefore(const PlaceList &counts)
{
    PlaceList before(counts.size() + 1);
    for (std::size_t i = 0; i < counts.size(); ++i)
        before[i + 1] = before[i] + (counts[i] > 0 ? 1 : 0);
    return before;
}

class Comparing
{
public:
    Comparing(const ComparedLayout &here, const ComparedLayout &there)
        : m_Here(here),
          m_There(there),
          m_HereCounts(here.width),
          m_ThereCounts(there.width),
          m_HereAll(here.width),
          m_ThereAll(there.width),
          m_Only(here.width, kNone),
          m_Least(here.width + 1),
          m_Most(here.width + 1, std::uint32_t(there.width)),
          m_Seen(there.width),
          m_BestCounts(there.width)
    {
        prepare(m_Result.here, here.width);
        prepare(m_Result.there, there.width);
        m_Walks.reserve(rows());
        for (std::size_t row = 0; row < rows(); ++row)
            m_Walks.emplace_back(ResidueWalk(here.rows, row), ResidueWalk(there.rows, row));
    }

    bool run(const std::function<bool(double)> &goOn)
    {
        const unsigned long step = std::clamp<unsigned long>(
            kMostGathered / std::max<std::size_t>(1, rows()), kFewestColumns, kMostColumnsAtOnce);
        const std::size_t between = std::max<std::size_t>(1, kCellsBetweenLooks / step);
        m_Gathered.resize(std::min(step, m_Here.width));
        for (unsigned long begin = 0; begin < m_Here.width; begin += step) {
            const unsigned long end = std::min(begin + step, m_Here.width);
            const auto goesOn = [&] { return goOn(double(begin) / double(m_Here.width)); };
            for (std::size_t row = 0; row < rows(); ++row) {
                if (row % between == 0 && !goesOn())
                    return false;
                gather(row, begin, end);
            }
            for (unsigned long column = begin; column < end; ++column) {
                if (!goesOn())
                    return false;
                count(column, m_Gathered[column - begin]);
            }
        }
        // Behind the last residue that this one has.
        for (std::size_t row = 0; row < rows(); ++row)
            skipThere(row, ~0UL);
        return true;
    }

    Comparison result()
    {
        sumUp();
        findStretches();
        return std::move(m_Result);
    }

private:
    static void prepare(ComparedColumns &columns, unsigned long width)
    {
        columns.mostly.assign(width, kNone);
        columns.isSame.assign(width, 0);
    }

    [[nodiscard]] std::size_t rows() const noexcept { return m_Here.rows.size(); }

    // Before the residue.
    void skipThere(std::size_t row, unsigned long residue)
    {
        const auto cells = m_There.rows.cells(row);
        const auto runs = m_There.rows.residues(row);
        ResidueWalk &walk = m_Walks[row].second;
        for (; !walk.isAtEnd() && walk.residue(runs) < residue; walk.next(cells, runs)) {
            ++m_Result.there.alone;
            ++m_ThereAll[walk.column()];
        }
    }

    void gather(std::size_t row, unsigned long begin, unsigned long end)
    {
        const auto cells = m_Here.rows.cells(row);
        const auto runs = m_Here.rows.residues(row);
        const auto otherCells = m_There.rows.cells(row);
        const auto otherRuns = m_There.rows.residues(row);
        auto &[walk, other] = m_Walks[row];
        for (; !walk.isAtEnd() && walk.column() < end; walk.next(cells, runs)) {
            const unsigned long residue = walk.residue(runs);
            ++m_HereAll[walk.column()];
            if (!other.isAtEnd() && other.residue(otherRuns) < residue)
                skipThere(row, residue);
            if (other.isAtEnd() || other.residue(otherRuns) != residue) {
                ++m_Result.here.alone;
                continue;
            }
            const auto column = std::uint32_t(walk.column());
            const auto place = std::uint32_t(other.column());
            m_Gathered[column - begin].push_back(place);
            ++m_ThereCounts[place];
            ++m_ThereAll[place];
            // A cut behind this residue here is one behind it there, and one before it before it.
            m_Least[column + 1] = std::max(m_Least[column + 1], place + 1);
            m_Most[column] = std::min(m_Most[column], place);
            other.next(otherCells, otherRuns);
        }
    }

    void count(unsigned long column, PlaceList &places)
    {
        m_HereCounts[column] = std::uint32_t(places.size());
        for (const std::uint32_t place : places)
            m_Result.samePairs += m_Seen[place]++;
        std::uint32_t best = kNone;
        std::uint32_t most = 0;
        for (const std::uint32_t place : places) {
            const std::uint32_t seen = std::exchange(m_Seen[place], 0);
            if (seen > most || (seen > 0 && seen == most && place < best)) {
                best = place;
                most = seen;
            }
            if (seen > m_BestCounts[place]) {
                m_BestCounts[place] = seen;
                m_Result.there.mostly[place] = std::uint32_t(column);
            }
        }
        m_Result.here.mostly[column] = best;
        if (most == places.size())
            m_Only[column] = best;
        places.clear();
    }

    // All residues count, so that a reference is not whole when some of it is missing.
    static void sumUp(ComparedColumns &columns, const PlaceList &counts)
    {
        for (const std::uint32_t count : counts) {
            columns.pairs += pairsAmong(count);
            columns.columns += count > 1 ? 1 : 0;
        }
    }

    void sumUp()
    {
        sumUp(m_Result.here, m_HereAll);
        sumUp(m_Result.there, m_ThereAll);
        for (std::size_t column = 0; column < m_Only.size(); ++column) {
            const std::uint32_t only = m_Only[column];
            if (only == kNone || m_HereAll[column] != m_HereCounts[column] ||
                m_ThereAll[only] != m_HereCounts[column])
                continue;
            m_Result.here.isSame[column] = m_Result.there.isSame[only] = 1;
            m_Result.sameColumns += m_HereCounts[column] > 1 ? 1 : 0;
        }
    }

    // A cut goes between two columns here and two there, so that no row has a residue on the one
    // side here and on the other there. What stands between two cuts can be laid out as in the
    // other.
    void findStretches()
    {
        for (std::size_t i = 1; i < m_Least.size(); ++i)
            m_Least[i] = std::max(m_Least[i], m_Least[i - 1]);
        for (std::size_t i = m_Most.size() - 1; i > 0; --i)
            m_Most[i - 1] = std::min(m_Most[i - 1], m_Most[i]);
        const PlaceList here = filledBefore(m_HereCounts);
        const PlaceList there = filledBefore(m_ThereCounts);
        bool isOpen = false;
        std::size_t former = 0;
        for (std::size_t cut = 1; cut < m_Least.size(); ++cut) {
            if (m_Least[cut] > m_Most[cut])
                continue;
            const std::uint32_t columns = here[cut] - here[former];
            const std::uint32_t others = there[m_Least[cut]] - there[m_Least[former]];
            if (columns == 1 && others == 1) {
                isOpen = false;
            } else if (columns > 0) {
                if (!std::exchange(isOpen, true))
                    m_Result.stretches.push_back({former, 0, m_Most[former], 0});
                m_Result.stretches.back().end = cut;
                m_Result.stretches.back().otherEnd = m_Least[cut];
            }
            former = cut;
        }
    }

    const ComparedLayout &m_Here;
    const ComparedLayout &m_There;
    Comparison m_Result;
    // Of each row, here and there.
    std::vector<std::pair<ResidueWalk, ResidueWalk>> m_Walks;
    // Of some columns here, where their residues stand there.
    std::vector<PlaceList> m_Gathered;
    // Of each column, its residues that both have, and all of them.
    PlaceList m_HereCounts;
    PlaceList m_ThereCounts;
    PlaceList m_HereAll;
    PlaceList m_ThereAll;
    // Where all residues of a column stand, if it is one.
    PlaceList m_Only;
    // Where a cut before each column may be there.
    PlaceList m_Least;
    PlaceList m_Most;
    PlaceList m_Seen;
    // How many residues of a column there stand in the one where most of them do.
    PlaceList m_BestCounts;
};

} // namespace

std::optional<Comparison> compare(const ComparedLayout &here, const ComparedLayout &there,
                                  const std::function<bool(double)> &goOn)
{
    Comparing comparing(here, there);
    if (!comparing.run(goOn))
        return std::nullopt;
    return comparing.result();
}

} // namespace companion
