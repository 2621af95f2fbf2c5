// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/model/AlignmentFixture.h"

using TAMBO::Alignment;

namespace AlignmentGapTest {

class AlignmentGap : public AlignmentFixture
{
protected:
    // What a row of its own alignment, with an untouched row beside it, becomes. An alignment that
    // grows gives the untouched row a gap at its end, nothing else.
    std::string moved(const std::string &row, unsigned long from, unsigned long to, bool isPoint)
    {
        const std::string other(row.size(), 'W');
        Alignment &sample = alignment({row, other});
        sample.moveGap(0, from, to, isPoint);
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

template <typename Case> std::string nameOf(const testing::TestParamInfo<Case> &info)
{
    return info.param.name;
}

// ---- insertGap

struct Insertion
{
    const char *name;
    const char *row;
    unsigned long column;
    const char *expected;
};

void PrintTo(const Insertion &insertion, std::ostream *stream)
{
    *stream << insertion.row << " at " << insertion.column;
}

class AnInsertedGap : public AlignmentGap, public testing::WithParamInterface<Insertion>
{
};

TEST_P(AnInsertedGap, InARow)
{
    const Insertion &insertion = GetParam();
    EXPECT_EQ(inserted(insertion.row, insertion.column), insertion.expected);
}

// clang-format off
const Insertion kInsertions[] = {
    {"MovesTheWholeRowFromItsFirstCell", "ACD-", 0, "-ACD"},
    {"MovesTheRestOfTheRowRight", "ACD-", 1, "A-CD"},
    {"MovesTheLastResidueIntoTheGapBehindIt", "ACD-", 2, "AC-D"},
    {"JoinsAGapFromItsLeft", "A-CD--", 1, "A--CD-"},
    {"JoinsAGapFromItsRight", "A-CD--", 2, "A--CD-"},
    {"WidensTheAlignmentWhenTheLastCellIsAResidue", "ACD", 1, "A-CD"},
    {"FindsNoRoomInGapsInsideTheRow", "A--CD", 1, "A---CD"},
    {"WidensARowOfOneResidue", "A", 0, "-A"},
    {"TakesTheGapAtTheEndInPlaceOfAColumn", "AC-", 0, "-AC"},
    {"AtTheFirstGapOfTheEndChangesNothing", "AC--", 2, "AC--"},
    {"AtTheLastCellOfTheEndChangesNothing", "AC--", 3, "AC--"},
    {"InARowWithoutResiduesChangesNothing", "---", 0, "---"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(AlignmentGap, AnInsertedGap, testing::ValuesIn(kInsertions),
                         nameOf<Insertion>);

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

// ---- moveGap

struct Move
{
    const char *name;
    const char *row;
    unsigned long from;
    unsigned long to;
    const char *expected;
};

void PrintTo(const Move &move, std::ostream *stream)
{
    *stream << move.row << " from " << move.from << " to " << move.to;
}

class MoveInARow : public AlignmentGap, public testing::WithParamInterface<Move>
{
protected:
    std::string moved(bool isPoint)
    {
        const Move &move = GetParam();
        return AlignmentGap::moved(move.row, move.from, move.to, isPoint);
    }
};

using APointMoveTakes = MoveInARow;
using ARangeMoveTakes = MoveInARow;
using AResidueSlides = MoveInARow;

TEST_P(APointMoveTakes, Along)
{
    EXPECT_EQ(moved(true), GetParam().expected);
}

TEST_P(ARangeMoveTakes, Along)
{
    EXPECT_EQ(moved(false), GetParam().expected);
}

// From a residue both kinds of move do the same.
TEST_P(AResidueSlides, ByAPointMove)
{
    EXPECT_EQ(moved(true), GetParam().expected);
}

TEST_P(AResidueSlides, ByARangeMove)
{
    EXPECT_EQ(moved(false), GetParam().expected);
}

// clang-format off
const Move kPointMoves[] = {
    {"OneGapRight", "A-CDE", 1, 3, "ACD-E"},
    {"OneGapToTheLastCell", "A-CDE", 1, 4, "ACDE-"},
    {"OneGapLeftToTheFirstCell", "A-CDE", 1, 0, "-ACDE"},
    {"OneGapFromTheEndLeft", "ACDE-", 4, 2, "AC-DE"},
    {"OneGapFromTheFirstCellToTheLast", "-ACDE", 0, 4, "ACDE-"},
    {"OneGapFromTheLastCellToTheFirst", "ACDE-", 4, 0, "-ACDE"},
    {"OneGapOutOfTheMiddleOfARunToItsRight", "A---CDE", 2, 4, "A--C-DE"},
    {"TheFirstGapOfARunToItsRight", "A---CDE", 1, 5, "A--CD-E"},
    {"TheLastGapOfARunToItsLeft", "A---CDE", 3, 0, "-A--CDE"},
    {"OneGapRightPastGapsAndResiduesInTheirOrder", "-AC-DE-F", 0, 6, "AC-DE--F"},
    {"OneGapLeftPastGapsAndResiduesInTheirOrder", "AC-DE-F-", 7, 1, "A-C-DE-F"},
    {"OneGapRightInItsRunChangesNothing", "A----C", 1, 4, "A----C"},
    {"OneGapLeftInItsRunChangesNothing", "A----C", 4, 1, "A----C"},
    {"OneGapInTheRunAtTheEndChangesNothing", "AC---", 2, 4, "AC---"},
    {"OneGapOfARowWithoutResiduesChangesNothing", "----", 0, 3, "----"},
};

const Move kRangeMoves[] = {
    {"ARunTakenByItsFirstGap", "A--CDEF", 1, 3, "ACD--EF"},
    {"ARunTakenByItsLastGap", "A--CDEF", 2, 4, "ACD--EF"},
    {"ARunLeftByItsFirstGap", "ACD--EF", 3, 1, "A--CDEF"},
    {"ARunLeftByItsLastGap", "ACD--EF", 4, 3, "AC--DEF"},
    {"ARunAsFarRightAsItsLastGapIsTaken", "A--CDEF", 2, 5, "ACDE--F"},
    {"ARunThatWouldPassTheEndStopsThere", "A--CDEF", 1, 6, "ACDEF--"},
    {"ALongRunThatWouldPassTheEndStopsThere", "AC---DE", 2, 6, "ACDE---"},
    {"ALongRunThatWouldPassTheFirstCellStopsThere", "AC---DE", 4, 0, "---ACDE"},
    {"ARunThatWouldPassTheFirstCellStopsThere", "AC--D", 3, 0, "--ACD"},
    {"ARunAtTheFirstCellGoesNoFurtherLeft", "--ACD", 1, 0, "--ACD"},
    {"ARunAtTheEndGoesNoFurtherRight", "ACD--", 3, 4, "ACD--"},
    {"ARunAtTheFirstCellGoesRight", "--ACD", 0, 2, "AC--D"},
    {"ARunAtTheEndGoesLeft", "ACD--", 4, 2, "A--CD"},
    {"ARunThatIsTheWholeRowStays", "----", 1, 3, "----"},
    {"ARunRightPastAnotherRunKeepsTheOthersOrder", "A--C-DE-F", 1, 4, "AC-D--E-F"},
    {"ARunByItsLastGapUpToAnotherRunJoinsIt", "A-CD--E", 5, 2, "A---CDE"},
    {"ARunByItsFirstGapUpToAnotherRunJoinsIt", "A-CD--E", 4, 2, "A---CDE"},
};

const Move kSlides[] = {
    {"RightByGapsPutInBeforeIt", "ACD--", 1, 3, "A--CD"},
    {"RightFromTheFirstCell", "ACD--", 0, 1, "-ACD-"},
    {"RightBehindAGapThatGrows", "A-CD-", 2, 3, "A--CD"},
    {"RightAndWidensTheAlignment", "ACD", 1, 2, "A-CD"},
    {"RightFromTheFirstCellAndWidensByTwo", "ACD", 0, 2, "--ACD"},
    {"RightAndWidensOnlyAsFarAsNeeded", "ACDE-", 1, 4, "A---CDE"},
    {"LeftIntoSomeOfTheGapsBeforeIt", "A---CD", 4, 2, "A-CD--"},
    {"LeftIntoAllGapsBeforeIt", "A---CD", 4, 1, "ACD---"},
    {"LeftNoFurtherThanTheGapsBeforeIt", "A---CD", 4, 0, "ACD---"},
    {"LeftUpToTheResidueBeforeTheGaps", "AE--CD", 4, 0, "AECD--"},
    {"LeftToTheFirstCell", "--ACD", 2, 0, "ACD--"},
    {"LeftByTheNearestRunAlone", "--A-CD", 4, 1, "--ACD-"},
    {"NotLeftBesideAResidueBehindAGap", "-ACD", 2, 0, "-ACD"},
    {"NotLeftBesideAResidueAtTheFirstCell", "ACD", 1, 0, "ACD"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(AlignmentGap, APointMoveTakes, testing::ValuesIn(kPointMoves),
                         nameOf<Move>);
INSTANTIATE_TEST_SUITE_P(AlignmentGap, ARangeMoveTakes, testing::ValuesIn(kRangeMoves),
                         nameOf<Move>);
INSTANTIATE_TEST_SUITE_P(AlignmentGap, AResidueSlides, testing::ValuesIn(kSlides), nameOf<Move>);

TEST_F(AlignmentGap, RunMovesAcrossWordBoundaries)
{
    for (const std::size_t width : {63U, 64U, 65U, 127U, 128U, 129U}) {
        std::string letters;
        for (std::size_t i = 0; i + 3 < width; ++i)
            letters += char('A' + i % 25);
        EXPECT_EQ(moved("---" + letters, 1, width - 2, false), letters + "---");
        EXPECT_EQ(moved(letters + "---", width - 1, 2, false), "---" + letters);
        EXPECT_EQ(moved("---" + letters, 0, width - 1, true), "--" + letters + "-");
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
