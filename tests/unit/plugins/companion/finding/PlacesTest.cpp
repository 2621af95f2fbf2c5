// SPDX-License-Identifier: GPL-3.0-or-later
#include "Places.h"

#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "Compound.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "SequenceNumber.h"

#include <string>
#include <vector>

namespace PlacesTest {

using companion::ColumnPlace;
using companion::findPlace;
using companion::NoPlace;
using companion::Place;
using companion::RowPlace;

class Places : public ModelFixture
{
protected:
    Places()
    {
        TAMBO::StructureValues values;
        TAMBO::ChainValues chain;
        chain.name = "A";
        for (const char *const number : {"57", "60", "60A", "-2"})
            chain.residues.push_back(
                {"HIS", TAMBO::SequenceNumber(number), {{"CA", "C", TAMBO::Vertex(1, 2, 3)}}});
        values.chains = {chain};
        m_Structure = TAMBO::DataMaker::makeStructure("1abc", values);
        m_Alignment = TAMBO::DataMaker::makeAlignment(
            "rows", {TAMBO::DataMaker::makeSequence("trypsin", "ACDEF"), m_Structure->Child(0),
                     TAMBO::DataMaker::makeSequence("Chymotrypsin/7", "ACDEF")});
    }
    [[nodiscard]] Place find(const char *text) const { return findPlace(*m_Alignment, text); }
    [[nodiscard]] std::string reason(const char *text) const
    {
        return std::get<NoPlace>(find(text)).reason.toStdString();
    }

    TAMBO::Compound *m_Structure = nullptr;
    TAMBO::Alignment *m_Alignment = nullptr;
};

TEST_F(Places, ANumberIsAColumnCountedFromOne)
{
    EXPECT_EQ(std::get<ColumnPlace>(find("1")).col, 0U);
    EXPECT_EQ(std::get<ColumnPlace>(find(" 5 ")).col, 4U);
}

TEST_F(Places, AColumnThatIsNotThereIsRefusedWithThoseThatAre)
{
    for (const char *const text : {"0", "6", "99999999999999999999999"})
        EXPECT_EQ(reason(text), "There are columns 1 to 5.");
}

TEST_F(Places, ChainAndNumberAreAResidue)
{
    EXPECT_EQ(std::get<TAMBO::CellIndex>(find("A:57")), (TAMBO::CellIndex{1, 0}));
    EXPECT_EQ(std::get<TAMBO::CellIndex>(find("A:60")), (TAMBO::CellIndex{1, 1}));
    EXPECT_EQ(std::get<TAMBO::CellIndex>(find("A: 60a")), (TAMBO::CellIndex{1, 2}));
    EXPECT_EQ(std::get<TAMBO::CellIndex>(find("A:-2")), (TAMBO::CellIndex{1, 3}));
}

TEST_F(Places, ANumberGoesWithTheNameOfARow)
{
    EXPECT_EQ(std::get<TAMBO::CellIndex>(find("trypsin:3")), (TAMBO::CellIndex{0, 2}));
}

TEST_F(Places, AResidueThatIsNotThereIsToldFromAChainThatIsNot)
{
    EXPECT_EQ(reason("A:58"), "A has no residue 58 here.");
    EXPECT_EQ(reason("B:57"), "No row is of a chain B, or called so.");
}

TEST_F(Places, AResidueBehindGapsIsWhereItStands)
{
    {
        DataPoint<TAMBO::Alignment> change(nullptr, m_Alignment);
        m_Alignment->insertGap(1, 1);
    }
    EXPECT_EQ(std::get<TAMBO::CellIndex>(find("A:60")), (TAMBO::CellIndex{1, 2}));
}

TEST_F(Places, AWholeNameComesBeforeABeginningAndThatBeforeAPart)
{
    EXPECT_EQ(std::get<RowPlace>(find("trypsin")).row, 0U);
    EXPECT_EQ(std::get<RowPlace>(find("chymo")).row, 2U);
    EXPECT_EQ(std::get<RowPlace>(find("SIN/7")).row, 2U);
    EXPECT_EQ(std::get<RowPlace>(find("psin")).row, 0U);
}

TEST_F(Places, ANameThatNobodyHasIsRefused)
{
    EXPECT_EQ(reason("elastase"), "No name has \"elastase\" in it.");
}

TEST_F(Places, NothingIsAnsweredWithWhatCanBeTyped)
{
    EXPECT_FALSE(reason("  ").empty());
}

} // namespace PlacesTest
