// SPDX-License-Identifier: GPL-3.0-or-later
// What changes of objects without a step of undo is there again, too.
#include "LiveFixture.h"

#include "Atom.h"
#include "KeptValues.h"
#include "MarkFollower.h"
#include "MarkList.h"
#include "ObjectIndex.h"
#include "ObjectMarks.h"
#include "ObjectOperations.h"
#include "SessionKinds.h"
#include "SessionMarks.h"
#include "ValueBytes.h"

#include <gmock/gmock.h>

#include <map>
#include <sstream>

namespace SessionMarksTest {

using namespace TAMBO::sessions;
using TAMBO::ObjectMarks;
using TAMBO::StoredObject;

class SessionMarksTest : public LiveFixture, public testing::WithParamInterface<unsigned>
{
protected:
    SessionMarksTest() : LiveFixture(GetParam()) { m_Marks.emplace(space(), m_Values); }

    // As the workbench does it.
    void begin(std::size_t small)
    {
        session.emplace(
            space(), history,
            [this](StoreEntry entry) {
                const auto *const record = std::get_if<Record>(&entry);
                const bool isChange =
                    std::holds_alternative<StateSwitch>(entry) ||
                    (record != nullptr && record->kind == std::uint32_t(RecordKind::Change));
                entries.push_back(std::move(entry));
                if (!isChange)
                    return;
                put(m_Values.changedBySteps());
                m_RangesOfStep = ranges();
            },
            small);
        m_Values.forgetGiven();
        rest();
    }
    void rest() { put(m_Values.changed()); }
    void put(std::vector<NamedValue> values)
    {
        for (NamedValue &value : values)
            entries.emplace_back(std::move(value));
    }
    void endAndLoad(const Entries &kept)
    {
        endProgram();
        m_Marks.reset();
        m_Values.clear();
        m_Marks.emplace(space(), m_Values);
        ASSERT_NO_FATAL_FAILURE(writeStore(kept));
        auto reader = StoreReader::open(file(), StoreReader::Kind::Whole);
        ASSERT_TRUE(reader) << complaintOf(reader);
        TAMBO::ObjectIndex index;
        const auto loaded = loadSession(*reader.value(), space(), history, index);
        ASSERT_TRUE(loaded) << complaintOf(loaded);
        ASSERT_FALSE(loaded.value().problem) << loaded.value().problem->message();
        for (const TAMBO::Failure &failure : m_Values.load(*reader.value(), index))
            ADD_FAILURE() << failure.message();
    }

    // By what everybody may ask.
    static std::string portrait()
    {
        std::ostringstream out;
        draw(space(), out);
        return out.str();
    }
    static void draw(TAMBO::Compound &object, std::ostream &out)
    {
        out << TAMBO::identityOf(object) << object.Name()
            << (object.IsSelected() ? " selected" : "") << (object.IsLocked() ? " locked" : "");
        if (const auto *const alignment = dynamic_cast<TAMBO::Alignment *>(&object))
            out << ' ' << alignment->range().first << ".." << alignment->range().second;
        out << '\n';
        for (std::size_t i = 0; i < object.ChildCount(); ++i)
            draw(*object.Child(i), out);
    }
    static std::string ranges()
    {
        std::ostringstream out;
        for (const TAMBO::Compound *object : space()) {
            if (const auto *const alignment = dynamic_cast<const TAMBO::Alignment *>(object))
                out << TAMBO::identityOf(*object) << ':' << alignment->range().first << ".."
                    << alignment->range().second << '\n';
        }
        return out.str();
    }

    TAMBO::Compound &anything()
    {
        TAMBO::Compound *object = &space();
        while (object->ChildCount() > 0 && below(5) != 0)
            object = object->Child(below(unsigned(object->ChildCount())));
        return *object;
    }
    void mark()
    {
        TAMBO::Compound &object = anything();
        switch (below(4)) {
        case 0:
            TAMBO::setObjectLocked(object, below(2) == 0);
            break;
        case 1:
            object.SetSelected(below(2) == 0);
            break;
        case 2:
            if (TAMBO::Peptide *const peptide = TAMBO::Peptide::from(&object)) {
                const bool isSelected = below(3) > 0;
                const std::size_t end = below(unsigned(peptide->residueCount()) + 1);
                peptide->setSelected(below(unsigned(peptide->residueCount()) + 1), end, isSelected);
            }
            break;
        default:
            setRange();
        }
    }
    void setRange()
    {
        std::vector<TAMBO::Alignment *> alignments;
        for (TAMBO::Compound *object : space()) {
            if (auto *const alignment = dynamic_cast<TAMBO::Alignment *>(object))
                alignments.push_back(alignment);
        }
        if (alignments.empty())
            return;
        TAMBO::Alignment &alignment = *alignments[below(unsigned(alignments.size()))];
        const unsigned width = unsigned(alignment.width()) + 1;
        alignment.range({below(width), below(width)});
    }
    // A command that meets a lock does nothing.
    static void unlock(TAMBO::Compound &object)
    {
        TAMBO::setObjectLocked(object, false);
        for (std::size_t i = 0; i < object.ChildCount(); ++i)
            unlock(*object.Child(i));
    }

