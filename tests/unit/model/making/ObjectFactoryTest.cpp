// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "ObjectOperations.h"
#include "RecordMaker.h"
#include "StructureLookup.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace ObjectFactoryTest {

TAMBO::RowRecord rowRecord(const std::string &name, const std::string &text,
                           TAMBO::StructureLink link = {})
{
    TAMBO::RowRecord row;
    row.name = name;
    row.sequence.append(text);
    row.link = std::move(link);
    return row;
}

TAMBO::StructureLink linkTo(const std::string &structure, const std::string &chain = {},
                            const std::string &first = {}, const std::string &last = {})
{
    return {structure, chain, first, last, chain};
}

class ObjectFactoryTest : public ModelFixture
{
protected:
    static constexpr const char *kSequence = "MKTAYIAKQRQISFVKSHFSRQ";

    static TAMBO::Alignment *adopt(std::vector<TAMBO::RowRecord> rows, bool isAligned = true)
    {
        TAMBO::AlignmentRecord record;
        record.name = "family";
        record.rows = std::move(rows);
        record.isAligned = isAligned;
        return TAMBO::ObjectFactory::adopt(std::move(record));
    }

    static TAMBO::Peptide &sequenceOf(const TAMBO::Alignment *alignment, unsigned long row)
    {
        return *TAMBO::Peptide::from(alignment->GetSeq(row));
    }
    // The row's residues that share their data with a chain.
    static std::string tiedLetters(const TAMBO::Alignment *alignment, unsigned long row)
    {
        TAMBO::Peptide &sequence = sequenceOf(alignment, row);
        std::string text;
        for (std::size_t i = 0; i < sequence.residueCount(); ++i) {
            const TAMBO::ResiduePlace place = sequence.resolve(i);
            text += place.peptide == &sequence ? '.' : place.peptide->letter(place.index);
        }
        return text;
    }
};

TEST_F(ObjectFactoryTest, RowsWithoutAStructureGetSequencesOfTheirOwn)
{
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("one", "AC-D"), rowRecord("two", "-CDE-")});
    ASSERT_NE(alignment, nullptr);
    EXPECT_THAT(topLevelNames(), ElementsAre("one", "two", "family"));
    EXPECT_EQ(alignment->width(), 5U);
    EXPECT_EQ(alignment->GetSequence(0, false), "AC-D-");
    EXPECT_EQ(alignment->GetSequence(1, false), "-CDE-");
    EXPECT_EQ(alignment->GetSeqName(1), "two");
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(ObjectFactoryTest, UnalignedSequencesMakeNoAlignment)
{
    EXPECT_EQ(adopt({rowRecord("one", "ACD"), rowRecord("two", "AC")}, false), nullptr);
    EXPECT_THAT(topLevelNames(), ElementsAre("one", "two"));
}

TEST_F(ObjectFactoryTest, RowWithTheChainsLettersIsTheChainUnderTheRowsName)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", "GGG"}, {"B", kSequence}});
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("template", std::string("--") + kSequence, linkTo("1abc", "B"))});
    EXPECT_EQ(alignment->GetSeq(0), loaded.chain(1));
    EXPECT_EQ(alignment->GetSeqName(0), "template");
    EXPECT_EQ(alignment->getItem(0, 2), loaded.chain(1)->residue(0));
    EXPECT_THAT(topLevelNames(), ElementsAre("1abc", "family"));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(ObjectFactoryTest, StructureIsFoundByItsNameHoweverItIsWritten)
{
    TAMBO::Structure &loaded = structure("6e07_fit", {{"B", kSequence}});
    for (const char *name :
         {"6e07_fit", "6e07_fit.pdb", "6E07_FIT", "6e07_fit.pdb.gz", "6e07_fit.ent", "6e07_fit.cif",
          "6e07_fit.cif.gz", "./data/6e07_fit.pdb", "C:\\data\\6e07_fit.pdb"}) {
        const TAMBO::Alignment *const alignment =
            adopt({rowRecord("row", kSequence, linkTo(name, "B"))});
        EXPECT_EQ(alignment->GetSeq(0), loaded.chain(0)) << name;
    }
    const TAMBO::Alignment *const other = adopt({rowRecord("row", kSequence, linkTo("6e07"))});
    EXPECT_NE(other->GetSeq(0), loaded.chain(0));
}

TEST_F(ObjectFactoryTest, FileOfTheArchiveIsFoundByItsCode)
{
    TAMBO::Structure &loaded = structure("pdb1abc", {{"A", kSequence}});
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("row", kSequence, linkTo("1abc", "A"))});
    EXPECT_EQ(alignment->GetSeq(0), loaded.chain(0));
}

