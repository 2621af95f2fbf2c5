// SPDX-License-Identifier: GPL-3.0-or-later
// Breaks between chains: each is a mark on one gap of a row and stays between the same residues.
#include "RecordMaker.h"
#include "TableChanges.h"
#include "unit/model/AlignmentFixture.h"

#include <random>

using TAMBO::Alignment;
using TAMBO::ChainBreak;
using TAMBO::Peptide;

namespace ChainBreakTest {

// '/' on the gaps that have a break; breaks without a gap are counted behind the row.
std::string markedRow(const Alignment &alignment, std::size_t row)
{
    const TAMBO::RowRecord record = TAMBO::makeRowRecord(alignment, row);
    std::string text = record.sequence.text();
    std::size_t homeless = 0;
    for (const ChainBreak &one : record.chainBreaks) {
        if (one.column)
            text.at(*one.column) = text.at(*one.column) == '-' ? '/' : '!';
        else
            ++homeless;
    }
    return homeless == 0 ? text : text + " +" + std::to_string(homeless);
}

class ChainBreakTest : public AlignmentFixture
{
protected:
    // '/' for a gap with a break.
    Alignment &marked(const Texts &rows)
    {
        TAMBO::AlignmentTable::Rows made;
        unsigned long width = 0;
        for (std::string text : rows) {
            TAMBO::RowLabel label;
            std::string letters;
            for (std::size_t column = 0; column < text.size(); ++column) {
                if (text[column] == '/')
                    label.chainBreaks.push_back({letters.size(), column});
                if (text[column] == '/' || text[column] == '-')
                    text[column] = '-';
                else
                    letters += text[column];
            }
            TAMBO::GappedSequence cells;
            cells.append(text);
            made.push_back(std::make_unique<TAMBO::AlignmentRow>(
                peptide("m" + std::to_string(m_Made++), letters),
                TAMBO::OccupancyRow(std::move(cells.occupancy)), std::move(label)));
            width = std::max<unsigned long>(width, text.size());
        }
        auto owned = TAMBO::AlignmentTable::make("test", std::move(made), width);
        Alignment &result = *owned;
        TAMBO::ObjectSpace::get().add(std::move(owned));
        history.clear();
        return result;
    }

    static Texts textsOf(const Alignment &alignment)
    {
        Texts texts;
        for (std::size_t row = 0; row < alignment.height(); ++row)
            texts.push_back(markedRow(alignment, row));
        return texts;
    }

