// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptValues.h"
#include "ObjectIndex.h"
#include "unit/sessions/store/StoreFixture.h"

#include <gmock/gmock.h>

namespace KeptValuesTest {

using namespace TAMBO;
using sessions::KeptValue;
using sessions::KeptValues;
using sessions::NamedValue;
using testing::ElementsAre;

class Note : public KeptValue
{
public:
    explicit Note(std::string name) : m_Name(std::move(name)) { }

    std::string name() const override { return m_Name; }
    std::string store() const override
    {
        ++stores;
        return text;
    }
    Result<void> load(std::string_view content, const ObjectIndex &) override
    {
        if (content == "damaged")
            return Failure(FailureKind::BadInput, "it is damaged");
        text = content;
        return {};
    }
    void clear() override { text.clear(); }
    std::optional<std::uint64_t> revision() const override { return counted; }

    std::string text;
    std::optional<std::uint64_t> counted;
    mutable int stores = 0;

private:
    std::string m_Name;
};

class KeptValuesTest : public StoreFixture
{
protected:
    static Lines lines(const std::vector<NamedValue> &values)
    {
        Lines all;
        for (const NamedValue &value : values)
            all.push_back(value.name + '=' + value.content);
        return all;
    }
    Lines load(const std::vector<NamedValue> &values)
    {
        const std::vector<sessions::StoreEntry> entries(values.begin(), values.end());
        EXPECT_TRUE(StoreFile::open(file(), StoreFile::Kind::Whole).value()->write(entries));
        const auto reader = StoreReader::open(file(), StoreReader::Kind::Whole);
        Lines causes;
        for (const Failure &failure : m_Values.load(*reader.value(), ObjectIndex()))
            causes.push_back(failure.cause);
        return causes;
    }

    Note m_First{"first"};
    Note m_Second{"second"};
    KeptValues m_Values;
};

TEST_F(KeptValuesTest, GivesThoseThatAreNotEmpty)
{
    m_Values.add(m_First);
    m_Values.add(m_Second);
    m_Second.text = "b";
    EXPECT_THAT(lines(m_Values.store()), ElementsAre("second=b"));
    m_First.text = "a";
    EXPECT_THAT(lines(m_Values.store()), ElementsAre("first=a", "second=b"));
    m_Values.remove(m_First);
    EXPECT_THAT(lines(m_Values.store()), ElementsAre("second=b"));
}

TEST_F(KeptValuesTest, GivesWhatHasChangedOnce)
{
    m_Values.add(m_First);
    m_Values.add(m_Second);
    m_First.text = "a";
    EXPECT_THAT(lines(m_Values.changed()), ElementsAre("first=a"));
    EXPECT_THAT(lines(m_Values.changed()), ElementsAre());
    m_Second.text = "b";
    EXPECT_THAT(lines(m_Values.changed()), ElementsAre("second=b"));
    m_First.text.clear();
    EXPECT_THAT(lines(m_Values.changed()), ElementsAre("first="));
    EXPECT_THAT(lines(m_Values.changed()), ElementsAre());
}

TEST_F(KeptValuesTest, GivesAllOnceMoreWhenWhatWasGivenIsForgotten)
{
    m_Values.add(m_First);
    m_Values.add(m_Second);
    m_First.text = "a";
    m_First.counted = 1;
    m_Second.text = "b";
    EXPECT_THAT(lines(m_Values.changed()), ElementsAre("first=a", "second=b"));
    m_Values.forgetGiven();
    EXPECT_THAT(lines(m_Values.changed()), ElementsAre("first=a", "second=b"));
}

TEST_F(KeptValuesTest, DoesNotStoreOneWhoseRevisionIsTheSame)
{
    m_Values.add(m_First);
    m_First.counted = 1;
    m_First.text = "a";
    EXPECT_THAT(lines(m_Values.changed()), ElementsAre("first=a"));
    EXPECT_THAT(lines(m_Values.changed()), ElementsAre());
    EXPECT_EQ(m_First.stores, 1);
    m_First.counted = 2;
    m_First.text = "b";
    EXPECT_THAT(lines(m_Values.changed()), ElementsAre("first=b"));
    EXPECT_EQ(m_First.stores, 2);
}

TEST_F(KeptValuesTest, LoadsThoseThatAreKnownAndKeepsTheOthers)
{
    m_Values.add(m_First);
    EXPECT_THAT(load({{"first", "a"}, {"other", "o"}}), ElementsAre());
    EXPECT_EQ(m_First.text, "a");
    EXPECT_THAT(lines(m_Values.store()), ElementsAre("first=a", "other=o"));
    EXPECT_THAT(lines(m_Values.changed()), ElementsAre("first=a", "other=o"));
    EXPECT_THAT(lines(m_Values.changed()), ElementsAre());
    m_Values.clear();
    EXPECT_THAT(lines(m_Values.store()), ElementsAre());
}

TEST_F(KeptValuesTest, OneThatCannotBeTakenLeavesTheOthersAlone)
{
    m_Values.add(m_First);
    m_Values.add(m_Second);
    EXPECT_THAT(load({{"first", "damaged"}, {"second", "b"}}),
                ElementsAre("what the session keeps as \"first\" is lost: it is damaged"));
    EXPECT_EQ(m_First.text, "");
    EXPECT_EQ(m_Second.text, "b");
}

TEST_F(KeptValuesTest, WhatNobodyKnewIsThereForOneThatComesLater)
{
    EXPECT_THAT(load({{"first", "a"}, {"second", "b"}}), ElementsAre());
    EXPECT_EQ(m_Values.takeUnknown("first"), "a");
    EXPECT_EQ(m_Values.takeUnknown("first"), std::nullopt);
    m_Values.add(m_First);
    m_Values.add(m_Second);
    EXPECT_THAT(lines(m_Values.store()), ElementsAre());
}

TEST_F(KeptValuesTest, WhatAnEarlierSessionKeptDoesNotComeIntoTheNext)
{
    EXPECT_THAT(load({{"first", "a"}}), ElementsAre());
    m_Values.add(m_Second);
    m_Second.text = "earlier";
    std::filesystem::remove(file());
    EXPECT_THAT(load({{"third", "c"}}), ElementsAre());
    EXPECT_THAT(lines(m_Values.store()), ElementsAre("third=c"));
}

} // namespace KeptValuesTest