TEST_F(ObjectFactoryTest, NameWithAChainMeansThatChainOfTheStructure)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", kSequence}, {"B", kSequence}});
    for (const char *name : {"1abc_B", "1ABC_B", "1abc_B.pdb"}) {
        const TAMBO::Alignment *const named = adopt({rowRecord("row", kSequence, linkTo(name))});
        EXPECT_EQ(named->GetSeq(0), loaded.chain(1)) << name;
    }
    const TAMBO::Alignment *const field =
        adopt({rowRecord("row", kSequence, linkTo("1abc_B", "A"))});
    EXPECT_EQ(field->GetSeq(0), loaded.chain(0)) << "the header says which chain";
    const TAMBO::Alignment *const byName = adopt({rowRecord("1abc_B", kSequence)});
    EXPECT_EQ(byName->GetSeq(0), loaded.chain(1));
    const TAMBO::Alignment *const other = adopt({rowRecord("1abc_C", kSequence)});
    EXPECT_FALSE(sequenceOf(other, 0).hasTies()) << "there is no such chain";
    EXPECT_EQ(sequenceOf(other, 0).Parent(), &space());
    EXPECT_THAT(log, IsEmpty());
    const TAMBO::Alignment *const fitted = adopt({rowRecord("row", kSequence, linkTo("1abc_fit"))});
    EXPECT_EQ(sequenceOf(fitted, 0).Parent(), &space());
    EXPECT_THAT(log, ElementsAre("\"row\": 1abc has no chain fit; the row is not tied to it."));
}

TEST_F(ObjectFactoryTest, RenamedStructureIsFoundByItsFilesNameAndByItsOwn)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", kSequence}});
    TAMBO::renameObject(loaded, "Ferredoxin");
    for (const char *name : {"1abc.pdb", "ferredoxin"}) {
        const TAMBO::Alignment *const alignment =
            adopt({rowRecord("row", kSequence, linkTo(name, "A"))});
        EXPECT_EQ(alignment->GetSeq(0), loaded.chain(0)) << name;
    }
    // A structure whose file is called so comes before one that somebody has called so.
    TAMBO::Structure &namesake = structure("ferredoxin", {{"A", kSequence}});
    TAMBO::Structure &newest = structure("2abc", {{"A", kSequence}});
    TAMBO::renameObject(newest, "ferredoxin");
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("row", kSequence, linkTo("ferredoxin", "A"))});
    EXPECT_EQ(alignment->GetSeq(0), namesake.chain(0));
}

TEST_F(ObjectFactoryTest, RecordOfARenamedStructuresChainKeepsTheNameOfTheFile)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", kSequence}});
    TAMBO::renameObject(loaded, "Ferredoxin");
    EXPECT_EQ(loaded.code(), "1abc");
    TAMBO::Alignment *const alignment = adopt({});
    alignment->addRows({loaded.chain(0)});
    const TAMBO::RowRecord row = TAMBO::makeRecord(*alignment).rows.at(0);
    EXPECT_EQ(row.name, "Ferredoxin_A");
    EXPECT_EQ(row.link->structure, "1abc");
}

TEST_F(ObjectFactoryTest, BlankChainMeansAnyChainThatFits)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", "GGGGGGGG"}, {"B", kSequence}});
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("row", kSequence, linkTo("1abc", ""))});
    EXPECT_EQ(alignment->GetSeq(0), loaded.chain(1));
}

TEST_F(ObjectFactoryTest, BlankChainOfTheFileIsFoundUnderAnyIdentifier)
{
    TAMBO::Structure &loaded = structure("d1crj__", {{"", kSequence}});
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("row", kSequence, linkTo("d1crj__.pdb", "A"))});
    EXPECT_EQ(alignment->GetSeq(0), loaded.chain(0));
}

TEST_F(ObjectFactoryTest, NumbersSayWhichPartOfTheChainTheRowShows)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", "AGAGAGAG"}});
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("second", "AG-AG", linkTo("1abc", "A", "3", "6")),
               rowRecord("counted", "AGAG-", linkTo("1abc", "A", "5", "+4"))});
    EXPECT_EQ(alignment->getItem(0, 0), loaded.chain(0)->residue(2));
    EXPECT_EQ(alignment->getItem(0, 4), loaded.chain(0)->residue(5));
    EXPECT_EQ(alignment->getItem(1, 0), loaded.chain(0)->residue(4));
}

