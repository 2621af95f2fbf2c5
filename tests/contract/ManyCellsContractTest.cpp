// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of edits of several gaps, rows and columns at once, and of copies of parts:
// drawn by lot, of alignments with all that there can be in them.
#include "AlignmentDetails.h"
#include "AlignmentTable.h"
#include "unit/history/AllChanges.h"

#include <gmock/gmock.h>

using TAMBO::Alignment;
using TAMBO::AlignmentDetails;
using testing::ElementsAre;

namespace ManyCellsContractTest {

class ManyCellsContract : public AllChanges, public testing::WithParamInterface<unsigned>
{
protected:
    ManyCellsContract() : AllChanges(GetParam()) { }

    std::vector<bool> flags(std::size_t count)
    {
        const unsigned share = 1 + below(8);
        std::vector<bool> all(count + below(3));
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = below(10) < share;
        return all;
    }
    static bool isSet(const std::vector<bool> &flags, std::size_t place)
    {
        return place < flags.size() && flags[place];
    }
    static std::string chosen(const std::string &text, const std::vector<bool> &columns,
                              bool wanted)
    {
        std::string result;
        for (std::size_t col = 0; col < text.size(); ++col)
            if (isSet(columns, col) == wanted)
                result += text[col];
        return result;
    }
    // With breaks, annotation, rows that begin later and, now and then, ties.
    Alignment &family()
    {
        Alignment &made = annotated("family" + std::to_string(++this->made));
        if (below(2) == 0) {
            TAMBO::Structure &chains =
                structure("model" + std::to_string(++this->made), {{"A", letters() + letters()}});
            TAMBO::Peptide &row = *TAMBO::Peptide::from(made.GetSeq(0));
            TAMBO::ResidueTies ties;
            const std::size_t count = std::min(row.residueCount(), chains.chain(0)->residueCount());
            ties.append({0, std::uint32_t(count), 0, chains.chain(0)});
            row.retie(std::move(ties));
        }
        made.range({below(made.width()), below(made.width() + 1)});
        history.clear();
        return made;
    }
    void edit(Alignment &alignment)
    {
        const unsigned row = below(alignment.height() + 1);
        const unsigned col = below(alignment.width() + 1);
        const unsigned count = below(5);
        switch (below(5)) {
        case 0:
            alignment.insertGaps(row, col, count);
            break;
        case 1:
            alignment.moveGaps(row, col, count, below(alignment.width() + 1));
            break;
        case 2: {
            const std::vector<bool> rows = flags(alignment.height());
            const unsigned end = below(alignment.width() + 2);
            alignment.pushResidues(rows, {col, end}, below(2) == 0);
            break;
        }
        case 3:
            alignment.removeRows(flags(alignment.height()));
            break;
        default:
            EXPECT_TRUE(alignment.removeColumns(flags(alignment.width())));
            break;
        }
    }
};

TEST_P(ManyCellsContract, EachEditIsOneStepThatIsTakenBackAndDoneAgainWhole)
{
    int steps = 0;
    for (int round = 0; round < 60; ++round) {
        Alignment &alignment = family();
        while (alignment.height() > 0 && history.size() < 8 && below(30) > 0) {
            const std::string before = lastingPortrait();
            const std::size_t position = history.position();
            edit(alignment);
            const std::string after = lastingPortrait();
            ASSERT_EQ(history.position(), position + (after == before ? 0 : 1));
            if (after == before)
                continue;
            ++steps;
            ASSERT_TRUE(history.undo());
            ASSERT_EQ(lastingPortrait(), before);
            ASSERT_TRUE(history.redo());
            ASSERT_EQ(lastingPortrait(), after);
        }
        const std::string last = lastingPortrait();
        ASSERT_TRUE(history.goTo(0));
        ASSERT_TRUE(history.goTo(history.size()));
        ASSERT_EQ(lastingPortrait(), last);
        history.clear();
        space().reset();
    }
    EXPECT_GT(steps, 60);
}

TEST_P(ManyCellsContract, RemovedColumnsTakeAlongWhatStandsInThemAndNothingElse)
{
    for (int round = 0; round < 60; ++round) {
        Alignment &alignment = family();
        const std::vector<bool> columns = flags(alignment.width());
        std::vector<std::string> wanted;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            wanted.push_back(chosen(alignment.GetSequence(row, false), columns, false));
        const std::string line = chosen(
            AlignmentDetails::columnText(alignment, 0, 0, alignment.width()), columns, false);
        ASSERT_TRUE(alignment.removeColumns(columns));
        for (unsigned long row = 0; row < alignment.height(); ++row)
            ASSERT_EQ(alignment.GetSequence(row, false), wanted[row]);
        ASSERT_EQ(AlignmentDetails::columnText(alignment, 0, 0, alignment.width()), line);
        ASSERT_EQ(alignment.width(), line.size());
        ASSERT_LE(alignment.range().second, std::max(alignment.width(), alignment.range().first));
        history.clear();
        space().reset();
    }
}

TEST_P(ManyCellsContract, PushedResiduesStandAtTheEdgeInTheirOrderAndNothingElseMoves)
{
    for (int round = 0; round < 60; ++round) {
        Alignment &alignment = family();
        const std::vector<bool> rows = flags(alignment.height());
        const unsigned begin = below(alignment.width());
        const unsigned end = begin + 1 + below(alignment.width() - begin);
        const bool toLeft = below(2) == 0;
        std::vector<std::string> wanted;
        for (unsigned long row = 0; row < alignment.height(); ++row) {
            std::string text = alignment.GetSequence(row, false);
            if (isSet(rows, row))
                std::stable_partition(text.begin() + begin, text.begin() + end,
                                      [&](char cell) { return (cell != '-') == toLeft; });
            wanted.push_back(text);
        }
        const auto lines = [&] {
            return AlignmentDetails::columnText(alignment, 0, 0, alignment.width()) +
                   AlignmentDetails::columnText(alignment, 1, 0, alignment.width());
        };
        const std::string said = lines();
        const Alignment::Range range = alignment.range();
        alignment.pushResidues(rows, {begin, end}, toLeft);
        for (unsigned long row = 0; row < alignment.height(); ++row)
            ASSERT_EQ(alignment.GetSequence(row, false), wanted[row]);
        ASSERT_EQ(lines(), said);
        ASSERT_EQ(alignment.range(), range);
        history.clear();
        space().reset();
    }
}

TEST_P(ManyCellsContract, APartHasTheResiduesLinesAndTiesOfItsCells)
{
    for (int round = 0; round < 60; ++round) {
        Alignment &alignment = family();
        const std::vector<bool> rows = flags(alignment.height());
        const std::vector<bool> columns = flags(alignment.width());
        const std::string before = lastingPortrait();
        Alignment *const part = alignment.duplicate(rows, columns, "part");
        ASSERT_NE(part, nullptr);
        ASSERT_EQ(history.size(), 1U);
        ASSERT_EQ(AlignmentDetails::columnText(*part, 0, 0, part->width()),
                  chosen(AlignmentDetails::columnText(alignment, 0, 0, alignment.width()), columns,
                         true));
        unsigned long at = 0;
        for (unsigned long row = 0; row < alignment.height() && part->width() > 0; ++row) {
            if (!isSet(rows, row))
                continue;
            unsigned long shown = 0;
            for (unsigned long col = 0; col < alignment.width(); ++col) {
                if (!isSet(columns, col))
                    continue;
                // The same objects, and so their ties, colors and numbers.
                ASSERT_EQ(part->getItem(at, shown), alignment.getItem(row, col));
                ++shown;
            }
            ASSERT_EQ(part->GetSeqName(at), alignment.GetSeqName(row));
            ++at;
        }
        ASSERT_EQ(part->height(), part->width() == 0 ? 0 : at);
        const std::string after = lastingPortrait();
        ASSERT_TRUE(history.undo());
        ASSERT_EQ(lastingPortrait(), before);
        ASSERT_TRUE(history.redo());
        ASSERT_EQ(lastingPortrait(), after);
        // Its cells are its own.
        part->removeRows({true});
        ASSERT_TRUE(part->removeColumns({true, false, true}));
        ASSERT_TRUE(history.goTo(0));
        ASSERT_EQ(lastingPortrait(), before);
        history.clear();
        space().reset();
    }
}

INSTANTIATE_TEST_SUITE_P(, ManyCellsContract, testing::Range(1U, 5U),
                         [](const auto &one) { return "Seed" + std::to_string(one.param); });

class GivenUpEdits : public AllChanges
{
protected:
    GivenUpEdits() : AllChanges(1)
    {
        TAMBO::modelHooks().working = [this](const char *, double, bool canBeGivenUp) {
            EXPECT_TRUE(canBeGivenUp);
            return ++m_Looks != m_StopAt;
        };
        std::vector<TAMBO::Compound *> sequences;
        for (int row = 0; row < 300; ++row)
            sequences.push_back(&peptide("row" + std::to_string(row), "ACDEFG"));
        m_Rows = TAMBO::DataMaker::makeAlignment("rows", sequences);
        history.clear();
        m_Looks = 0;
    }