    // Does what the change does, and looks whether undo and redo bring back either state.
    template <typename Change>
    void expectChange(const Texts &before, Change change, const Texts &after)
    {
        Alignment &alignment = marked(before);
        change(alignment);
        EXPECT_EQ(textsOf(alignment), after);
        ASSERT_EQ(history.undoCount(), 1U);
        history.undo();
        EXPECT_EQ(textsOf(alignment), before);
        history.redo();
        EXPECT_EQ(textsOf(alignment), after);
    }

private:
    int m_Made = 0;
};

TEST_F(ChainBreakTest, BreakStandsInTheColumnThatItHad)
{
    const Texts rows = {"AC---/GHI", "-----/GHI", "ACDEF/---", "/ACDEF-GH", "AC//-/-GH"};
    EXPECT_EQ(textsOf(marked(rows)), rows);
}

TEST_F(ChainBreakTest, BreakMovesWithItsGapAmongOtherGaps)
{
    expectChange({"AC---/GHI"}, [](Alignment &a) { a.moveGap(0, 5, 3, true); }, {"AC-/--GHI"});
    expectChange({"AC-/--GHI"}, [](Alignment &a) { a.moveGap(0, 3, 5, true); }, {"AC---/GHI"});
    expectChange({"AC-/--GHI"}, [](Alignment &a) { a.moveGap(0, 2, 4, true); }, {"AC/---GHI"});
}

TEST_F(ChainBreakTest, MovingGapsWithoutABreakAmongGapsIsNoStep)
{
    Alignment &alignment = marked({"AC----/GHI", "ACDEFGHIKL"});
    alignment.moveGap(0, 2, 4, true);
    EXPECT_EQ(history.undoCount(), 0U);
    EXPECT_EQ(textsOf(alignment)[0], "AC----/GHI");
}

TEST_F(ChainBreakTest, GapsBeforeABreakPushIt)
{
    expectChange({"AC-DE/GHI-"}, [](Alignment &a) { a.insertGap(0, 1); }, {"A-C-DE/GHI"});
    expectChange({"AC-DE/GHI"}, [](Alignment &a) { a.moveGap(0, 2, 0, true); }, {"-ACDE/GHI"});
    expectChange({"AC-DE/GHI"}, [](Alignment &a) { a.moveGap(0, 2, 8, true); }, {"ACDE/GHI-"});
}

TEST_F(ChainBreakTest, GapThatPassesAResidueLeavesTheBreakToAnotherGap)
{
    expectChange({"AC-/-GHI"}, [](Alignment &a) { a.moveGap(0, 3, 6, true); }, {"AC-/GH-I"});
    expectChange({"AC--/GHI"}, [](Alignment &a) { a.moveGap(0, 4, 6, true); }, {"AC-/GH-I"});
    expectChange({"AC/--GHI"}, [](Alignment &a) { a.moveGap(0, 2, 0, true); }, {"-AC/-GHI"});
}

TEST_F(ChainBreakTest, BreakWithoutAGapStaysBetweenItsResiduesAndTakesTheNextOne)
{
    Alignment &alignment = marked({"ACDEF/GHI"});
    alignment.moveGap(0, 5, 7, true);
    EXPECT_EQ(textsOf(alignment), Texts{"ACDEFGH-I +1"});
    EXPECT_EQ(TAMBO::makeRowRecord(alignment, 0).chainBreaks,
              (std::vector<ChainBreak>{{5, std::nullopt}}));
    alignment.moveGap(0, 7, 3, true);
    EXPECT_EQ(textsOf(alignment), Texts{"ACD-EFGHI +1"});
    alignment.moveGap(0, 3, 5, true);
    EXPECT_EQ(textsOf(alignment), Texts{"ACDEF/GHI"});
    history.undo();
    EXPECT_EQ(textsOf(alignment), Texts{"ACD-EFGHI +1"});
    history.undo();
    history.undo();
    EXPECT_EQ(textsOf(alignment), Texts{"ACDEF/GHI"});
}

TEST_F(ChainBreakTest, SlidingResiduesNeverPassTheBreak)
{
    expectChange({"AC--/GHI"}, [](Alignment &a) { a.moveGap(0, 5, 4, false); }, {"AC-/GHI-"});
    expectChange({"AC--/GHI"}, [](Alignment &a) { a.moveGap(0, 5, 2, false); }, {"ACGHI--- +1"});
    expectChange({"AC-/-GHI-"}, [](Alignment &a) { a.moveGap(0, 1, 2, false); }, {"A-C-/-GHI"});
}

TEST_F(ChainBreakTest, BreakBehindTheLastResidueStaysThere)
{
    expectChange({"ACD--/"}, [](Alignment &a) { a.insertGap(0, 1); }, {"A-CD-/"});
    expectChange({"ACD---//"}, [](Alignment &a) { a.insertGap(0, 1); }, {"A-CD--//"});
    expectChange({"ACD/--"}, [](Alignment &a) { a.insertGap(0, 1); }, {"A-CD/-"});
    expectChange({"ACD--/", "ACDEFG"}, [](Alignment &a) { a.insertGapCol(6, 2); },
                 {"ACD--/--", "ACDEFG--"});
}

TEST_F(ChainBreakTest, OpenedColumnsPushIt)
{
    expectChange({"AC-/-GHI"}, [](Alignment &a) { a.insertGapCol(3, 2); }, {"AC---/-GHI"});
    expectChange({"AC-/-GHI"}, [](Alignment &a) { a.insertGapCol(4, 2); }, {"AC-/---GHI"});
    expectChange({"/ACGHI"}, [](Alignment &a) { a.insertGapCol(0, 1); }, {"-/ACGHI"});
}

TEST_F(ChainBreakTest, RemovedColumnsLeaveItToTheNearestGap)
{
    expectChange({"AC--/-GHI", "ACDEFGHIK"}, [](Alignment &a) { a.remove(4); },
                 {"AC--/GHI", "ACDEGHIK"});
    expectChange({"AC-/GHI", "ACDEGHI"}, [](Alignment &a) { a.remove(3); }, {"AC/GHI", "ACDGHI"});
    expectChange({"AC/GHI", "ACDGHI"}, [](Alignment &a) { a.remove(2); }, {"ACGHI +1", "ACGHI"});
    expectChange({"A/CD-E", "ACDEFG"}, [](Alignment &a) { a.remove(Range(1, 4)); }, {"A/E", "AFG"});
}

TEST_F(ChainBreakTest, BreaksBetweenTheSameResiduesStandOnDifferentGaps)
{
    expectChange({"A/C/-D", "ACDEFG"}, [](Alignment &a) { a.remove(2); }, {"A//-D", "ACEFG"});
    expectChange({"A/-/C"}, [](Alignment &a) { a.moveGap(0, 2, 4, true); }, {"A//C-"});
    expectChange({"A//-C"}, [](Alignment &a) { a.moveGap(0, 1, 4, true); }, {"A//C-"});
    expectChange({"A//C-"}, [](Alignment &a) { a.moveGap(0, 1, 3, true); }, {"A/C-- +1"});
}

TEST_F(ChainBreakTest, RealignedResiduesKeepItBetweenThem)
{
    const auto cells = [](const std::string &text) {
        TAMBO::GappedSequence sequence;
        sequence.append(text);
        return TAMBO::OccupancyRow(std::move(sequence.occupancy));
    };
    expectChange({"AC-/-GHI", "ACDEFGHI"},
                 [&](Alignment &a) {
                     ASSERT_TRUE(TAMBO::replaceColumns(a.table(), Range(1, 6),
                                                       {cells("-C-G-"), cells("CDEFG")}, 5));
                 },
                 {"A-C/G-HI", "ACDEFGHI"});
    expectChange({"AC/G-I/", "ACDEF--"},
                 [&](Alignment &a) {
                     ASSERT_TRUE(TAMBO::replaceColumns(a.table(), Range(1, 5),
                                                       {cells("CG"), cells("xxxx")}, 4));
                 },
                 {"ACG--I/ +1", "ACDEF--"});
}

TEST_F(ChainBreakTest, CopiesHaveBreaksOfTheirOwn)
{
    Alignment &alignment = marked({"AC-/-GHI"});
    Alignment &copy = *alignment.duplicate(1);
    copy.moveGap(0, 3, 2, true);
    EXPECT_EQ(textsOf(copy), Texts{"AC/--GHI"});
    EXPECT_EQ(textsOf(alignment), Texts{"AC-/-GHI"});
    alignment.moveGap(0, 3, 4, true);
    EXPECT_EQ(textsOf(copy), Texts{"AC/--GHI"});
    EXPECT_EQ(textsOf(alignment), Texts{"AC--/GHI"});
}

TEST_F(ChainBreakTest, BreaksGoWithTheirRows)
{
    Alignment &alignment = marked({"AC-/GHI", "ACDEGHI", "A/CEGHI"});
    alignment.bubbleRow(0, 2);
    EXPECT_EQ(textsOf(alignment), (Texts{"ACDEGHI", "A/CEGHI", "AC-/GHI"}));
    alignment.removeRow(1);
    history.undo();
    EXPECT_EQ(textsOf(alignment), (Texts{"ACDEGHI", "A/CEGHI", "AC-/GHI"}));
}

TEST_F(ChainBreakTest, CombinedRowsBringThemAlong)
{
    Peptide &shared = peptide("shared", "ACDE");
    Alignment &first = alignmentOf({{&shared, "AC--DE"}});
    Alignment &second = marked({"G-/HI"});
    // The anchor comes to stand behind the marked row.
    Alignment &other = alignmentOf({{&shared, "A-CDE"}});
    other.combine(second);
    ASSERT_EQ(textsOf(other), (Texts{"A-CDE", "G-/HI"}));
    first.combine(other);
    EXPECT_EQ(textsOf(first), (Texts{"A-C--DE", "G-/--HI"}));
}

TEST_F(ChainBreakTest, RowThatTakesTheCellsOfAnotherHasItsBreaksThere)
{
    const Alignment &alignment = marked({"AC--/GH", "A-/CG-H", "A-C-/GH", "-ACGH--"});
    const auto taken = [&](std::size_t from) {
        TAMBO::AlignmentRow row(alignment.table().row(0));
        row.takeCells(alignment.table().row(from), 7);
        return row.chainBreaks(7);
    };
    // The breaks of the other row tell the gap only where they part the same residues.
    EXPECT_EQ(taken(1), (std::vector<ChainBreak>{{2, std::nullopt}}));
    EXPECT_EQ(taken(2), (std::vector<ChainBreak>{{2, 4}}));
    EXPECT_EQ(taken(3), (std::vector<ChainBreak>{{2, std::nullopt}}));
}

TEST_F(ChainBreakTest, RowsWithoutBreaksPayNothing)
{
    Alignment &plain = alignment({"AC---DEFGHI", "ACDEFGHIKLM"});
    EXPECT_EQ(plain.table().row(0).label(), nullptr);
    plain.moveGap(0, 2, 7, true);
    EXPECT_LT(history.last().front()->bytes(), 120U);
    plain.remove(Range(1, 3));
    Alignment &other = marked({"AC--/DEFGHI", "ACDEFGHIKLM"});
    const std::size_t steps = history.undoCount();
    other.insertGapCol(1, 1);
    other.remove(Range(0, 2));
    EXPECT_EQ(history.undoCount(), steps + 2);
    // The break was in none of the columns.
    EXPECT_LT(history.last().front()->bytes(), 250U);
}

// ---- Random changes, beside a reference in which every gap is somebody

class ChainBreakProperty : public ChainBreakTest
{
protected:
    struct Cell
    {
        int id = 0;
        bool isResidue = false;
    };
    struct Row
    {
        std::vector<Cell> cells;
        // For each break the gap on which it stands, or 0.
        std::vector<int> gaps;
    };