TEST_F(ObjectFactoryTest, WrongNumbersFallBackToTheWholeChain)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", kSequence}});
    for (const auto &[first, last] :
         std::vector<std::pair<std::string, std::string>>{{"100", "121"},
                                                          {"FIRST", "LAST"},
                                                          {"5", "10"},
                                                          {"1", "+9999"},
                                                          {"1", "+x"},
                                                          {"", ""},
                                                          {"22", "1"}}) {
        const TAMBO::Alignment *const alignment =
            adopt({rowRecord("row", kSequence, linkTo("1abc", "A", first, last))});
        EXPECT_EQ(alignment->GetSeq(0), loaded.chain(0)) << first << " to " << last;
    }
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(ObjectFactoryTest, DomainOfAChainIsThatPartOfIt)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", kSequence}});
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("domain", "IAKQ--RQIS", linkTo("1abc", "A"))});
    EXPECT_EQ(alignment->GetSeq(0), loaded.chain(0));
    EXPECT_EQ(alignment->getItem(0, 0), loaded.chain(0)->residue(5));
    EXPECT_EQ(alignment->GetSequence(0, false), "IAKQ--RQIS");
}

TEST_F(ObjectFactoryTest, UnresolvedResiduesAreKeptUntiedAndTheLogNamesThem)
{
    TAMBO::StructureRecord record;
    record.name = "1abc";
    record.chains.push_back(chainRecord("A", "TAYIAK", 3));
    const TAMBO::ChainRecord rest = chainRecord("A", "SHFSRQ", 17);
    for (const TAMBO::ResidueRecord &residue : rest.residues)
        record.chains.back().residues.push_back(residue);
    const TAMBO::Structure *const loaded = TAMBO::ObjectFactory::adopt(std::move(record));

    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("row", kSequence, linkTo("1abc.pdb", "A"))});

    EXPECT_EQ(alignment->GetSequence(0, false), kSequence);
    EXPECT_EQ(tiedLetters(alignment, 0), "..TAYIAK........SHFSRQ");
    EXPECT_THAT(numbersOf(sequenceOf(alignment, 0)),
                ElementsAre("1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13",
                            "14", "15", "16", "17", "18", "19", "20", "21", "22"));
    EXPECT_EQ(alignment->getItem(0, 2)->Position().x(), 3.0F);
    EXPECT_FALSE(alignment->getItem(0, 0)->Position().isDefined());
    EXPECT_EQ(alignment->GetSeqName(0), "row");
    EXPECT_THAT(log, ElementsAre("\"row\": not in the coordinates of 1abc: M1-K2, Q9-K16."));
    std::vector<TAMBO::Compound *> atoms;
    TAMBO::GetAtoms(alignment->GetSeq(0), atoms, true);
    EXPECT_EQ(atoms.size(), 2 * loaded->chain(0)->residueCount());
}

TEST_F(ObjectFactoryTest, ModifiedResidueIsTiedAndKeepsTheRowsLetter)
{
    TAMBO::StructureRecord record;
    record.name = "1abc";
    record.chains.push_back(chainRecord("A", kSequence));
    record.chains.back().residues[7].typeName = "M3L";
    const TAMBO::Structure *const loaded = TAMBO::ObjectFactory::adopt(std::move(record));

    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("row", "MKTAYIAXQRQISFVKSHFSRQ", linkTo("1abc", "A"))});

    EXPECT_EQ(alignment->letterAt(0, 7), 'X');
    EXPECT_EQ(alignment->getItem(0, 7)->TypeName(), "M3L");
    EXPECT_EQ(tiedLetters(alignment, 0), kSequence);
    alignment->getItem(0, 7)->SetSelected(true);
    EXPECT_TRUE(loaded->chain(0)->isSelected(7));
    EXPECT_THAT(log, ElementsAre("\"row\": different in the coordinates of 1abc: X8 is M3L 8."));
}

TEST_F(ObjectFactoryTest, InsertionCodeAtTheStartIsNoObstacle)
{
    TAMBO::StructureRecord record;
    record.name = "1dix";
    record.chains.push_back(chainRecord("A", kSequence, -3));
    record.chains.back().residues[0].number = TAMBO::SequenceNumber("1A");
    record.chains.back().residues[1].number = TAMBO::SequenceNumber("1B");
    const TAMBO::Structure *const loaded = TAMBO::ObjectFactory::adopt(std::move(record));
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("row", kSequence, linkTo("1dix", "A", "1A", "18"))});
    EXPECT_EQ(alignment->GetSeq(0), loaded->chain(0));
    const TAMBO::Alignment *const longer =
        adopt({rowRecord("row", std::string("GS") + kSequence, linkTo("1dix", "A", "1", "18"))});
    EXPECT_EQ(tiedLetters(longer, 0), std::string("..") + kSequence);
    EXPECT_EQ(sequenceOf(longer, 0).number(2).getValue(), "1A");
    EXPECT_EQ(sequenceOf(longer, 0).number(0).getValue(), "-1");
}