    Alignment *m_Rows = nullptr;
    int m_Looks = 0;
    int m_StopAt = 0;
};

TEST_F(GivenUpEdits, OfColumnsAndCopiesOfPartsChangeNothing)
{
    const std::string before = lastingPortrait();
    for (m_StopAt = 1; m_StopAt < 4; ++m_StopAt) {
        m_Looks = 0;
        EXPECT_FALSE(m_Rows->removeColumns({true, false, true}));
        EXPECT_EQ(lastingPortrait(), before);
        m_Looks = 0;
        EXPECT_EQ(m_Rows->duplicate({true, true}, {true, false, true}, "part"), nullptr);
        EXPECT_EQ(lastingPortrait(), before);
    }
    EXPECT_EQ(history.size(), 0U);
    m_StopAt = 0;
    EXPECT_TRUE(m_Rows->removeColumns({true, false, true}));
    EXPECT_EQ(m_Rows->GetSequence(299, false), "CEFG");
}

// Also in a step that has changed something else before.
TEST_F(GivenUpEdits, LeaveTheStepAsItWas)
{
    {
        const Guard guard(Publisher::Update, *m_Rows);
        m_Rows->insertGaps(3, 0, 2);
        m_StopAt = 2;
        m_Looks = 0;
        EXPECT_FALSE(m_Rows->removeColumns({true, false, true}));
    }
    EXPECT_EQ(history.size(), 1U);
    EXPECT_EQ(m_Rows->GetSequence(3, false), "--ACDEFG");
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(m_Rows->GetSequence(3, false), "ACDEFG");
}

} // namespace ManyCellsContractTest
