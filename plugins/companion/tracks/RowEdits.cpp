// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowEdits.h"

#include <algorithm>
#include <map>
#include <utility>

namespace companion {

using TAMBO::LayoutChange;

namespace {

using Changes = std::vector<LayoutChange>;

std::pair<unsigned long, unsigned long> reachOf(const LayoutChange &move)
{
    return {std::min(move.from, move.to), std::max(move.from, move.to) + move.count};
}

std::string lettersOf(const TAMBO::Alignment &alignment, unsigned long row, unsigned long begin,
                      unsigned long end)
{
    std::vector<TAMBO::AlignmentCell> cells;
    alignment.readRow(row, begin, end, cells);
    std::string letters;
    letters.reserve(end - begin);
    for (const TAMBO::AlignmentCell &cell : cells)
        letters += cell.letter;
    letters.resize(end - begin, '\0');
    return letters;
}

// The gaps go back to where they were: they change places with what is between.
void takeBack(const LayoutChange &move, unsigned long begin, std::string &letters)
{
    const auto [first, last] = reachOf(move);
    const auto from = letters.begin() + std::ptrdiff_t(first - begin);
    const auto to = letters.begin() + std::ptrdiff_t(last - begin);
    // Now they are the last ones, or the first ones.
    const auto gaps = std::ptrdiff_t(move.count);
    std::rotate(from, move.from < move.to ? to - gaps : from + gaps, to);
}

std::optional<std::vector<RowEdit>> movedGaps(const TAMBO::Alignment &alignment,
                                              const Changes &changes)
{
    std::map<unsigned long, std::pair<unsigned long, unsigned long>> reaches;
    for (const LayoutChange &change : changes) {
        if (change.kind == LayoutChange::Kind::EndMoved)
            continue;
        if (change.kind != LayoutChange::Kind::GapsMoved)
            return std::nullopt;
        const auto [begin, end] = reachOf(change);
        auto &reach = reaches.try_emplace(change.row, begin, end).first->second;
        reach = {std::min(reach.first, begin), std::max(reach.second, end)};
    }
    std::size_t sum = 0;
    for (const auto &[row, reach] : reaches)
        sum += reach.second - reach.first;
    if (sum > kMostEdited)
        return std::nullopt;
    std::vector<RowEdit> edits;
    for (const auto &[row, reach] : reaches) {
        const auto [begin, end] = reach;
        RowEdit edit{row, begin, {}, lettersOf(alignment, row, begin, end)};
        edit.before = edit.after;
        for (auto change = changes.rbegin(); change != changes.rend(); ++change)
            if (change->kind == LayoutChange::Kind::GapsMoved && change->row == row)
                takeBack(*change, begin, edit.before);
        edits.push_back(std::move(edit));
    }
    return edits;
}

// Those that come later stand behind those before, so each is where it was put.
std::optional<std::vector<RowEdit>> newRows(const TAMBO::Alignment &alignment,
                                            const Changes &changes)
{
    std::vector<RowEdit> edits;
    const unsigned long width = alignment.width();
    for (const LayoutChange &change : changes) {
        const bool isBehind = edits.empty() || edits.back().row < change.row;
        if (change.kind == LayoutChange::Kind::EndMoved && change.oldCount == 0)
            continue;
        if (change.kind != LayoutChange::Kind::RowAdded || !isBehind ||
            (edits.size() + 1) * width > kMostEdited)
            return std::nullopt;
        edits.push_back({change.row, 0, std::string(width, '\0'),
                         lettersOf(alignment, change.row, 0, width), true});
    }
    return edits;
}

} // namespace

std::optional<std::vector<RowEdit>> rowEdits(const TAMBO::Alignment &alignment,
                                             const Changes &changes)
{
    auto moved = movedGaps(alignment, changes);
    return moved ? std::move(moved) : newRows(alignment, changes);
}

} // namespace companion
