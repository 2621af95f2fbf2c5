// SPDX-License-Identifier: GPL-3.0-or-later
// What a file said of columns, rows and residues goes through edits and comes back.
#include "AlignmentAnnotation.h"
#include "ObjectFactory.h"
#include "RecordMaker.h"
#include "TableChanges.h"
#include "unit/model/AlignmentFixture.h"

#include <random>

using TAMBO::Alignment;
using TAMBO::AlignmentAnnotation;
using TAMBO::AlignmentRecord;
using TAMBO::Annotation;
using TAMBO::RowRecord;

namespace AlignmentAnnotationTest {

using Annotations = std::vector<Annotation>;

class AlignmentAnnotationTest : public AlignmentFixture
{
protected:
    static RowRecord row(const std::string &name, const std::string &text, Annotations said = {})
    {
        RowRecord record;
        record.name = name;
        record.sequence.append(text);
        record.residueAnnotations = std::move(said);
        return record;
    }
    Alignment &adopt(AlignmentRecord record)
    {
        Alignment *const made = TAMBO::ObjectFactory::adopt(std::move(record));
        history.clear();
        return *made;
    }
    Alignment &sample()
    {
        AlignmentRecord record;
        record.name = "family";
        record.rows = {row("first", "AC-DE", {{"SS", "HH.CE"}}), row("second", "A-CDE")};
        record.rows[0].annotations = {{"AC", "P00001"}, {"DR", "PDB; 1abc;"}};
        record.annotations = {{"ID", "fam"}, {"CC", "one"}, {"CC", "two"}};
        record.columnAnnotations = {{"SS_cons", "HHxCE"}, {"RF", "abcde"}};
        return adopt(std::move(record));
    }
    static Texts columnTexts(const Alignment &alignment)
    {
        Texts texts;
        for (const Annotation &line : TAMBO::makeRecord(alignment).columnAnnotations)
            texts.push_back(line.text);
        return texts;
    }
    static std::string residueText(const Alignment &alignment, std::size_t row)
    {
        return TAMBO::makeRowRecord(alignment, row).residueAnnotations.at(0).text;
    }
};

TEST_F(AlignmentAnnotationTest, RecordGivesBackEverythingThatWasSaid)
{
    const AlignmentRecord record = TAMBO::makeRecord(sample());
    EXPECT_EQ(record.annotations, (Annotations{{"ID", "fam"}, {"CC", "one"}, {"CC", "two"}}));
    EXPECT_EQ(record.columnAnnotations, (Annotations{{"SS_cons", "HHxCE"}, {"RF", "abcde"}}));
    EXPECT_EQ(record.rows[0].annotations, (Annotations{{"AC", "P00001"}, {"DR", "PDB; 1abc;"}}));
    EXPECT_EQ(record.rows[0].residueAnnotations, (Annotations{{"SS", "HH.CE"}}));
    EXPECT_TRUE(record.rows[1].annotations.empty());
    EXPECT_TRUE(record.rows[1].residueAnnotations.empty());
}

TEST_F(AlignmentAnnotationTest, GapEditsCarryResiduesTextAlongAndLeaveColumnsText)
{
    Alignment &alignment = sample();
    alignment.moveGap(0, 2, 0, true);
    EXPECT_EQ(rowsOf(alignment)[0], "-ACDE");
    EXPECT_EQ(residueText(alignment, 0), ".HHCE");
    EXPECT_EQ(columnTexts(alignment), (Texts{"HHxCE", "abcde"}));
    alignment.insertGap(0, 3);
    EXPECT_EQ(residueText(alignment, 0), ".HH.CE");
    EXPECT_EQ(columnTexts(alignment), (Texts{"HHxCE.", "abcde."})) << "the alignment grew";
    EXPECT_EQ(history.lastKinds().size(), 1U) << "the text takes no part in the step";
    history.undo();
    history.undo();
    EXPECT_EQ(residueText(alignment, 0), "HH.CE");
    EXPECT_EQ(columnTexts(alignment), (Texts{"HHxCE", "abcde"}));
}

TEST_F(AlignmentAnnotationTest, InsertedColumnsHaveNoTextAndTheOthersKeepTheirs)
{
    Alignment &alignment = sample();
    alignment.insertGapCol(1, 2);
    EXPECT_EQ(columnTexts(alignment), (Texts{"H..HxCE", "a..bcde"}));
    EXPECT_EQ(residueText(alignment, 0), "H..H.CE");
    alignment.insertGapCol(alignment.width(), 1);
    EXPECT_EQ(columnTexts(alignment), (Texts{"H..HxCE.", "a..bcde."}));
    history.undo();
    history.undo();
    EXPECT_EQ(columnTexts(alignment), (Texts{"HHxCE", "abcde"}));
    history.redo();
    EXPECT_EQ(columnTexts(alignment), (Texts{"H..HxCE", "a..bcde"}));
}

TEST_F(AlignmentAnnotationTest, RemovedColumnsTakeTheirTextAlongAndUndoGivesItBack)
{
    Alignment &alignment = sample();
    alignment.remove(Range(1, 3));
    EXPECT_EQ(columnTexts(alignment), (Texts{"HCE", "ade"}));
    EXPECT_EQ(residueText(alignment, 0), "HCE");
    history.undo();
    EXPECT_EQ(columnTexts(alignment), (Texts{"HHxCE", "abcde"}));
    EXPECT_EQ(residueText(alignment, 0), "HH.CE");
    history.redo();
    EXPECT_EQ(columnTexts(alignment), (Texts{"HCE", "ade"}));
    EXPECT_EQ(residueText(alignment, 0), "HCE");
}

TEST_F(AlignmentAnnotationTest, RemovedRowTakesItsTextAlongAndUndoGivesItBack)
{
    Alignment &alignment = sample();
    alignment.removeRow(0);
    EXPECT_TRUE(TAMBO::makeRowRecord(alignment, 0).residueAnnotations.empty());
    EXPECT_EQ(columnTexts(alignment), (Texts{"HHxCE", "abcde"}));
    history.undo();
    EXPECT_EQ(residueText(alignment, 0), "HH.CE");
    EXPECT_EQ(TAMBO::makeRowRecord(alignment, 0).annotations.size(), 2U);
}

TEST_F(AlignmentAnnotationTest, MovedRowKeepsItsText)
{
    Alignment &alignment = sample();
    alignment.bubbleRow(0, 1);
    EXPECT_EQ(residueText(alignment, 1), "HH.CE");
}

TEST_F(AlignmentAnnotationTest, AddedRowsWidenTheTextOfColumns)
{
    Alignment &alignment = sample();
    alignment.addRows({&peptide("long", "ACDEFGH")});
    EXPECT_EQ(columnTexts(alignment), (Texts{"HHxCE..", "abcde.."}));
    history.undo();
    EXPECT_EQ(columnTexts(alignment), (Texts{"HHxCE", "abcde"}));
}

TEST_F(AlignmentAnnotationTest, CombiningKeepsTheReceiversTextAndTheRowsOwn)
{
    Alignment &alignment = sample();
    AlignmentRecord other;
    other.rows = {row("third", "KLM", {{"SS", "EEE"}})};
    other.annotations = {{"ID", "other"}};
    other.columnAnnotations = {{"RF", "xyz"}};
    alignment.combine(adopt(std::move(other)));
    const AlignmentRecord record = TAMBO::makeRecord(alignment);
    EXPECT_EQ(record.annotations.front(), (Annotation{"ID", "fam"}));
    EXPECT_EQ(columnTexts(alignment), (Texts{"HHxCE", "abcde"}));
    ASSERT_EQ(record.rows.size(), 3U);
    EXPECT_EQ(record.rows[2].residueAnnotations, (Annotations{{"SS", "EEE.."}}));
}

TEST_F(AlignmentAnnotationTest, CombiningOpensColumnsInTheReceiversText)
{
    AlignmentRecord record;
    record.columnAnnotations = {{"RF", "abc"}};
    Alignment &alignment = adopt(std::move(record));
    TAMBO::Peptide &common = peptide("common", "ACD");
    alignment.addRows({&common});
    history.clear();
    Alignment &other = alignmentOf({{&common, "A--CD"}, {&peptide("more", "KLMNP"), "KLMNP"}});
    alignment.combine(other);
    EXPECT_EQ(rowsOf(alignment), (Texts{"A--CD", "KLMNP"}));
    EXPECT_EQ(columnTexts(alignment), (Texts{"a..bc"}));
    history.undo();
    EXPECT_EQ(columnTexts(alignment), (Texts{"abc"}));
}

TEST_F(AlignmentAnnotationTest, RealignedColumnsKeepTheTextOfThoseThatHoldWhatTheyHeld)
{
    Alignment &alignment = sample();
    const auto cells = [](const char *text) {
        TAMBO::GappedSequence row;
        row.append(text);
        return TAMBO::OccupancyRow(std::move(row.occupancy));
    };
    // The first row's "C-D" and the second one's "-CD" become "CD" and "CD".
    ASSERT_TRUE(
        TAMBO::replaceColumns(alignment.table(), Range(1, 4), {cells("xx"), cells("xx")}, 2));
    EXPECT_EQ(rowsOf(alignment), (Texts{"ACDE", "ACDE"}));
    EXPECT_EQ(columnTexts(alignment), (Texts{"H.CE", "a.de"}));
    EXPECT_EQ(residueText(alignment, 0), "HHCE");
    history.undo();
    EXPECT_EQ(columnTexts(alignment), (Texts{"HHxCE", "abcde"}));
    history.redo();
    EXPECT_EQ(columnTexts(alignment), (Texts{"H.CE", "a.de"}));
}

TEST_F(AlignmentAnnotationTest, DuplicateHasTheSameTextAndGoesItsOwnWay)
{
    Alignment &alignment = sample();
    Alignment *const copy = alignment.duplicate(1);
    copy->remove(0);
    EXPECT_EQ(columnTexts(*copy), (Texts{"HxCE", "bcde"}));
    EXPECT_EQ(residueText(*copy, 0), "H.CE");
    EXPECT_EQ(columnTexts(alignment), (Texts{"HHxCE", "abcde"}));
    EXPECT_EQ(TAMBO::makeRecord(*copy).annotations.size(), 3U);
}

TEST_F(AlignmentAnnotationTest, TextShorterThanTheColumnsSaysNothingOfTheRest)
{
    AlignmentRecord record;
    record.rows = {row("only", "AC-DE", {{"SS", "HH"}})};
    record.columnAnnotations = {{"RF", "ab"}};
    Alignment &alignment = adopt(std::move(record));
    EXPECT_EQ(columnTexts(alignment), (Texts{"ab..."}));
    EXPECT_EQ(residueText(alignment, 0), "HH...");
    alignment.remove(Range(1, 4));
    EXPECT_EQ(columnTexts(alignment), (Texts{"a."}));
    history.undo();
    EXPECT_EQ(columnTexts(alignment), (Texts{"ab..."}));
}

TEST_F(AlignmentAnnotationTest, ChainBreaksFollowTheResiduesThatAreLeft)
{
    AlignmentRecord record;
    record.rows = {row("two chains", "ACDE-FGHI")};
    record.rows[0].chainBreaks = {{4, 4}};
    Alignment &alignment = adopt(std::move(record));
    alignment.remove(Range(1, 3));
    EXPECT_EQ(TAMBO::makeRowRecord(alignment, 0).chainBreaks,
              (std::vector<TAMBO::ChainBreak>{{2, 2}}));
}

TEST_F(AlignmentAnnotationTest, StepsOfAnAlignmentWithoutTextAreOneEditEach)
{
    Alignment &plain = alignment({"AC-DE", "A-CDE"});
    plain.remove(Range(1, 3));
    EXPECT_EQ(history.lastKinds(), (Texts{"remove columns"}));
    EXPECT_EQ(plain.table().annotation(), nullptr);
}

TEST_F(AlignmentAnnotationTest, BytesCountWhatWasSaid)
{
    AlignmentRecord record;
    record.rows = {row("only", "ACDE")};
    const std::size_t plain = adopt(record).table().bytes();
    record.annotations = {{"CC", std::string(1000, 'x')}};
    record.columnAnnotations = {{"RF", "abcd"}};
    record.rows[0].annotations = {{"DE", std::string(2000, 'x')}};
    EXPECT_GE(adopt(record).table().bytes(), plain + 3000);
}

// As if each run were opened or closed by itself.
TEST_F(AlignmentAnnotationTest, ManyRunsMoveTextLikeOneAfterTheOther)
{
    std::mt19937 random(3);
    const auto upTo = [&](std::size_t most) { return std::size_t(random() % (most + 1)); };
    for (int round = 0; round < 300; ++round) {
        Annotations lines(3, {"SS", ""});
        for (Annotation &line : lines)
            for (std::size_t length = upTo(30); length > 0; --length)
                line.text += char('a' + upTo(25));
        std::vector<TAMBO::GapRun> runs;
        std::size_t column = upTo(5);
        for (std::size_t i = upTo(6); i > 0; --i) {
            runs.push_back({column, 1 + upTo(4)});
            column += 1 + upTo(8);
        }
        AlignmentAnnotation one({}, lines);
        AlignmentAnnotation other({}, lines);
        const auto expectSame = [&] {
            for (std::size_t i = 0; i < lines.size(); ++i)
                EXPECT_EQ(one.lines(99)[i].text, other.lines(99)[i].text) << round;
            EXPECT_EQ(one.characters(), other.characters()) << round;
        };
        one.openColumns(runs);
        for (auto run = runs.rbegin(); run != runs.rend(); ++run)
            other.insertColumns(run->column, run->count);
        expectSame();
        one.closeColumns(runs);
        for (const TAMBO::GapRun &run : runs)
            other.removeColumns(run.column, run.count);
        expectSame();
        // What stood there before was no gap of their making.
        one.closeColumns(runs);
        for (const TAMBO::GapRun &run : runs)
            other.removeColumns(run.column, run.count);
        expectSame();
    }
}

} // namespace AlignmentAnnotationTest
