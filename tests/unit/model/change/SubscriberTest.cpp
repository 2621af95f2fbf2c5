// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/model/ModelFixture.h"

#include <gmock/gmock.h>

#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace SubscriberTest {

class SubscriberTest : public ModelFixture
{
protected:
    void publish() { const Guard guard(Publisher::Update, object); }

    TAMBO::Peptide &object = peptide("object", "ACD");
};

TEST_F(SubscriberTest, IsRegisteredWhileItExists)
{
    auto subscriber = std::make_unique<RecordingSubscriber>();
    publish();
    EXPECT_THAT(subscriber->calls, ElementsAre("update"));
    subscriber.reset();
    publish();
}

TEST_F(SubscriberTest, AreToldInTheOrderInWhichTheyCame)
{
    std::string order;
    RecordingSubscriber first;
    RecordingSubscriber second;
    RecordingSubscriber third;
    first.reaction = [&] { order += '1'; };
    second.reaction = [&] { order += '2'; };
    third.reaction = [&] { order += '3'; };
    publish();
    EXPECT_EQ(order, "123");
}

TEST_F(SubscriberTest, MayDestroyItselfDuringTheNotification)
{
    auto leaving = std::make_unique<RecordingSubscriber>();
    RecordingSubscriber staying;
    leaving->reaction = [&] { leaving.reset(); };
    publish();
    EXPECT_EQ(leaving, nullptr);
    EXPECT_THAT(staying.calls, ElementsAre("update"));
    publish();
    EXPECT_THAT(staying.calls, ElementsAre("update", "update"));
}

TEST_F(SubscriberTest, DestroyedByAnEarlierOneIsNotTold)
{
    RecordingSubscriber first;
    auto second = std::make_unique<RecordingSubscriber>();
    RecordingSubscriber third;
    first.reaction = [&] { second.reset(); };
    publish();
    EXPECT_THAT(third.calls, ElementsAre("update"));
}

TEST_F(SubscriberTest, DestroyedByALaterOneHasBeenToldOnce)
{
    auto first = std::make_unique<RecordingSubscriber>();
    int told = 0;
    first->reaction = [&] { ++told; };
    RecordingSubscriber second;
    second.reaction = [&] { first.reset(); };
    RecordingSubscriber third;
    publish();
    EXPECT_EQ(told, 1);
    EXPECT_THAT(third.calls, ElementsAre("update"));
}

TEST_F(SubscriberTest, NewcomerOfANotificationIsToldFromTheNextOneOn)
{
    RecordingSubscriber first;
    std::unique_ptr<RecordingSubscriber> newcomer;
    first.reaction = [&] {
        if (!newcomer)
            newcomer = std::make_unique<RecordingSubscriber>();
    };
    publish();
    EXPECT_THAT(newcomer->calls, IsEmpty());
    publish();
    EXPECT_THAT(newcomer->calls, ElementsAre("update"));
}

TEST_F(SubscriberTest, ManyMayComeAndGoWhileTheListGrows)
{
    std::vector<std::unique_ptr<RecordingSubscriber>> crowd;
    RecordingSubscriber first;
    first.reaction = [&] {
        for (int i = 0; i < 100; ++i)
            crowd.push_back(std::make_unique<RecordingSubscriber>());
        crowd.erase(crowd.begin(), crowd.begin() + 50);
    };
    RecordingSubscriber last;
    publish();
    EXPECT_THAT(last.calls, ElementsAre("update"));
}

} // namespace SubscriberTest
