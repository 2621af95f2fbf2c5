// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of DataPoint, DataAdder and DataDelete, through which every change is made.
#include "DataAdder.h"
#include "DataDelete.h"
#include "DataPoint.h"

#include "Alignment.h"
#include "DataMaker.h"
#include "ObjectOperations.h"
#include "Space.h"
#include "support/ExpectMessage.h"
#include "unit/history/HistoryFixture.h"

#include <gmock/gmock.h>

#include <type_traits>

using testing::ElementsAre;
using testing::IsEmpty;

namespace GuardContractTest {

class GuardContract : public HistoryFixture
{
protected:
    GuardContract() { history.clear(); }

    TAMBO::Peptide &sequence = peptide("sequence", "ACDEF");
    TAMBO::Alignment *alignment = TAMBO::DataMaker::makeAlignment("SeqAli", {&sequence});
    RecordingSubscriber window;
    RecordingSubscriber other;
};

// The member that the templates add, as a derived class sees it.
template <typename Base> class Opened : public Base
{
public:
    using Base::Base;
    [[nodiscard]] auto *data() const { return Base::m_Data; }
};

static_assert(Publisher::Update == 0);
static_assert(Publisher::Add == 1);
static_assert(Publisher::Delete == 2);
static_assert(std::is_base_of_v<DataPointBase, DataPoint<TAMBO::Alignment>>);
static_assert(std::is_base_of_v<DataPointBase, DataAdder<TAMBO::Space>>);
static_assert(std::is_base_of_v<DataPointBase, DataDelete<TAMBO::Space>>);
static_assert(sizeof(DataPoint<TAMBO::Compound>) == sizeof(DataPointBase) + sizeof(void *));
static_assert(sizeof(DataAdder<TAMBO::Space>) == sizeof(DataPointBase) + sizeof(void *));
static_assert(sizeof(DataDelete<TAMBO::Space>) == sizeof(DataPointBase) + sizeof(void *));
static_assert(std::is_same_v<decltype(DataPointBase::m_good), bool>);

TEST_F(GuardContract, GuardHoldsTheObject)
{
    const Opened<DataPoint<TAMBO::Alignment>> update(nullptr, alignment);
    const Opened<DataAdder<TAMBO::Space>> add(nullptr, TAMBO::Space::instance());
    const Opened<DataDelete<TAMBO::Space>> remove(nullptr, TAMBO::Space::instance());
    EXPECT_EQ(update.data(), alignment);
    EXPECT_EQ(add.data(), TAMBO::Space::instance());
    EXPECT_EQ(remove.data(), TAMBO::Space::instance());
}

TEST_F(GuardContract, UpdateGuardPublishesAnUpdateAsItsScopeEnds)
{
    {
        const DataPoint<TAMBO::Alignment> guard(&window, alignment);
        ASSERT_TRUE(guard.m_good);
        guard->insertGap(0, 1);
        EXPECT_THAT(other.calls, IsEmpty());
    }
    EXPECT_THAT(other.calls, ElementsAre("update"));
    EXPECT_THAT(window.calls, IsEmpty());
    EXPECT_EQ(alignment->GetSequence(0, false), "A-CDEF");
}

TEST_F(GuardContract, AddGuardPublishesAnAdd)
{
    {
        const DataAdder<TAMBO::Space> guard(&window, TAMBO::Space::instance());
        ASSERT_TRUE(guard.m_good);
        TAMBO::DataMaker::makeAlignment("SeqAli", {&sequence});
    }
    EXPECT_THAT(other.calls, ElementsAre("add"));
    EXPECT_THAT(window.calls, IsEmpty());
}

TEST_F(GuardContract, DeleteGuardWithoutAnOriginatorTellsTheWindowThatMadeItToo)
{
    {
        const DataDelete<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
        ASSERT_TRUE(guard.m_good);
        TAMBO::DataMaker::Destroy(alignment);
    }
    EXPECT_THAT(window.calls, ElementsAre("delete"));
    EXPECT_THAT(other.calls, ElementsAre("delete"));
}

TEST_F(GuardContract, AddInsideAnAlignmentIsAnUpdateAsWell)
{
    {
        const DataAdder<TAMBO::Alignment> guard(&window, alignment);
    }
    EXPECT_THAT(other.calls, ElementsAre("add", "update"));
    EXPECT_THAT(window.calls, IsEmpty());
}

TEST_F(GuardContract, GuardOfAResidueIsOneOfACompound)
{
    TAMBO::Compound *const residue = alignment->getItem(0, 0);
    {
        const DataPoint<TAMBO::Compound> guard(nullptr, residue);
        ASSERT_TRUE(guard.m_good);
        guard->ToggleSelected();
    }
    EXPECT_TRUE(residue->IsSelected());
    EXPECT_THAT(window.calls, ElementsAre("update"));
}

TEST_F(GuardContract, RefusedGuardLeavesTheObjectUntouchedAndPublishesNothing)
{
    TAMBO::setObjectLocked(*alignment, true);
    const std::string before = portrait();
    const std::size_t steps = history.size();
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
        EXPECT_FALSE(guard.m_good);
    }
    {
        const DataAdder<TAMBO::Alignment> guard(nullptr, alignment);
        EXPECT_FALSE(guard.m_good);
    }
    {
        const DataDelete<TAMBO::Alignment> guard(nullptr, alignment);
        EXPECT_FALSE(guard.m_good);
    }
    EXPECT_EQ(portrait(), before);
    EXPECT_EQ(history.size(), steps);
    EXPECT_THAT(window.calls, IsEmpty());
    EXPECT_THAT(refused, ElementsAre("SeqAli", "SeqAli", "SeqAli"));
}

