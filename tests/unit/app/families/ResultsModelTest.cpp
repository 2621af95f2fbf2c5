// SPDX-License-Identifier: GPL-3.0-or-later
// The table of results as a window shows it.
#include "ResultsModel.h"

#include <QItemSelectionModel>
#include <QSignalSpy>
#include <QSortFilterProxyModel>

#include <gtest/gtest.h>

namespace ResultsModelTest {

using namespace TAMBO;
using app::ResultsModel;
using families::ResultRow;
using families::TargetState;

ResultRow lineOf(const std::string &name, TargetState state = TargetState::NotRun)
{
    ResultRow row;
    row.target = {name, name, "known", "known", 100, 35, 90};
    row.state = state;
    return row;
}

ResultRow okLine(const std::string &name, double rms)
{
    ResultRow row = lineOf(name, TargetState::Ok);
    row.record.modelled = 90;
    row.record.caRms = rms;
    row.record.started = 1;
    row.record.seconds = 9.5;
    row.hasModel = true;
    return row;
}

QString textAt(const QAbstractItemModel &model, int row, int column)
{
    return model.index(row, column).data().toString();
}

TEST(ResultsModel, HasTheColumnsOfTheTable)
{
    const ResultsModel model;
    ASSERT_EQ(std::size_t(model.columnCount()), families::resultTitles().size());
    for (int column = 0; column < model.columnCount(); ++column)
        EXPECT_FALSE(ResultsModel::title(column).isEmpty()) << column;
    EXPECT_EQ(ResultsModel::fieldNames().at(ResultsModel::ScoreColumn), "backbone_score");
}

TEST(ResultsModel, LinesSayWhatIsKnownAndNothingElse)
{
    ResultsModel model;
    model.take({{0, okLine("a", 0.371)}, {1, lineOf("b")}});
    EXPECT_EQ(textAt(model, 0, ResultsModel::IdentityColumn), "35.0");
    EXPECT_EQ(textAt(model, 0, ResultsModel::RmsColumn), "0.37");
    EXPECT_EQ(textAt(model, 0, ResultsModel::StateColumn), "ok");
    EXPECT_EQ(textAt(model, 1, ResultsModel::RmsColumn), "");
    EXPECT_EQ(textAt(model, 1, ResultsModel::StateColumn), "not run");
    EXPECT_EQ(model.texts(1).at(ResultsModel::RmsColumn), "NA") << "as in the file";
}

TEST(ResultsModel, AFailedLineSaysWhy)
{
    ResultsModel model;
    ResultRow row = lineOf("a", TargetState::Failed);
    row.record.message = "row \"a\", column 5: <b>D</b>";
    model.take({{0, row}});
    const QModelIndex why = model.index(0, ResultsModel::LastLineColumn);
    EXPECT_EQ(why.data().toString(), "row \"a\", column 5: <b>D</b>");
    EXPECT_TRUE(why.data(Qt::ToolTipRole).toString().contains("&lt;b&gt;D"));
}

TEST(ResultsModel, TheScoresTipSaysWhatItIsNot)
{
    const ResultsModel model;
    const QString tip =
        model.headerData(ResultsModel::ScoreColumn, Qt::Horizontal, Qt::ToolTipRole).toString();
    EXPECT_TRUE(tip.contains("statistical potential"));
    EXPECT_TRUE(tip.contains("same target only"));
    EXPECT_TRUE(tip.contains("no measure of how correct"));
}

TEST(ResultsModel, CountsFollowTheLines)
{
    ResultsModel model;
    model.take({{0, lineOf("a")}, {1, lineOf("b", TargetState::Running)}, {2, okLine("c", 1)}});
    EXPECT_EQ(model.counts().all, 3U);
    EXPECT_EQ(model.counts().notRun, 1U);
    EXPECT_EQ(model.counts().running, 1U);
    EXPECT_EQ(model.counts().ok, 1U);
    model.take({{0, lineOf("a", TargetState::Killed)}, {1, lineOf("b", TargetState::Failed)}});
    EXPECT_EQ(model.counts().all, 3U);
    EXPECT_EQ(model.counts().notRun, 0U);
    EXPECT_EQ(model.counts().running, 0U);
    EXPECT_EQ(model.counts().killed, 1U);
    EXPECT_EQ(model.counts().failed, 1U);
}

TEST(ResultsModel, OfTenThousandLinesTheOneThatChangesIsTold)
{
    ResultsModel model;
    ResultsModel::Changes all;
    for (std::size_t i = 0; i < 10'000; ++i)
        all.emplace_back(i, lineOf("t" + std::to_string(i)));
    QSignalSpy added(&model, &QAbstractItemModel::rowsInserted);
    model.take(all);
    EXPECT_EQ(added.count(), 1);
    ASSERT_EQ(model.rowCount(), 10'000);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.take({{777, okLine("t777", 1)}, {778, lineOf("t778")}});
    ASSERT_EQ(changed.count(), 1) << "what is as it was is not told";
    EXPECT_EQ(changed[0][0].toModelIndex().row(), 777);
    EXPECT_EQ(changed[0][1].toModelIndex().row(), 777);
    EXPECT_EQ(reset.count(), 0);
    EXPECT_EQ(added.count(), 1);
}

TEST(ResultsModel, ManyScatteredChangesAreToldAtOnce)
{
    ResultsModel model;
    ResultsModel::Changes all;
    ResultsModel::Changes some;
    for (std::size_t i = 0; i < 1000; ++i) {
        all.emplace_back(i, lineOf("t" + std::to_string(i)));
        if (i % 2 == 1)
            some.emplace_back(i, okLine("t" + std::to_string(i), 1));
    }
    model.take(all);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    model.take(some);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex().row(), 1);
    EXPECT_EQ(changed[0][1].toModelIndex().row(), 999);
}

TEST(ResultsModel, NumbersAreSortedAsNumbersAndTheUnknownComesLast)
{
    ResultsModel model;
    model.take({{0, lineOf("none")}, {1, okLine("ten", 10)}, {2, okLine("nine", 9)}});
    QSortFilterProxyModel sorted;
    sorted.setSourceModel(&model);
    sorted.setSortRole(ResultsModel::kSortRole);
    sorted.sort(ResultsModel::RmsColumn);
    EXPECT_EQ(textAt(sorted, 0, 0), "nine");
    EXPECT_EQ(textAt(sorted, 1, 0), "ten");
    EXPECT_EQ(textAt(sorted, 2, 0), "none");
}

TEST(ResultsModel, TheSelectionStaysWhenLinesChangeAndCome)
{
    ResultsModel model;
    model.take({{0, lineOf("a")}, {1, lineOf("b")}});
    QSortFilterProxyModel sorted;
    sorted.setSourceModel(&model);
    sorted.setSortRole(ResultsModel::kSortRole);
    sorted.sort(ResultsModel::StateColumn);
    QItemSelectionModel selection(&sorted);
    selection.select(sorted.mapFromSource(model.index(1, 0)),
                     QItemSelectionModel::Select | QItemSelectionModel::Rows);
    model.take({{1, lineOf("b", TargetState::Failed)}, {2, lineOf("c")}});
    ASSERT_EQ(selection.selectedRows().size(), 1);
    EXPECT_EQ(selection.selectedRows().front().data().toString(), "b");
    EXPECT_EQ(selection.selectedRows().front().row(), 0) << "failed ones come first";
}

TEST(ResultsModel, ALineIsANoteForItsModel)
{
    ResultsModel model;
    model.take({{0, okLine("a", 0.5)}});
    const app::ObjectNote note = model.note(0, "globins");
    EXPECT_EQ(note.title, "Model of the family globins");
    ASSERT_EQ(note.values.size(), families::resultTitles().size());
    EXPECT_EQ(note.values[ResultsModel::IdentityColumn],
              std::make_pair(std::string("Identity (%)"), std::string("35.0")));
}

} // namespace ResultsModelTest
