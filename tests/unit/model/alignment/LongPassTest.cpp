// SPDX-License-Identifier: GPL-3.0-or-later
// Passes over all rows ask again and again whether they are to go on, and leave nothing behind when
// they are not.
#include "unit/model/AlignmentFixture.h"
#include "unit/model/FullState.h"

#include "Hooks.h"
#include "LongStages.h"
#include "LongWork.h"

#include <array>
#include <string>
#include <vector>

using TAMBO::Alignment;
using TAMBO::LongStages;
using TAMBO::LongWork;

namespace LongPassTest {

constexpr Color kRed(0xff0000);
constexpr Color kGreen(0x00ff00);
constexpr std::size_t kLooks = 3;
constexpr std::size_t kRows = (kLooks - 1) * LongWork::kStride + 1;

class LongPass : public AlignmentFixture
{
protected:
    struct Look
    {
        std::string what;
        double share;
        bool canBeGivenUp;
    };

    LongPass()
    {
        TAMBO::modelHooks().working = [this](const char *what, double share, bool canBeGivenUp) {
            m_Looks.push_back({what, share, canBeGivenUp});
            return m_Looks.size() != m_StopAt;
        };
        TAMBO::modelHooks().worked = [this] { ++m_Ends; };
    }

    // "AC-D" again and again.
    Alignment &family()
    {
        TAMBO::AlignmentTable::Rows rows;
        for (std::size_t i = 0; i < kRows; ++i) {
            auto sequence = std::make_unique<TAMBO::Peptide>("s", "ACD");
            TAMBO::GappedSequence cells;
            cells.append("AC-D");
            rows.push_back(std::make_unique<TAMBO::AlignmentRow>(
                *sequence, TAMBO::OccupancyRow(std::move(cells.occupancy))));
            m_Sequences.push_back(sequence.get());
            TAMBO::ObjectSpace::get().add(std::move(sequence));
        }
        auto owned = TAMBO::AlignmentTable::make("family", std::move(rows), 4);
        Alignment &made = *owned;
        TAMBO::ObjectSpace::get().add(std::move(owned));
        history.clear();
        m_Looks.clear();
        m_Ends = 0;
        return made;
    }
    [[nodiscard]] std::size_t coloredRows() const
    {
        std::size_t count = 0;
        for (const TAMBO::Peptide *sequence : m_Sequences)
            count += sequence->hasOwnColors(0, 3) ? 1 : 0;
        return count;
    }
    [[nodiscard]] std::size_t selectedRows() const
    {
        std::size_t count = 0;
        for (const TAMBO::Peptide *sequence : m_Sequences)
            count += sequence->selectedCount() > 0 ? 1 : 0;
        return count;
    }
    void giveUpAt(std::size_t look) { m_StopAt = look; }
    static std::array<Color, 256> everyLetter(Color color)
    {
        std::array<Color, 256> colors;
        colors.fill(color);
        return colors;
    }

