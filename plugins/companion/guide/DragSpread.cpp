// SPDX-License-Identifier: GPL-3.0-or-later
#include "DragSpread.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace companion {

namespace {

// Read of the rows that stay between two looks at the clock, and columns at most.
constexpr std::size_t kPlacesAtOnce = 100'000;
constexpr unsigned long kColumnsAtOnce = 64;
// Means that differ by less are equal.
constexpr double kSameMean = 1e-9;

// The distances of some places to each other, and to those that stay.
double sumOf(const std::vector<TAMBO::Vertex> &moving, const SpreadPlaces &others)
{
    double sum = 0;
    SpreadPlaces earlier;
    for (const TAMBO::Vertex &place : moving) {
        sum = others.addDistances(place, 0, sum);
        sum = earlier.addDistances(place, 0, sum);
        earlier.add(place);
    }
    return sum;
}

} // namespace

void DragSpread::begin(MovesAt movesAt)
{
    end();
    m_MovesAt = std::move(movesAt);
}

void DragSpread::end()
{
    m_MovesAt = nullptr;
    m_Live = {};
    m_Other.reset();
    m_Known.clear();
    m_Moving.clear();
    m_Rests.clear();
    m_Places = 0;
}

DragSpread::Task DragSpread::taskOf(const TAMBO::Alignment &alignment, unsigned long column) const
{
    Task task;
    task.column = column;
    task.moves = m_MovesAt(column);
    task.begin = task.moves.empty() ? 0 : alignment.width();
    for (const GapMove &move : task.moves) {
        task.begin = std::min(task.begin, move.begin());
        task.end = std::max(task.end, move.end());
    }
    task.next = task.begin;
    return task;
}

void DragSpread::aim(const TAMBO::Alignment &alignment, unsigned long column)
{
    m_Width = alignment.width();
    m_Live = taskOf(alignment, column);
    m_Other.reset();
}

template <typename Visit> void DragSpread::forEachInReach(Visit visit) const
{
    const unsigned long at = m_Live.column;
    for (unsigned long far = 0; far <= kReach; ++far) {
        if (far <= at && !visit(at - far))
            return;
        if (far > 0 && at + far < m_Width && !visit(at + far))
            return;
    }
}

std::optional<unsigned long> DragSpread::missing() const
{
    std::optional<unsigned long> found;
    forEachInReach([&](unsigned long column) {
        if (!m_Known.contains(column))
            found = column;
        return !found;
    });
    return found;
}

std::optional<PlaceSpread> DragSpread::at(unsigned long column) const
{
    const auto found = m_Known.find(column);
    return found == m_Known.end() ? std::nullopt : std::optional(found->second);
}

std::optional<PlaceSpread> DragSpread::live() const
{
    return m_Live.isDone() ? at(m_Live.column) : std::nullopt;
}

std::optional<PairSum> DragSpread::liveAt(unsigned long col) const
{
    if (!live() || col < m_Live.begin || col >= m_Live.end)
        return std::nullopt;
    return m_Live.sums[col - m_Live.begin];
}

std::optional<unsigned long> DragSpread::least(const MeanOfColumns &all) const
{
    if (missing())
        return std::nullopt;
    std::optional<unsigned long> found;
    double least = 0;
    forEachInReach([&](unsigned long column) {
        const std::optional<double> mean = m_Known.at(column).total(all).value();
        if (mean && (!found || *mean < least - kSameMean)) {
            found = column;
            least = *mean;
        }
        return true;
    });
    return found;
}

// ---- Computing

bool DragSpread::goOn(const TAMBO::Alignment &alignment, SpreadTable &table,
                      std::chrono::microseconds most)
{
    const auto end = Clock::now() + most;
    if (!m_MovesAt)
        return table.goOn(alignment, most);
    table.follow(alignment);
    if (std::exchange(m_TableRevision, table.revision()) != table.revision()) {
        const unsigned long column = m_Live.column;
        begin(std::exchange(m_MovesAt, nullptr));
        aim(alignment, column);
    }
    do {
        const auto left = [end] {
            return std::chrono::duration_cast<std::chrono::microseconds>(end - Clock::now());
        };
        const bool isLive = !live();
        if (!isLive && !m_Other) {
            const std::optional<unsigned long> column = missing();
            if (!column)
                return table.goOn(alignment, left());
            m_Other = taskOf(alignment, *column);
        }
        Task &task = isLive ? m_Live : *m_Other;
        if (!table.areKnown(task.begin, task.end)) {
            table.want(task.begin, task.end);
            table.goOn(alignment, left());
        } else if (goOn(alignment, table, task, isLive, end)) {
            m_Known[task.column] = task.spread;
            if (!isLive)
                m_Other.reset();
        }
    } while (Clock::now() < end);
    return true;
}

