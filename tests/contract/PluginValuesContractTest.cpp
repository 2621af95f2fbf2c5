// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on when they keep values with objects.
#include "PluginValues.h"

#include "Alignment.h"
#include "DataAdder.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "Space.h"
#include "StepFollower.h"
#include "unit/history/HistoryFixture.h"

#include <gmock/gmock.h>

#include <map>
#include <random>
#include <sstream>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace PluginValuesContractTest {

const std::string kMine = "column statistics";

class PluginValuesContract : public HistoryFixture
{
protected:
    PluginValuesContract() { history.clear(); }

    // All values of all top-level objects and chains.
    static std::string values()
    {
        std::ostringstream out;
        const auto list = [&out](const TAMBO::Compound &object) {
            for (const std::string &plugin : PluginValues::Plugins(&object))
                for (const std::string &key : PluginValues::Keys(&object, plugin))
                    out << object.GetFQName() << '|' << plugin << '|' << key << '|'
                        << *PluginValues::Get(&object, plugin, key) << '\n';
        };
        for (const TAMBO::Compound *object : space()) {
            list(*object);
            for (std::size_t i = 0; i < object->ChildCount(); ++i)
                list(*object->Child(i));
        }
        return out.str();
    }

    TAMBO::Peptide &sequence = peptide("sequence", "ACDEF");
    TAMBO::Structure &loaded = structure("1abc", {{"A", "AGA"}});
    TAMBO::Alignment *alignment = TAMBO::DataMaker::makeAlignment("SeqAli", {&sequence});
};

TEST_F(PluginValuesContract, AValueIsFoundByObjectPluginAndKey)
{
    EXPECT_EQ(PluginValues::Get(alignment, kMine, "mean"), std::nullopt);
    EXPECT_TRUE(PluginValues::Set(alignment, kMine, "mean", "1.5"));
    EXPECT_TRUE(PluginValues::Set(alignment, kMine, "empty", ""));
    EXPECT_TRUE(PluginValues::Set(alignment, "another", "mean", std::string("\0\xff", 2)));
    EXPECT_TRUE(PluginValues::Set(loaded.chain(0), kMine, "mean", "of the chain"));
    EXPECT_EQ(PluginValues::Get(alignment, kMine, "mean"), "1.5");
    EXPECT_EQ(PluginValues::Get(alignment, kMine, "empty"), "");
    EXPECT_EQ(PluginValues::Get(alignment, "another", "mean"), std::string("\0\xff", 2));
    EXPECT_EQ(PluginValues::Get(loaded.chain(0), kMine, "mean"), "of the chain");
    EXPECT_EQ(PluginValues::Get(&loaded, kMine, "mean"), std::nullopt);
    EXPECT_THAT(PluginValues::Plugins(alignment), ElementsAre("another", kMine));
    EXPECT_THAT(PluginValues::Keys(alignment, kMine), ElementsAre("empty", "mean"));
    EXPECT_THAT(PluginValues::Keys(alignment, "nobody"), IsEmpty());
    EXPECT_THAT(PluginValues::Plugins(&sequence), IsEmpty());
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(PluginValuesContract, AChangeIsAnEditOfItsStep)
{
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
        guard->insertGap(0, 1);
        PluginValues::Set(alignment, kMine, "mean", "1");
    }
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
        PluginValues::Set(alignment, kMine, "mean", "2");
        PluginValues::Set(alignment, kMine, "mean", "3");
        PluginValues::Remove(alignment, kMine, "was never there");
    }
    PluginValues::Remove(alignment, kMine, "mean");
    ASSERT_EQ(history.size(), 3U);
    EXPECT_EQ(history.label(0), "insert gap in SeqAli");
    EXPECT_EQ(history.label(1), "keep a value in SeqAli");
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(PluginValues::Get(alignment, kMine, "mean"), "3");
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(PluginValues::Get(alignment, kMine, "mean"), "1");
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(PluginValues::Get(alignment, kMine, "mean"), std::nullopt);
    EXPECT_EQ(alignment->GetSequence(0, false), "ACDEF");
    ASSERT_TRUE(history.goTo(2));
    EXPECT_EQ(PluginValues::Get(alignment, kMine, "mean"), "3");
}

TEST_F(PluginValuesContract, TheSameValueAgainIsNoStep)
{
    PluginValues::Set(alignment, kMine, "mean", "1");
    EXPECT_TRUE(PluginValues::Set(alignment, kMine, "mean", "1"));
    EXPECT_TRUE(PluginValues::Remove(alignment, kMine, "other"));
    EXPECT_EQ(history.size(), 1U);
}

