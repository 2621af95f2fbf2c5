// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/model/ModelFixture.h"

#include "AminoAcids.h"
#include "DataMaker.h"
#include "Element.h"
#include "ResidueColors.h"
#include "Revisions.h"
#include "SelectionColor.h"

#include <gmock/gmock.h>

#include <random>
#include <set>

using testing::ElementsAre;
using testing::IsEmpty;

namespace PeptideTest {

class PeptideTest : public ModelFixture
{
protected:
    TAMBO::Peptide &sequence = peptide("sequence", "ACDEF");

    std::vector<TAMBO::Compound *> residues(std::size_t begin, std::size_t end)
    {
        std::vector<TAMBO::Compound *> result;
        for (std::size_t i = begin; i < end; ++i)
            result.push_back(sequence.residue(i));
        return result;
    }
};

TEST_F(PeptideTest, ResiduesHaveTheLettersOfTheSequence)
{
    EXPECT_EQ(sequence.residueCount(), 5U);
    EXPECT_EQ(sequence.letters(), "ACDEF");
    EXPECT_EQ(sequence.letter(2), 'D');
    EXPECT_EQ(sequence.residue(2)->TypeCode(), 'D');
    EXPECT_EQ(sequence.residue(2)->TypeName(), "ASP");
    EXPECT_EQ(sequence.residue(2)->Name(), "ASP 3");
}

TEST_F(PeptideTest, ResidueStaysAtItsAddress)
{
    TAMBO::Peptide &longer = peptide("long", std::string(1000, 'A'));
    std::vector<TAMBO::Residue *> first;
    for (std::size_t i = 0; i < longer.residueCount(); ++i)
        first.push_back(longer.residue(i));
    EXPECT_EQ(std::set<TAMBO::Residue *>(first.begin(), first.end()).size(), 1000U);
    longer.setColor(3, Color(0x1U));
    longer.setSelected(0, 1000, true);
    for (std::size_t i = 0; i < longer.residueCount(); ++i)
        EXPECT_EQ(longer.residue(i), first[i]);
}

TEST_F(PeptideTest, PlaceOfAResidueIsFoundFromItsHandle)
{
    EXPECT_EQ(TAMBO::Peptide::placeOf(sequence.residue(3)), (TAMBO::ResiduePlace{&sequence, 3}));
    EXPECT_EQ(TAMBO::Peptide::placeOf(&sequence).peptide, nullptr);
    EXPECT_EQ(TAMBO::Peptide::placeOf(nullptr).peptide, nullptr);
}

TEST_F(PeptideTest, SequenceWithoutResiduesIsEmptyInEveryRespect)
{
    TAMBO::Peptide &empty = peptide("empty", "");
    EXPECT_EQ(empty.ChildCount(), 0U);
    EXPECT_EQ(empty.Child(0), nullptr);
    empty.SetSelected(true);
    EXPECT_TRUE(empty.IsSelected());
    empty.SetColor(Color(0x1U));
    EXPECT_EQ(empty.selectedCount(), 0U);
}

TEST_F(PeptideTest, NumbersCountFromOneUnlessSet)
{
    EXPECT_THAT(numbersOf(sequence), ElementsAre("1", "2", "3", "4", "5"));
    sequence.residue(1)->SetSeqId(TAMBO::SequenceNumber("60A"));
    EXPECT_EQ(sequence.residue(1)->GetSeqId().getValue(), "60A");
    EXPECT_THAT(numbersOf(sequence), ElementsAre("1", "60A", "3", "4", "5"));
}

TEST_F(PeptideTest, InvalidNumberIsRefusedWithOneLineAChangeAndTheOldOneStays)
{
    {
        const Guard guard(Publisher::Update, sequence);
        TAMBO::SequenceNumber number("twelve");
        for (std::size_t i = 0; i < sequence.residueCount(); ++i, ++number)
            sequence.residue(i)->SetSeqId(number);
    }
    EXPECT_THAT(numbersOf(sequence), ElementsAre("1", "2", "3", "4", "5"));
    EXPECT_THAT(log, ElementsAre("\"twelve\" is no residue number; sequence keeps its numbers."));
}

TEST_F(PeptideTest, EachRowWhoseNumberIsRefusedHasALineOfItsOwn)
{
    TAMBO::Peptide &other = peptide("other", "AC");
    {
        const Guard guard(Publisher::Update, space());
        for (TAMBO::Peptide *row : {&sequence, &other}) {
            row->residue(0)->SetSeqId(TAMBO::SequenceNumber("x"));
            row->residue(1)->SetSeqId(TAMBO::SequenceNumber("x"));
        }
    }
    EXPECT_EQ(log.size(), 2U);
}

TEST_F(PeptideTest, ColourIsThatOfTheTypeUnlessSet)
{
    EXPECT_EQ(sequence.residue(0)->GetColor(), TAMBO::aminoAcidColor('A'));
    sequence.residue(0)->SetColor(Color(0x112233U));
    EXPECT_EQ(sequence.residue(0)->GetColor().rgb(), 0x112233U);
    EXPECT_EQ(sequence.residue(1)->GetColor(), TAMBO::aminoAcidColor('C'));
    sequence.setColor(0, std::nullopt);
    EXPECT_EQ(sequence.residue(0)->GetColor(), TAMBO::aminoAcidColor('A'));
}

TEST_F(PeptideTest, DisplayColourMixesInTheSelection)
{
    sequence.setColor(0, Color(0x000000U));
    sequence.setSelected(0, true);
    EXPECT_EQ(sequence.displayColor(0), TAMBO::selectedColor(Color(0x000000U)));
    EXPECT_EQ(sequence.displayColor(0), sequence.residue(0)->GetColor());
}

TEST_F(PeptideTest, SelectionIsCountedHoweverItIsSet)
{
    TAMBO::Peptide &longer = peptide("long", std::string(300, 'A'));
    longer.setSelected(10, 200, true);
    EXPECT_EQ(longer.selectedCount(), 190U);
    longer.setSelected(20, false);
    longer.setSelected(20, false);
    EXPECT_EQ(longer.selectedCount(), 189U);
    EXPECT_TRUE(longer.isSelected(10));
    EXPECT_TRUE(longer.isSelected(199));
    EXPECT_FALSE(longer.isSelected(9));
    EXPECT_FALSE(longer.isSelected(20));
    EXPECT_FALSE(longer.isSelected(200));
    longer.SetSelected(true);
    EXPECT_EQ(longer.selectedCount(), 300U);
    EXPECT_TRUE(longer.IsSelected());
    longer.setSelected(0, 1000, false);
    EXPECT_EQ(longer.selectedCount(), 0U);
}

TEST_F(PeptideTest, RevisionsGrowWithEachKindOfChangeAndWithNoOther)
{
    const auto revisions = [] {
        return std::array{TAMBO::selectionRevision(), TAMBO::numberingRevision(),
                          TAMBO::colorRevision()};
    };
    auto before = revisions();
    sequence.setSelected(1, true);
    auto after = revisions();
    EXPECT_GT(after[0], before[0]);
    EXPECT_EQ(after[1], before[1]);
    EXPECT_EQ(after[2], before[2]);

    before = after;
    sequence.setNumber(1, TAMBO::SequenceNumber(9));
    after = revisions();
    EXPECT_EQ(after[0], before[0]);
    EXPECT_GT(after[1], before[1]);
    EXPECT_EQ(after[2], before[2]);

    before = after;
    sequence.setColor(1, Color(0x1U));
    after = revisions();
    EXPECT_EQ(after[0], before[0]);
    EXPECT_EQ(after[1], before[1]);
    EXPECT_GT(after[2], before[2]);

    before = after;
    sequence.setSelected(1, true);
    sequence.setNumber(1, TAMBO::SequenceNumber(9));
    sequence.setColor(1, Color(0x1U));
    EXPECT_EQ(revisions(), before) << "nothing was changed";
}

TEST_F(PeptideTest, ElementBelongsToItsResidues)
{
    TAMBO::Compound *const helix =
        TAMBO::DataMaker::makeSSE(&sequence, "unkH", residues(1, 4), 'H');
    ASSERT_NE(helix, nullptr);
    EXPECT_EQ(helix->Name(), "unkH");
    EXPECT_EQ(helix->TypeCode(), 'H');
    EXPECT_EQ(helix->Parent(), &sequence);
    EXPECT_EQ(sequence.residue(0)->GetSSE(), nullptr);
    EXPECT_EQ(sequence.residue(1)->GetSSE(), helix);
    EXPECT_EQ(sequence.residue(3)->GetSSE(), helix);
    EXPECT_EQ(sequence.residue(4)->GetSSE(), nullptr);
    const auto &element = dynamic_cast<TAMBO::Element &>(*helix);
    EXPECT_EQ(element.residueCount(), 3U);
    EXPECT_EQ(element.residue(2), sequence.residue(3));
    EXPECT_EQ(element.residue(3), nullptr);
}

TEST_F(PeptideTest, ElementTypesAreTakenInEitherCaseAsTheyStand)
{
    for (const char type : {'H', 'E', 'T', 'h', 'e', 't'}) {
        TAMBO::Compound *const element =
            TAMBO::DataMaker::makeSSE(&sequence, std::string("unk") + type, residues(0, 3), type);
        ASSERT_NE(element, nullptr) << type;
        EXPECT_EQ(element->TypeCode(), type);
    }
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(PeptideTest, AnyOtherElementIsRefusedWithALineInTheLog)
{
    EXPECT_EQ(TAMBO::DataMaker::makeSSE(&sequence, "unkG", residues(0, 5), 'G'), nullptr);
    EXPECT_EQ(log.size(), 1U);
    EXPECT_EQ(TAMBO::DataMaker::makeSSE(&sequence, "unk", residues(0, 5), '\0'), nullptr);
    EXPECT_EQ(log.size(), 2U);
    EXPECT_EQ(TAMBO::DataMaker::makeSSE(&sequence, "unkH", residues(0, 2), 'H'), nullptr);
    EXPECT_EQ(log.size(), 3U);
    auto twice = residues(0, 2);
    twice.push_back(twice.front());
    EXPECT_EQ(TAMBO::DataMaker::makeSSE(&sequence, "unkH", twice, 'H'), nullptr);
    EXPECT_EQ(log.size(), 4U);
    auto foreign = residues(0, 3);
    foreign.push_back(peptide("other", "A").residue(0));
    EXPECT_EQ(TAMBO::DataMaker::makeSSE(&sequence, "unkH", foreign, 'H'), nullptr);
    EXPECT_EQ(log.size(), 5U);
    EXPECT_EQ(TAMBO::DataMaker::makeSSE(nullptr, "unkH", residues(0, 3), 'H'), nullptr);
    EXPECT_EQ(log.size(), 6U);
    auto withNull = residues(0, 3);
    withNull.push_back(nullptr);
    EXPECT_EQ(TAMBO::DataMaker::makeSSE(&sequence, "unkH", withNull, 'H'), nullptr);
    EXPECT_EQ(log.size(), 7U);
    EXPECT_EQ(sequence.objectCount(), 0U);
}

TEST_F(PeptideTest, LaterElementCoversAnEarlierOne)
{
    TAMBO::Compound *const helix =
        TAMBO::DataMaker::makeSSE(&sequence, "first", residues(0, 5), 'H');
    TAMBO::Compound *const strand =
        TAMBO::DataMaker::makeSSE(&sequence, "second", residues(1, 4), 'E');
    EXPECT_EQ(sequence.residue(0)->GetSSE(), helix);
    EXPECT_EQ(sequence.residue(2)->GetSSE(), strand);
    TAMBO::DataMaker::Destroy(strand);
    EXPECT_EQ(sequence.residue(2)->GetSSE(), helix);
}

TEST_F(PeptideTest, ModifiedResidueHasItsParentsLetterAndItsOwnName)
{
    TAMBO::StructureRecord record;
    record.name = "1a8o";
    record.chains.push_back(chainRecord("A", "GA"));
    record.chains.back().residues.insert(record.chains.back().residues.begin() + 1,
                                         residueRecord("MSE", 'M', "151A"));
    const TAMBO::Structure *const structure = TAMBO::ObjectFactory::adopt(std::move(record));
    TAMBO::Peptide &chain = *structure->chain(0);
    EXPECT_EQ(chain.letters(), "GMA");
    EXPECT_EQ(chain.residue(1)->TypeName(), "MSE");
    EXPECT_EQ(chain.residue(1)->TypeCode(), 'M');
    EXPECT_EQ(chain.residue(0)->TypeName(), "GLY");
    EXPECT_THAT(numbersOf(chain), ElementsAre("1", "151A", "2"));
}

TEST_F(PeptideTest, ElementsOfAFileThatNameResiduesThatAreNotThereAreLeftOut)
{
    TAMBO::StructureRecord record;
    record.name = "1abc";
    record.chains.push_back(chainRecord("A", "AAAAA"));
    const auto element = [](const char *name, const char *chain, int first, int last) {
        return TAMBO::ElementRecord{name, 'E', chain, TAMBO::SequenceNumber(first),
                                    TAMBO::SequenceNumber(last)};
    };
    record.elements = {element("no chain", "B", 1, 3), element("beyond", "A", 4, 9),
                       element("backwards", "A", 3, 1), element("good", "A", 2, 4)};
    const TAMBO::Structure *const structure = TAMBO::ObjectFactory::adopt(std::move(record));
    ASSERT_EQ(structure->chain(0)->objectCount(), 1U);
    EXPECT_EQ(structure->chain(0)->object(0)->Name(), "good");
    EXPECT_EQ(structure->chain(0)->elementAt(1), structure->chain(0)->object(0));
}

TEST(ResidueColors, ManyColoursReadBackAsSet)
{
    std::mt19937 random(99);
    constexpr std::size_t kCount = 600;
    TAMBO::ResidueColors colors(kCount);
    std::vector<std::optional<Color>> expected(kCount);
    // First few colours, then more than fit a byte.
    for (const unsigned palette : {20U, 254U, 5000U}) {
        for (int i = 0; i < 4000; ++i) {
            const std::size_t index = random() % kCount;
            const std::optional<Color> color =
                random() % 5 == 0 ? std::nullopt : std::optional(Color(random() % palette));
            colors.set(index, color);
            expected[index] = color;
        }
        std::size_t colored = 0;
        for (std::size_t i = 0; i < kCount; ++i) {
            ASSERT_EQ(colors.at(i), expected[i]) << i;
            colored += expected[i] ? 1 : 0;
        }
        EXPECT_EQ(colors.colored(), colored);
    }
}

TEST(ResidueColors, WhollyTransparentBlackIsAColourAmongManyToo)
{
    TAMBO::ResidueColors colors(400);
    for (std::size_t i = 0; i < 300; ++i)
        colors.set(i, Color::fromArgb(static_cast<unsigned>(i)));
    for (std::size_t i = 0; i < 300; ++i)
        ASSERT_EQ(colors.at(i), Color::fromArgb(static_cast<unsigned>(i))) << i;
    EXPECT_EQ(colors.at(300), std::nullopt);
    EXPECT_EQ(colors.colored(), 300U);
    colors.set(0, std::nullopt);
    EXPECT_EQ(colors.at(0), std::nullopt);
    EXPECT_EQ(colors.colored(), 299U);
}

TEST(ResidueColors, FewColoursTakeAByteAResidue)
{
    TAMBO::ResidueColors colors(10000);
    for (std::size_t i = 0; i < 10000; ++i)
        colors.set(i, Color(unsigned(i % 20)));
    EXPECT_LT(colors.bytes(), 11000U);
}

} // namespace PeptideTest
