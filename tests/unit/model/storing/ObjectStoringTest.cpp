// SPDX-License-Identifier: GPL-3.0-or-later
#include "RandomSpace.h"
#include "StoringFixture.h"

#include "DataMaker.h"
#include "ObjectOperations.h"
#include "PluginValues.h"
#include "ValueStore.h"

#include <gmock/gmock.h>

#include <limits>

using testing::HasSubstr;
using testing::StartsWith;

namespace ObjectStoringTest {

using TAMBO::ObjectIndex;
using TAMBO::ObjectLoader;
using TAMBO::ObjectStore;
using TAMBO::Peptide;

class ObjectStoring : public StoringFixture
{
};

// ---- Anything

class RandomObjects : public StoringFixture, public testing::WithParamInterface<unsigned>
{
};

TEST_P(RandomObjects, ComeBackAsTheyWere)
{
    RandomSpace(GetParam()).fill();
    expectItComesBack();
}

TEST_P(RandomObjects, ComeBackOfSmallPieces)
{
    RandomSpace(GetParam() + 1000).fill();
    expectItComesBack(1);
}

INSTANTIATE_TEST_SUITE_P(ObjectStoring, RandomObjects, testing::Range(0U, 60U));

// ---- A great many

TEST_F(ObjectStoring, ManyObjectsAreGivenUpAtEachLookAndNothingHasChanged)
{
    constexpr std::size_t kMany = 20'000;
    {
        const Guard guard(Publisher::Add, space());
        for (std::size_t i = 0; i < kMany; ++i)
            peptide("s", "MK");
        alignment("family", {{Peptide::from(space().object(7)), "M-K"}});
    }
    TAMBO::renameObject(space(), "workbench");
    const std::string before = FullState::of(space());
    const Pieces pieces = piecesOfSpace();
    space().reset();
    const std::string empty = FullState::of(space());
    ObjectIndex index;
    ObjectLoader loader(index);
    for (const std::string &piece : pieces)
        ASSERT_TRUE(loader.read(piece));
    ASSERT_TRUE(loader.complete());
    int most = 0;
    for (bool isGivenUp = true; isGivenUp; ++most) {
        int looks = 0;
        const TAMBO::Result<void> filled = loader.fill(space(), [&] { return looks++ < most; });
        isGivenUp = !filled;
        if (!isGivenUp)
            break;
        EXPECT_EQ(filled.error().kind, TAMBO::FailureKind::Cancelled);
        ASSERT_EQ(FullState::of(space()), empty);
    }
    EXPECT_GE(most, 4);
    EXPECT_EQ(FullState::of(space()), before);
    TAMBO::renameObject(space(), "Space");
}

TEST_F(ObjectStoring, WhatWasNotFilledInGoesWithoutATrace)
{
    constexpr std::size_t kMany = 10'000;
    {
        const Guard guard(Publisher::Add, space());
        for (std::size_t i = 0; i < kMany; ++i)
            peptide("s", "MK");
        alignment("family", {{Peptide::from(space().object(7)), "M-K"}});
    }
    const Pieces pieces = piecesOfSpace();
    space().reset();
    {
        ObjectIndex index;
        ObjectLoader loader(index);
        for (const std::string &piece : pieces)
            ASSERT_TRUE(loader.read(piece));
        ASSERT_TRUE(loader.complete());
        EXPECT_FALSE(loader.fill(space(), [] { return false; }));
    }
    EXPECT_EQ(space().objectCount(), 0u);
    EXPECT_EQ(problemOf(pieces), "");
}

// ---- What there is little or nothing of

TEST_F(ObjectStoring, EmptySpaceComesBack)
{
    TAMBO::renameObject(space(), "workbench");
    space().SetColor(Color(0x102030));
    expectItComesBack();
    EXPECT_EQ(space().Name(), "workbench");
    TAMBO::renameObject(space(), "Space");
}

TEST_F(ObjectStoring, ObjectsWithNothingInThemComeBack)
{
    peptide("", "");
    structure("", {});
    alignment("", {});
    alignment("gaps", {{&peptide("none", ""), ""}});
    expectItComesBack();
}

TEST_F(ObjectStoring, SequenceOfAnyLengthAroundAWordComesBack)
{
    for (const std::size_t length : {1, 63, 64, 65, 127, 128, 129}) {
        Peptide &made = peptide(std::to_string(length), std::string(length, 'A'));
        made.setSelected(length - 1, length, true);
        made.setColor(0, Color(1));
        alignment("rows", {{&made, std::string(length, 'A')}});
    }
    expectItComesBack();
}

TEST_F(ObjectStoring, WidestAlignmentComesBack)
{
    const unsigned long width = TAMBO::AlignmentTable::kMostColumns;
    Peptide &made = peptide("one", "AC");
    std::vector<std::uint64_t> words(TAMBO::bits::wordsFor(width), 0);
    words.front() = 1;
    words.back() = TAMBO::bits::one(width - 1);
    TAMBO::AlignmentTable::Rows rows;
    rows.push_back(std::make_unique<TAMBO::AlignmentRow>(made, TAMBO::OccupancyRow(words)));
    space().add(TAMBO::AlignmentTable::make("wide", std::move(rows), width));
    const Pieces pieces = piecesOfSpace();
    space().reset();
    EXPECT_EQ(problemOf(pieces), "");
    const auto &loaded = dynamic_cast<const TAMBO::Alignment &>(*space().object(1));
    EXPECT_EQ(loaded.width(), width);
    EXPECT_EQ(loaded.letterAt(0, 0), 'A');
    EXPECT_EQ(loaded.letterAt(0, width - 1), 'C');
    EXPECT_EQ(loaded.residueCount(0, width), 2U);
}

TEST_F(ObjectStoring, NamesAndValuesOfAnyBytesComeBack)
{
    const std::string bytes("\0\n\xff\"/", 5);
    Peptide &made = peptide(bytes, "AC");
    ASSERT_TRUE(PluginValues::Set(&made, "plug-in", "key", bytes + std::string(100'000, 'x')));
    expectItComesBack();
    EXPECT_EQ(PluginValues::Get(space().object(0), "plug-in", "key")->size(), 100'005U);
}

// ---- Numbers

TEST_F(ObjectStoring, ObjectsKeepTheirNumbersAndNewOnesGetOthers)
{
    const std::uint32_t number = peptide("one", "AC").identity();
    const Pieces pieces = piecesOfSpace();
    space().reset();
    ObjectIndex index;
    ASSERT_TRUE(load(pieces, index));
    EXPECT_EQ(TAMBO::identityOf(*space().object(0)), number);
    EXPECT_EQ(index.find(number), space().object(0));
    EXPECT_GT(peptide("two", "AC").identity(), number);
}

TEST_F(ObjectStoring, IndexLeadsToEverythingThatWasLoaded)
{
    RandomSpace(5).fill();
    const Pieces pieces = piecesOfSpace();
    space().reset();
    ObjectIndex loaded;
    ASSERT_TRUE(load(pieces, loaded));
    ObjectIndex all;
    all.addTree(space());
    // Space itself was there before.
    EXPECT_EQ(loaded.size() + 1, all.size());
}

// ---- Objects outside of the tree

TEST_F(ObjectStoring, ObjectOutsideOfTheTreeComesBackAndIsReferredTo)
{
    Peptide &shown = peptide("shown", "AC");
    Peptide &gone = peptide("gone", "ACD");
    TAMBO::Alignment &rows = alignment("rows", {{&gone, "A-CD"}, {&shown, "AC"}});
    const std::uint32_t goneNumber = gone.identity();
    const std::uint32_t rowsNumber = TAMBO::identityOf(rows);
    std::unique_ptr<TAMBO::Compound> ownedRows = space().takeObject(2);
    std::unique_ptr<TAMBO::Compound> ownedGone = space().takeObject(1);
    const std::string before = FullState::of(rows) + FullState::of(gone);
    const Pieces pieces = piecesOfSpace(
        kAtOnce, {TAMBO::StoredObject::from(&rows), TAMBO::StoredObject::from(&gone)});
    space().reset();
    ownedRows.reset();
    ownedGone.reset();

    ObjectIndex index;
    ObjectLoader loader(index);
    for (const std::string &piece : pieces)
        ASSERT_TRUE(loader.read(piece));
    ASSERT_TRUE(loader.complete());
    ASSERT_TRUE(loader.fill(space()));
    EXPECT_EQ(topLevelNames(), Texts{"shown"});
    ownedRows = loader.take(rowsNumber);
    ownedGone = loader.take(goneNumber);
    ASSERT_NE(ownedRows, nullptr);
    ASSERT_NE(ownedGone, nullptr);
    EXPECT_EQ(FullState::of(*ownedRows) + FullState::of(*ownedGone), before);
    EXPECT_EQ(ownedRows->Parent(), nullptr);
    EXPECT_EQ(loader.take(goneNumber), nullptr);
    EXPECT_TRUE(loader.takeAll().empty());
}

TEST_F(ObjectStoring, PartsOfAStructureStandAlone)
{
    TAMBO::StructureRecord record;
    record.name = "1abc";
    record.chains.push_back(chainRecord("A", "AGAG"));
    record.chains.back().residues.push_back(residueRecord("ATP", 'X', "401", 50));
    record.chains.back().residues.back().isAminoAcid = false;
    record.elements.push_back({"H1", 'H', "A", TAMBO::SequenceNumber(1), TAMBO::SequenceNumber(2)});
    TAMBO::Structure &made = *TAMBO::ObjectFactory::adopt(std::move(record));
    Peptide &chain = *made.chain(0);
    const std::unique_ptr<TAMBO::Compound> element = chain.takeObject(1);
    const std::unique_ptr<TAMBO::Compound> group = chain.takeObject(0);
    const std::unique_ptr<TAMBO::Compound> taken = made.takeObject(0);
    std::string before;
    Others others;
    for (const auto *const object : {&element, &group, &taken}) {
        before += FullState::of(**object);
        others.push_back(TAMBO::StoredObject::from(object->get()));
    }
    const Pieces pieces = piecesOf(ObjectStore(others));
    ObjectIndex index;
    ObjectLoader loader(index);
    ASSERT_TRUE(loader.read(pieces.front()));
    ASSERT_TRUE(loader.complete());
    std::string after;
    std::vector<std::unique_ptr<TAMBO::Compound>> loaded = loader.takeAll();
    ASSERT_EQ(loaded.size(), 3U);
    for (const std::unique_ptr<TAMBO::Compound> &object : loaded)
        after += FullState::of(*object);
    EXPECT_EQ(after, before);
    EXPECT_EQ(loader.fill(space()).error().message(), "nothing is said of the space");
}

TEST_F(ObjectStoring, ObjectRefersToOneThatWasLoadedBefore)
{
    Peptide &sequence = peptide("one", "ACD");
    TAMBO::Alignment &rows = alignment("rows", {{&sequence, "A-CD"}});
    const std::unique_ptr<TAMBO::Compound> owned = space().takeObject(1);
    const Pieces pieces = piecesOf(ObjectStore(Others{TAMBO::StoredObject::from(&rows)}));
    const std::string before = FullState::of(rows);
    ObjectIndex index;
    {
        ObjectLoader loader(index);
        EXPECT_EQ(loader.read(pieces.front()).error().cause,
                  "it refers to object " + std::to_string(sequence.identity()) +
                      ", which is not there (byte " + std::to_string(pieces.front().size() - 10) +
                      ")");
    }
    index.add(sequence);
    ObjectLoader loader(index);
    ASSERT_TRUE(loader.read(pieces.front()));
    ASSERT_TRUE(loader.complete());
    const std::unique_ptr<TAMBO::Compound> loaded = loader.take(TAMBO::identityOf(rows));
    EXPECT_EQ(FullState::of(*loaded), before);
}

// The sequence may go without the alignment.
TEST_F(ObjectStoring, AlignmentOfASequenceThatIsNotInTheSpaceIsRefused)
{
    Peptide &outside = peptide("outside", "ACD");
    TAMBO::Alignment &rows = alignment("rows", {{&outside, "A-CD"}});
    const std::uint32_t number = TAMBO::identityOf(rows);
    std::unique_ptr<TAMBO::Compound> owned = space().takeObject(0);
    const Pieces pieces = piecesOfSpace(kAtOnce, {TAMBO::StoredObject::from(&outside)});
    space().reset();
    owned.reset();
    EXPECT_EQ(problemOf(pieces),
              "object " + std::to_string(number) + " refers to one that is not in the space");
    EXPECT_EQ(space().objectCount(), 0U);
}

TEST_F(ObjectStoring, ChainThatIsTiedIsRefused)
{
    TAMBO::Structure &made = structure("model", {{"A", "ACDE"}, {"B", "KLMN"}});
    made.chain(1)->tie(0, *made.chain(0), 0, 4);
    const Pieces pieces = piecesOfSpace();
    space().reset();
    EXPECT_EQ(problemOf(pieces), "the chain \"B\" is tied");
}

// Whoever waits for a million of them may call it off.
TEST_F(ObjectStoring, BetweenSomeThousandObjectsItIsAskedWhetherTheWorkGoesOn)
{
    constexpr std::size_t kSequences = 20'000;
    constexpr std::size_t kLeastLooks = 2 * (kSequences / 4096);
    for (std::size_t i = 0; i < kSequences; ++i)
        peptide("s", "A");
    const Pieces pieces = piecesOfSpace();
    space().reset();
    std::size_t looks = 0;
    const auto completed = [&](std::size_t most, ObjectIndex &index) {
        looks = 0;
        ObjectLoader loader(index);
        for (const std::string &piece : pieces)
            EXPECT_TRUE(loader.read(piece));
        TAMBO::Result<void> done = loader.complete([&] { return ++looks <= most; });
        return done ? loader.fill(space()) : done;
    };
    for (std::size_t most = 0; most < kLeastLooks; ++most) {
        ObjectIndex index;
        const TAMBO::Result<void> done = completed(most, index);
        ASSERT_FALSE(done) << most;
        EXPECT_EQ(done.error().kind, TAMBO::FailureKind::Cancelled);
        EXPECT_EQ(looks, most + 1);
        EXPECT_EQ(index.size(), 0U);
        EXPECT_EQ(space().objectCount(), 0U);
    }
    ObjectIndex index;
    EXPECT_TRUE(completed(kSequences, index));
    EXPECT_GE(looks, kLeastLooks);
    EXPECT_EQ(space().objectCount(), kSequences);
}

// Sequences come before the chains that they are tied to, as they stand in Space.
TEST_F(ObjectStoring, TiesLeadToChainsThatComeLater)
{
    Peptide &sequence = peptide("tied", "AGAG");
    TAMBO::Structure &known = structure("1abc", {{"A", "GAGAG"}});
    sequence.tie(1, *known.chain(0), 2, 3);
    space().noteReferences(sequence);
    expectItComesBack();
    const Peptide &tied = *Peptide::from(space().object(0));
    EXPECT_EQ(tied.resolve(2).index, 3U);
    EXPECT_EQ(tied.resolve(2).peptide->Name(), "A");
    // What a chain that goes has to tell is known.
    TAMBO::DataMaker::Destroy(space().object(1));
    EXPECT_FALSE(tied.hasTies());
}

// ---- What stands in the way

TEST_F(ObjectStoring, SpaceWithObjectsIsNotFilled)
{
    peptide("one", "AC");
    const Pieces pieces = piecesOfSpace();
    space().reset();
    peptide("other", "AC");
    EXPECT_EQ(problemOf(pieces), "there are other objects already");
    EXPECT_EQ(topLevelNames(), Texts{"other"});
}

TEST_F(ObjectStoring, NumberOfAKnownObjectIsNotGivenToAnother)
{
    Peptide &one = peptide("one", "AC");
    const Pieces pieces = piecesOfSpace();
    ObjectIndex index;
    index.addTree(space());
    ASSERT_TRUE(PluginValues::Set(&one, "plug-in", "key", "value"));
    EXPECT_THAT(load(pieces, index).error().message(),
                StartsWith("there are two objects " + std::to_string(one.identity())));
    // What failed leaves nothing behind, and takes nothing with it.
    EXPECT_EQ(index.find(one.identity()), &one);
    EXPECT_EQ(PluginValues::Get(&one, "plug-in", "key"), "value");
}

TEST_F(ObjectStoring, FailureLeavesNothingInTheIndex)
{
    RandomSpace(3).fill();
    Pieces pieces = piecesOfSpace();
    space().reset();
    pieces.front().pop_back();
    ObjectIndex index;
    EXPECT_FALSE(load(pieces, index));
    EXPECT_EQ(index.size(), 0U);
    EXPECT_TRUE(TAMBO::ValueStore::get().empty());
}

TEST_F(ObjectStoring, NewerVersionIsSaidToBeNewer)
{
    for (const TAMBO::StoredKindEntry &entry : TAMBO::kStoredKinds) {
        TAMBO::ObjectWriter out;
        out.character(static_cast<char>(entry.kind));
        out.number(entry.version + 1);
        EXPECT_EQ(problemOf({out.take()}), std::string(entry.title) +
                                               " was written by a newer version of the program "
                                               "(byte 2)");
    }
}

TEST_F(ObjectStoring, MissingPieceIsMissed)
{
    structure("1abc", {{"A", "AGAG"}, {"B", "AG"}});
    Peptide &one = peptide("one", "AC");
    alignment("rows", {{&one, "A-C"}});
    const Pieces pieces = piecesOfSpace(1);
    ASSERT_EQ(pieces.size(), 8U);
    space().reset();
    const std::vector<std::string> causes = {
        "a chain has no structure",
        "chains of a structure are missing",
        "chains of a structure are missing",
        "which is not there",
        "rows have no alignment",
        "rows of an alignment are missing",
        "objects of the space are missing",
        "objects of the space are missing",
    };
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        Pieces some = pieces;
        some.erase(some.begin() + std::ptrdiff_t(i));
        EXPECT_THAT(problemOf(some), HasSubstr(causes[i])) << i;
        EXPECT_EQ(space().objectCount(), 0U);
    }
}

TEST_F(ObjectStoring, PieceThatComesTwiceIsRefused)
{
    structure("1abc", {{"A", "AGAG"}, {"B", "AG"}});
    Peptide &one = peptide("one", "AC");
    alignment("rows", {{&one, "A-C"}});
    const Pieces pieces = piecesOfSpace(1);
    space().reset();
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        Pieces more = pieces;
        more.insert(more.begin() + std::ptrdiff_t(i), pieces[i]);
        EXPECT_NE(problemOf(more), "") << i;
        EXPECT_EQ(space().objectCount(), 0U);
    }
}

TEST_F(ObjectStoring, AtomThatIsNowhereIsRefused)
{
    TAMBO::StructureRecord record;
    record.chains.push_back({"A", {residueRecord("ALA", 'A', "1", 1234.5F)}});
    TAMBO::ObjectFactory::adopt(std::move(record));
    Pieces pieces = piecesOfSpace();
    space().reset();
    TAMBO::ValueWriter place;
    place.real(1234.5F);
    const std::size_t found = pieces.front().find(place.bytes());
    ASSERT_NE(found, std::string::npos);
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        TAMBO::ValueWriter nowhere;
        nowhere.real(bad);
        pieces.front().replace(found, nowhere.size(), nowhere.bytes());
        EXPECT_THAT(problemOf(pieces), HasSubstr("an atom is nowhere"));
        EXPECT_EQ(space().objectCount(), 0U);
    }
}

// From tie to tie one would never come to an end.
TEST_F(ObjectStoring, TiesThatLeadBackAreRefused)
{
    Peptide &one = peptide("one", "ACDE");
    Peptide &two = peptide("two", "ACDE");
    one.tie(0, two, 0, 4);
    two.tie(0, one, 0, 4);
    const Pieces pieces = piecesOfSpace();
    space().reset();
    EXPECT_THAT(problemOf(pieces), StartsWith("the sequence \"two\" is tied to residues"));
}

// ---- Damage

// What is loaded of damaged bytes is whole: it can be looked at, written and loaded again.
class Damaged : public StoringFixture
{
protected:
    void SetUp() override
    {
        structure("1abc", {{"A", "AGAG"}, {"", "AG"}});
        RandomSpace(GetSeed()).fill();
        m_Bytes = bytesOfSpace();
        space().reset();
    }
    static unsigned GetSeed() { return 23; }
    void expectFailureOrObjects(const std::string &bytes)
    {
        const TAMBO::Result<void> loaded = load({bytes});
        if (!loaded) {
            ++m_Failures;
            EXPECT_NE(loaded.error().cause, "");
            EXPECT_EQ(space().objectCount(), 0U);
        } else {
            ++m_Loaded;
            const std::string state = FullState::of(space());
            const Pieces again = piecesOfSpace();
            space().reset();
            EXPECT_EQ(problemOf(again), "");
            EXPECT_EQ(FullState::of(space()), state);
        }
        space().reset();
    }

    std::string m_Bytes;
    std::size_t m_Failures = 0;
    std::size_t m_Loaded = 0;
};

TEST_F(Damaged, EveryByteThatIsAnotherGivesAFailureOrObjects)
{
    // Of large ones some.
    const std::size_t step = 1 + m_Bytes.size() / 3000;
    std::mt19937 random(7);
    for (std::size_t i = 0; i < m_Bytes.size(); i += step) {
        const std::size_t place = i + (step > 1 ? random() % step : 0);
        if (place >= m_Bytes.size())
            break;
        std::string damaged = m_Bytes;
        const char change = "\x01\x80\xff\x7f"[random() % 4];
        damaged[place] = static_cast<char>(damaged[place] ^ change);
        expectFailureOrObjects(damaged);
    }
    EXPECT_GT(m_Failures, 100U);
    EXPECT_GT(m_Loaded, 100U);
}

TEST_F(Damaged, EveryEndThatIsMissingGivesAFailure)
{
    const std::size_t step = 1 + m_Bytes.size() / 2000;
    for (std::size_t size = 0; size < m_Bytes.size(); size += step)
        expectFailureOrObjects(m_Bytes.substr(0, size));
    EXPECT_EQ(m_Loaded, 0U);
}

TEST_F(Damaged, BytesThatComeOrGoGiveAFailureOrObjects)
{
    std::mt19937 random(11);
    for (int round = 0; round < 1500; ++round) {
        std::string damaged = m_Bytes;
        for (unsigned i = 1 + random() % 3; i > 0; --i) {
            const std::size_t place = random() % damaged.size();
            if (random() % 2 == 0)
                damaged.erase(place, 1 + random() % 4);
            else
                damaged.insert(place, 1 + random() % 4, static_cast<char>(random()));
        }
        expectFailureOrObjects(damaged);
    }
    EXPECT_GT(m_Failures, 1000U);
}

// ---- Counted work

TEST_F(ObjectStoring, RowTakesItsBitsAndSixBytes)
{
    constexpr std::size_t kRows = 5000;
    constexpr std::size_t kColumns = 200;
    std::vector<std::pair<Peptide *, std::string>> rows;
    for (std::size_t i = 0; i < kRows; ++i)
        rows.emplace_back(&peptide("row", std::string(kColumns, 'A')), std::string(kColumns, 'A'));
    const std::size_t sequences = bytesOfSpace().size();
    alignment("rows", rows);
    const std::size_t both = bytesOfSpace().size();
    EXPECT_LE(both - sequences, kRows * (kColumns / 8 + 7 + 6));
    EXPECT_LE(sequences, kRows * (kColumns + 16));
}

TEST_F(ObjectStoring, PiecesAreLittleLargerThanIsAskedFor)
{
    constexpr std::size_t kPiece = 64 << 10;
    std::vector<std::pair<Peptide *, std::string>> rows;
    for (std::size_t i = 0; i < 20'000; ++i)
        rows.emplace_back(&peptide("row", "ACDEFG"), "A--C--DEFG");
    alignment("rows", rows);
    const Pieces pieces = piecesOfSpace(kPiece);
    // However short they are, not all of them are in one.
    EXPECT_GT(pieces.size(), 20'000 * 256 / kPiece);
    for (const std::string &piece : pieces)
        EXPECT_LE(piece.size(), 2 * kPiece);
    space().reset();
    EXPECT_EQ(problemOf(pieces), "");
    EXPECT_EQ(space().objectCount(), 20'001U);
}

TEST_F(ObjectStoring, PaletteOfManySequencesIsWrittenOnce)
{
    std::array<Color, 256> colors;
    for (std::size_t i = 0; i < colors.size(); ++i)
        colors[i] = Color(unsigned(i / 2 * 5000));
    std::vector<std::pair<Peptide *, std::string>> rows;
    for (std::size_t i = 0; i < 100; ++i)
        rows.emplace_back(&peptide("row", "ACDEFGHIKL"), "ACDEFGHIKL");
    TAMBO::Alignment &made = alignment("rows", rows);
    const std::size_t plain = bytesOfSpace().size();
    made.colorByLetter(colors);
    const std::size_t colored = bytesOfSpace().size();
    // Of each sequence its residues and two marks; of all of them the colours.
    EXPECT_LE(colored - plain, 100 * (10 + 2) + 256 * 5 + 4);
    expectItComesBack();
}

} // namespace ObjectStoringTest
