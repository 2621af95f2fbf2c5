// SPDX-License-Identifier: GPL-3.0-or-later
#include "GapEdit.h"

#include "PlainGaps.h"
#include "unit/model/AlignmentFixture.h"
#include "unit/model/FullState.h"

#include <random>

namespace GapEditPropertyTest {

using companion::GapEdit;
using companion::KeptColumns;
using companion::Outcome;
using Kind = GapEdit::Kind;

constexpr Kind kKinds[] = {Kind::Insert, Kind::RemoveBefore, Kind::RemoveBehind, Kind::Slide,
                           Kind::Move,   Kind::PushLeft,     Kind::PushRight};

class GapEditsBesidePlainOnes : public AlignmentFixture, public testing::WithParamInterface<Kind>
{
protected:
    unsigned long below(unsigned long limit) { return m_Random() % limit; }
    static bool isPush() { return GetParam() == Kind::PushLeft || GetParam() == Kind::PushRight; }

    // Of few gaps, or of many, alone or side by side.
    std::string row(unsigned long width)
    {
        std::string cells;
        const unsigned long share = 1 + below(9);
        const bool isInRuns = below(2) == 0;
        while (cells.size() < width)
            cells.append(1 + (isInRuns ? below(5) : 0),
                         below(10) < share ? '-' : char('A' + below(26)));
        cells.resize(width);
        return cells;
    }
    Texts rows()
    {
        // More than a word of cells, now and then.
        const unsigned long width = 1 + (below(5) == 0 ? below(300) : below(20));
        // Many are pushed together.
        Texts all(1 + (isPush() && below(9) == 0 ? 64 + below(9) : below(5)));
        for (std::string &each : all)
            each = row(width);
        return all;
    }
    TAMBO::CellBlock block(const Texts &rows)
    {
        const unsigned long width = rows.front().size();
        TAMBO::CellBlock one;
        one.rowBegin = below(rows.size() + 1 - (below(9) == 0 ? 0 : 1));
        one.rowEnd = one.rowBegin + 1 + below(rows.size());
        if (rows.size() > 60) {
            one.rowBegin = below(4);
            one.rowEnd = rows.size() - below(3);
        }
        one.colBegin = below(width + (below(9) == 0 ? 1 : 0));
        one.colEnd = one.colBegin + 1 + (below(2) == 0 ? 0 : below(width));
        return one;
    }
    GapEdit edit(const Texts &rows)
    {
        const long count = long(below(4)) + (below(9) == 0 ? long(below(80)) : 0);
        const bool hasSign = GetParam() == Kind::Slide || GetParam() == Kind::Move;
        return {GetParam(), block(rows), hasSign && below(2) == 0 ? -count : count};
    }
    KeptColumns kept(const Texts &rows)
    {
        if (below(3) == 0)
            return std::nullopt;
        const unsigned long first = below(rows.front().size() + 2);
        return TAMBO::Alignment::Range(first, first + below(5));
    }

    static std::string letters(std::string cells)
    {
        std::erase(cells, '-');
        return cells;
    }
    // What has to stay of a row.
    static std::string staying(const std::string &row, const GapEdit &edit, const KeptColumns &kept,
                               unsigned long width)
    {
        if (!kept || kept->first >= std::min(kept->second, width))
            return {};
        return edit.block.colBegin < kept->first ? row.substr(kept->first)
                                                 : row.substr(0, kept->second);
    }

    void expectAsPlain(const Texts &before, const GapEdit &edit, const KeptColumns &kept)
    {
        const auto wanted = PlainGaps::after(before, edit, kept);
        TAMBO::Alignment &rows = alignment(before);
        const std::string former = FullState::of(rows);
        const Outcome checked = checkGapEdit(rows, edit, kept);
        ASSERT_EQ(FullState::of(rows), former);
        const Outcome outcome = applyGapEdit(rows, edit, kept);
        ASSERT_EQ(outcome.isDone, wanted.has_value()) << outcome.reason.toStdString();
        ASSERT_EQ(outcome.isDone, outcome.reason.isEmpty());
        EXPECT_EQ(checked.isDone, outcome.isDone);
        EXPECT_EQ(checked.reason, outcome.reason);
        EXPECT_EQ(checked.moved, outcome.moved);
        const Texts after = rowsOf(rows);
        ASSERT_EQ(after, wanted.value_or(before));
        EXPECT_EQ(outcome.moved != 0, after != before);
        EXPECT_EQ(history.undoCount(), after != before ? 1U : 0U);
        ++(outcome.isDone ? m_Done : m_Refused);
        m_Changed += after != before ? 1 : 0;
        for (std::size_t i = 0; i < before.size(); ++i) {
            ASSERT_EQ(letters(after[i]), letters(before[i]));
            ASSERT_EQ(staying(after[i], edit, kept, before.front().size()),
                      staying(before[i], edit, kept, before.front().size()));
        }
        if (after == before)
            return;
        const std::string state = FullState::of(rows);
        history.undo();
        ASSERT_EQ(FullState::of(rows), former);
        history.redo();
        ASSERT_EQ(FullState::of(rows), state);
    }

    int m_Done = 0;
    int m_Refused = 0;
    int m_Changed = 0;

private:
    std::mt19937 m_Random{unsigned(GetParam()) + 7};
};

TEST_P(GapEditsBesidePlainOnes, DoTheSameAndAreTakenBack)
{
    constexpr int kRounds = 3000;
    for (int round = 0; round < kRounds; ++round) {
        const Texts before = rows();
        const GapEdit one = edit(before);
        const KeptColumns columns = kept(before);
        std::string told;
        for (const std::string &each : before)
            told += each + '\n';
        SCOPED_TRACE(
            told + std::to_string(one.block.rowBegin) + " to " + std::to_string(one.block.rowEnd) +
            ", " + std::to_string(one.block.colBegin) + " to " + std::to_string(one.block.colEnd) +
            ", count " + std::to_string(one.count) + ", kept " +
            (columns ? std::to_string(columns->first) + " to " + std::to_string(columns->second)
                     : "none"));
        expectAsPlain(before, one, columns);
        if (HasFatalFailure())
            return;
        history.clear();
        TAMBO::ObjectSpace::get().reset();
    }
    EXPECT_GT(m_Changed, kRounds / 20);
    EXPECT_GT(m_Refused, kRounds / 20);
    EXPECT_GE(m_Done, m_Changed);
}

INSTANTIATE_TEST_SUITE_P(, GapEditsBesidePlainOnes, testing::ValuesIn(kKinds),
                         [](const auto &one) { return "Kind" + std::to_string(int(one.param)); });

} // namespace GapEditPropertyTest