TEST_F(PluginValuesContract, AValueIsNoUnsavedWork)
{
    PluginValues::Set(alignment, kMine, "mean", "1");
    EXPECT_FALSE(history.isModified(*alignment));
}

TEST_F(PluginValuesContract, TheHistoryCountsWhatItHolds)
{
    const std::string big(100000, 'x');
    PluginValues::Set(alignment, kMine, "mean", big);
    const std::size_t done = history.bytes();
    EXPECT_LT(done, 1000U) << "there was no value before";
    ASSERT_TRUE(history.undo());
    EXPECT_GT(history.bytes(), big.size());
    ASSERT_TRUE(history.redo());
    EXPECT_EQ(history.bytes(), done);
    // A deleted object takes its values into the history, those of its parts included.
    TAMBO::DataMaker::Destroy(alignment);
    EXPECT_GT(history.bytes(), big.size());
    ASSERT_TRUE(history.undo());
    PluginValues::Set(loaded.chain(0), kMine, "mean", big);
    const std::size_t before = history.bytes();
    TAMBO::DataMaker::Destroy(&loaded);
    EXPECT_GT(history.bytes(), before + big.size());
}

TEST_F(PluginValuesContract, ValuesGoAndComeWithTheirObject)
{
    PluginValues::Set(alignment, kMine, "mean", "1");
    const std::string before = values();
    {
        const DataDelete<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
        TAMBO::DataMaker::Destroy(alignment);
    }
    EXPECT_FALSE(PluginValues::Set(alignment, kMine, "mean", "2")) << "it is not there";
    EXPECT_THAT(log, ElementsAre(HasSubstr("\"SeqAli\" has been deleted")));
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(values(), before);
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(values(), "");
}

TEST_F(PluginValuesContract, WhatAnObjectHadIsNotFoundWithAnother)
{
    // The next one may stand at the same address.
    for (int i = 0; i < 50; ++i) {
        TAMBO::Compound *const made = TAMBO::DataMaker::makeSequence("made", "ACD");
        EXPECT_THAT(PluginValues::Plugins(made), IsEmpty());
        PluginValues::Set(made, kMine, "mean", "1");
        TAMBO::DataMaker::Destroy(made);
        history.clear();
    }
}

TEST_F(PluginValuesContract, ADuplicateHasCopies)
{
    PluginValues::Set(alignment, kMine, "mean", "1");
    TAMBO::Alignment *copy = nullptr;
    {
        const DataAdder<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
        copy = alignment->duplicate(1);
    }
    EXPECT_EQ(PluginValues::Get(copy, kMine, "mean"), "1");
    PluginValues::Set(copy, kMine, "mean", "2");
    EXPECT_EQ(PluginValues::Get(alignment, kMine, "mean"), "1");
    history.undo();
    history.undo();
    ASSERT_TRUE(history.redo());
    EXPECT_EQ(PluginValues::Get(copy, kMine, "mean"), "1");
}

TEST_F(PluginValuesContract, SubscribersHearOfAValueByTheGuard)
{
    RecordingSubscriber window;
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
        PluginValues::Set(alignment, kMine, "mean", "1");
    }
    EXPECT_THAT(window.calls, ElementsAre("update"));
}

TEST_F(PluginValuesContract, ValuesOfLockedAndOfUnfitObjectsAreRefused)
{
    EXPECT_FALSE(PluginValues::Set(nullptr, kMine, "mean", "1"));
    EXPECT_FALSE(PluginValues::Set(TAMBO::Space::instance(), kMine, "mean", "1"));
    EXPECT_FALSE(PluginValues::Set(sequence.residue(0), kMine, "mean", "1"));
    EXPECT_FALSE(PluginValues::Set(loaded.chain(0)->residue(0)->Child(0), kMine, "mean", "1"));
    EXPECT_EQ(log.size(), 4U);
    TAMBO::setObjectLocked(loaded, true);
    EXPECT_FALSE(PluginValues::Set(loaded.chain(0), kMine, "mean", "1"));
    EXPECT_EQ(log.size(), 5U);
    EXPECT_EQ(values(), "");
    EXPECT_EQ(history.size(), 0U);
    EXPECT_EQ(PluginValues::Get(nullptr, kMine, "mean"), std::nullopt);
    EXPECT_THAT(PluginValues::Keys(nullptr, kMine), IsEmpty());
    EXPECT_THAT(PluginValues::Plugins(nullptr), IsEmpty());
    EXPECT_EQ(PluginValues::Get(sequence.residue(0), kMine, "mean"), std::nullopt);
}

TEST_F(PluginValuesContract, NothingIsKeptWhileAChangeIsPublished)
{
    RecordingSubscriber window;
    bool isKept = true;
    window.reaction = [&] { isKept = PluginValues::Set(alignment, kMine, "mean", "1"); };
    {
        const Guard guard(Publisher::Update);
    }
    EXPECT_FALSE(isKept);
    EXPECT_THAT(log, ElementsAre(HasSubstr("a change is being published")));
}

