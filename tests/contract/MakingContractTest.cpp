// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on when they make sequences and structures from values of their own.
#include "DataMaker.h"

#include "DataAdder.h"
#include "RecordMaker.h"
#include "Space.h"
#include "unit/history/HistoryFixture.h"

#include <gmock/gmock.h>

#include <limits>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace MakingContractTest {

using TAMBO::Compound;
using TAMBO::CompoundKind;
using TAMBO::DataMaker;
using TAMBO::SequenceNumber;
using TAMBO::Vertex;

TAMBO::ResidueValues residue(const std::string &name, const std::string &number, float x)
{
    return {name,
            SequenceNumber(number),
            {{"N", "N", Vertex(x - 1, 0, 0)}, {"CA", "C", Vertex(x, 2, 3)}}};
}

TAMBO::StructureValues smallStructure()
{
    TAMBO::StructureValues values;
    values.chains = {{"A", {residue("ALA", "7", 1), residue("GLY", "8A", 2)}},
                     {"B", {residue("MSE", "1", 3), residue("HEM", "2", 4)}}};
    values.chains[1].residues[0].letter = 'M';
    return values;
}

class MakingContract : public HistoryFixture
{
protected:
    MakingContract()
    {
        peptide("there", "ACDEF");
        history.clear();
    }

    // What the structure would be as a file, in short.
    static std::vector<std::string> textOf(const Compound &structure)
    {
        std::vector<std::string> lines;
        const TAMBO::StructureRecord record =
            TAMBO::makeRecord(dynamic_cast<const TAMBO::Structure &>(structure));
        for (const TAMBO::ChainRecord &chain : record.chains)
            for (const TAMBO::ResidueRecord &residue : chain.residues)
                for (const TAMBO::AtomRecord &atom : residue.atoms)
                    lines.push_back(chain.name + ' ' + residue.letter + ' ' + residue.typeName +
                                    ' ' + residue.number.getValue() + ' ' + atom.name + ' ' +
                                    atom.element + ' ' + std::to_string(int(atom.position.x())) +
                                    (residue.isAminoAcid ? "" : " group"));
        return lines;
    }
};

TEST_F(MakingContract, ASequenceIsMadeOfLetters)
{
    Compound *const made = DataMaker::makeSequence("new", "ACDx");
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->Kind(), CompoundKind::Sequence);
    EXPECT_EQ(made->Parent(), TAMBO::Space::instance());
    EXPECT_EQ(made->Name(), "new");
    const TAMBO::Peptide &sequence = *TAMBO::Peptide::from(made);
    EXPECT_EQ(sequence.letters(), "ACDX");
    EXPECT_THAT(numbersOf(sequence), ElementsAre("1", "2", "3", "4"));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(MakingContract, ASequenceMayHaveNumbersOfItsOwn)
{
    Compound *const made = DataMaker::makeSequence(
        "new", "ACDE",
        {SequenceNumber(10), SequenceNumber("60A"), SequenceNumber("60B"), SequenceNumber(-3)});
    ASSERT_NE(made, nullptr);
    EXPECT_THAT(numbersOf(*TAMBO::Peptide::from(made)), ElementsAre("10", "60A", "60B", "-3"));
}

TEST_F(MakingContract, AStructureIsMadeOfChainsResiduesAndAtoms)
{
    Compound *const made = DataMaker::makeStructure("1new", smallStructure());
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->Kind(), CompoundKind::Structure);
    EXPECT_EQ(made->Name(), "1new");
    EXPECT_THAT(textOf(*made),
                ElementsAre("A A ALA 7 N N 0", "A A ALA 7 CA C 1", "A G GLY 8A N N 1",
                            "A G GLY 8A CA C 2", "B M MSE 1 N N 2", "B M MSE 1 CA C 3",
                            "B X HEM 2 N N 3 group", "B X HEM 2 CA C 4 group"));
    Compound *const alpha = made->Child(0)->Child(0)->Child(1);
    EXPECT_EQ(alpha->Kind(), CompoundKind::Atom);
    EXPECT_EQ(alpha->Position().y(), 2);
    // The residue stands where its CA atom does.
    EXPECT_EQ(made->Child(0)->Child(0)->Position().z(), 3);
    EXPECT_EQ(made->Child(1)->Child(1)->Kind(), CompoundKind::Group);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(MakingContract, AStructureOfValuesIsTheOneThatItsRecordGives)
{
    TAMBO::StructureRecord record;
    record.name = "twin";
    record.chains.push_back(chainRecord("A", "AGA"));
    Compound *const read = TAMBO::ObjectFactory::adopt(std::move(record));
    TAMBO::StructureValues values;
    TAMBO::ChainValues &chain = values.chains.emplace_back();
    chain.name = "A";
    int number = 1;
    for (const std::string name : {"ALA", "GLY", "ALA"}) {
        const auto x = float(number);
        chain.residues.push_back({name,
                                  SequenceNumber(number++),
                                  {{"N", "N", Vertex(x - 1, 0, 0)}, {"CA", "C", Vertex(x, 0, 0)}}});
    }
    Compound *const made = DataMaker::makeStructure("twin", values);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(textOf(*made), textOf(*read));
    EXPECT_EQ(made->OwnColor(), read->OwnColor());
}