TEST_F(ObjectFactoryTest, LowerCaseLettersStayAndAreTied)
{
    TAMBO::Structure &loaded = structure("1abc", {{"A", kSequence}});
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("row", "mktayiakqrqisfvkshfsrq", linkTo("1abc", "A"))});
    EXPECT_NE(alignment->GetSeq(0), loaded.chain(0));
    EXPECT_EQ(alignment->letterAt(0, 0), 'm');
    EXPECT_EQ(tiedLetters(alignment, 0), kSequence);
}

TEST_F(ObjectFactoryTest, ChainThatShowsASmallDomainOfALongSequenceIsTied)
{
    structure("1abc", {{"A", kSequence}});
    const std::string before = "GSHMWWPLEDNCRRHGGTSVAAPLNDEEWCHHGGSPLTTNRWQDVCAALLPHEEGNNDCW";
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("row", before + before + kSequence + before, linkTo("1abc", "A"))});
    EXPECT_EQ(tiedLetters(alignment, 0),
              std::string(2 * before.size(), '.') + kSequence + std::string(before.size(), '.'));
}

TEST_F(ObjectFactoryTest, RowOfAnotherProteinIsNotTiedAndTheLogSaysSo)
{
    structure("1abc", {{"A", "WWPWLHEDNCWPLLWHEDWQNC"}});
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("row", kSequence, linkTo("1abc", "A"))});
    EXPECT_FALSE(sequenceOf(alignment, 0).hasTies());
    EXPECT_THAT(log, ElementsAre(HasSubstr("\"row\": no chain of 1abc has this sequence")));
}

TEST_F(ObjectFactoryTest, StructureThatIsNotLoadedLeavesTheRowFree)
{
    structure("1abc", {{"A", kSequence}});
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("row", kSequence, linkTo("2xyz", "A", "30", "51"))});
    EXPECT_FALSE(sequenceOf(alignment, 0).hasTies());
    EXPECT_EQ(sequenceOf(alignment, 0).number(0).getValue(), "30");
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(ObjectFactoryTest, RowNamedAfterTheStructureIsTiedOnlyWhenTheSequenceFits)
{
    TAMBO::Structure &loaded = structure("d1yeb__", {{"", kSequence}});
    const TAMBO::Alignment *const same = adopt({rowRecord("d1yeb__.pdb", kSequence)});
    EXPECT_EQ(same->GetSeq(0), loaded.chain(0));
    const TAMBO::Alignment *const other = adopt({rowRecord("d1yeb__.pdb", "GGGGGSSSSSGGGGGSSSSS")});
    EXPECT_FALSE(sequenceOf(other, 0).hasTies());
    EXPECT_THAT(log, IsEmpty()) << "the file never said that it was this structure";
}

TEST_F(ObjectFactoryTest, StructureLoadedLastIsMeantWhenTwoHaveTheName)
{
    structure("1abc", {{"A", kSequence}});
    TAMBO::Structure &newer = structure("1abc", {{"A", kSequence}});
    const TAMBO::Alignment *const alignment =
        adopt({rowRecord("row", kSequence, linkTo("1abc", "A"))});
    EXPECT_EQ(alignment->GetSeq(0), newer.chain(0));
}

TEST_F(ObjectFactoryTest, RowOverTwoChainsIsTiedToBoth)
{
    const std::string heavy = "QVQLQQPGAELVKPGASVKM";
    const std::string light = "QIVLSQSPAILSASPGEKVT";
    TAMBO::Structure &loaded =
        structure("newpdb", {{"H", heavy.substr(2)}, {"L", light}, {"P", "GGGG"}});
    TAMBO::RowRecord row =
        rowRecord("newpdb", heavy + "-" + light, {"newpdb", "H", "FIRST", "LAST", "L"});
    row.chainBreaks = {{heavy.size(), heavy.size()}};
    const TAMBO::Alignment *const alignment = adopt({row});

    EXPECT_EQ(tiedLetters(alignment, 0), ".." + heavy.substr(2) + light);
    EXPECT_EQ(sequenceOf(alignment, 0).resolve(heavy.size()),
              (TAMBO::ResiduePlace{loaded.chain(1), 0}));
    EXPECT_THAT(log, ElementsAre("\"newpdb\": not in the coordinates of newpdb: Q1-V2."));

    // The same without the break in the file.
    log.clear();
    const TAMBO::Alignment *const unbroken =
        adopt({rowRecord("newpdb", heavy + light, {"newpdb", "H", "", "", "L"})});
    EXPECT_EQ(tiedLetters(unbroken, 0), ".." + heavy.substr(2) + light);
}

