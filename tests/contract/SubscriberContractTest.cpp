// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of Subscriber and Publisher.
#include "Subscriber.h"

#include "DataPoint.h"
#include "Space.h"
#include "contract/VirtualSlot.h"
#include "unit/model/ModelFixture.h"

#include <gmock/gmock.h>

#include <memory>
#include <type_traits>

using testing::ElementsAre;
using testing::IsEmpty;

namespace SubscriberContractTest {

class SubscriberContract : public ModelFixture
{
protected:
    static void publish()
    {
        const DataPoint<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
    }
};

static_assert(std::is_same_v<decltype(&Subscriber::commUpdate), void (Subscriber::*)()>);
static_assert(std::is_same_v<decltype(&Subscriber::commAdd), void (Subscriber::*)()>);
static_assert(std::is_same_v<decltype(&Subscriber::commDelete), void (Subscriber::*)()>);
static_assert(std::has_virtual_destructor_v<Subscriber>);

TEST_F(SubscriberContract, VirtualOperationsStandInTheirOrder)
{
    EXPECT_EQ(virtualSlot(&Subscriber::commUpdate), 2U) << "behind the destructor";
    EXPECT_EQ(virtualSlot(&Subscriber::commAdd), 3U);
    EXPECT_EQ(virtualSlot(&Subscriber::commDelete), 4U);
}

TEST_F(SubscriberContract, IsToldFromItsConstructionToItsDestruction)
{
    auto subscriber = std::make_unique<RecordingSubscriber>();
    publish();
    EXPECT_THAT(subscriber->calls, ElementsAre("update"));
    subscriber.reset();
    publish();
}

TEST_F(SubscriberContract, IsToldBeforeTheNextStatement)
{
    RecordingSubscriber subscriber;
    EXPECT_THAT(subscriber.calls, IsEmpty());
    publish();
    EXPECT_THAT(subscriber.calls, ElementsAre("update"));
}

TEST_F(SubscriberContract, MayUnregisterItselfAndOthersDuringANotification)
{
    auto first = std::make_unique<RecordingSubscriber>();
    auto second = std::make_unique<RecordingSubscriber>();
    RecordingSubscriber third;
    first->reaction = [&] {
        second.reset();
        first.reset();
    };
    publish();
    EXPECT_THAT(third.calls, ElementsAre("update"));
    publish();
    EXPECT_THAT(third.calls, ElementsAre("update", "update"));
}

TEST_F(SubscriberContract, PublisherSaysWhetherItPublishes)
{
    RecordingSubscriber subscriber;
    bool during = false;
    subscriber.reaction = [&] { during = Publisher::isPublishing(); };
    EXPECT_FALSE(Publisher::isPublishing());
    publish();
    EXPECT_TRUE(during);
    EXPECT_FALSE(Publisher::isPublishing());
}

} // namespace SubscriberContractTest
