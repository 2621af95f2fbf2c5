// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of objects, through undo and in a session that is there again.
#include "KeptNotes.h"

#include "AppFixture.h"
#include "DataMaker.h"
#include "ObjectIndex.h"

#include <random>

namespace KeptNotesTest {

using namespace TAMBO;
using app::KeptNotes;
using app::ObjectNote;
using app::ObjectNotes;

const ObjectNote kNote{"Model of the family globins",
                       {{"State", "ok"}, {"Identity", "35.2 %"}, {"Last line", ""}}};

class KeptNotesTest : public RecordedFixture
{
protected:
    Result<void> load(const std::string &content)
    {
        ObjectIndex objects;
        objects.addTree(space());
        return m_Kept.load(content, objects);
    }

    ObjectNotes m_Notes;
    KeptNotes m_Kept{m_Notes};
};

TEST_F(KeptNotesTest, NothingIsKeptWithoutNotes)
{
    structure("a on b", "A", "ACD");
    EXPECT_EQ(m_Kept.store(), "");
}

TEST_F(KeptNotesTest, AnObjectHasItsNoteAndItsPartsHaveNone)
{
    const Structure &model = structure("a on b", "A", "ACD");
    const Structure &other = structure("c on b", "A", "ACD");
    m_Notes.set(model, kNote);
    ASSERT_NE(m_Notes.of(model), nullptr);
    EXPECT_EQ(*m_Notes.of(model), kNote);
    EXPECT_EQ(m_Notes.of(*model.chain(0)), nullptr);
    EXPECT_EQ(m_Notes.of(other), nullptr);
}

TEST_F(KeptNotesTest, AnObjectThatComesBackHasItsNote)
{
    Structure &model = structure("a on b", "A", "ACD");
    m_Notes.set(model, kNote);
    DataMaker::Destroy(&model);
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(*m_Notes.of(*space().object(0)), kNote);
    ASSERT_TRUE(m_History.redo());
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(*m_Notes.of(*space().object(0)), kNote);
}

TEST_F(KeptNotesTest, AreThereWhenTheSessionIsThereAgain)
{
    const Structure &model = structure("a on b", "A", "ACD");
    m_Notes.set(model, kNote);
    const std::string content = m_Kept.store();
    m_Kept.clear();
    EXPECT_EQ(m_Notes.of(model), nullptr);
    ASSERT_TRUE(load(content));
    EXPECT_EQ(*m_Notes.of(model), kNote);
}

TEST_F(KeptNotesTest, OfObjectsThatAreNotThereAreLeftOut)
{
    m_Notes.set(structure("a on b", "A", "ACD"), kNote);
    const std::string content = m_Kept.store();
    m_Kept.clear();
    const ObjectIndex none;
    ASSERT_TRUE(m_Kept.load(content, none));
    EXPECT_EQ(m_Kept.store(), "");
}

TEST_F(KeptNotesTest, AChangeIsSeenByTheRevision)
{
    const auto before = m_Kept.revision();
    m_Notes.set(structure("a on b", "A", "ACD"), kNote);
    EXPECT_NE(m_Kept.revision(), before);
}

// Sessions of this version are read for ever.
TEST_F(KeptNotesTest, AreReadAsTheyHaveBeenWritten)
{
    structure("a on b", "A", "ACD");
    ObjectIndex objects;
    Structure &model = dynamic_cast<Structure &>(*space().object(0));
    ASSERT_TRUE(objects.insert(7, model));
    ASSERT_TRUE(m_Kept.load(std::string("\1\1\7\5Model\2\5State\2ok\7Seconds\3"
                                        "9.5",
                                        31),
                            objects));
    ASSERT_EQ(m_Notes.all().size(), 1U);
    EXPECT_EQ(m_Notes.all().at(7), (ObjectNote{"Model", {{"State", "ok"}, {"Seconds", "9.5"}}}));
}

TEST_F(KeptNotesTest, DamagedChangesNothing)
{
    m_Notes.set(structure("a on b", "A", "ACD"), kNote);
    const std::string content = m_Kept.store();
    std::minstd_rand random(1);
    for (std::size_t length = 1; length < content.size(); ++length) {
        m_Kept.clear();
        EXPECT_FALSE(load(content.substr(0, length))) << length;
        EXPECT_EQ(m_Kept.store(), "") << length;
    }
    for (int round = 0; round < 300; ++round) {
        std::string bad = content;
        bad[random() % bad.size()] = char(random());
        m_Kept.clear();
        if (!load(bad)) {
            EXPECT_EQ(m_Kept.store(), "");
        }
    }
    m_Kept.clear();
    EXPECT_FALSE(load(std::string("\2", 1))) << "of a newer version";
}

} // namespace KeptNotesTest