    std::vector<TAMBO::Peptide *> m_Sequences;
    std::vector<Look> m_Looks;
    std::size_t m_Ends = 0;
    std::size_t m_StopAt = 0;
};

TEST_F(LongPass, LooksAtTheUserAtTheBeginningAndAfterSoManyRows)
{
    family().colorByLetter(everyLetter(kRed));
    ASSERT_EQ(m_Looks.size(), kLooks);
    EXPECT_EQ(m_Looks[0].what, "Coloring");
    EXPECT_EQ(m_Looks[0].share, 0);
    EXPECT_NEAR(m_Looks[1].share, 0.5, 0.01);
    EXPECT_TRUE(m_Looks[1].canBeGivenUp);
    EXPECT_EQ(m_Ends, 1U);
    EXPECT_EQ(coloredRows(), kRows);
    EXPECT_EQ(history.undoCount(), 1U);
}

TEST_F(LongPass, ColoringThatIsGivenUpLeavesColorsAndHistoryAsTheyWere)
{
    Alignment &all = family();
    all.colorLetters({'A', '\0', '\0', '\0'}, kGreen);
    const std::size_t steps = history.undoCount();
    const auto isAsItWas = [&] {
        EXPECT_EQ(history.undoCount(), steps);
        for (const TAMBO::Peptide *sequence : m_Sequences) {
            ASSERT_EQ(sequence->ownColor(0), kGreen);
            ASSERT_FALSE(sequence->hasOwnColors(1, 3));
        }
    };
    for (std::size_t look = 1; look <= kLooks; ++look) {
        m_Looks.clear();
        giveUpAt(look);
        all.colorByLetter(everyLetter(kRed));
        EXPECT_EQ(m_Looks.size(), look);
        isAsItWas();
        m_Looks.clear();
        all.colorLetters({'A', 'C', '\0', 'D'}, kRed);
        isAsItWas();
    }
    giveUpAt(0);
    all.colorByLetter(everyLetter(kRed));
    EXPECT_EQ(sequence(all, 0).ownColor(1), kRed);
    history.undo();
    isAsItWas();
}

TEST_F(LongPass, ColoringSelectedResiduesThatIsGivenUpLeavesThemAsTheyWere)
{
    Alignment &all = family();
    all.select({0, 2}, true);
    m_Looks.clear();
    giveUpAt(2);
    all.colorSelected(kRed);
    EXPECT_EQ(coloredRows(), 0U);
    EXPECT_EQ(history.undoCount(), 0U);
    EXPECT_EQ(selectedRows(), kRows);
}

TEST_F(LongPass, ColoringWithoutAHistoryGoesToItsEnd)
{
    Alignment &all = family();
    TAMBO::setEditRecorder(nullptr);
    giveUpAt(2);
    all.colorByLetter(everyLetter(kRed));
    EXPECT_EQ(m_Looks.size(), kLooks);
    EXPECT_FALSE(m_Looks.front().canBeGivenUp);
    EXPECT_EQ(coloredRows(), kRows);
}

TEST_F(LongPass, ColoringBehindAnotherChangeOfTheStepGoesToItsEnd)
{
    Alignment &all = family();
    giveUpAt(2);
    {
        const TAMBO::ChangeScope scope;
        sequence(all, 0).setColor(0, kGreen);
        all.colorByLetter(everyLetter(kRed));
    }
    EXPECT_FALSE(m_Looks.front().canBeGivenUp);
    EXPECT_EQ(coloredRows(), kRows);
    history.undo();
    EXPECT_EQ(coloredRows(), 0U);
}

// Half of the rows widen the alignment.
std::vector<Alignment::GapMove> movesOfAll()
{
    std::vector<Alignment::GapMove> moves;
    for (std::size_t row = 0; row < kRows; ++row) {
        moves.push_back({row, 2, 1, row % 2});
        if (row % 2 == 1)
            moves.push_back({row, std::nullopt, 1, 3});
    }
    return moves;
}

TEST_F(LongPass, MovingGapsThatIsGivenUpLeavesCellsCountsAndHistoryAsTheyWere)
{
    Alignment &all = family();
    const std::string before = FullState::of(all);
    const TAMBO::AlignmentMajority majority = all.majority(1);
    const auto isAsItWas = [&] {
        EXPECT_EQ(FullState::of(all), before);
        EXPECT_EQ(all.majority(1).count, majority.count);
        EXPECT_EQ(history.undoCount(), 0U);
    };
    for (std::size_t look = 1; look <= kLooks; ++look) {
        m_Looks.clear();
        giveUpAt(look);
        EXPECT_EQ(all.moveGaps(movesOfAll()), Alignment::GapsMoved::GivenUp);
        EXPECT_EQ(m_Looks.size(), look);
        EXPECT_TRUE(m_Looks[0].canBeGivenUp);
        isAsItWas();
    }
    giveUpAt(0);
    EXPECT_EQ(all.moveGaps(movesOfAll()), Alignment::GapsMoved::All);
    EXPECT_EQ(history.undoCount(), 1U);
    EXPECT_EQ(all.GetSequence(0, false), "-ACD-");
    EXPECT_EQ(all.GetSequence(1, false), "A-C-D");
    EXPECT_EQ(all.majority(0).count, kRows / 2);
    EXPECT_EQ(all.majority(1).count, kRows - kRows / 2);
    history.undo();
    isAsItWas();
}

TEST_F(LongPass, MovingGapsThatWouldWidenTheAlignmentTooMuchChangesNothing)
{
    Alignment &all = family();
    const std::string before = FullState::of(all);
    auto moves = movesOfAll();
    moves.push_back({kRows - 1, std::nullopt, ~0UL / 2, 0});
    EXPECT_EQ(all.moveGaps(moves), Alignment::GapsMoved::TooWide);
    moves.back().count = ~0UL;
    EXPECT_EQ(all.moveGaps(moves), Alignment::GapsMoved::TooWide);
    EXPECT_EQ(FullState::of(all), before);
    EXPECT_EQ(history.undoCount(), 0U);
    EXPECT_EQ(log.size(), 2U);
}

TEST_F(LongPass, SelectingThatIsGivenUpSelectsNothing)
{
    Alignment &all = family();
    for (std::size_t look = 1; look <= kLooks; ++look) {
        m_Looks.clear();
        giveUpAt(look);
        all.selectLetters({'A', '\0', '\0', 'D'});
        EXPECT_EQ(m_Looks.size(), look);
        EXPECT_EQ(selectedRows(), 0U);
    }
    m_Looks.clear();
    giveUpAt(0);
    all.selectLetters({'A', '\0', '\0', 'D'});
    EXPECT_EQ(m_Looks.size(), kLooks);
    EXPECT_EQ(selectedRows(), kRows);
    EXPECT_FALSE(sequence(all, 0).isSelected(1));
}

TEST_F(LongPass, SelectingCellsThatIsGivenUpLeavesTheSelectionAsItWas)
{
    Alignment &all = family();
    all.selectInRow(0, {0, 1});
    const std::vector<bool> rows(kRows, true);
    for (std::size_t look = 1; look <= kLooks; ++look) {
        m_Looks.clear();
        giveUpAt(look);
        all.selectCells(rows, {false, true}, Alignment::Selecting::Replace);
        EXPECT_EQ(m_Looks.size(), look);
        EXPECT_EQ(m_Looks.front().what, "Selecting");
        EXPECT_EQ(selectedRows(), 1U);
        EXPECT_TRUE(sequence(all, 0).isSelected(0));
    }
    giveUpAt(0);
    all.selectCells(rows, {false, true}, Alignment::Selecting::Replace);
    EXPECT_EQ(selectedRows(), kRows);
    EXPECT_FALSE(sequence(all, 0).isSelected(0));
}

TEST_F(LongPass, CountingThatIsGivenUpGivesNothingAndIsBegunAgain)
{
    const Alignment &all = family();
    for (std::size_t look = 1; look <= kLooks; ++look) {
        m_Looks.clear();
        giveUpAt(look);
        EXPECT_TRUE(all.majorities().empty());
    }
    giveUpAt(0);
    const std::vector<TAMBO::AlignmentMajority> counted = all.majorities();
    ASSERT_EQ(counted.size(), 4U);
    EXPECT_EQ(counted[0].letter, 'A');
    EXPECT_EQ(counted[0].count, kRows);
    EXPECT_EQ(counted[2].count, 0U);
    m_Looks.clear();
    EXPECT_EQ(all.majorities().size(), 4U);
    EXPECT_TRUE(m_Looks.empty()) << "what is known is not counted again";
}

TEST_F(LongPass, OfWorkInsideOtherWorkTheOuterOneIsShown)
{
    const Alignment &all = family();
    {
        LongWork outer("Outer", 1, LongWork::Kind::Fixed);
        EXPECT_TRUE(outer.goesOn());
        EXPECT_EQ(all.majorities().size(), 4U);
    }
    ASSERT_EQ(m_Looks.size(), 1U);
    EXPECT_EQ(m_Looks.front().what, "Outer");
    EXPECT_FALSE(m_Looks.front().canBeGivenUp);
    EXPECT_EQ(m_Ends, 1U);
}

TEST_F(LongPass, StagesAreShownAsOneWork)
{
    const Alignment &all = family();
    {
        LongStages stages("All of it", 2);
        EXPECT_EQ(all.majorities().size(), 4U);
        EXPECT_EQ(m_Ends, 0U);
        stages.next();
        LongWork second("Second", 1, LongWork::Kind::Fixed);
        EXPECT_TRUE(second.goesOn());
    }
    ASSERT_EQ(m_Looks.size(), kLooks + 1);
    for (const Look &look : m_Looks)
        EXPECT_EQ(look.what, "All of it");
    for (std::size_t i = 0; i < kLooks; ++i)
        EXPECT_DOUBLE_EQ(m_Looks[i].share, double(i * LongWork::kStride) / double(kRows) / 2);
    EXPECT_DOUBLE_EQ(m_Looks.back().share, 0.5);
    EXPECT_TRUE(m_Looks.front().canBeGivenUp);
    EXPECT_FALSE(m_Looks.back().canBeGivenUp);
    EXPECT_EQ(m_Ends, 1U);
    LongWork alone("Alone", 1, LongWork::Kind::Fixed);
    EXPECT_TRUE(alone.goesOn());
    EXPECT_EQ(m_Looks.back().what, "Alone") << "they are over";
}

TEST_F(LongPass, StagesInsideOfOtherWorkAreNotShown)
{
    {
        LongWork outer("Outer", 1, LongWork::Kind::Fixed);
        LongStages stages("Stages", 2);
        EXPECT_TRUE(outer.goesOn());
    }
    ASSERT_EQ(m_Looks.size(), 1U);
    EXPECT_EQ(m_Looks.front().what, "Outer");
    EXPECT_EQ(m_Ends, 1U);
}

TEST_F(LongPass, WhatArrivesWaitsForTheEndOfTheWork)
{
    bool hasArrived = false;
    {
        LongWork work("Work", 1, LongWork::Kind::Reading);
        TAMBO::whenNothingIsPublished([&] { hasArrived = true; });
        EXPECT_FALSE(hasArrived);
    }
    EXPECT_TRUE(hasArrived);
}

} // namespace LongPassTest