TEST_F(MakingContract, AllThatAGuardMakesIsOneStepThatKeepsItsBytes)
{
    const std::string before = portrait();
    {
        const DataAdder<TAMBO::Space> adder(nullptr, TAMBO::Space::instance());
        ASSERT_TRUE(adder.m_good);
        ASSERT_NE(DataMaker::makeSequence(
                      "new", "ACD", {SequenceNumber(5), SequenceNumber(6), SequenceNumber("6A")}),
                  nullptr);
        ASSERT_NE(DataMaker::makeStructure("1new", smallStructure()), nullptr);
    }
    ASSERT_EQ(history.size(), 1U);
    const std::string after = portrait();
    const std::size_t done = history.bytes();
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(portrait(), before);
    const std::size_t undone = history.bytes();
    EXPECT_GT(undone, done) << "the history holds the objects now";
    ASSERT_TRUE(history.redo());
    EXPECT_EQ(portrait(), after);
    EXPECT_EQ(history.bytes(), done);
    ASSERT_TRUE(history.undo());
    EXPECT_EQ(portrait(), before);
    EXPECT_EQ(history.bytes(), undone);
}

TEST_F(MakingContract, AllSubscribersAreToldOnceThatObjectsCame)
{
    RecordingSubscriber window;
    {
        const DataAdder<TAMBO::Space> adder(nullptr, TAMBO::Space::instance());
        DataMaker::makeSequence("new", "ACD");
        DataMaker::makeStructure("1new", smallStructure());
    }
    EXPECT_THAT(window.calls, ElementsAre("add"));
}

struct BadSequence
{
    std::string title;
    std::string name;
    std::string letters;
    std::vector<SequenceNumber> numbers;
    std::string cause;
};

class BadSequences : public MakingContract, public testing::WithParamInterface<BadSequence>
{
};