    KeptValues m_Values;
    std::optional<SessionMarks> m_Marks;
    // When a step was handed over last.
    std::string m_RangesOfStep;
};

TEST_P(SessionMarksTest, AreThereAgainAfterTheProgramEnded)
{
    ASSERT_NO_FATAL_FAILURE(work(20));
    for (int i = 0; i < 10; ++i)
        mark();
    begin(GetParam() % 2 == 0 ? 0 : 700);
    for (int round = 0; round < 60; ++round) {
        unlock(space());
        ASSERT_NO_FATAL_FAILURE(workOnce());
        for (unsigned i = below(6); i > 0; --i)
            mark();
        if (below(3) == 0) {
            session->writeMore(1 + below(3000));
            rest();
        }
    }
    session->finish();
    rest();
    const Entries kept = entries;
    endSession();
    const std::string before = portrait();
    ASSERT_NO_FATAL_FAILURE(endAndLoad(kept));
    EXPECT_EQ(portrait(), before);
}

TEST_P(SessionMarksTest, AreThereAfterASecondLoadAsWell)
{
    ASSERT_NO_FATAL_FAILURE(work(20));
    begin(0);
    session->finish();
    for (int i = 0; i < 40; ++i)
        mark();
    rest();
    Entries kept = entries;
    endSession();
    const std::string before = portrait();
    ASSERT_NO_FATAL_FAILURE(endAndLoad(kept));
    entries.clear();
    begin(0);
    session->finish();
    kept = entries;
    endSession();
    ASSERT_NO_FATAL_FAILURE(endAndLoad(kept));
    EXPECT_EQ(portrait(), before);
}

// Columns before a range move it, and a step is on the disk before the user rests.
TEST_P(SessionMarksTest, RangesAreThoseOfTheLastStepWhereverTheProgramEnds)
{
    begin(0);
    std::vector<std::string> states;
    std::vector<std::size_t> ends;
    for (int round = 0; round < 40; ++round) {
        ASSERT_NO_FATAL_FAILURE(workOnce());
        session->finish();
        const bool isSet = below(3) == 0;
        if (isSet)
            setRange();
        // One that was set without a step waits for that.
        if (isSet || ranges() != m_RangesOfStep)
            rest();
        states.push_back(ranges());
        ends.push_back(entries.size());
    }
    const Entries kept = entries;
    for (int round = 0; round < 10; ++round) {
        const std::size_t i = below(unsigned(ends.size()));
        ASSERT_NO_FATAL_FAILURE(endAndLoad({kept.begin(), kept.begin() + std::ptrdiff_t(ends[i])}));
        EXPECT_EQ(ranges(), states[i]) << i;
    }
}

// Other people's files.
TEST_P(SessionMarksTest, DamagedChangeNothingOrWhatCanBe)
{
    ASSERT_NO_FATAL_FAILURE(work(20));
    MarkedObjects marks("marks", false, space());
    TAMBO::ObjectIndex index;
    index.addTree(space());
    m_Marks.reset();
    class Follower final : public TAMBO::MarkFollower
    {
    public:
        explicit Follower(MarkedObjects &marks) : m_Marks(marks) { TAMBO::setMarkFollower(this); }
        ~Follower() override { TAMBO::setMarkFollower(nullptr); }
        void marksChanged(StoredObject &object) override { m_Marks.note(object); }

    private:
        MarkedObjects &m_Marks;
    } const follower(marks);
    for (int i = 0; i < 40; ++i)
        mark();
    const std::string good = marks.store();
    int refused = 0;
    for (int round = 0; round < 300 && good.size() > 1; ++round) {
        std::string bad = good;
        if (below(3) == 0)
            bad.resize(below(unsigned(bad.size())));
        else
            bad[below(unsigned(bad.size()))] = char(random());
        const std::string before = portrait();
        if (marks.load(bad, index))
            continue;
        ++refused;
        EXPECT_EQ(portrait(), before);
    }
    EXPECT_GT(refused, 10);
}

INSTANTIATE_TEST_SUITE_P(Random, SessionMarksTest, testing::Range(1U, 81U));

// ---- How much there is to keep

class MarksOfMany : public LiveFixture
{
protected:
    MarksOfMany() : LiveFixture(1) { m_Marks.emplace(space(), m_Values); }
    void addMany(std::size_t count)
    {
        std::vector<std::unique_ptr<StoredObject>> sequences;
        for (std::size_t i = 0; i < count; ++i)
            sequences.push_back(std::make_unique<TAMBO::Peptide>("s", "ACDEF"));
        space().addAll(std::move(sequences));
    }

