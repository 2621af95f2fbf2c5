// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a family to choose targets from.
#include "TargetsModel.h"

#include <gmock/gmock.h>

namespace TargetsModelTest {

using namespace TAMBO;
using app::TargetsModel;
using testing::ElementsAre;

class TargetsModelTest : public testing::Test
{
protected:
    TargetsModelTest()
    {
        m_Model.setFamily({"globins",
                           {},
                           {{"known", "ACDEFGHK", true},
                            {"other", "ACDEMMMM", true},
                            {"a", "ACDEFGLL", false},
                            {"b", "--DEMMMM", false}}});
    }

    QString at(int row, int column) const { return m_Model.index(row, column).data().toString(); }
    bool isTicked(int row) const
    {
        return m_Model.index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked;
    }
    bool isOffered(int row) const
    {
        return m_Model.flags(m_Model.index(row, 0)).testFlag(Qt::ItemIsEnabled);
    }
    std::vector<std::size_t> planned() const
    {
        std::vector<std::size_t> rows;
        for (const families::PlannedModel &model : m_Model.plan())
            rows.push_back(model.target);
        return rows;
    }
    using Rows = std::vector<std::size_t>;

    TargetsModel m_Model;
};

TEST_F(TargetsModelTest, RowsWithoutAStructureAreTickedAtFirst)
{
    EXPECT_FALSE(isTicked(0));
    EXPECT_FALSE(isTicked(1));
    EXPECT_TRUE(isTicked(2));
    EXPECT_TRUE(isTicked(3));
    EXPECT_EQ(m_Model.tickedCount(), 2U);
    EXPECT_EQ(planned(), (Rows{2, 3}));
}

TEST_F(TargetsModelTest, RowsOfOneNameSayWhereTheyStand)
{
    m_Model.setFamily(
        {"obps", {}, {{"t", "ACD", true}, {"obp", "ACD", false}, {"obp", "A-D", false}}});
    EXPECT_EQ(at(0, TargetsModel::TargetColumn), "t");
    EXPECT_EQ(at(1, TargetsModel::TargetColumn), "obp (row 2)");
    EXPECT_EQ(at(2, TargetsModel::TargetColumn), "obp (row 3)");
}

TEST_F(TargetsModelTest, EachTargetSaysItsTemplateAndTheIdentity)
{
    EXPECT_EQ(at(2, TargetsModel::TemplateColumn), "known");
    EXPECT_EQ(at(2, TargetsModel::IdentityColumn), "75.0");
    EXPECT_EQ(at(3, TargetsModel::TemplateColumn), "other");
    EXPECT_EQ(at(3, TargetsModel::ResiduesColumn), "6");
    EXPECT_EQ(at(0, TargetsModel::TemplateColumn), "other") << "on another one";
    m_Model.setTemplate("known");
    EXPECT_EQ(at(3, TargetsModel::TemplateColumn), "known");
    EXPECT_EQ(at(3, TargetsModel::IdentityColumn), "33.3");
}

TEST_F(TargetsModelTest, ARowWithAStructureMayBeATargetButNotOnItself)
{
    m_Model.setTicked({0, 1}, true);
    EXPECT_EQ(planned(), (Rows{0, 1, 2, 3}));
    m_Model.setTemplate("known");
    EXPECT_FALSE(isOffered(0));
    EXPECT_FALSE(isTicked(0));
    EXPECT_EQ(planned(), (Rows{1, 2, 3}));
    m_Model.setTemplate({});
    EXPECT_EQ(planned(), (Rows{0, 1, 2, 3})) << "what was ticked is so again";
}

TEST_F(TargetsModelTest, ATickIsSetByTheBox)
{
    EXPECT_TRUE(m_Model.setData(m_Model.index(2, 0), Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_EQ(planned(), (Rows{3}));
    EXPECT_FALSE(m_Model.setData(m_Model.index(2, 1), Qt::Checked, Qt::CheckStateRole));
}

TEST_F(TargetsModelTest, WithoutAColumnInCommonATargetIsNotOfferedAndSaysWhy)
{
    m_Model.setFamily({"globins", {}, {{"known", "ACDE----", true}, {"a", "----ACDE", false}}});
    EXPECT_FALSE(isOffered(1));
    EXPECT_FALSE(isTicked(1));
    EXPECT_TRUE(m_Model.plan().empty());
    EXPECT_TRUE(m_Model.index(1, 0).data(Qt::ToolTipRole).toString().contains("shares no column"));
}

TEST_F(TargetsModelTest, WithoutAStructureThereIsAReasonAndNoTarget)
{
    m_Model.setFamily({"globins", {}, {{"a", "ACDE", false}, {"b", "ACDE", false}}});
    EXPECT_TRUE(m_Model.objection().contains("no row")) << m_Model.objection().toStdString();
    EXPECT_EQ(m_Model.tickedCount(), 0U);
}

TEST_F(TargetsModelTest, RowsOfOneNameAreTargetsEach)
{
    m_Model.setFamily(
        {"globins", {}, {{"known", "ACDE", true}, {"a", "ACDE", false}, {"a", "ACD-", false}}});
    EXPECT_EQ(planned(), (Rows{1, 2}));
}

} // namespace TargetsModelTest
