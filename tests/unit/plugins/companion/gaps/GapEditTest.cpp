// SPDX-License-Identifier: GPL-3.0-or-later
#include "GapEdit.h"

#include "GapEditRun.h"
#include "Hooks.h"
#include "ObjectOperations.h"
#include "unit/model/AlignmentFixture.h"
#include "unit/model/FullState.h"

#include <limits>
#include <ostream>

namespace GapEditTest {

using companion::applyGapEdit;
using companion::checkGapEdit;
using companion::GapEdit;
using companion::KeptColumns;
using companion::Outcome;
using Kind = GapEdit::Kind;
using Texts = std::vector<std::string>;
using Block = TAMBO::CellBlock;

// Rows from the first one to that before the second one, then columns. Rows are called s0, s1, ….
struct EditCase
{
    const char *name;
    Texts before;
    Kind kind;
    Block block;
    long count;
    KeptColumns kept;
    Texts after;
    long moved;
};

void PrintTo(const EditCase &one, std::ostream *out)
{
    *out << one.name;
}

class GapEdits : public AlignmentFixture
{
protected:
    static std::string textOf(const Outcome &outcome) { return outcome.reason.toStdString(); }
};

class AGapEdit : public GapEdits, public testing::WithParamInterface<EditCase>
{
};

TEST_P(AGapEdit, IsOneStepThatIsTakenBackWhole)
{
    const EditCase &one = GetParam();
    TAMBO::Alignment &rows = alignment(one.before);
    const std::string before = FullState::of(rows);
    const GapEdit edit{one.kind, one.block, one.count};
    const Outcome checked = checkGapEdit(rows, edit, one.kept);
    EXPECT_TRUE(checked.isDone) << textOf(checked);
    EXPECT_EQ(checked.moved, one.moved);
    ASSERT_EQ(FullState::of(rows), before);
    const Outcome outcome = applyGapEdit(rows, edit, one.kept);
    EXPECT_TRUE(outcome.isDone) << textOf(outcome);
    EXPECT_EQ(outcome.moved, one.moved);
    EXPECT_EQ(rowsOf(rows), one.after);
    if (one.after == one.before) {
        EXPECT_EQ(history.undoCount(), 0U);
        return;
    }
    ASSERT_EQ(history.undoCount(), 1U);
    const std::string after = FullState::of(rows);
    history.undo();
    EXPECT_EQ(FullState::of(rows), before);
    history.redo();
    EXPECT_EQ(FullState::of(rows), after);
}

INSTANTIATE_TEST_SUITE_P(
    , AGapEdit,
    testing::Values(EditCase{"InsertingUsesUpTheGapsAtTheRowsEnd",
                             {"ABC--", "DEFGH"},
                             Kind::Insert,
                             {0, 1, 1, 2},
                             2,
                             {},
                             {"A--BC", "DEFGH"},
                             2},
                    EditCase{"InsertingWidensByWhatNoRowHasGapsFor",
                             {"ABC-", "DEFG", "HI--"},
                             Kind::Insert,
                             {0, 3, 1, 2},
                             2,
                             {},
                             {"A--BC-", "D--EFG", "H--I--"},
                             2},
                    EditCase{"InsertingNeedsNothingOfARowThatEndsBefore",
                             {"AB--", "DEFG"},
                             Kind::Insert,
                             {0, 2, 2, 3},
                             1,
                             {},
                             {"AB---", "DE-FG"},
                             1},
                    EditCase{"InsertingBehindAllResiduesChangesNothing",
                             {"AB--", "D-F-"},
                             Kind::Insert,
                             {0, 2, 3, 4},
                             3,
                             {},
                             {"AB--", "D-F-"},
                             0},
                    EditCase{"InsertingIsForTheRowsOfTheBlockAlone",
                             {"AB-", "CD-", "EF-"},
                             Kind::Insert,
                             {1, 2, 0, 3},
                             1,
                             {},
                             {"AB-", "-CD", "EF-"},
                             1},
                    EditCase{"InsertingLeavesGapsBetweenResiduesAsTheyAre",
                             {"A-B-C-"},
                             Kind::Insert,
                             {0, 1, 0, 1},
                             1,
                             {},
                             {"-A-B-C"},
                             1},
                    EditCase{"RemovingBeforeBringsWhatFollowsToTheLeftAndGapsToTheEnd",
                             {"A--BC", "D--E-"},
                             Kind::RemoveBefore,
                             {0, 2, 3, 4},
                             2,
                             {},
                             {"ABC--", "DE---"},
                             -2},
                    EditCase{"RemovingBeforeTakesSoManyGapsAndNoMore",
                             {"A---BC"},
                             Kind::RemoveBefore,
                             {0, 1, 4, 5},
                             2,
                             {},
                             {"A-BC--"},
                             -2},
                    EditCase{"RemovingBeforeAGapBringsWhatStandsBehindItToTheLeft",
                             {"A---BC"},
                             Kind::RemoveBefore,
                             {0, 1, 2, 3},
                             1,
                             {},
                             {"A--BC-"},
                             -1},
                    EditCase{"RemovingBeforeChangesNothingBehindARowsEnd",
                             {"A---", "BC--"},
                             Kind::RemoveBefore,
                             {0, 2, 3, 4},
                             1,
                             {},
                             {"A---", "BC--"},
                             0},
                    EditCase{"RemovingBehindBringsWhatFollowsToTheLeftAndGapsToTheEnd",
                             {"A--BC", "D--E-"},
                             Kind::RemoveBehind,
                             {0, 2, 1, 2},
                             2,
                             {},
                             {"ABC--", "DE---"},
                             -2},
                    EditCase{"RemovingBehindTakesSoManyGapsAndNoMore",
                             {"A---BC"},
                             Kind::RemoveBehind,
                             {0, 1, 1, 2},
                             2,
                             {},
                             {"A-BC--"},
                             -2},
                    EditCase{"SlidingACellTakesTheResiduesSideBySideAlong",
                             {"A-BCD--E"},
                             Kind::Slide,
                             {0, 1, 3, 4},
                             2,
                             {},
                             {"A---BCDE"},
                             2},
                    EditCase{"SlidingToTheLeftUsesUpTheGapsBefore",
                             {"A--BCD-E"},
                             Kind::Slide,
                             {0, 1, 4, 5},
                             -2,
                             {},
                             {"ABCD---E"},
                             -2},
                    EditCase{"SlidingAColumnSlidesTheResiduesAroundItInEachRow",
                             {"A-BCD--E", "-FG--HIJ", "KLM--N--"},
                             Kind::Slide,
                             {0, 3, 2, 3},
                             1,
                             {},
                             {"A--BCD-E", "--FG-HIJ", "-KLM-N--"},
                             1},
                    EditCase{"SlidingAWiderBlockMovesItsColumnsAsTheyAre",
                             {"AB-C--D", "EFGH--I"},
                             Kind::Slide,
                             {0, 2, 1, 4},
                             2,
                             {},
                             {"A--B-CD", "E--FGHI"},
                             2},
                    EditCase{"SlidingAWiderBlockToTheLeftMovesItsColumnsAsTheyAre",
                             {"A--B-CD", "E--FGHI"},
                             Kind::Slide,
                             {0, 2, 3, 6},
                             -2,
                             {},
                             {"AB-C--D", "EFGH--I"},
                             -2},
                    EditCase{"SlidingNeedsNothingOfARowWithoutAResidueInTheBlock",
                             {"ABC-D", "E--FG"},
                             Kind::Slide,
                             {0, 2, 1, 3},
                             1,
                             {},
                             {"A-BCD", "E--FG"},
                             1},
                    EditCase{"MovingTakesTheGapsAroundEachCellOfTheColumnAlong",
                             {"A--BCD", "-EFG-H"},
                             Kind::Move,
                             {0, 1, 2, 3},
                             2,
                             {},
                             {"ABC--D", "-EFG-H"},
                             2},
                    EditCase{"MovingGapsOfDifferentLengthsMovesEachRun",
                             {"AB--CDEF", "G---HIJK", "MN-PQRST"},
                             Kind::Move,
                             {0, 3, 2, 3},
                             2,
                             {},
                             {"ABCD--EF", "GHI---JK", "MNPQ-RST"},
                             2},
                    EditCase{"MovingGapsToTheLeftPassesResidues",
                             {"ABCD--EF", "GHI---JK"},
                             Kind::Move,
                             {0, 2, 4, 5},
                             -2,
                             {},
                             {"AB--CDEF", "G---HIJK"},
                             -2},
                    EditCase{"MovingFromAResidueToTheRightInsertsGaps",
                             {"ABC-", "DEF-"},
                             Kind::Move,
                             {0, 2, 1, 2},
                             2,
                             {},
                             {"A--BC", "D--EF"},
                             2},
                    EditCase{"MovingFromAResidueToTheLeftGoesIntoTheGapsBeforeIt",
                             {"A--BC", "D---E"},
                             Kind::Move,
                             {0, 1, 3, 4},
                             -2,
                             {},
                             {"ABC--", "D---E"},
                             -2},
                    EditCase{"MovingAColumnWithGapsAndResiduesMovesBoth",
                             {"AB-CD-", "EFGH--"},
                             Kind::Move,
                             {0, 2, 2, 3},
                             1,
                             {},
                             {"ABC-D-", "EF-GH-"},
                             1},
                    EditCase{"PushingToTheLeftKeepsTheOrder",
                             {"-A-B--C-D", "AB---CDEF"},
                             Kind::PushLeft,
                             {0, 2, 0, 8},
                             1,
                             {},
                             {"ABC-----D", "ABCDE---F"},
                             -4},
                    EditCase{"PushingToTheRightKeepsTheOrder",
                             {"-A-B--C-D", "AB---CDEF"},
                             Kind::PushRight,
                             {0, 2, 1, 9},
                             0,
                             {},
                             {"-----ABCD", "A---BCDEF"},
                             4},
                    EditCase{"PushingNeedsNothingOfARowWhoseResiduesAreThereOrAreNone",
                             {"AB--C", "D---E", "-F--G"},
                             Kind::PushLeft,
                             {0, 3, 0, 4},
                             1,
                             {},
                             {"AB--C", "D---E", "F---G"},
                             -1},
                    EditCase{"PushingWhatIsThereAlreadyChangesNothing",
                             {"--AB", "----"},
                             Kind::PushRight,
                             {0, 2, 0, 4},
                             1,
                             {},
                             {"--AB", "----"},
                             0},
                    EditCase{"ABlockThatReachesBeyondTheAlignmentIsCutOffThere",
                             {"-A-B", "C--D"},
                             Kind::PushLeft,
                             {1, 70, 1, 90},
                             1,
                             {},
                             {"-A-B", "CD--"},
                             -2},
                    EditCase{"CountingNothingChangesNothing",
                             {"ABCD"},
                             Kind::Slide,
                             {0, 1, 1, 2},
                             0,
                             {},
                             {"ABCD"},
                             0}),
    [](const auto &one) { return one.param.name; });

INSTANTIATE_TEST_SUITE_P(
    BesideKeptColumns, AGapEdit,
    testing::Values(
        EditCase{"InsertingUsesUpTheGapsNearestBeforeThem",
                 {"A-B--CD-EF-G"},
                 Kind::Insert,
                 {0, 1, 0, 1},
                 2,
                 {{8, 10}},
                 {"--A-B-CDEF-G"},
                 2},
        EditCase{"InsertingUsesUpGapsInEachRowWhereItHasThem",
                 {"AB--CD", "E-F-GH"},
                 Kind::Insert,
                 {0, 2, 1, 2},
                 1,
                 {{4, 6}},
                 {"A-B-CD", "E--FGH"},
                 1},
        EditCase{"InsertingNeedsNothingOfARowThatEndsBefore",
                 {"AB--CD", "EF----"},
                 Kind::Insert,
                 {0, 2, 2, 3},
                 2,
                 {{4, 5}},
                 {"AB--CD", "EF----"},
                 0},
        EditCase{"InsertingBehindThemIsAsEver",
                 {"ABCDE-", "FGHIJK"},
                 Kind::Insert,
                 {0, 2, 3, 4},
                 1,
                 {{1, 3}},
                 {"ABC-DE-", "FGH-IJK"},
                 1},
        EditCase{"RemovingBeforePutsTheGapsDirectlyBeforeThem",
                 {"A--BCDE-", "F--G-HIJ"},
                 Kind::RemoveBefore,
                 {0, 2, 3, 4},
                 2,
                 {{5, 7}},
                 {"ABC--DE-", "FG---HIJ"},
                 -2},
        EditCase{"RemovingBehindPutsTheGapsDirectlyBeforeThem",
                 {"A--BCDE-", "F--G-HIJ"},
                 Kind::RemoveBehind,
                 {0, 2, 1, 2},
                 2,
                 {{5, 7}},
                 {"ABC--DE-", "FG---HIJ"},
                 -2},
        EditCase{"SlidingStopsBeforeThem",
                 {"AB--CD"},
                 Kind::Slide,
                 {0, 1, 0, 1},
                 2,
                 {{4, 6}},
                 {"--ABCD"},
                 2},
        EditCase{"MovingGapsStopsBeforeThem",
                 {"A-BCDE"},
                 Kind::Move,
                 {0, 1, 1, 2},
                 2,
                 {{4, 6}},
                 {"ABC-DE"},
                 2},
        EditCase{"MovingGapsLeavesThoseInThemAlone",
                 {"AB----C"},
                 Kind::Move,
                 {0, 1, 2, 3},
                 -1,
                 {{4, 5}},
                 {"A--B--C"},
                 -1},
        EditCase{"MovingResiduesUsesUpTheGapsNearestBeforeThem",
                 {"A-B-CD"},
                 Kind::Move,
                 {0, 1, 0, 1},
                 1,
                 {{4, 6}},
                 {"-A-BCD"},
                 1},
        EditCase{"MovingResiduesToTheLeftPutsTheGapsDirectlyBeforeThem",
                 {"A--BCD"},
                 Kind::Move,
                 {0, 1, 3, 4},
                 -2,
                 {{4, 6}},
                 {"AB--CD"},
                 -2},
        EditCase{"PushingDirectlyBesideThemIsAsEver",
                 {"A-BCD-EF"},
                 Kind::PushRight,
                 {0, 1, 0, 3},
                 1,
                 {{3, 5}},
                 {"-ABCD-EF"},
                 1},
        EditCase{"ColumnsBehindTheAlignmentAreNotKept",
                 {"AB"},
                 Kind::Insert,
                 {0, 1, 1, 2},
                 1,
                 {{2, 9}},
                 {"A-B"},
                 1},
        EditCase{
            "NoColumnsAreNotKept", {"AB"}, Kind::Insert, {0, 1, 1, 2}, 1, {{1, 1}}, {"A-B"}, 1}),
    [](const auto &one) { return one.param.name; });

struct RefusedCase
{
    const char *name;
    Texts before;
    Kind kind;
    Block block;
    long count;
    KeptColumns kept;
    const char *reason;
};

void PrintTo(const RefusedCase &one, std::ostream *out)
{
    *out << one.name;
}

class ARefusedGapEdit : public GapEdits, public testing::WithParamInterface<RefusedCase>
{
};

TEST_P(ARefusedGapEdit, ChangesNothingAndNamesTheFirstRowThatCannot)
{
    const RefusedCase &one = GetParam();
    TAMBO::Alignment &rows = alignment(one.before);
    const std::string before = FullState::of(rows);
    const unsigned long revision = rows.layoutRevision();
    const GapEdit edit{one.kind, one.block, one.count};
    for (const Outcome &outcome :
         {checkGapEdit(rows, edit, one.kept), applyGapEdit(rows, edit, one.kept)}) {
        EXPECT_FALSE(outcome.isDone);
        EXPECT_EQ(textOf(outcome), one.reason);
        EXPECT_EQ(outcome.moved, 0);
    }
    EXPECT_EQ(FullState::of(rows), before);
    EXPECT_EQ(rows.layoutRevision(), revision);
    EXPECT_EQ(history.undoCount(), 0U);
}

constexpr long kVeryMany = std::numeric_limits<long>::max();
constexpr long kVeryFew = std::numeric_limits<long>::min();

INSTANTIATE_TEST_SUITE_P(
    , ARefusedGapEdit,
    testing::Values(
        RefusedCase{"RemovingBeforeWithFewerGaps",
                    {"A--BC", "D-EFG", "-HIJK"},
                    Kind::RemoveBefore,
                    {0, 3, 3, 4},
                    2,
                    {},
                    "“s1” has no gap directly before column 4; 2 are needed."},
        RefusedCase{"RemovingMoreThanThereAreColumns",
                    {"--A"},
                    Kind::RemoveBefore,
                    {0, 1, 2, 3},
                    kVeryMany,
                    {},
                    "“s0” has 2 gaps directly before column 3; 9,223,372,036,854,775,807 are "
                    "needed."},
        RefusedCase{"RemovingBehindWithFewerGaps",
                    {"A--BC", "D-EFG"},
                    Kind::RemoveBehind,
                    {0, 2, 1, 2},
                    2,
                    {},
                    "“s1” has 1 gap from column 2 on; 2 are needed."},
        RefusedCase{"RemovingBehindMoreThanTheRowHas",
                    {"A--"},
                    Kind::RemoveBehind,
                    {0, 1, 1, 2},
                    3,
                    {},
                    "“s0” has 2 gaps from column 2 on; 3 are needed."},
        RefusedCase{"SlidingIntoFewerGapsBehind",
                    {"AB--C", "DE-FG"},
                    Kind::Slide,
                    {0, 2, 0, 2},
                    2,
                    {},
                    "“s1” has 1 gap directly behind column 2; 2 are needed."},
        RefusedCase{"SlidingIntoFewerGapsBefore",
                    {"A-BC"},
                    Kind::Slide,
                    {0, 1, 3, 4},
                    -2,
                    {},
                    "“s0” has 1 gap directly before column 3; 2 are needed."},
        RefusedCase{"SlidingBeyondTheAlignmentsEnd",
                    {"AB-"},
                    Kind::Slide,
                    {0, 1, 1, 2},
                    2,
                    {},
                    "“s0” has 1 gap directly behind column 2; 2 are needed."},
        RefusedCase{"SlidingWithoutAResidueInAnyRow",
                    {"A--B", "C--D"},
                    Kind::Slide,
                    {0, 2, 1, 3},
                    1,
                    {},
                    "“s0” has no residue in columns 2 to 3."},
        RefusedCase{"SlidingToTheLeftByMoreThanNumbersHold",
                    {"-A"},
                    Kind::Slide,
                    {0, 1, 1, 2},
                    kVeryFew,
                    {},
                    "“s0” has 1 gap directly before column 2; 9,223,372,036,854,775,808 are "
                    "needed."},
        RefusedCase{"MovingGapsBeyondTheRowsEnd",
                    {"A-BCD", "E--FG", "HI--J"},
                    Kind::Move,
                    {0, 3, 1, 2},
                    3,
                    {},
                    "“s1” has 2 columns behind the gaps around column 2; 3 are needed."},
        RefusedCase{"MovingGapsBeyondTheRowsBegin",
                    {"A-BCD"},
                    Kind::Move,
                    {0, 1, 1, 2},
                    -2,
                    {},
                    "“s0” has 1 column before the gaps around column 2; 2 are needed."},
        RefusedCase{"MovingResiduesIntoFewerGaps",
                    {"A-BCD"},
                    Kind::Move,
                    {0, 1, 2, 3},
                    -2,
                    {},
                    "“s0” has 1 gap directly before column 3; 2 are needed."},
        RefusedCase{"PushingWithoutAResidueInAnyRow",
                    {"A--B"},
                    Kind::PushLeft,
                    {0, 1, 1, 2},
                    1,
                    {},
                    "“s0” has no residue in column 2."},
        RefusedCase{"ABlockBesideTheAlignment",
                    {"A--B"},
                    Kind::Insert,
                    {0, 1, 4, 5},
                    1,
                    {},
                    "The alignment has no cells there."},
        RefusedCase{"ABlockBelowTheAlignment",
                    {"A--B"},
                    Kind::Insert,
                    {1, 2, 0, 1},
                    1,
                    {},
                    "The alignment has no cells there."},
        RefusedCase{"LessThanNoGaps",
                    {"A--B"},
                    Kind::Insert,
                    {0, 1, 1, 2},
                    -1,
                    {},
                    "“s0” cannot have less than no gaps."}),
    [](const auto &one) { return one.param.name; });

INSTANTIATE_TEST_SUITE_P(
    BesideKeptColumns, ARefusedGapEdit,
    testing::Values(
        RefusedCase{"InsertingWithFewerGapsBeforeThem",
                    {"AB--CD", "E-FGHI"},
                    Kind::Insert,
                    {0, 2, 1, 2},
                    2,
                    {{4, 6}},
                    "“s1” has 1 gap from column 2 on before the kept columns; 2 are needed."},
        RefusedCase{"InsertingInsideOfThem",
                    {"ABCD--"},
                    Kind::Insert,
                    {0, 1, 2, 3},
                    1,
                    {{1, 3}},
                    "“s0” stays as it is in the kept columns 2 to 3."},
        RefusedCase{"InsertingAtTheFirstOfThem",
                    {"AB--CD", "A---CD"},
                    Kind::Insert,
                    {1, 2, 4, 5},
                    1,
                    {{4, 5}},
                    "“s1” stays as it is in the kept column 5."},
        RefusedCase{"RemovingGapsOfThemBeforeWhatStandsBehind",
                    {"A--BC"},
                    Kind::RemoveBefore,
                    {0, 1, 3, 4},
                    2,
                    {{1, 2}},
                    "“s0” has 1 gap directly before column 4; 2 are needed."},
        RefusedCase{"RemovingGapsOfThemFromBeforeThem",
                    {"A--BC"},
                    Kind::RemoveBehind,
                    {0, 1, 1, 2},
                    2,
                    {{2, 4}},
                    "“s0” has 1 gap from column 2 on; 2 are needed."},
        RefusedCase{"SlidingResiduesThatReachIntoThem",
                    {"-ABCD-"},
                    Kind::Slide,
                    {0, 1, 1, 2},
                    -1,
                    {{3, 4}},
                    "The residues of “s0” around column 2 reach into the kept columns."},
        RefusedCase{"SlidingResiduesThatReachIntoThemFromBehind",
                    {"-ABCD-"},
                    Kind::Slide,
                    {0, 1, 4, 5},
                    1,
                    {{3, 4}},
                    "The residues of “s0” around column 5 reach into the kept columns."},
        RefusedCase{"SlidingIntoThem",
                    {"AB---C"},
                    Kind::Slide,
                    {0, 1, 0, 1},
                    2,
                    {{3, 4}},
                    "“s0” has 1 gap directly behind column 2; 2 are needed."},
        RefusedCase{"SlidingABlockWithThemInIt",
                    {"AB---C"},
                    Kind::Slide,
                    {0, 1, 0, 3},
                    1,
                    {{2, 3}},
                    "“s0” stays as it is in the kept column 3."},
        RefusedCase{"MovingGapsIntoThem",
                    {"A-BCDE"},
                    Kind::Move,
                    {0, 1, 1, 2},
                    2,
                    {{3, 6}},
                    "“s0” has 1 column behind the gaps around column 2; 2 are needed."},
        RefusedCase{"MovingGapsIntoThemFromBehind",
                    {"ABCD-E"},
                    Kind::Move,
                    {0, 1, 4, 5},
                    -2,
                    {{0, 3}},
                    "“s0” has 1 column before the gaps around column 5; 2 are needed."},
        RefusedCase{"MovingResiduesAgainstThem",
                    {"ABCD-E"},
                    Kind::Move,
                    {0, 1, 1, 2},
                    1,
                    {{3, 4}},
                    "“s0” has no gap from column 2 on before the kept columns; 1 is needed."},
        RefusedCase{"PushingABlockWithThemInIt",
                    {"A-B-C-"},
                    Kind::PushLeft,
                    {0, 1, 0, 6},
                    1,
                    {{5, 6}},
                    "“s0” stays as it is in the kept column 6."}),
    [](const auto &one) { return one.param.name; });

TEST_F(GapEdits, ThatPushFewOfManyRowsKeepNothingOfTheOthersForUndo)
{
    TAMBO::Alignment &rows = alignment(Texts(600, "A-B-"));
    history.clear();
    EXPECT_TRUE(applyGapEdit(rows, {Kind::PushLeft, {0, 70, 0, 4}, 1}, std::nullopt).isDone);
    EXPECT_EQ(history.lastKinds(), Texts(70, "move gap"));
    EXPECT_TRUE(applyGapEdit(rows, {Kind::PushLeft, {0, 600, 0, 4}, 1}, std::nullopt).isDone);
    EXPECT_EQ(history.lastKinds().size(), 1U);
}

TEST_F(GapEdits, ThatWidenTheAlignmentTooMuchAreRefusedBeforeAnythingChanges)
{
    TAMBO::Alignment &rows = alignment({"AB--", "CDEF", "GH--"});
    const std::string before = FullState::of(rows);
    const Outcome outcome =
        applyGapEdit(rows, {Kind::Insert, {0, 3, 1, 2}, kVeryMany}, std::nullopt);
    EXPECT_FALSE(outcome.isDone);
    EXPECT_EQ(textOf(outcome), "“s1” would make the alignment too wide.");
    EXPECT_EQ(FullState::of(rows), before);
    EXPECT_EQ(history.undoCount(), 0U);
    EXPECT_EQ(log, Texts{"The alignment test would become too wide."});
}

TEST_F(GapEdits, ThatAreGivenUpWhileRowsChangeAreNoStepAndHaveNoReason)
{
    TAMBO::Alignment &rows = alignment({"AB--", "CDEF", "GH--"});
    const std::string before = FullState::of(rows);
    bool canBeGivenUp = false;
    TAMBO::modelHooks().working = [&](const char *, double, bool can) {
        canBeGivenUp = can;
        return false;
    };
    const Outcome outcome = applyGapEdit(rows, {Kind::Insert, {0, 3, 1, 2}, 2}, std::nullopt);
    TAMBO::modelHooks().working = nullptr;
    EXPECT_TRUE(canBeGivenUp);
    EXPECT_FALSE(outcome.isDone);
    EXPECT_EQ(textOf(outcome), "");
    EXPECT_EQ(FullState::of(rows), before);
    EXPECT_EQ(history.undoCount(), 0U);
}

TEST_F(GapEdits, OfALockedAlignmentAreRefused)
{
    TAMBO::Alignment &rows = alignment({"AB--"});
    TAMBO::setObjectLocked(rows, true);
    const std::string before = FullState::of(rows);
    const Outcome outcome = applyGapEdit(rows, {Kind::Insert, {0, 1, 1, 2}, 1}, std::nullopt);
    EXPECT_FALSE(outcome.isDone);
    EXPECT_EQ(textOf(outcome), "“test” cannot be changed now.");
    EXPECT_EQ(FullState::of(rows), before);
}

TEST_F(GapEdits, OfAnAlignmentWithoutColumnsAreRefused)
{
    TAMBO::Alignment &rows = alignment({"AB"});
    {
        const TAMBO::ChangeScope scope;
        rows.remove(Range(0, 2));
    }
    EXPECT_EQ(textOf(checkGapEdit(rows, {Kind::Insert, {0, 1, 0, 1}, 1}, std::nullopt)),
              "The alignment has no cells there.");
}

TEST_F(GapEdits, NameRowsAsTheyAreCalledWhateverSignsAreInTheName)
{
    TAMBO::Alignment &rows = alignmentOf({{&peptide("%1 %2 %L3", "AB"), "A-B"}});
    EXPECT_EQ(textOf(checkGapEdit(rows, {Kind::RemoveBefore, {0, 1, 2, 3}, 2}, std::nullopt)),
              "“%1 %2 %L3” has 1 gap directly before column 3; 2 are needed.");
}

TEST_F(GapEdits, AreLookedAtRowByRowBetweenEvents)
{
    TAMBO::Alignment &rows = alignment(Texts(1000, "A-BC"));
    companion::GapEditRun run(rows, {Kind::Insert, {0, 1000, 1, 2}, 1}, std::nullopt);
    int rounds = 1;
    int percent = run.percent();
    EXPECT_EQ(percent, 0);
    for (; run.goOn(std::chrono::microseconds(0)); ++rounds) {
        EXPECT_GT(run.percent(), percent);
        percent = run.percent();
    }
    EXPECT_EQ(rounds, 4);
    EXPECT_EQ(run.percent(), 100);
    EXPECT_EQ(history.undoCount(), 0U);
    EXPECT_TRUE(run.apply(rows).isDone);
    EXPECT_EQ(rowsOf(rows), Texts(1000, "A--BC"));
    EXPECT_EQ(history.undoCount(), 1U);
}

// As many edits as there are runs of gaps would take memory for each.
TEST_F(GapEdits, PushManyRowsByOneEdit)
{
    Texts before(100, "A-B-C-D-");
    before[99] = "--------";
    Texts after(100, "A---BCD-");
    after[99] = before[99];
    after[0] = before[0];
    TAMBO::Alignment &rows = alignment(before);
    const Outcome outcome = applyGapEdit(rows, {Kind::PushRight, {1, 200, 1, 7}}, std::nullopt);
    EXPECT_TRUE(outcome.isDone) << textOf(outcome);
    EXPECT_EQ(outcome.moved, 2);
    EXPECT_EQ(rowsOf(rows), after);
    ASSERT_EQ(history.undoCount(), 1U);
    EXPECT_EQ(history.last().size(), 1U);
    history.undo();
    EXPECT_EQ(rowsOf(rows), before);
}

TEST_F(GapEdits, LookAgainAtRowsThatHaveChangedMeanwhile)
{
    Texts before(600, "A-BC");
    TAMBO::Alignment &rows = alignment(before);
    companion::GapEditRun run(rows, {Kind::RemoveBefore, {0, 600, 2, 3}, 1}, std::nullopt);
    ASSERT_TRUE(run.goOn(std::chrono::microseconds(0)));
    {
        const TAMBO::ChangeScope scope;
        rows.moveGap(3, 1, 0, true);
    }
    const Outcome outcome = run.apply(rows);
    EXPECT_FALSE(outcome.isDone);
    EXPECT_EQ(textOf(outcome), "“s3” has no gap directly before column 3; 1 is needed.");
    before[3] = "-ABC";
    EXPECT_EQ(rowsOf(rows), before);
}

} // namespace GapEditTest
