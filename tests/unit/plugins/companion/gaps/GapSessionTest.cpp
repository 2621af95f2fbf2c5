// SPDX-License-Identifier: GPL-3.0-or-later
// Edits of blocks while the work is kept on the disk, and what is there when the program has been
// killed.
#include "GapEdit.h"

#include "unit/sessions/live/LiveFixture.h"

#include <limits>

namespace GapSessionTest {

using companion::GapEdit;
using companion::KeptColumns;

class BlockEditsInALiveSession : public LiveFixture, public testing::WithParamInterface<unsigned>
{
protected:
    BlockEditsInALiveSession() : LiveFixture(GetParam()) { }

    void editBlock()
    {
        const std::vector<TAMBO::Alignment *> alignments = all<TAMBO::Alignment>();
        if (alignments.empty())
            return;
        TAMBO::Alignment &alignment = *alignments[below(unsigned(alignments.size()))];
        const auto width = unsigned(alignment.width());
        const auto height = unsigned(alignment.height());
        if (width == 0 || height == 0)
            return;
        constexpr unsigned kinds = unsigned(GapEdit::Kind::PushRight) + 1;
        GapEdit edit;
        edit.kind = GapEdit::Kind(below(kinds));
        edit.block.rowBegin = below(height);
        edit.block.rowEnd = edit.block.rowBegin + 1 + below(height);
        edit.block.colBegin = below(width);
        edit.block.colEnd = edit.block.colBegin + 1 + below(width) / 2;
        edit.count = 1 + below(3);
        if (below(2) == 0 &&
            (edit.kind == GapEdit::Kind::Slide || edit.kind == GapEdit::Kind::Move))
            edit.count = -edit.count;
        KeptColumns kept;
        if (below(3) == 0)
            kept = {below(width), below(width + 1)};
        const unsigned long revision = alignment.layoutRevision();
        const std::size_t steps = history.position();
        const companion::Outcome outcome = applyGapEdit(alignment, edit, kept);
        m_Changes += outcome.moved != 0 ? 1 : 0;
        EXPECT_EQ(outcome.moved != 0, alignment.layoutRevision() != revision);
        EXPECT_EQ(history.position(), steps + (outcome.moved != 0 ? 1 : 0));
    }
    void workOnBlocks(int rounds)
    {
        for (int round = 0; round < rounds; ++round) {
            for (unsigned i = below(6); i > 0; --i)
                editBlock();
            ASSERT_NO_FATAL_FAILURE(workOnce());
            if (below(6) == 0)
                session->fold();
            if (below(3) == 0)
                session->writeMore(1 + below(3000));
        }
    }

    int m_Changes = 0;
};

TEST_P(BlockEditsInALiveSession, AreThereAgainAfterTheProgramWasKilled)
{
    for (int i = 0; i < 3; ++i)
        annotated("rows" + std::to_string(i));
    // Objects with all that is in them, and steps that come by their changes.
    beginSession(GetParam() % 2 == 0 ? std::numeric_limits<std::size_t>::max() : 0);
    for (int part = 0; part < 3; ++part) {
        ASSERT_NO_FATAL_FAILURE(workOnBlocks(40));
        session->finish();
        const Entries kept = entries;
        endSession();
        const std::string portrait = lastingPortrait();
        const std::size_t position = history.position();
        const std::vector<std::string> states = allStates(false);
        ASSERT_NO_FATAL_FAILURE(beginAgain(kept));
        EXPECT_EQ(lastingPortrait(), portrait);
        EXPECT_EQ(history.position(), position);
        ASSERT_EQ(allStates(false), states);
        beginSession(GetParam() % 2 == 0 ? std::numeric_limits<std::size_t>::max() : 0);
    }
    EXPECT_GT(m_Changes, 50);
}

INSTANTIATE_TEST_SUITE_P(, BlockEditsInALiveSession, testing::Range(1U, 9U),
                         [](const auto &one) { return "Seed" + std::to_string(one.param); });

} // namespace GapSessionTest