    std::size_t below(std::size_t limit) { return random() % limit; }

    std::string randomRow(std::size_t width)
    {
        const std::size_t gaps = 1 + below(9);
        std::string text;
        for (std::size_t i = 0; i < width; ++i) {
            const bool isGap = below(10) < gaps;
            const char gap = below(4) == 0 ? '/' : '-';
            text += isGap ? gap : "ACDEFGHIKL"[below(10)];
        }
        return text;
    }

    // As the alignment is now.
    void follow(const Alignment &alignment)
    {
        m_Rows.clear();
        for (std::size_t i = 0; i < alignment.height(); ++i) {
            const TAMBO::RowRecord record = TAMBO::makeRowRecord(alignment, i);
            Row row;
            for (const char c : record.sequence.text())
                row.cells.push_back({++m_Last, c != '-'});
            for (const ChainBreak &one : record.chainBreaks)
                row.gaps.push_back(one.column ? row.cells[*one.column].id : 0);
            m_Rows.push_back(std::move(row));
        }
    }

    // What the interface says, done to the reference. False for what is not followed here.
    bool changeSomething(Alignment &alignment);
    void moveGaps(Row &row, std::size_t from, std::size_t count, std::size_t to)
    {
        const auto begin = row.cells.begin();
        const std::vector<Cell> moved(begin + long(from), begin + long(from + count));
        row.cells.erase(begin + long(from), begin + long(from + count));
        row.cells.insert(row.cells.begin() + long(to), moved.begin(), moved.end());
    }
    void expectBreaksFollowed(const Alignment &alignment, bool isFollowed);

