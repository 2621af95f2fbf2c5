// SPDX-License-Identifier: GPL-3.0-or-later
// State that plug-ins keep with the user's work.
#include "PluginParts.h"

#include "SessionPart.h"
#include "ValuesFixture.h"
#include "support/LogLines.h"
#include "support/WaitUntil.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <stdexcept>

namespace PluginPartsTest {

using namespace TAMBO;
using app::PluginParts;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kName = "plugin:columns";

class Part final : public SessionPart
{
public:
    explicit Part(const std::string &name = "columns") : SessionPart(name) { }

    std::string store() const override
    {
        ++stores;
        if (storeFails)
            throw std::runtime_error("no state");
        return state;
    }
    void restore(const std::string &given) override
    {
        calls.push_back(given);
        state = given;
        if (reaction)
            reaction();
    }
    void clear() override
    {
        calls.emplace_back("clear");
        state.clear();
    }

    std::string state;
    bool storeFails = false;
    std::function<void()> reaction;
    mutable int stores = 0;
    std::vector<std::string> calls;
};

class PluginPartsTest : public ValuesFixture
{
protected:
    std::vector<std::string> changed()
    {
        std::vector<std::string> lines;
        for (const sessions::NamedValue &value : m_Values.changed())
            lines.push_back(value.name + '=' + value.content);
        return lines;
    }

    PluginParts m_Parts{m_Values};
};

TEST_F(PluginPartsTest, TheStateComesBackAsItWasStored)
{
    Part part;
    part.state = std::string("a\0b", 3);
    const std::string kept = stored(kName);
    EXPECT_EQ(kept, part.state);
    part.state = "later";
    EXPECT_THAT(load({{kName, kept}}), IsEmpty());
    EXPECT_THAT(part.calls, ElementsAre("clear", kept));
    EXPECT_EQ(stored(kName), kept);
}

TEST_F(PluginPartsTest, APartThatWasThereBeforeIsKeptAsWell)
{
    Part part("earlier");
    part.state = "a";
    sessions::KeptValues values;
    const PluginParts parts(values);
    ASSERT_EQ(values.store().size(), 1U);
    EXPECT_EQ(values.store()[0].name, "plugin:earlier");
}

TEST_F(PluginPartsTest, WithoutAStateThePartIsOnlyCleared)
{
    Part part;
    part.state = "a";
    load({});
    EXPECT_THAT(part.calls, ElementsAre("clear"));
    EXPECT_EQ(stored(kName), "");
}

TEST_F(PluginPartsTest, AStateIsWrittenOnceThePartSaysThatItHasChanged)
{
    Part part;
    changed();
    const int stores = part.stores;
    part.state = "a";
    EXPECT_THAT(changed(), IsEmpty());
    EXPECT_EQ(part.stores, stores);
    part.hasChanged();
    part.hasChanged();
    EXPECT_EQ(part.stores, stores);
    EXPECT_THAT(changed(), ElementsAre(kName + "=a"));
    EXPECT_EQ(part.stores, stores + 1);
}

TEST_F(PluginPartsTest, TheStateOfAMissingPlugInStays)
{
    load({{kName, "old"}});
    EXPECT_EQ(stored(kName), "old");
    const Part other("other");
    EXPECT_EQ(stored(kName), "old");
}

TEST_F(PluginPartsTest, APartThatComesLaterGetsWhatHasWaited)
{
    load({{kName, "old"}});
    Part part;
    // Its own constructor may not have ended yet.
    EXPECT_THAT(part.calls, IsEmpty());
    EXPECT_EQ(stored(kName), "old");
    waitUntil([&] { return !part.calls.empty(); });
    EXPECT_THAT(part.calls, ElementsAre("old"));
    part.state = "new";
    EXPECT_EQ(stored(kName), "new");
}

TEST_F(PluginPartsTest, APartThatComesAndGoesAtOnceLeavesTheStateForTheNext)
{
    load({{kName, "old"}});
    {
        const Part part;
    }
    EXPECT_EQ(stored(kName), "old");
    Part part;
    waitUntil([&] { return !part.calls.empty(); });
    EXPECT_THAT(part.calls, ElementsAre("old"));
}

TEST_F(PluginPartsTest, WhatAPartHasKeptLastWaitsForTheNextOfItsName)
{
    {
        Part part;
        part.state = "kept";
        changed();
    }
    EXPECT_EQ(stored(kName), "kept");
    Part next;
    waitUntil([&] { return !next.calls.empty(); });
    EXPECT_THAT(next.calls, ElementsAre("kept"));
}

TEST_F(PluginPartsTest, OtherWorkEndsWhatWaited)
{
    load({{kName, "old"}});
    {
        const Part part;
    }
    load({});
    EXPECT_EQ(stored(kName), "");
}

TEST_F(PluginPartsTest, APartMayMakeAnotherWhileItIsRestored)
{
    Part part;
    std::unique_ptr<Part> other;
    part.reaction = [&] { other = std::make_unique<Part>("other"); };
    EXPECT_THAT(load({{kName, "a"}, {"plugin:other", "b"}}), IsEmpty());
    waitUntil([&] { return other != nullptr && !other->calls.empty(); });
    EXPECT_THAT(other->calls, ElementsAre("b"));
}

TEST_F(PluginPartsTest, APartMayEndWhileItIsRestored)
{
    auto part = std::make_unique<Part>();
    part->reaction = [&part] { part.reset(); };
    EXPECT_THAT(load({{kName, "a"}}), IsEmpty());
    EXPECT_EQ(part, nullptr);
    EXPECT_EQ(stored(kName), "a");
}

TEST_F(PluginPartsTest, APartThatThrowsIsLoggedOnceAndEverythingElseIsLoaded)
{
    Part bad;
    Part good("good");
    bad.reaction = [] { throw std::runtime_error("what is this"); };
    const LogLines lines;
    EXPECT_THAT(load({{kName, "damaged"}, {"plugin:good", "b"}}), IsEmpty());
    EXPECT_THAT(good.calls, ElementsAre("clear", "b"));
    EXPECT_EQ(stored(kName), "damaged");
    bad.hasChanged();
    EXPECT_EQ(stored(kName), "damaged");
    EXPECT_EQ(lines.texts(), (QStringList{"The part \"columns\" of a plug-in failed to take its "
                                          "state and is left out: what is this"}));
    bad.reaction = nullptr;
    load({{kName, "whole"}});
    EXPECT_EQ(bad.state, "whole");
}

TEST_F(PluginPartsTest, AFailureToStoreKeepsWhatWasKept)
{
    Part part;
    part.state = "a";
    EXPECT_EQ(stored(kName), "a");
    part.storeFails = true;
    const LogLines lines;
    EXPECT_EQ(stored(kName), "a");
    EXPECT_EQ(stored(kName), "a");
    EXPECT_EQ(lines.count(), 1);
}

TEST_F(PluginPartsTest, AStateThatIsTooLongIsNotKept)
{
    Part part;
    part.state = "a";
    EXPECT_EQ(stored(kName), "a");
    part.state.assign(SessionPart::kLongestState + 1, 'x');
    const LogLines lines;
    EXPECT_EQ(stored(kName), "a");
    EXPECT_EQ(stored(kName), "a");
    EXPECT_EQ(lines.count(), 1);
    part.state.pop_back();
    EXPECT_EQ(stored(kName).size(), SessionPart::kLongestState);
}

class PartObjects : public PluginPartsTest
{
protected:
    PartObjects()
    {
        m_Part.reaction = [this] {
            m_Found = SessionPart::ObjectOf(std::uint32_t(std::stoul(m_Part.state)));
        };
    }
    static std::string numberOf(const Compound &object)
    {
        return std::to_string(SessionPart::NumberOf(&object));
    }

