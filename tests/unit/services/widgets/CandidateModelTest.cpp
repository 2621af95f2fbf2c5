// SPDX-License-Identifier: GPL-3.0-or-later
#include "CandidateModel.h"

#include "support/FakeCompound.h"
#include "support/ShownText.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace TAMBO::services;
using ::testing::ElementsAre;

namespace CandidateModelTest {

QString text(const CandidateModel &model, int row, int column)
{
    return model.data(model.index(row, column), Qt::DisplayRole).toString();
}

TEST(CandidateModel, ShowsNameKindAndSizeInTheOrderOfTheCandidates)
{
    FakeCompound one("z", "chain");
    FakeCompound two("a", "structure");
    FakeCompound child("child", "residue", &two);
    const CandidateModel model({&one, nullptr, &two}, CandidateModel::Ticks::Without);
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_EQ(text(model, 0, CandidateModel::NameColumn), "z");
    EXPECT_EQ(text(model, 0, CandidateModel::KindColumn), "Chain");
    EXPECT_EQ(text(model, 0, CandidateModel::SizeColumn), "0");
    EXPECT_EQ(text(model, 1, CandidateModel::NameColumn), "a");
    EXPECT_EQ(text(model, 1, CandidateModel::SizeColumn), "1");
    EXPECT_EQ(model.amount(1), 1U);
    EXPECT_EQ(model.object(1), &two);
    EXPECT_EQ(model.rowOf(&child), -1);
}

TEST(CandidateModel, TheToolTipOfANameWithMarkupIsTheNameAsItIs)
{
    FakeCompound marked("a<b>x</b>", "chain");
    const CandidateModel model({&marked}, CandidateModel::Ticks::Without);
    EXPECT_EQ(shownText(model.data(model.index(0, 0), Qt::ToolTipRole).toString()), "a<b>x</b>");
}

TEST(CandidateModel, KindsHaveTheirIcons)
{
    FakeCompound chain("c", "chain");
    FakeCompound odd("o", "oddity");
    const CandidateModel model({&chain, &odd}, CandidateModel::Ticks::Without);
    EXPECT_FALSE(model.data(model.index(0, 0), Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_TRUE(model.data(model.index(1, 0), Qt::DecorationRole).value<QIcon>().isNull());
}

TEST(CandidateModel, TickedObjectsComeInTheOrderOfTheRows)
{
    FakeCompound a("a", "chain");
    FakeCompound b("b", "chain");
    FakeCompound c("c", "chain");
    CandidateModel model({&a, &b, &c}, CandidateModel::Ticks::With);
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setTicked(2, true);
    EXPECT_TRUE(model.setData(model.index(0, 0), Qt::Checked, Qt::CheckStateRole));
    model.setTicked(0, true);
    EXPECT_EQ(changes.count(), 2);
    EXPECT_THAT(model.ticked(), ElementsAre(&a, &c));
    EXPECT_EQ(model.data(model.index(0, 0), Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_EQ(model.data(model.index(1, 0), Qt::CheckStateRole).toInt(), Qt::Unchecked);
}

TEST(CandidateModel, WithoutTicksNothingCanBeTicked)
{
    FakeCompound a("a", "chain");
    CandidateModel model({&a}, CandidateModel::Ticks::Without);
    EXPECT_FALSE(model.data(model.index(0, 0), Qt::CheckStateRole).isValid());
    EXPECT_FALSE(model.setData(model.index(0, 0), Qt::Checked, Qt::CheckStateRole));
    EXPECT_FALSE(model.flags(model.index(0, 0)).testFlag(Qt::ItemIsUserCheckable));
}

TEST(CandidateModel, TickingManyIsOneChange)
{
    FakeCompound a("a", "chain");
    FakeCompound b("b", "chain");
    FakeCompound c("c", "chain");
    CandidateModel model({&a, &b, &c}, CandidateModel::Ticks::With);
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setTicked({2, 0}, true);
    model.setTicked({0, 2}, true);
    model.setTicked(std::vector<int>(), true);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(model.tickedCount(), 2);
    EXPECT_THAT(model.ticked(), ElementsAre(&a, &c));
}

} // namespace CandidateModelTest