    std::mt19937 random{7};
    std::vector<Row> m_Rows;
    int m_Last = 0;
};

bool ChainBreakProperty::changeSomething(Alignment &alignment)
{
    const std::size_t width = alignment.width();
    const std::size_t index = below(alignment.height());
    Row &row = m_Rows[index];
    const std::size_t from = below(width);
    const std::size_t to = below(width);
    switch (below(10)) {
    case 0:
        alignment.insertGap(index, from);
        return false;
    case 1:
        alignment.bubbleRow(index, below(alignment.height()));
        return false;
    case 2: {
        const std::size_t count = 1 + below(3);
        alignment.insertGapCol(from, count);
        for (Row &each : m_Rows) {
            for (std::size_t i = 0; i < count; ++i)
                each.cells.insert(each.cells.begin() + long(from), Cell{++m_Last, false});
        }
        return true;
    }
    case 3: {
        const std::size_t count = 1 + below(std::min<std::size_t>(4, width - from));
        if (count == width)
            return true;
        alignment.remove(Range(from, from + count));
        for (Row &each : m_Rows)
            each.cells.erase(each.cells.begin() + long(from),
                             each.cells.begin() + long(from + count));
        return true;
    }
    case 4: {
        // All gaps of some columns go to their right ends.
        const std::size_t end = from + 1 + below(width - from);
        std::vector<TAMBO::OccupancyRow> cells;
        for (std::size_t i = 0; i < alignment.height(); ++i) {
            const TAMBO::OccupancyRow &old = alignment.table().row(i).cells();
            cells.push_back(TAMBO::OccupancyRow::filled(old.rank(end) - old.rank(from)));
        }
        EXPECT_TRUE(TAMBO::replaceColumns(alignment.table(), Range(from, end), cells, end - from));
        return false;
    }
    default:
        break;
    }
    if (row.cells[from].isResidue) {
        alignment.moveGap(index, from, to, below(2) == 0);
        return false;
    }
    if (below(3) > 0) {
        alignment.moveGap(index, from, to, true);
        moveGaps(row, from, 1, to);
        return true;
    }
    alignment.moveGap(index, from, to, false);
    std::size_t begin = from;
    std::size_t end = from + 1;
    while (begin > 0 && !row.cells[begin - 1].isResidue)
        --begin;
    while (end < width && !row.cells[end].isResidue)
        ++end;
    const std::size_t target =
        to < from ? begin - std::min(begin, from - to) : begin + std::min(width - end, to - from);
    moveGaps(row, begin, end - begin, target);
    return true;
}

void ChainBreakProperty::expectBreaksFollowed(const Alignment &alignment, bool isFollowed)
{
    for (std::size_t i = 0; i < alignment.height(); ++i) {
        const TAMBO::RowRecord record = TAMBO::makeRowRecord(alignment, i);
        const std::string text = record.sequence.text();
        std::vector<bool> isTaken(text.size());
        std::vector<std::uint64_t> lettersBefore;
        for (const char c : text)
            lettersBefore.push_back((lettersBefore.empty() ? 0 : lettersBefore.back()) +
                                    (c != '-' ? 1 : 0));
        for (const ChainBreak &one : record.chainBreaks) {
            if (!one.column)
                continue;
            ASSERT_LT(*one.column, text.size());
            ASSERT_EQ(text[*one.column], '-');
            ASSERT_EQ(lettersBefore[*one.column], one.letters);
            ASSERT_FALSE(isTaken[*one.column]);
            isTaken[*one.column] = true;
        }
        for (std::size_t k = 0; k < record.chainBreaks.size(); ++k) {
            const ChainBreak &one = record.chainBreaks[k];
            // None is without a gap while there is a free one.
            for (std::size_t c = 0; !one.column && c < text.size(); ++c)
                ASSERT_TRUE(text[c] != '-' || lettersBefore[c] != one.letters || isTaken[c]);
            if (!isFollowed)
                continue;
            const auto &cells = m_Rows[i].cells;
            for (std::size_t c = 0; c < cells.size(); ++c) {
                const bool isItsGap = cells[c].id == m_Rows[i].gaps[k];
                ASSERT_TRUE(!isItsGap || lettersBefore[c] != one.letters || isTaken[c])
                    << "row " << i << ", column " << c;
            }
        }
    }
}

TEST_F(ChainBreakProperty, BreaksFollowTheirGapsThroughRandomChanges)
{
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Texts rows;
        const std::size_t width = 2 + below(90);
        for (std::size_t i = 0; i < 1 + below(4); ++i)
            rows.push_back(randomRow(width));
        Alignment &alignment = marked(rows);
        ASSERT_EQ(textsOf(alignment), rows);
        std::vector<Texts> states{rows};
        for (int i = 0; i < 60; ++i) {
            follow(alignment);
            const bool isFollowed = changeSomething(alignment);
            ASSERT_NO_FATAL_FAILURE(expectBreaksFollowed(alignment, isFollowed));
            if (history.undoCount() == states.size())
                states.push_back(textsOf(alignment));
            ASSERT_EQ(textsOf(alignment), states.back());
        }
        for (std::size_t i = states.size() - 1; i > 0; --i) {
            history.undo();
            ASSERT_EQ(textsOf(alignment), states[i - 1]) << "undo to " << i - 1;
        }
        for (std::size_t i = 1; i < states.size(); ++i) {
            history.redo();
            ASSERT_EQ(textsOf(alignment), states[i]) << "redo to " << i;
        }
        history.clear();
    }
}

} // namespace ChainBreakTest