    KeptValues m_Values;
    std::optional<SessionMarks> m_Marks;
};

TEST_F(MarksOfMany, NothingIsKeptWhenNothingWasMarked)
{
    addMany(10);
    EXPECT_TRUE(m_Values.store().empty());
    EXPECT_TRUE(m_Values.changed().empty());
}

TEST_F(MarksOfMany, ThatAreMarkedAlikeTakeNoRoom)
{
    addMany(MarkedObjects::kMany * 3);
    space().SetSelected(true);
    const std::vector<NamedValue> kept = m_Values.changed();
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_LT(kept[0].content.size(), 100u);
    EXPECT_TRUE(m_Values.changed().empty());
    std::size_t selected = 0;
    ASSERT_TRUE(MarkList::forEach(kept[0].content, [&](std::uint32_t, const ObjectMarks &marks) {
        selected += marks.residues == ObjectMarks::Runs{{0, 5}} ? 1 : 0;
    }));
    EXPECT_EQ(selected, MarkedObjects::kMany * 3);
}

TEST_F(MarksOfMany, AreLookedAtInSlicesWhileTheUserGoesOn)
{
    addMany(MarkedObjects::kMany * 4);
    space().SetSelected(true);
    int slices = 0;
    while (m_Values.prepare()) {
        ++slices;
        // One that was looked at already, one that was not, and one that comes.
        space().object(0)->SetSelected(slices % 2 == 0);
        space().object(space().objectCount() - 1)->SetSelected(slices % 2 == 0);
        if (slices == 2)
            addMany(1);
    }
    EXPECT_GE(slices, 3);
    const std::vector<NamedValue> kept = m_Values.changed();
    ASSERT_EQ(kept.size(), 1u);
    std::map<std::uint32_t, bool> found;
    ASSERT_TRUE(
        MarkList::forEach(kept[0].content, [&](std::uint32_t identity, const ObjectMarks &marks) {
            found[identity] = !marks.residues.empty();
        }));
    for (const TAMBO::Compound *object : space())
        ASSERT_EQ(found[TAMBO::identityOf(*object)], object->IsSelected());
}

TEST_F(MarksOfMany, AreLookedAtOnceMoreWhenOneOfThemWentMeanwhile)
{
    addMany(MarkedObjects::kMany * 3);
    space().SetSelected(true);
    ASSERT_TRUE(m_Values.prepare());
    static_cast<void>(space().takeObject(0));
    const std::vector<NamedValue> kept = m_Values.changed();
    ASSERT_EQ(kept.size(), 1u);
    std::size_t selected = 0;
    ASSERT_TRUE(MarkList::forEach(kept[0].content, [&](std::uint32_t, const ObjectMarks &marks) {
        selected += marks.residues.empty() ? 0 : 1;
    }));
    EXPECT_EQ(selected, MarkedObjects::kMany * 3);
}

TEST_F(MarksOfMany, OneThatIsGoneIsNotLookedFor)
{
    TAMBO::Peptide &one = peptide("one", "ACDEF");
    one.SetSelected(true);
    space().reset();
    EXPECT_TRUE(m_Values.store().empty());
}

TEST_F(MarksOfMany, TheListOfOneMayNotCountMoreThanAnyMachineHolds)
{
    TAMBO::ValueWriter marks;
    ObjectMarks().write(marks);
    TAMBO::ValueWriter chunk;
    chunk.number(0);
    chunk.number(4096);
    chunk.text(marks.bytes());
    TAMBO::ValueWriter list;
    list.number(1);
    for (int i = 0; i < 20'000; ++i) {
        list.number(0);
        list.text(chunk.bytes());
    }
    const auto done = MarkList::forEach(list.bytes(), [](std::uint32_t, const ObjectMarks &) {});
    ASSERT_FALSE(done);
    EXPECT_EQ(done.error().cause, "it has objects that cannot be");
}

} // namespace SessionMarksTest