void DragSpread::setMoving(const SpreadTable &table, const GapMoves &moves)
{
    std::vector<unsigned long> moving = m_Moving;
    for (const GapMove &move : moves)
        if (std::ranges::binary_search(table.rows(), move.row))
            moving.push_back(move.row);
    std::ranges::sort(moving);
    moving.erase(std::unique(moving.begin(), moving.end()), moving.end());
    if (moving == m_Moving)
        return;
    m_Moving = std::move(moving);
    m_Rests.clear();
    m_Places = 0;
}

void DragSpread::readMoving(const TAMBO::Alignment &alignment, Task &task) const
{
    task.positions.resize(m_Moving.size());
    for (std::size_t i = 0; i < m_Moving.size(); ++i) {
        alignment.readPositions(m_Moving[i], task.begin, task.end, task.positions[i]);
        // Behind the last column there is nothing.
        task.positions[i].resize(task.end - task.begin);
    }
}

// What stays in the columns, which nobody has moved.
void DragSpread::keep(const TAMBO::Alignment &alignment, const SpreadTable &table,
                      unsigned long begin, unsigned long end)
{
    const std::size_t rows = table.rows().size();
    if (m_Places + rows * (end - begin) > kMostPlaces) {
        m_Rests.clear();
        m_Places = 0;
    }
    m_Places += rows * (end - begin);
    std::vector<Rest> rests(end - begin);
    std::vector<std::vector<TAMBO::Vertex>> moving(end - begin);
    for (const unsigned long row : table.rows()) {
        const bool isMoving = std::ranges::binary_search(m_Moving, row);
        m_Row.clear();
        alignment.readPositions(row, begin, end, m_Row);
        for (std::size_t i = 0; i < m_Row.size(); ++i) {
            if (!m_Row[i].isDefined())
                continue;
            if (isMoving)
                moving[i].push_back(m_Row[i]);
            else
                rests[i].places.add(m_Row[i]);
        }
    }
    for (unsigned long col = begin; col < end; ++col) {
        Rest &rest = rests[col - begin];
        // What is left of a difference would not be quite nothing.
        if (rest.places.size() > 1)
            rest.sum = table.at(col).sum - sumOf(moving[col - begin], rest.places);
        m_Rests[col] = std::move(rest);
    }
}

PairSum DragSpread::sumAfter(const Task &task, unsigned long col)
{
    m_Now.clear();
    for (std::size_t i = 0; i < m_Moving.size(); ++i) {
        const auto move = std::ranges::find(task.moves, m_Moving[i], &GapMove::row);
        const bool isChanged =
            move != task.moves.end() && col >= move->begin() && col < move->end();
        const auto source = isChanged ? move->source(col) : std::optional(col);
        if (!source)
            continue;
        const TAMBO::Vertex &place = task.positions[i][*source - task.begin];
        if (place.isDefined())
            m_Now.push_back(place);
    }
    m_Sums += m_Now.size();
    const Rest &rest = m_Rests.at(col);
    return {std::uint32_t(rest.places.size() + m_Now.size()), rest.sum + sumOf(m_Now, rest.places)};
}

bool DragSpread::goOn(const TAMBO::Alignment &alignment, const SpreadTable &table, Task &task,
                      bool isLive, Clock::time_point end)
{
    if (!task.moves.empty())
        setMoving(table, task.moves);
    if (task.positions.empty())
        readMoving(alignment, task);
    const unsigned long atOnce = std::clamp<unsigned long>(
        kPlacesAtOnce / std::max<std::size_t>(1, table.rows().size()), 1, kColumnsAtOnce);
    for (unsigned long &col = task.next; col < task.end; ++col) {
        if (!m_Rests.contains(col)) {
            unsigned long last = col + 1;
            while (last < task.end && last - col < atOnce && !m_Rests.contains(last))
                ++last;
            keep(alignment, table, col, last);
        }
        const PairSum after = sumAfter(task, col);
        task.spread.before.add(table.at(col));
        task.spread.after.add(after);
        if (isLive)
            task.sums.push_back(after);
        if (Clock::now() >= end) {
            ++col;
            break;
        }
    }
    return task.isDone();
}

} // namespace companion
