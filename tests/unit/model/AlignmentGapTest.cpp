// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentFixture.h"

using TAMBO::Alignment;

namespace AlignmentGapTest {

class AlignmentGap : public AlignmentFixture
{
protected:
    enum class Kind { Point, Range };

    // What a row of its own alignment, with an untouched row beside it, becomes. An alignment that
    // grows gives the untouched row a gap at its end, nothing else.
    std::string moved(const std::string &row, unsigned long from, unsigned long to, Kind kind)
    {
        const std::string other(row.size(), 'W');
        Alignment &sample = alignment({row, other});
        sample.moveGap(0, from, to, kind == Kind::Point);
        return changed(sample, row, other);
    }
    std::string inserted(const std::string &row, unsigned long column)
    {
        const std::string other(row.size(), 'W');
        Alignment &sample = alignment({row, other});
        sample.insertGap(0, column);
        return changed(sample, row, other);
    }

private:
    std::string changed(Alignment &sample, const std::string &row, const std::string &other)
    {
        const Texts after = rowsOf(sample);
        EXPECT_EQ(after[1], other + std::string(after[0].size() - other.size(), '-'));
        EXPECT_EQ(sample.width(), after[0].size());
        EXPECT_EQ(history.undoCount(), after[0] == row ? 0U : 1U) << "one step if anything changes";
        if (history.undoCount() == 1) {
            history.undo();
            EXPECT_EQ(rowsOf(sample), (Texts{row, other}));
            history.redo();
            EXPECT_EQ(rowsOf(sample), after);
        }
        return after[0];
    }
};

// ---- insertGap

TEST_F(AlignmentGap, InsertedGapMovesTheRestOfTheRowRight)
{
    EXPECT_EQ(inserted("ACD-", 0), "-ACD");
    EXPECT_EQ(inserted("ACD-", 1), "A-CD");
    EXPECT_EQ(inserted("ACD-", 2), "AC-D");
    EXPECT_EQ(inserted("A-CD--", 1), "A--CD-");
    EXPECT_EQ(inserted("A-CD--", 2), "A--CD-");
}

TEST_F(AlignmentGap, InsertedGapWidensTheAlignmentOnlyWhenTheLastCellIsAResidue)
{
    EXPECT_EQ(inserted("ACD", 1), "A-CD");
    EXPECT_EQ(inserted("A--CD", 1), "A---CD") << "gaps inside the row give no room";
    EXPECT_EQ(inserted("A", 0), "-A");
    EXPECT_EQ(inserted("AC-", 0), "-AC");
}

TEST_F(AlignmentGap, GapInsertedAmongTheGapsAtTheEndChangesNothing)
{
    EXPECT_EQ(inserted("AC--", 2), "AC--");
    EXPECT_EQ(inserted("AC--", 3), "AC--");
    EXPECT_EQ(inserted("---", 0), "---");
}

TEST_F(AlignmentGap, GapIsInsertedAtWordBoundaries)
{
    for (const std::size_t width : {63U, 64U, 65U, 127U, 128U, 129U}) {
        std::string letters;
        for (std::size_t i = 0; i < width; ++i)
            letters += char('A' + i % 25);
        for (const std::size_t column : {std::size_t(0), width / 2, width - 2, width - 1}) {
            std::string expected = letters;
            expected.insert(column, 1, '-');
            EXPECT_EQ(inserted(letters, column), expected);
            EXPECT_EQ(inserted(letters + "-", column), expected);
        }
    }
}

TEST_F(AlignmentGap, InsertingOutOfBoundsChangesNothing)
{
    Alignment &sample = alignment({"AC", "DE"});
    sample.insertGap(2, 0);
    sample.insertGap(0, 2);
    sample.insertGap(0, ~0UL);
    sample.insertGap(~0UL, 0);
    EXPECT_EQ(rowsOf(sample), (Texts{"AC", "DE"}));
    EXPECT_EQ(history.undoCount(), 0U);
}

// ---- moveGap, point

TEST_F(AlignmentGap, PointMovePutsTheOneGapWhereItIsWanted)
{
    EXPECT_EQ(moved("A-CDE", 1, 3, Kind::Point), "ACD-E");
    EXPECT_EQ(moved("A-CDE", 1, 4, Kind::Point), "ACDE-");
    EXPECT_EQ(moved("A-CDE", 1, 0, Kind::Point), "-ACDE");
    EXPECT_EQ(moved("ACDE-", 4, 2, Kind::Point), "AC-DE");
    EXPECT_EQ(moved("-ACDE", 0, 4, Kind::Point), "ACDE-");
    EXPECT_EQ(moved("ACDE-", 4, 0, Kind::Point), "-ACDE");
}

TEST_F(AlignmentGap, PointMoveTakesOneGapOutOfARun)
{
    EXPECT_EQ(moved("A---CDE", 2, 4, Kind::Point), "A--C-DE");
    EXPECT_EQ(moved("A---CDE", 1, 5, Kind::Point), "A--CD-E");
    EXPECT_EQ(moved("A---CDE", 3, 0, Kind::Point), "-A--CDE");
}

TEST_F(AlignmentGap, PointMovePassesResiduesAndGapsInTheirOrder)
{
    EXPECT_EQ(moved("-AC-DE-F", 0, 6, Kind::Point), "AC-DE--F");
    EXPECT_EQ(moved("AC-DE-F-", 7, 1, Kind::Point), "A-C-DE-F");
}

TEST_F(AlignmentGap, PointMoveAmongGapsChangesNothing)
{
    EXPECT_EQ(moved("A----C", 1, 4, Kind::Point), "A----C");
    EXPECT_EQ(moved("A----C", 4, 1, Kind::Point), "A----C");
    EXPECT_EQ(moved("AC---", 2, 4, Kind::Point), "AC---");
    EXPECT_EQ(moved("----", 0, 3, Kind::Point), "----");
}

// ---- moveGap, range

TEST_F(AlignmentGap, RangeMoveTakesTheWholeRunAlong)
{
    EXPECT_EQ(moved("A--CDEF", 1, 3, Kind::Range), "ACD--EF");
    EXPECT_EQ(moved("A--CDEF", 2, 4, Kind::Range), "ACD--EF") << "wherever the run is taken";
    EXPECT_EQ(moved("ACD--EF", 3, 1, Kind::Range), "A--CDEF");
    EXPECT_EQ(moved("ACD--EF", 4, 3, Kind::Range), "AC--DEF");
}

TEST_F(AlignmentGap, RangeMoveStopsAtTheRowsEnds)
{
    EXPECT_EQ(moved("A--CDEF", 2, 5, Kind::Range), "ACDE--F");
    EXPECT_EQ(moved("A--CDEF", 1, 6, Kind::Range), "ACDEF--");
    EXPECT_EQ(moved("AC---DE", 2, 6, Kind::Range), "ACDE---");
    EXPECT_EQ(moved("AC---DE", 4, 0, Kind::Range), "---ACDE");
    EXPECT_EQ(moved("AC--D", 3, 0, Kind::Range), "--ACD");
}

TEST_F(AlignmentGap, RangeMoveOfARunAtAnEndGoesOnlyTheOtherWay)
{
    EXPECT_EQ(moved("--ACD", 1, 0, Kind::Range), "--ACD");
    EXPECT_EQ(moved("ACD--", 3, 4, Kind::Range), "ACD--");
    EXPECT_EQ(moved("--ACD", 0, 2, Kind::Range), "AC--D");
    EXPECT_EQ(moved("ACD--", 4, 2, Kind::Range), "A--CD");
    EXPECT_EQ(moved("----", 1, 3, Kind::Range), "----");
}

TEST_F(AlignmentGap, ResiduesThatARunPassesChangeSidesAndOtherRunsKeepTheirOrder)
{
    EXPECT_EQ(moved("A--C-DE-F", 1, 4, Kind::Range), "AC-D--E-F");
    EXPECT_EQ(moved("A-CD--E", 5, 2, Kind::Range), "A--"
                                                   "-CDE");
    EXPECT_EQ(moved("A-CD--E", 4, 2, Kind::Range), "A---CDE");
}

TEST_F(AlignmentGap, RunMovesAcrossWordBoundaries)
{
    for (const std::size_t width : {63U, 64U, 65U, 127U, 128U, 129U}) {
        std::string letters;
        for (std::size_t i = 0; i + 3 < width; ++i)
            letters += char('A' + i % 25);
        EXPECT_EQ(moved("---" + letters, 1, width - 2, Kind::Range), letters + "---");
        EXPECT_EQ(moved(letters + "---", width - 1, 2, Kind::Range), "---" + letters);
        EXPECT_EQ(moved("---" + letters, 0, width - 1, Kind::Point), "--" + letters + "-");
    }
}

TEST_F(AlignmentGap, UndoOfARunThatJoinedAnotherPartsThemAgain)
{
    Alignment &sample = alignment({"A--CD--E"});
    sample.moveGap(0, 1, 3, false);
    EXPECT_EQ(rowsOf(sample), (Texts{"ACD----E"}));
    history.undo();
    EXPECT_EQ(rowsOf(sample), (Texts{"A--CD--E"}));
    history.redo();
    EXPECT_EQ(rowsOf(sample), (Texts{"ACD----E"}));
}

// ---- moveGap from a residue

TEST_F(AlignmentGap, ResidueSlidesRightByGapsPutInBeforeIt)
{
    for (const Kind kind : {Kind::Point, Kind::Range}) {
        EXPECT_EQ(moved("ACD--", 1, 3, kind), "A--CD");
        EXPECT_EQ(moved("ACD--", 0, 1, kind), "-ACD-");
        EXPECT_EQ(moved("A-CD-", 2, 3, kind), "A--CD");
    }
}

TEST_F(AlignmentGap, ResidueThatSlidesRightWidensTheAlignmentAsFarAsNeeded)
{
    for (const Kind kind : {Kind::Point, Kind::Range}) {
        EXPECT_EQ(moved("ACD", 1, 2, kind), "A-CD");
        EXPECT_EQ(moved("ACD", 0, 2, kind), "--ACD");
        EXPECT_EQ(moved("ACDE-", 1, 4, kind), "A---CDE");
    }
}

TEST_F(AlignmentGap, ResidueSlidesLeftIntoTheGapsBeforeItAndNoFurther)
{
    for (const Kind kind : {Kind::Point, Kind::Range}) {
        EXPECT_EQ(moved("A---CD", 4, 2, kind), "A-CD--");
        EXPECT_EQ(moved("A---CD", 4, 1, kind), "ACD---");
        EXPECT_EQ(moved("A---CD", 4, 0, kind), "ACD---");
        EXPECT_EQ(moved("AE--CD", 4, 0, kind), "AECD--");
        EXPECT_EQ(moved("--ACD", 2, 0, kind), "ACD--");
        EXPECT_EQ(moved("--A-CD", 4, 1, kind), "--ACD-");
    }
}

TEST_F(AlignmentGap, ResidueBesideAResidueDoesNotSlideLeft)
{
    for (const Kind kind : {Kind::Point, Kind::Range}) {
        EXPECT_EQ(moved("-ACD", 2, 0, kind), "-ACD");
        EXPECT_EQ(moved("ACD", 1, 0, kind), "ACD");
    }
}

// ---- Refusals

TEST_F(AlignmentGap, MovingOutOfBoundsOrNowhereChangesNothing)
{
    Alignment &sample = alignment({"A-C", "DEF"});
    for (const bool point : {true, false}) {
        sample.moveGap(2, 1, 0, point);
        sample.moveGap(0, 3, 0, point);
        sample.moveGap(0, 1, 3, point);
        sample.moveGap(0, 0, 3, point);
        sample.moveGap(0, ~0UL, 0, point);
        sample.moveGap(0, 1, ~0UL, point);
        sample.moveGap(0, 1, 1, point);
        sample.moveGap(0, 0, 0, point);
    }
    EXPECT_EQ(rowsOf(sample), (Texts{"A-C", "DEF"}));
    EXPECT_EQ(history.undoCount(), 0U);
}

TEST_F(AlignmentGap, AnotherRowOfTheSameSequenceKeepsItsCells)
{
    TAMBO::Peptide &shared = peptide("shared", "ACD");
    Alignment &sample = alignmentOf({{&shared, "A-CD"}, {&shared, "A-CD"}});
    sample.moveGap(0, 1, 3, true);
    EXPECT_EQ(rowsOf(sample), (Texts{"ACD-", "A-CD"}));
}

TEST_F(AlignmentGap, ResiduesKeepTheirIdentityWhenGapsMove)
{
    Alignment &sample = alignment({"A-AA"});
    TAMBO::Compound *const second = sample.getItem(0, 2);
    sample.moveGap(0, 1, 3, true);
    EXPECT_EQ(sample.getItem(0, 1), second);
    sample.insertGap(0, 0);
    EXPECT_EQ(sample.getItem(0, 2), second);
}

TEST_F(AlignmentGap, StepOfAGapMoveIsSmallWhateverTheSize)
{
    const std::string wide = std::string(5000, 'A') + "-" + std::string(5000, 'C');
    Alignment &sample = alignment({wide, wide, wide});
    sample.moveGap(1, 5000, 17, true);
    ASSERT_EQ(history.last().size(), 1U);
    EXPECT_LE(history.last().front()->bytes() + 2 * sizeof(void *), 100U);
    EXPECT_EQ(history.last().front()->subject(), &sample);
    EXPECT_STREQ(history.last().front()->kind(), "move gap");
    sample.insertGap(1, 4000);
    EXPECT_LE(history.last().front()->bytes(), 100U);
    EXPECT_STREQ(history.last().front()->kind(), "insert gap");
}

} // namespace AlignmentGapTest