TEST_P(BadSequences, AreRefusedWithOneLine)
{
    const BadSequence &bad = GetParam();
    const std::string before = portrait();
    EXPECT_EQ(DataMaker::makeSequence(bad.name, bad.letters, bad.numbers), nullptr);
    EXPECT_THAT(log, ElementsAre(HasSubstr(bad.cause)));
    EXPECT_EQ(portrait(), before);
    EXPECT_EQ(history.size(), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    MakingContract, BadSequences,
    testing::Values(
        BadSequence{"WithoutAName", "", "ACD", {}, "the name is empty"},
        BadSequence{"WithALineEndInTheName", "a\nb", "ACD", {}, "characters that cannot be shown"},
        BadSequence{"WithoutLetters", "a", "", {}, "there are no letters"},
        BadSequence{"WithAGap", "a", "AC-D", {}, "\"-\" at place 3"},
        BadSequence{"WithAStop", "a", "ACD*", {}, "\"*\" at place 4"},
        BadSequence{"WithADigit", "a", "1CD", {}, "\"1\" at place 1"},
        BadSequence{"WithALetterBeyondAscii", "a", "A\xc3\x84", {}, "at place 2"},
        BadSequence{"WithTooFewNumbers", "a", "ACD", {SequenceNumber(1)}, "3 letters and 1 number"},
        BadSequence{"WithAnInvalidNumber",
                    "a",
                    "AC",
                    {SequenceNumber(1), SequenceNumber("one")},
                    "\"one\" is no number"},
        BadSequence{"WithANumberTwice",
                    "a",
                    "AC",
                    {SequenceNumber("4A"), SequenceNumber("4A")},
                    "number 4A comes more than once"}),
    [](const auto &info) { return info.param.title; });

struct BadStructure
{
    std::string title;
    std::function<void(TAMBO::StructureValues &values)> spoil;
    std::string cause;
};

class BadStructures : public MakingContract, public testing::WithParamInterface<BadStructure>
{
};

TEST_P(BadStructures, AreRefusedWithOneLine)
{
    TAMBO::StructureValues values = smallStructure();
    GetParam().spoil(values);
    const std::string before = portrait();
    EXPECT_EQ(DataMaker::makeStructure("1new", values), nullptr);
    EXPECT_THAT(log, ElementsAre(HasSubstr(GetParam().cause)));
    EXPECT_EQ(portrait(), before);
    EXPECT_EQ(history.size(), 0U);
}

using Values = TAMBO::StructureValues;

TAMBO::ResidueValues &firstOf(Values &values)
{
    return values.chains[0].residues[0];
}

INSTANTIATE_TEST_SUITE_P(
    MakingContract, BadStructures,
    testing::Values(
        BadStructure{"WithoutChains", [](Values &values) { values.chains.clear(); },
                     "there are no chains"},
        BadStructure{"WithAnEmptyChain", [](Values &values) { values.chains[1].residues.clear(); },
                     "chain \"B\" has no residues"},
        BadStructure{"WithAChainTwice", [](Values &values) { values.chains[1].name = "A"; },
                     "two chains \"A\""},
        BadStructure{"WithABlankInAChain", [](Values &values) { values.chains[1].name = "A B"; },
                     "no name of a chain"},
        BadStructure{
            "WithANumberTwice",
            [](Values &values) { values.chains[0].residues[1].number = SequenceNumber(7); },
            "has number 7 more than once"},
        BadStructure{"WithAnInvalidNumber",
                     [](Values &values) { firstOf(values).number = SequenceNumber("x"); },
                     "\"x\" is no number"},
        BadStructure{"WithANamelessResidue", [](Values &values) { firstOf(values).name.clear(); },
                     "no name of a residue"},
        BadStructure{"WithABadLetter", [](Values &values) { firstOf(values).letter = '-'; },
                     "letter"},
        BadStructure{"WithoutAtoms", [](Values &values) { firstOf(values).atoms.clear(); },
                     "residue ALA 7 has no atoms"},
        BadStructure{"WithAnAtomTwice", [](Values &values) { firstOf(values).atoms[1].name = "N"; },
                     "two atoms N"},
        BadStructure{"WithANamelessAtom",
                     [](Values &values) { firstOf(values).atoms[1].name.clear(); },
                     "no name of an atom"},
        BadStructure{"WithoutAnElement",
                     [](Values &values) { firstOf(values).atoms[1].element.clear(); },
                     "atom CA: \"\" is no element"},
        BadStructure{"WithoutAPosition",
                     [](Values &values) { firstOf(values).atoms[1].position = Vertex(); },
                     "atom CA has no finite position"},
        BadStructure{"WithAPositionThatIsNoNumber",
                     [](Values &values) {
                         firstOf(values).atoms[1].position =
                             Vertex(0, std::numeric_limits<float>::quiet_NaN(), 0);
                     },
                     "no finite position"},
        BadStructure{"WithAnInfinitePosition",
                     [](Values &values) {
                         firstOf(values).atoms[1].position =
                             Vertex(0, 0, std::numeric_limits<float>::infinity());
                     },
                     "no finite position"}),
    [](const auto &info) { return info.param.title; });

TEST_F(MakingContract, NothingIsMadeInALockedSpaceOrWhileAChangeIsShown)
{
    RecordingSubscriber window;
    Compound *made = nullptr;
    window.reaction = [&] { made = DataMaker::makeSequence("late", "ACD"); };
    {
        const Guard guard(Publisher::Update);
    }
    EXPECT_EQ(made, nullptr);
    EXPECT_THAT(log, ElementsAre("\"late\" was not made: a change is being published."));
    window.reaction = {};
    TAMBO::setObjectLocked(space(), true);
    EXPECT_EQ(DataMaker::makeSequence("locked", "ACD"), nullptr);
    EXPECT_EQ(DataMaker::makeStructure("locked", smallStructure()), nullptr);
    EXPECT_EQ(history.size(), 0U);
}

} // namespace MakingContractTest
