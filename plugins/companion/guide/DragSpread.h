// SPDX-License-Identifier: GPL-3.0-or-later
// How far apart residues would lie in space if what is held was let go: over the pointer, and over
// the columns beside it.
#pragma once

#include "GapMove.h"
#include "SpreadTable.h"

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

namespace companion {

// What letting go would change.
struct PlaceSpread
{
    // Of the columns whose cells would change.
    MeanOfColumns before;
    MeanOfColumns after;

    // Of the alignment, which has that mean as it is.
    [[nodiscard]] MeanOfColumns total(const MeanOfColumns &all) const noexcept
    {
        return {all.sum + (after.sum - before.sum), all.columns + after.columns - before.columns};
    }
};

// A column that moves by a place costs the distances of one residue to all others that stand there
// now and to those that come. Nothing is added up over the steps of a drag, so that no error is.
class DragSpread
{
public:
    // On each side of the pointer.
    static constexpr unsigned long kReach = 10;
    // Of columns that would change, so many places of the rows that stay are kept.
    static constexpr std::size_t kMostPlaces = std::size_t(1) << 21;

    // Something is held.
    void begin(MovesAt movesAt);
    void end();
    // The pointer is over the column.
    void aim(const TAMBO::Alignment &alignment, unsigned long column);
    // Goes on for about so long, first with what is over the pointer; false when all is known.
    bool goOn(const TAMBO::Alignment &alignment, SpreadTable &table,
              std::chrono::microseconds most);

    // What is over the pointer.
    [[nodiscard]] const GapMoves &moves() const noexcept { return m_Live.moves; }
    // The columns that would change, half-open.
    [[nodiscard]] unsigned long changedBegin() const noexcept { return m_Live.begin; }
    [[nodiscard]] unsigned long changedEnd() const noexcept { return m_Live.end; }
    // Nothing as long as it is not known.
    [[nodiscard]] std::optional<PlaceSpread> live() const;
    // What a column of these would be; as live().
    [[nodiscard]] std::optional<PairSum> liveAt(unsigned long col) const;
    // Where within reach of the pointer the alignment's mean would be least, of equal ones the
    // nearest; nothing as long as one of them is not known.
    [[nodiscard]] std::optional<unsigned long> least(const MeanOfColumns &all) const;
    // Of a column that is known.
    [[nodiscard]] std::optional<PlaceSpread> at(unsigned long column) const;
    // How often the distances of a residue to all others of its column have been found.
    [[nodiscard]] std::size_t sums() const noexcept { return m_Sums; }

private:
    using Clock = std::chrono::steady_clock;

    struct Task
    {
        unsigned long column = 0;
        GapMoves moves;
        unsigned long begin = 0;
        unsigned long end = 0;
        // The next one of them to be found.
        unsigned long next = 0;
        PlaceSpread spread;
        // Of the rows that move, from begin on.
        std::vector<std::vector<TAMBO::Vertex>> positions;
        // What the columns would be; only of what is over the pointer.
        std::vector<PairSum> sums;

        [[nodiscard]] bool isDone() const noexcept { return next >= end; }
    };
    // What stays of a column.
    struct Rest
    {
        SpreadPlaces places;
        double sum = 0;
    };

    [[nodiscard]] Task taskOf(const TAMBO::Alignment &alignment, unsigned long column) const;
    void readMoving(const TAMBO::Alignment &alignment, Task &task) const;
    void setMoving(const SpreadTable &table, const GapMoves &moves);
    void keep(const TAMBO::Alignment &alignment, const SpreadTable &table, unsigned long begin,
              unsigned long end);
    [[nodiscard]] PairSum sumAfter(const Task &task, unsigned long col);
    // False when it was too late to come to its end.
    bool goOn(const TAMBO::Alignment &alignment, const SpreadTable &table, Task &task, bool isLive,
              Clock::time_point end);
    // The nearest one within reach that is not known.
    [[nodiscard]] std::optional<unsigned long> missing() const;
    template <typename Visit> void forEachInReach(Visit visit) const;

    MovesAt m_MovesAt;
    std::size_t m_TableRevision = 0;
    unsigned long m_Width = 0;
    Task m_Live;
    std::optional<Task> m_Other;
    std::map<unsigned long, PlaceSpread> m_Known;
    // Rows with positions that move, over one of the columns at least.
    std::vector<unsigned long> m_Moving;
    std::unordered_map<unsigned long, Rest> m_Rests;
    std::size_t m_Places = 0;
    std::size_t m_Sums = 0;
    std::vector<TAMBO::Vertex> m_Row;
    std::vector<TAMBO::Vertex> m_Now;
};

} // namespace companion