TEST_F(ObjectFactoryTest, EachRowOfAStructureMayBeAnotherChain)
{
    TAMBO::Structure &loaded = structure("2hhb", {{"A", kSequence}, {"B", "GSHMAENLYFQG"}});
    const TAMBO::Alignment *const alignment = adopt(
        {rowRecord("a", kSequence, linkTo("2hhb", "A")),
         rowRecord("b", std::string("GSHMAENLYFQG") + std::string(10, '-'), linkTo("2hhb", "B"))});
    EXPECT_EQ(alignment->GetSeq(0), loaded.chain(0));
    EXPECT_EQ(alignment->GetSeq(1), loaded.chain(1));
}

TEST_F(ObjectFactoryTest, LookupOfAnEmptyNameFindsNothing)
{
    structure("1abc", {{"A", kSequence}});
    const TAMBO::StructureLookup lookup;
    EXPECT_FALSE(lookup.isEmpty());
    EXPECT_TRUE(lookup.find("").empty());
    EXPECT_TRUE(lookup.find("/").empty());
    EXPECT_EQ(lookup.find("1abc").size(), 1U);
}

TEST_F(ObjectFactoryTest, RecordOfAnAlignmentGivesItsRowsBack)
{
    structure("1abc", {{"A", kSequence}});
    TAMBO::RowRecord first =
        rowRecord("template", std::string(kSequence) + "--", linkTo("1abc.pdb", "A", "1", "22"));
    first.description = "structureX:1abc.pdb:1:A:22:A::::";
    const TAMBO::Alignment *const alignment =
        adopt({first, rowRecord("target", "--MKTAYIAKQRQISF-KSHFSRQ")});

    const TAMBO::AlignmentRecord record = TAMBO::makeRecord(*alignment);

    EXPECT_EQ(record.name, "family");
    EXPECT_TRUE(record.isAligned);
    ASSERT_EQ(record.rows.size(), 2U);
    EXPECT_EQ(record.rows[0].name, "template");
    EXPECT_EQ(record.rows[0].description, "structureX:1abc.pdb:1:A:22:A::::");
    EXPECT_EQ(record.rows[0].sequence.text(), std::string(kSequence) + "--");
    EXPECT_EQ(record.rows[0].link->structure, "1abc.pdb");
    EXPECT_EQ(record.rows[0].link->chain, "A");
    EXPECT_EQ(record.rows[0].link->first, "1");
    EXPECT_EQ(record.rows[0].link->last, "22");
    EXPECT_EQ(record.rows[1].name, "target");
    EXPECT_EQ(record.rows[1].sequence.text(), "--MKTAYIAKQRQISF-KSHFSRQ");
    EXPECT_TRUE(record.rows[1].link->structure.empty());
}

TEST_F(ObjectFactoryTest, RecordNamesTheResiduesThatTheRowHoldsNow)
{
    structure("1abc", {{"A", kSequence}});
    TAMBO::Alignment *const alignment =
        adopt({rowRecord("template", kSequence, linkTo("1abc", "A", "1", "22"))});
    alignment->remove({0, 4});
    alignment->remove(alignment->width() - 1);
    const TAMBO::RowRecord row = TAMBO::makeRecord(*alignment).rows.at(0);
    EXPECT_EQ(row.sequence.text(), "YIAKQRQISFVKSHFSR");
    EXPECT_EQ(row.link->first, "5");
    EXPECT_EQ(row.link->last, "21");
}

TEST_F(ObjectFactoryTest, RecordOfAChainNamesItsStructure)
{
    TAMBO::Structure &loaded = structure("1abc", {{"B", kSequence}});
    loaded.chain(0)->setNumber(0, TAMBO::SequenceNumber("0A"));
    TAMBO::AlignmentRecord empty;
    const TAMBO::Alignment *const alignment = adopt({});
    EXPECT_TRUE(TAMBO::makeRecord(*alignment).rows.empty());
    const_cast<TAMBO::Alignment *>(alignment)->addRows({loaded.chain(0)});
    const TAMBO::RowRecord row = TAMBO::makeRecord(*alignment).rows.at(0);
    EXPECT_EQ(row.name, "1abc_B");
    EXPECT_EQ(row.link->structure, "1abc");
    EXPECT_EQ(row.link->chain, "B");
    EXPECT_EQ(row.link->first, "0A");
    EXPECT_EQ(row.link->last, "22");
}

} // namespace ObjectFactoryTest
