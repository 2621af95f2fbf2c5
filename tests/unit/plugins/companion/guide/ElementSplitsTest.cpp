// SPDX-License-Identifier: GPL-3.0-or-later
// Which helices and strands a gap would split, against the residues that stand beside it when it
// has been let go.
#include "ElementSplits.h"

#include "guide/FamilyInSpace.h"

#include <set>

namespace ElementSplitsTest {

using companion::GapMove;
using companion::GapMoves;
using companion::movesOf;
using companion::nearestWhole;
using companion::splitBy;

class SplitElements : public FamilyInSpace
{
protected:
    // Of elements of the row that have gaps between two of their residues which follow each other.
    static std::set<const TAMBO::Compound *> plainSplits(const TAMBO::Alignment &alignment,
                                                         unsigned long row, const GapMove &gaps)
    {
        const auto elementAt = [&](unsigned long col) -> const TAMBO::Compound * {
            auto *const residue = dynamic_cast<TAMBO::Residue *>(alignment.getItem(row, col));
            return residue == nullptr ? nullptr : residue->GetSSE();
        };
        unsigned long left = gaps.to;
        while (left > 0 && alignment.letterAt(row, left) == '\0')
            --left;
        unsigned long right = gaps.to + gaps.count - 1;
        while (right < alignment.width() && alignment.letterAt(row, right) == '\0')
            ++right;
        const TAMBO::Compound *const one = elementAt(left);
        const bool isSplit = one != nullptr && one == elementAt(right);
        return isSplit ? std::set{one} : std::set<const TAMBO::Compound *>();
    }
    TAMBO::Alignment &oneRow(const std::string &text)
    {
        return alignmentOf({{member("m", randomFold(14, 1)).chain(0), text}});
    }
};

TEST_F(SplitElements, AreThoseWithResiduesOnBothSidesWhenItHasBeenLetGo)
{
    TAMBO::Alignment &alignment = family(6, 16, 26);
    int splits = 0;
    int moved = 0;
    for (int round = 0; round < 1500; ++round) {
        SCOPED_TRACE(round);
        const TAMBO::GapDrag press = anyPress(alignment);
        const unsigned long column = below(alignment.width());
        const GapMoves moves = movesOf(alignment, press, column);
        const auto found = splitBy(alignment, moves);
        letGo(alignment, press, column);
        if (moves.empty()) {
            ASSERT_FALSE(found);
            continue;
        }
        std::set<const TAMBO::Compound *> expected;
        // At the end of the row there are gaps alone.
        if (moves[0].to < alignment.width())
            expected = plainSplits(alignment, moves[0].row, moves[0]);
        ASSERT_EQ(found.has_value(), !expected.empty());
        if (found) {
            ASSERT_TRUE(expected.contains(found->element));
        }
        splits += found ? 1 : 0;
        ++moved;
        if (alignment.width() > 40)
            while (history.canUndo())
                history.undo();
    }
    EXPECT_GT(splits, 200);
    EXPECT_GT(moved - splits, 200);
}

TEST_F(SplitElements, TwoStrandsThatTouchAreNotSplitBetweenThem)
{
    // Strands 7 to 9 and 10 to 12, by number.
    TAMBO::Alignment &alignment = oneRow("-AAAAAAAAAAAAAA");
    EXPECT_FALSE(splitBy(alignment, GapMove{0, 0, 1, 9}));
    EXPECT_TRUE(splitBy(alignment, GapMove{0, 0, 1, 8}));
    EXPECT_TRUE(splitBy(alignment, GapMove{0, 0, 1, 10}));
}

TEST_F(SplitElements, AreNamedByTheirKindResiduesAndChain)
{
    TAMBO::Alignment &alignment = oneRow("-AAAAAAAAAAAAAA");
    const auto helix = splitBy(alignment, GapMove{0, 0, 1, 3});
    ASSERT_TRUE(helix);
    EXPECT_EQ(companion::splitText(alignment, *helix), QString("splits helix 2–5 of chain A"));
    const auto strand = splitBy(alignment, GapMove{0, 0, 1, 7});
    ASSERT_TRUE(strand);
    EXPECT_EQ(companion::splitText(alignment, *strand), QString("splits strand 7–9 of chain A"));
}

TEST_F(SplitElements, ARowThatIsTiedToAChainHasThoseOfTheChain)
{
    TAMBO::Structure &structure = member("m", randomFold(14, 1));
    TAMBO::Peptide &sequence = peptide("s", std::string(10, 'A'));
    sequence.tie(0, *structure.chain(0), 4, 10);
    TAMBO::Alignment &alignment = alignmentOf({{&sequence, "-AAAAAAAAAA"}});
    // What it has of the helix is its last residue.
    EXPECT_FALSE(splitBy(alignment, GapMove{0, 0, 1, 1}));
    const auto strand = splitBy(alignment, GapMove{0, 0, 1, 3});
    ASSERT_TRUE(strand);
    EXPECT_EQ(companion::splitText(alignment, *strand), QString("splits strand 7–9 of chain A"));
}

TEST_F(SplitElements, TheNearestPlaceThatSplitsNothingIsFoundOnBothSides)
{
    TAMBO::Alignment &alignment = family(4, 40, 56);
    int farther = 0;
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        const TAMBO::GapDrag press = anyPress(alignment);
        const auto movesAt = [&](unsigned long column) {
            return movesOf(alignment, press, column);
        };
        const unsigned long column = below(alignment.width());
        std::optional<unsigned long> expected;
        for (unsigned long to = 0; to < alignment.width(); ++to) {
            const auto far = [column](unsigned long place) {
                return std::max(place, column) - std::min(place, column);
            };
            if (!splitBy(alignment, movesAt(to)) && (!expected || far(to) < far(*expected)))
                expected = to;
        }
        ASSERT_EQ(nearestWhole(alignment, movesAt, column), expected);
        farther += expected && *expected != column ? 1 : 0;
    }
    EXPECT_GT(farther, 20);
}

} // namespace ElementSplitsTest
