// SPDX-License-Identifier: GPL-3.0-or-later
// What an alignment was before some steps, whatever they have done, is told without undoing them.
#include "DataMaker.h"
#include "RowLayouts.h"
#include "unit/history/ReplayFixture.h"

#include <set>

namespace FormerLayoutTest {

using TAMBO::RowLayout;
using TAMBO::RowLayouts;

class FormerLayoutTest : public ReplayFixture, public testing::WithParamInterface<unsigned>
{
protected:
    FormerLayoutTest() : ReplayFixture(GetParam()) { }

    using Layouts = std::vector<std::vector<RowLayout>>;

    static std::vector<RowLayout> layoutOf(const TAMBO::Alignment &alignment)
    {
        std::vector<RowLayout> rows;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            rows.push_back(RowLayouts::of(alignment, row));
        return rows;
    }
    // Those that follow each other and are the same count once.
    static void append(Layouts &all, std::vector<RowLayout> layout)
    {
        if (all.empty() || all.back() != layout)
            all.push_back(std::move(layout));
    }
    // Of rows whose sequences are there at the end, from now on back to when the alignment came.
    Layouts travelled(const TAMBO::Alignment &alignment)
    {
        std::set<const TAMBO::Compound *> there;
        for (const TAMBO::Peptide *const sequence : sequences())
            there.insert(sequence);
        const std::size_t position = history.position();
        Layouts all;
        for (std::size_t i = position + 1; i > 0; --i) {
            EXPECT_TRUE(history.goTo(i - 1));
            if (alignment.Parent() == nullptr)
                break;
            std::vector<RowLayout> layout = layoutOf(alignment);
            std::erase_if(layout,
                          [&](const RowLayout &row) { return !there.contains(row.sequence); });
            append(all, std::move(layout));
        }
        EXPECT_TRUE(history.goTo(position));
        return all;
    }
    // As it is told.
    static Layouts told(const TAMBO::Alignment &alignment)
    {
        Layouts all;
        append(all, layoutOf(alignment));
        const std::size_t steps = RowLayouts::steps(alignment).size();
        for (std::size_t count = 1; count <= steps; ++count) {
            const auto former = RowLayouts::before(alignment, count);
            EXPECT_TRUE(former) << count;
            if (!former)
                break;
            append(all, former->rows);
        }
        EXPECT_FALSE(RowLayouts::before(alignment, steps + 1));
        return all;
    }
    void expectAllStates()
    {
        for (const TAMBO::Alignment *const alignment : all<TAMBO::Alignment>()) {
            const std::string before = lastingPortrait();
            const Layouts found = told(*alignment);
            ASSERT_EQ(lastingPortrait(), before) << "nothing has changed";
            const Layouts expected = travelled(*alignment);
            checked += found.size() - 1;
            ASSERT_EQ(found, expected) << alignment->Name();
        }
    }

    // Former states that were other than those behind them.
    std::size_t checked = 0;
};

TEST_P(FormerLayoutTest, EachStateIsToldAsUndoWouldBringItBack)
{
    for (int i = 0; i < 8; ++i) {
        ASSERT_NO_FATAL_FAILURE(work(60));
        ASSERT_NO_FATAL_FAILURE(expectAllStates());
    }
    EXPECT_GT(checked, 3U);
}

TEST_P(FormerLayoutTest, NobodyHearsOfIt)
{
    ASSERT_NO_FATAL_FAILURE(work(60));
    keepJournal();
    const std::uint64_t revision = history.revision();
    for (const TAMBO::Alignment *const alignment : all<TAMBO::Alignment>())
        static_cast<void>(told(*alignment));
    EXPECT_TRUE(records.empty());
    EXPECT_EQ(history.revision(), revision);
    EXPECT_NE(TAMBO::stepJournal(), nullptr);
}

TEST_P(FormerLayoutTest, TheStatesOfRecoveredWorkAreTold)
{
    ASSERT_NO_FATAL_FAILURE(work(60));
    const Stored middle = stored();
    keepJournal();
    ASSERT_NO_FATAL_FAILURE(work(60));
    endProgram();
    ASSERT_TRUE(load(middle));
    ASSERT_TRUE(replay(records));
    ASSERT_NO_FATAL_FAILURE(expectAllStates());
    EXPECT_GT(checked, 0U);
}

TEST_P(FormerLayoutTest, AStepThatDeletedASequenceIsToldAfterARestart)
{
    ASSERT_NO_FATAL_FAILURE(work(30));
    const std::vector<TAMBO::Alignment *> shown = all<TAMBO::Alignment>();
    for (TAMBO::Alignment *const alignment : shown)
        if (alignment->height() > 1)
            TAMBO::DataMaker::Destroy(alignment->GetSeq(0));
    const Stored kept = stored();
    endProgram();
    ASSERT_TRUE(load(kept));
    ASSERT_NO_FATAL_FAILURE(expectAllStates());
}

INSTANTIATE_TEST_SUITE_P(Seeds, FormerLayoutTest, testing::Range(0U, 6U));

} // namespace FormerLayoutTest