    Part m_Part{"objects"};
    Compound *m_Found = nullptr;
};

TEST_F(PartObjects, HaveNumbersOfTheirOwnThatStay)
{
    const Peptide &first = sequence("first", "AC");
    const Peptide &second = sequence("second", "AC");
    const std::uint32_t number = SessionPart::NumberOf(&first);
    EXPECT_NE(number, 0U);
    EXPECT_NE(SessionPart::NumberOf(&second), number);
    EXPECT_EQ(SessionPart::NumberOf(&first), number);
    EXPECT_EQ(SessionPart::NumberOf(nullptr), 0U);
    EXPECT_EQ(SessionPart::NumberOf(first.Child(0)), 0U);
}

TEST_F(PartObjects, AreFoundByTheirNumbersWhileAStateIsRestored)
{
    Peptide &object = sequence("one", "AC");
    load({{"plugin:objects", numberOf(object)}});
    EXPECT_EQ(m_Found, &object);
    EXPECT_EQ(SessionPart::ObjectOf(SessionPart::NumberOf(&object)), nullptr);
}

TEST_F(PartObjects, AreFoundByAPartThatComesLater)
{
    Structure &object = structure("one", "A", "AC");
    load({{"plugin:late", numberOf(*object.Child(0))}});
    Part late("late");
    late.reaction = [&] { m_Found = SessionPart::ObjectOf(std::uint32_t(std::stoul(late.state))); };
    waitUntil([&] { return !late.calls.empty(); });
    EXPECT_EQ(m_Found, object.Child(0));
}

TEST_F(PartObjects, ThatAreNotThereAreNull)
{
    const std::string number = numberOf(sequence("one", "AC"));
    space().reset();
    sequence("other", "AC");
    load({{"plugin:objects", number}});
    EXPECT_EQ(m_Found, nullptr);
    EXPECT_THAT(m_Part.calls, ElementsAre("clear", number));
}

} // namespace PluginPartsTest
