// SPDX-License-Identifier: GPL-3.0-or-later
// The shared undo actions and the list of steps.
#include "UndoCommands.h"

#include "AppFixture.h"
#include "ConfigStore.h"
#include "DataPoint.h"
#include "HistoryModel.h"
#include "HistoryPanel.h"
#include "ObjectCommands.h"
#include "UndoActions.h"
#include "support/ShownText.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QLabel>
#include <QListView>
#include <QSignalSpy>
#include <QTest>

namespace UndoCommandsTest {

using namespace TAMBO;
using services::UndoActions;
using TAMBO::app::HistoryModel;
using TAMBO::app::HistoryPanel;
using TAMBO::app::ObjectCommands;
using TAMBO::app::UndoCommands;

class UndoCommandsTest : public AppFixture
{
protected:
    ~UndoCommandsTest() override { m_History.clear(); }

    static QString undoText() { return UndoActions::undo()->text(); }
    static QString redoText() { return UndoActions::redo()->text(); }
    static void moveGap(Alignment &family)
    {
        const DataPoint<Alignment> guard(nullptr, &family);
        guard->moveGap(0, 2, 1, true);
    }

    History m_History;
    UndoCommands m_Undo{m_History};
};

TEST_F(UndoCommandsTest, NothingToUndoDisablesTheActions)
{
    EXPECT_FALSE(UndoActions::undo()->isEnabled());
    EXPECT_FALSE(UndoActions::redo()->isEnabled());
    EXPECT_EQ(undoText(), "&Undo");
    EXPECT_EQ(redoText(), "&Redo");
}

TEST_F(UndoCommandsTest, TheActionsNameTheStep)
{
    Alignment &family = alignment("SeqAli", {"AC-D"});
    moveGap(family);
    EXPECT_TRUE(UndoActions::undo()->isEnabled());
    QCoreApplication::processEvents();
    EXPECT_EQ(undoText(), "&Undo move gap in SeqAli");
    UndoActions::undo()->trigger();
    EXPECT_EQ(rowsOf(family), std::vector<std::string>{"AC-D"});
    QCoreApplication::processEvents();
    EXPECT_EQ(redoText(), "&Redo move gap in SeqAli");
    UndoActions::redo()->trigger();
    EXPECT_EQ(rowsOf(family), std::vector<std::string>{"A-CD"});
    EXPECT_FALSE(UndoActions::redo()->isEnabled());
}

TEST_F(UndoCommandsTest, ANameWithAnAmpersandIsShownAsItIs)
{
    Alignment &family = alignment("A&B", {"AC-D"});
    moveGap(family);
    QCoreApplication::processEvents();
    EXPECT_EQ(undoText(), "&Undo move gap in A&&B");
    EXPECT_EQ(UndoActions::undo()->toolTip(), "Undo move gap in A&B");
}

TEST_F(UndoCommandsTest, TheToolTipOfAStepShowsANameWithMarkupAsItIs)
{
    moveGap(alignment("a<b>x", {"AC-D"}));
    QCoreApplication::processEvents();
    EXPECT_EQ(shownText(UndoActions::undo()->toolTip()), "Undo move gap in a<b>x");
}

TEST_F(UndoCommandsTest, ManyStepsAreToldOnce)
{
    Alignment &family = alignment("SeqAli", {"AC-D"});
    QCoreApplication::processEvents();
    const QSignalSpy changed(&m_Undo, &UndoCommands::changed);
    for (int i = 0; i < 10; ++i) {
        moveGap(family);
        m_History.undo();
    }
    EXPECT_EQ(changed.count(), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(UndoCommandsTest, TheMemoryLimitComesFromTheSettings)
{
    EXPECT_EQ(m_History.limit(), History::kDefaultLimit);
    services::ConfigStore &settings = services::ConfigStore::instance();
    settings.setValue("General", "UndoMemory", "16");
    m_Undo.readLimit();
    EXPECT_EQ(m_History.limit(), std::size_t(16) << 20);
    for (const char *nonsense : {"much", "-1", "1e30", "nan"}) {
        settings.setValue("General", "UndoMemory", nonsense);
        m_Undo.readLimit();
        EXPECT_EQ(m_History.limit(), History::kDefaultLimit) << nonsense;
    }
    settings.reset("General", "UndoMemory");
}

TEST_F(UndoCommandsTest, TheListHoldsAllStepsAndThePresent)
{
    Alignment &family = alignment("SeqAli", {"AC-D"});
    moveGap(family);
    HistoryModel model(m_History);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Warning);
    ASSERT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.index(0, 0).data().toString(), "Beginning");
    EXPECT_EQ(model.index(2, 0).data().toString(), "move gap in SeqAli");
    EXPECT_EQ(model.presentRow(), 2);
    EXPECT_FALSE(model.index(2, 0).data(Qt::ForegroundRole).isValid());
    m_History.undo();
    model.refresh();
    EXPECT_EQ(model.presentRow(), 1);
    EXPECT_TRUE(model.index(2, 0).data(Qt::ForegroundRole).isValid());
}

TEST_F(UndoCommandsTest, AfterALongDayTheListHoldsTheStepsAroundThePresent)
{
    Peptide &one = sequence("one", "ACD");
    for (int i = 0; i < 1500; ++i)
        ObjectCommands::rename(one, QString::number(i));
    HistoryModel model(m_History);
    EXPECT_EQ(model.rowCount(), int(HistoryModel::kReach) + 1);
    EXPECT_EQ(model.index(0, 0).data().toString(), "1,001 earlier steps");
    m_History.goTo(model.positionOf(0));
    model.refresh();
    EXPECT_EQ(one.Name(), "999");
    EXPECT_EQ(model.rowCount(), 2 * int(HistoryModel::kReach) + 1);
    EXPECT_EQ(model.presentRow(), int(HistoryModel::kReach));
}

TEST_F(UndoCommandsTest, AClickInTheListJumpsThere)
{
    Peptide &one = sequence("one", "ACD");
    for (const char *name : {"two", "three", "four"})
        ObjectCommands::rename(one, name);
    HistoryPanel panel(m_Undo);
    panel.resize(300, 300);
    panel.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel));
    auto *list = panel.findChild<QListView *>("HistoryList");
    const auto click = [&](int row) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualRect(list->model()->index(row, 0)).center());
        QCoreApplication::processEvents();
    };
    click(2);
    EXPECT_EQ(one.Name(), "two");
    EXPECT_EQ(list->currentIndex().row(), 2);
    click(4);
    EXPECT_EQ(one.Name(), "four");
    click(0);
    EXPECT_TRUE(topLevelNames().empty());
}

TEST_F(UndoCommandsTest, ThePanelSaysHowMuchMemoryTheStepsTake)
{
    Peptide &one = sequence("one", "ACD");
    ObjectCommands::rename(one, "two");
    HistoryPanel panel(m_Undo);
    panel.show();
    QCoreApplication::processEvents();
    const QString text = panel.findChild<QLabel *>("HistoryMemory")->text();
    EXPECT_TRUE(text.startsWith("2 steps, ")) << text.toStdString();
    EXPECT_TRUE(text.endsWith(" of 256.00 MiB")) << text.toStdString();
}

} // namespace UndoCommandsTest
