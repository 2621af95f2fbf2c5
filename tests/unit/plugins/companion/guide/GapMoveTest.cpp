// SPDX-License-Identifier: GPL-3.0-or-later
// What is foretold of a drag is what the alignment makes of it.
#include "GapMove.h"

#include "guide/FamilyInSpace.h"

namespace GapMoveTest {

using companion::GapMove;
using companion::GapMoves;
using companion::movesOf;

class MovesOfADrag : public FamilyInSpace
{
protected:
    // Columns of gaps may have come behind the last one, or gone.
    static std::string withoutEnd(std::string row)
    {
        row.erase(row.find_last_not_of('-') + 1);
        return row;
    }
    // Residues are told apart by their numbers.
    static std::vector<const TAMBO::Compound *> cellsOf(const TAMBO::Alignment &alignment,
                                                        unsigned long row, unsigned long end)
    {
        std::vector<const TAMBO::Compound *> cells;
        for (unsigned long col = 0; col < end; ++col)
            cells.push_back(alignment.getItem(row, col));
        return cells;
    }
    TAMBO::Alignment &rows(const std::vector<std::string> &texts)
    {
        std::vector<std::pair<TAMBO::Peptide *, std::string>> given;
        for (const std::string &text : texts)
            given.emplace_back(
                &peptide("p" + std::to_string(given.size()),
                         std::string(std::size_t(std::ranges::count(text, 'A')), 'A')),
                text);
        return alignmentOf(given);
    }
    static GapMoves left(const TAMBO::Alignment &alignment, unsigned long from, unsigned long to)
    {
        return movesOf(alignment, {{0, from}, Qt::LeftButton, from}, to);
    }
    static GapMoves middle(const TAMBO::Alignment &alignment, unsigned long from, unsigned long to)
    {
        return movesOf(alignment, {{0, from}, Qt::MiddleButton, from}, to);
    }
};

TEST_F(MovesOfADrag, TheLeftButtonMovesOneGap)
{
    const TAMBO::Alignment &alignment = rows({"AA---AAA"});
    EXPECT_EQ(left(alignment, 3, 6), (GapMoves{{0, 3, 1, 6}}));
    EXPECT_EQ(left(alignment, 3, 0), (GapMoves{{0, 3, 1, 0}}));
    EXPECT_EQ(left(alignment, 3, 3), GapMoves());
    EXPECT_EQ(left(alignment, 3, 4), GapMoves()) << "to another gap of the run";
}

TEST_F(MovesOfADrag, TheMiddleButtonMovesTheRunAsFarAsTheRowGoes)
{
    const TAMBO::Alignment &alignment = rows({"AA---AAA"});
    EXPECT_EQ(middle(alignment, 3, 4), (GapMoves{{0, 2, 3, 3}}));
    EXPECT_EQ(middle(alignment, 2, 7), (GapMoves{{0, 2, 3, 5}}));
    EXPECT_EQ(middle(alignment, 4, 0), (GapMoves{{0, 2, 3, 0}}));
}

TEST_F(MovesOfADrag, AResidueTakesAlongWhatFollows)
{
    const TAMBO::Alignment &alignment = rows({"A--AA-A--", "AAAAAAAAA"});
    EXPECT_EQ(middle(alignment, 3, 5), (GapMoves{{0, 7, 2, 3}}));
    EXPECT_EQ(middle(alignment, 3, 7), (GapMoves{{0, 7, 4, 3}}))
        << "two come behind the last column";
    EXPECT_EQ(middle(alignment, 3, 2), (GapMoves{{0, 2, 1, 8}}));
    EXPECT_EQ(middle(alignment, 3, 0), (GapMoves{{0, 1, 2, 7}}));
    EXPECT_EQ(middle(alignment, 4, 0), GapMoves()) << "no gap before it";
}

TEST_F(MovesOfADrag, APressInPlaceWithTheMiddleButtonInsertsAGap)
{
    const TAMBO::Alignment &alignment = rows({"AAA-", "AAAA"});
    EXPECT_EQ(middle(alignment, 1, 1), (GapMoves{{0, 3, 1, 1}}));
    EXPECT_EQ(middle(alignment, 3, 3), GapMoves()) << "behind the last residue";
    EXPECT_EQ(movesOf(alignment, {{1, 0}, Qt::MiddleButton, 0}, 0), (GapMoves{{1, 4, 1, 0}}));
}

TEST_F(MovesOfADrag, PlacesOutsideOfTheAlignmentMoveNothing)
{
    const TAMBO::Alignment &alignment = rows({"A-A"});
    EXPECT_EQ(left(alignment, 1, 3), GapMoves());
    EXPECT_EQ(left(alignment, 3, 1), GapMoves());
    EXPECT_EQ(movesOf(alignment, {{1, 0}, Qt::LeftButton, 0}, 1), GapMoves());
}

TEST_F(MovesOfADrag, AnyDragIsForetoldCellByCell)
{
    TAMBO::Alignment &alignment = family(6, 20, 32);
    int changed = 0;
    for (int round = 0; round < 3000; ++round) {
        const TAMBO::GapDrag press = anyPress(alignment);
        const unsigned long column = below(alignment.width());
        SCOPED_TRACE(std::to_string(round) + ": " + std::to_string(press.from.row) + ", " +
                     std::to_string(press.from.col) + " to " + std::to_string(column));
        const GapMoves moves = movesOf(alignment, press, column);
        ASSERT_LE(moves.size(), 1U);
        const unsigned long end = alignment.width() + 64;
        const auto before = cellsOf(alignment, press.from.row, end);
        auto expected = before;
        for (const GapMove &move : moves) {
            EXPECT_EQ(move.row, press.from.row);
            for (unsigned long col = move.begin(); col < move.end(); ++col) {
                const auto source = move.source(col);
                expected[col] = source ? before[*source] : nullptr;
            }
        }
        const auto textBefore = textOf(alignment);
        letGo(alignment, press, column);
        ASSERT_EQ(cellsOf(alignment, press.from.row, end), expected);
        ASSERT_EQ(moves.empty(), withoutEnd(textBefore[press.from.row]) ==
                                     withoutEnd(textOf(alignment)[press.from.row]));
        changed += moves.empty() ? 0 : 1;
        if (alignment.width() > 60)
            while (history.canUndo())
                history.undo();
    }
    EXPECT_GT(changed, 1000);
}

} // namespace GapMoveTest