TEST_F(GuardContract, AccessThroughARefusedGuardAssertsAndGoesOn)
{
    TAMBO::setObjectLocked(space(), true);
    const DataPoint<TAMBO::Alignment> update(nullptr, alignment);
    const DataAdder<TAMBO::Space> add(nullptr, TAMBO::Space::instance());
    const DataDelete<TAMBO::Space> remove(nullptr, TAMBO::Space::instance());
    {
        const ExpectMessage message(QtWarningMsg,
                                    R"(ASSERT: "m_good" in ../../include/DataPoint.h (101))");
        EXPECT_EQ(update->width(), 5U);
    }
    {
        const ExpectMessage message(QtWarningMsg,
                                    R"(ASSERT: "m_good" in ../../include/DataAdder.h (101))");
        EXPECT_EQ((*add).Name(), "Space");
    }
    {
        const ExpectMessage message(QtWarningMsg,
                                    R"(ASSERT: "m_good" in ../../include/DataDelete.h (101))");
        EXPECT_EQ(remove->Name(), "Space");
    }
}

TEST_F(GuardContract, NullObjectIsReportedAndRefused)
{
    const ExpectMessage message(QtWarningMsg,
                                "In file ../../include/DataPoint.h, line 71: Out of memory");
    const DataPoint<TAMBO::Alignment> guard(nullptr, nullptr);
    EXPECT_FALSE(guard.m_good);
}

TEST_F(GuardContract, GuardInsideANotificationIsRefused)
{
    bool wasGood = true;
    window.reaction = [&] {
        const DataPoint<TAMBO::Alignment> guard(&window, alignment);
        wasGood = guard.m_good;
    };
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
    }
    EXPECT_FALSE(wasGood);
    EXPECT_THAT(other.calls, ElementsAre("update"));
}

TEST_F(GuardContract, NestedGuardsAreOneStepAndOnePublicationAType)
{
    const std::size_t steps = history.size();
    {
        const DataPoint<TAMBO::Space> outer(nullptr, TAMBO::Space::instance());
        for (unsigned long column = 0; column < 3; ++column) {
            const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
            guard->insertGap(0, column);
        }
    }
    EXPECT_THAT(window.calls, ElementsAre("update"));
    EXPECT_EQ(history.size(), steps + 1);
    history.undo();
    EXPECT_EQ(alignment->GetSequence(0, false), "ACDEF");
}

TEST_F(GuardContract, OperationWithoutAGuardOnALockedAlignmentIsRefusedWithALogLine)
{
    TAMBO::setObjectLocked(*alignment, true);
    alignment->insertGapCol(0, 1);
    alignment->range({1, 3});
    EXPECT_EQ(alignment->width(), 5U);
    EXPECT_EQ(alignment->range(), TAMBO::Alignment::Range(0, 0));
    EXPECT_FALSE(log.empty());
    EXPECT_THAT(refused, ElementsAre("SeqAli", "SeqAli"));
    EXPECT_THAT(window.calls, IsEmpty());
}

} // namespace GuardContractTest