TEST_F(PluginValuesContract, WhatIsTooMuchIsRefusedWithOneLine)
{
    const auto isRefused = [this](const std::string &plugin, const std::string &key,
                                  const std::string &value) {
        log.clear();
        return !PluginValues::Set(alignment, plugin, key, value) && log.size() == 1;
    };
    EXPECT_TRUE(isRefused("", "key", "x"));
    EXPECT_TRUE(isRefused(kMine, "", "x"));
    EXPECT_TRUE(isRefused(std::string(101, 'a'), "key", "x"));
    EXPECT_TRUE(isRefused(kMine, std::string(201, 'a'), "x"));
    EXPECT_TRUE(isRefused(kMine, "two\nlines", "x"));
    EXPECT_TRUE(isRefused(kMine, "\xff", "x"));
    EXPECT_TRUE(isRefused(kMine, "key", std::string(PluginValues::kLongestValue + 1, 'x')));
    EXPECT_EQ(history.size(), 0U);

    const std::string big(PluginValues::kLongestValue - 1, 'x');
    for (const char *key : {"1", "2", "3", "4"})
        EXPECT_TRUE(PluginValues::Set(alignment, kMine, key, big)) << key;
    EXPECT_TRUE(isRefused("another", "5", "x"));
    EXPECT_TRUE(PluginValues::Set(alignment, kMine, "4", "smaller"));
    EXPECT_TRUE(PluginValues::Set(alignment, "another", "5", "x"));
}

TEST_F(PluginValuesContract, AFollowersValueGoesWithTheStep)
{
    class Counter : public StepFollower
    {
    public:
        void stepEnds(const StepChanges &changes) override
        {
            for (const StepChange &change : changes.objects) {
                if (change.object->Kind() != TAMBO::CompoundKind::Alignment || change.isDisplayOnly)
                    continue;
                const auto &changed = dynamic_cast<const TAMBO::Alignment &>(*change.object);
                PluginValues::Set(change.object, kMine, "width", std::to_string(changed.width()));
            }
        }
    };
    const Counter counter;
    for (int i = 0; i < 2; ++i) {
        const DataPoint<TAMBO::Alignment> guard(nullptr, alignment);
        guard->insertGap(0, 0);
    }
    EXPECT_EQ(PluginValues::Get(alignment, kMine, "width"), "7");
    ASSERT_EQ(history.size(), 2U);
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(PluginValues::Get(alignment, kMine, "width"), "6");
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(PluginValues::Get(alignment, kMine, "width"), std::nullopt);
    ASSERT_TRUE(history.goTo(2));
    EXPECT_EQ(PluginValues::Get(alignment, kMine, "width"), "7");
}

TEST_F(PluginValuesContract, RandomChangesAreTakenBackAndRepeatedOneByOne)
{
    std::mt19937 random(20260713);
    const auto below = [&random](unsigned long count) { return random() % count; };
    std::vector<std::string> portraits{values()};
    for (int i = 0; i < 300; ++i) {
        {
            const DataPoint<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
            for (unsigned long k = below(4) + 1; k > 0; --k) {
                TAMBO::Compound *const object = space().object(below(space().objectCount()));
                const std::string plugin(1, char('a' + below(2)));
                const std::string key(1, char('k' + below(3)));
                const unsigned long deed = below(20);
                if (deed == 0 && space().objectCount() > 2)
                    TAMBO::DataMaker::Destroy(object);
                else if (deed == 1)
                    TAMBO::DataMaker::makeSequence("made " + std::to_string(i), "ACD");
                else if (deed < 7)
                    PluginValues::Remove(object, plugin, key);
                else
                    PluginValues::Set(object, plugin, key, std::string(below(40), 'x'));
            }
        }
        if (history.size() >= portraits.size())
            portraits.push_back(values());
    }
    ASSERT_GT(history.size(), 200U);
    ASSERT_EQ(history.size(), portraits.size() - 1);
    const std::size_t bytes = history.bytes();
    for (std::size_t i = portraits.size() - 1; i-- > 0;) {
        ASSERT_TRUE(history.undo());
        ASSERT_EQ(values(), portraits[i]);
    }
    for (std::size_t i = 1; i < portraits.size(); ++i) {
        ASSERT_TRUE(history.redo());
        ASSERT_EQ(values(), portraits[i]);
    }
    // Texts keep what they once had room for.
    EXPECT_NEAR(double(history.bytes()), double(bytes), double(bytes) / 10);
}

} // namespace PluginValuesContractTest
