// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowFilter.h"

#include "MadeStructure.h"
#include "StructureScene.h"
#include "unit/model/ModelFixture.h"

#include "Alignment.h"
#include "DataDelete.h"
#include "DataPoint.h"
#include "Peptide.h"
#include "Space.h"

namespace RowFilterTest {

using namespace structures;

class RowsOfAlignment : public ModelFixture
{
protected:
    static bool hasRibbon(ViewedStructure &structure)
    {
        return !structure.shapes()->mesh.triangles.empty();
    }
    void showRowsOf(TAMBO::Alignment *alignment)
    {
        m_Scene.setRowsOf(alignment);
        m_Scene.refresh();
    }

    TAMBO::Compound *m_First = MadeStructure::make("1abc");
    TAMBO::Compound *m_Second = MadeStructure::make("2xyz", 40);
    TAMBO::Alignment *m_Alignment = TAMBO::DataMaker::makeAlignment("rows", {m_First->Child(0)});
    StructureScene m_Scene{[] {}};
};

TEST_F(RowsOfAlignment, AreTheOnlyChainsInThePicture)
{
    EXPECT_EQ(m_Scene.picture()->parts.size(), 2U);
    showRowsOf(m_Alignment);
    EXPECT_EQ(m_Scene.picture()->parts.size(), 1U);
    ViewedStructure &first = *m_Scene.structures()[0];
    EXPECT_TRUE(first.isInPicture());
    EXPECT_FALSE(first.isLeftOut(0));
    EXPECT_TRUE(first.isLeftOut(1));
    EXPECT_TRUE(hasRibbon(first));
    EXPECT_TRUE(first.shapes()->spheres.empty());
    showRowsOf(nullptr);
    EXPECT_EQ(m_Scene.picture()->parts.size(), 2U);
    EXPECT_FALSE(first.shapes()->spheres.empty());
}

TEST_F(RowsOfAlignment, FollowItLive)
{
    showRowsOf(m_Alignment);
    {
        DataPoint<TAMBO::Alignment> change(nullptr, m_Alignment);
        m_Alignment->addRows({m_Second->Child(0)});
    }
    EXPECT_TRUE(m_Scene.refresh().places);
    EXPECT_EQ(m_Scene.picture()->parts.size(), 2U);
    {
        DataPoint<TAMBO::Alignment> change(nullptr, m_Alignment);
        m_Alignment->removeRow(0);
    }
    EXPECT_TRUE(m_Scene.refresh().places);
    EXPECT_FALSE(m_Scene.structures()[0]->isInPicture());
    EXPECT_TRUE(m_Scene.structures()[1]->isInPicture());
    EXPECT_FALSE(m_Scene.refresh().places);
}

TEST_F(RowsOfAlignment, AreThoseThatRowsAreTiedToNow)
{
    const auto tie = [](TAMBO::Peptide &row, TAMBO::Compound *chain) {
        TAMBO::ResidueTies ties;
        ties.append({0, 24, 0, TAMBO::Peptide::from(chain)});
        const DataPoint<TAMBO::Compound> change(nullptr, &row);
        row.retie(std::move(ties));
    };
    TAMBO::Compound *const bare =
        TAMBO::DataMaker::makeSequence("bare", "ACDEFGHIKLMNPQRSTVWYACDE");
    TAMBO::Alignment *const alignment = TAMBO::DataMaker::makeAlignment("tied", {bare});
    TAMBO::Peptide &row = *TAMBO::Peptide::from(alignment->GetSeq(0));
    showRowsOf(alignment);
    EXPECT_TRUE(m_Scene.picture()->parts.empty());
    tie(row, m_First->Child(0));
    EXPECT_TRUE(m_Scene.refresh().places);
    EXPECT_TRUE(m_Scene.structures()[0]->isInPicture());
    EXPECT_FALSE(m_Scene.structures()[1]->isInPicture());
    tie(row, m_Second->Child(0));
    EXPECT_TRUE(m_Scene.refresh().places);
    EXPECT_FALSE(m_Scene.structures()[0]->isInPicture());
    EXPECT_TRUE(m_Scene.structures()[1]->isInPicture());
}

TEST_F(RowsOfAlignment, ThatAreHiddenLeaveARemark)
{
    showRowsOf(m_Alignment);
    EXPECT_EQ(m_Scene.remark(), "");
    m_Scene.structures()[0]->setVisible(false);
    EXPECT_TRUE(m_Scene.picture()->parts.empty());
    EXPECT_EQ(m_Scene.remark(), "All structures are hidden");
    showRowsOf(nullptr);
    EXPECT_EQ(m_Scene.remark(), "");
}

TEST_F(RowsOfAlignment, OfADeletedOneAreEverything)
{
    showRowsOf(m_Alignment);
    {
        DataDelete<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        TAMBO::DataMaker::Destroy(m_Alignment);
    }
    EXPECT_TRUE(m_Scene.refresh().places);
    EXPECT_EQ(m_Scene.rows().alignment(), nullptr);
    EXPECT_EQ(m_Scene.picture()->parts.size(), 2U);
}

TEST_F(RowsOfAlignment, AreAmongWhatIsVisible)
{
    m_Scene.structures()[0]->setVisible(false);
    showRowsOf(m_Alignment);
    EXPECT_TRUE(m_Scene.picture()->parts.empty());
}

} // namespace RowFilterTest
