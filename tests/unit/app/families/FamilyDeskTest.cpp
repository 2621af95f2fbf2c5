// SPDX-License-Identifier: GPL-3.0-or-later
// Models of a family from the dialog to objects in the tree.
#include "FamilyDesk.h"

#include "DataPoint.h"
#include "FamilyDialog.h"
#include "FamilyFiles.h"
#include "FolderLock.h"
#include "JobList.h"
#include "MainWindow.h"
#include "ObjectSources.h"
#include "PositionEdit.h"
#include "ResultsModel.h"
#include "SavedPlaces.h"
#include "UndoCommands.h"
#include "Workbench.h"
#include "support/Answering.h"
#include "support/LogLines.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTableView>
#include <QTest>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace FamilyDeskTest {

using namespace TAMBO;
using app::FamilyDesk;
using app::FamilyWindow;
using app::LoadReport;
using app::ResultsModel;
using services::JobList;
using testing::ElementsAre;

class FamilyDeskTest : public FamilyFiles
{
protected:
    FamilyDeskTest() { begin(); }
    ~FamilyDeskTest() override
    {
        m_Desk.reset();
        JobList::instance().forgetFailures();
    }

    void begin()
    {
        FamilyDesk::Actions actions;
        actions.opened = [this](const LoadReport &report) { m_Report = report; };
        actions.tellFailure = [this](const QString &headline, const QStringList &causes) {
            m_Told << headline << causes;
        };
        m_Desk = std::make_unique<FamilyDesk>(FamilyDesk::Parts{m_Loader, m_Sources, m_Notes},
                                              std::move(actions), program());
    }
    // What stands for "tambo models --continue FOLDER" says "up" and waits for a word in "go".
    QString program()
    {
        QFile file(write(
            "tambo", "#!/bin/bash\ncd \"$3\"\ntest -p go || mkfifo go\necho up\nread -r _ < go\n"));
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        return file.fileName();
    }
    // As soon as all lines are there.
    FamilyWindow &show(const families::FamilyFolder &folder)
    {
        FamilyWindow *const window = m_Desk->show(folder.path());
        EXPECT_NE(window, nullptr);
        waitUntil([&] { return table(*window).model()->rowCount() > 0; });
        return *window;
    }
    static QTableView &table(const FamilyWindow &window)
    {
        return *window.findChild<QTableView *>("Results");
    }
    static QPushButton &button(const FamilyWindow &window, const char *name)
    {
        return *window.findChild<QPushButton *>(QString::fromLatin1(name));
    }
    static QString said(const FamilyWindow &window) { return window.statusBar()->currentMessage(); }
    static QString progress(const FamilyWindow &window)
    {
        return window.findChild<QLabel *>("Says")->text();
    }
    void openModels(const FamilyWindow &window)
    {
        button(window, "Open").click();
        waitUntil([this] { return !m_Desk->reader().isBusy(); });
    }
    static void pick(const FamilyWindow &window, int row) { table(window).selectRow(row); }
    static bool move(Structure &structure)
    {
        std::vector<PointPair> pairs;
        for (int i = 0; i < 7; ++i)
            pairs.push_back({place(i), shifted(place(i))});
        const DataPoint<Space> guard(nullptr, Space::instance());
        return moveStructures({{&structure, Superposition(pairs)}});
    }

    app::ObjectSources m_Sources;
    app::ObjectNotes m_Notes;
    app::Loader m_Loader{m_Sources};
    LoadReport m_Report;
    QStringList m_Told;
    std::unique_ptr<FamilyDesk> m_Desk;
};

TEST_F(FamilyDeskTest, AWindowShowsWhatHasComeOfAFolder)
{
    const auto folder = makeFolder({"a", "b", "c"});
    build(folder, "a");
    fail(folder, "b", "no backbone");
    const FamilyWindow &window = show(folder);
    EXPECT_EQ(window.windowTitle(), "Models of globins");
    EXPECT_EQ(progress(window), "1 of 3 ok, 1 failed, 1 not run");
    EXPECT_EQ(table(window).model()->index(1, ResultsModel::LastLineColumn).data(), "no backbone");
    EXPECT_TRUE(button(window, "Run").isEnabled());
    EXPECT_FALSE(button(window, "Stop").isEnabled());
    build(folder, "c");
    waitUntil([&] { return progress(window) == "2 of 3 ok, 1 failed"; });
}

TEST_F(FamilyDeskTest, AFolderHasOneWindow)
{
    const auto folder = makeFolder({"a"});
    FamilyWindow *const window = m_Desk->show(folder.path());
    EXPECT_EQ(m_Desk->show(folder.path() / "runs/.."), window);
}

TEST_F(FamilyDeskTest, AnotherFolderIsToldAndHasNoWindow)
{
    EXPECT_EQ(m_Desk->show(path("").toStdString()), nullptr);
    ASSERT_EQ(m_Told.size(), 2);
    EXPECT_TRUE(m_Told[0].endsWith("cannot be shown as models of a family."));
}

TEST_F(FamilyDeskTest, AllModelsThatAreBuiltComeWithTheirLinesOfTheTable)
{
    known();
    const Alignment &shown = family({"known", "a", "b", "c"});
    const auto folder = makeFolder({"a", "b", "c"});
    build(folder, "a");
    build(folder, "c");
    FamilyWindow &window = show(folder);
    m_History.clear();
    openModels(window);
    EXPECT_THAT(topLevelNames(),
                ElementsAre("known", "a", "b", "c", "globins", "a on known", "c on known"));
    EXPECT_EQ(m_History.size(), 1U);
    expectNear(placeIn(shown, 1, 3), place(3));
    EXPECT_FALSE(placeIn(shown, 2, 3).isDefined());
    ASSERT_EQ(m_Report.structures.size(), 2U);
    const app::ObjectNote *const note = m_Notes.of(*m_Report.structures[1]);
    ASSERT_NE(note, nullptr);
    EXPECT_EQ(note->title, "Model of the family globins");
    EXPECT_EQ(note->values[ResultsModel::TargetColumn].second, "c");
    EXPECT_EQ(note->values[ResultsModel::ScoreColumn],
              std::make_pair(std::string("Backbone score"), std::string("-1.250")));
    EXPECT_EQ(said(window), "Opened 2 models");
}

TEST_F(FamilyDeskTest, OfPickedLinesThoseModelsCome)
{
    const auto folder = makeFolder({"a", "b", "c"});
    for (const char *target : {"a", "b", "c"})
        build(folder, target);
    FamilyWindow &window = show(folder);
    table(window).sortByColumn(ResultsModel::TargetColumn, Qt::DescendingOrder);
    pick(window, 0);
    openModels(window);
    EXPECT_THAT(topLevelNames(), ElementsAre("c on known"));
}

TEST_F(FamilyDeskTest, ALineThatIsClickedTwiceOrEnteredOpensItsModel)
{
    const auto folder = makeFolder({"a", "b", "c"});
    build(folder, "a");
    build(folder, "b");
    fail(folder, "c", "no backbone");
    FamilyWindow &window = show(folder);
    QTableView &lines = table(window);
    emit lines.doubleClicked(lines.model()->index(1, 3));
    waitUntil([this] { return !m_Desk->reader().isBusy(); });
    EXPECT_THAT(topLevelNames(), ElementsAre("b on known"));
    lines.setCurrentIndex(lines.model()->index(0, 0));
    window.activateWindow();
    waitUntil([&] { return window.isActiveWindow(); });
    lines.setFocus();
    QTest::keyClick(&lines, Qt::Key_Return);
    waitUntil([] { return topLevelNames().size() == 2; });
    emit lines.doubleClicked(lines.model()->index(2, 0));
    EXPECT_EQ(said(window), "There is no model of c: no backbone");
}

TEST_F(FamilyDeskTest, AModelThatIsOpenIsNotOpenedAgainUnlessItIsBuiltAgain)
{
    family({"known", "a"});
    const auto folder = makeFolder({"a"});
    build(folder, "a");
    FamilyWindow &window = show(folder);
    openModels(window);
    EXPECT_EQ(m_History.size(), 2U);
    openModels(window);
    EXPECT_EQ(m_History.size(), 2U);
    EXPECT_EQ(said(window), "This model is open already.");
    build(folder, "a", 77);
    const QAbstractItemModel &lines = *table(window).model();
    waitUntil([&] { return lines.index(0, ResultsModel::SecondsColumn).data() == "77.0"; });
    openModels(window);
    EXPECT_EQ(topLevelNames().back(), "a on known (2)");
}

TEST_F(FamilyDeskTest, OpenModelsAreSuperposedOnTheirTemplatesAgain)
{
    Structure &moved = known();
    const Alignment &shown = family({"known", "a", "b"});
    const auto folder = makeFolder({"a", "b"});
    build(folder, "a");
    build(folder, "b");
    FamilyWindow &window = show(folder);
    button(window, "Superpose").click();
    EXPECT_EQ(said(window), "None of these models is open.");
    openModels(window);
    ASSERT_TRUE(move(moved));
    m_History.clear();
    button(window, "Superpose").click();
    EXPECT_EQ(said(window), "Superposed 2 models on their templates");
    expectNear(placeIn(shown, 1, 3), shifted(place(3)));
    expectNear(placeIn(shown, 2, 5), shifted(place(5)));
    ASSERT_EQ(m_History.size(), 1U);
    EXPECT_EQ(m_History.label(0), "superpose a on known and another");
    ASSERT_TRUE(m_History.undo());
    expectNear(placeIn(shown, 1, 3), place(3));
}

TEST_F(FamilyDeskTest, ColumnsEditedSinceAModelWasBuiltDoNotPullItFromItsTemplate)
{
    Structure &moved = known();
    Alignment &shown = family({"known", "a"});
    const auto folder = makeFolder({"a"});
    build(folder, "a");
    const FamilyWindow &window = show(folder);
    openModels(window);
    ASSERT_TRUE(move(moved));
    {
        // Its last two residues stand one column farther on.
        const DataPoint<Alignment> guard(nullptr, &shown);
        shown.insertGap(1, 5);
    }
    button(window, "Superpose").click();
    EXPECT_EQ(said(window), "Superposed 1 model on its template");
    for (unsigned long column = 0; column < 5; ++column)
        expectNear(placeIn(shown, 1, column), shifted(place(int(column))));
}

TEST_F(FamilyDeskTest, WithoutTheAlignmentNothingIsSuperposed)
{
    const auto folder = makeFolder({"a"});
    build(folder, "a");
    FamilyWindow &window = show(folder);
    openModels(window);
    button(window, "Superpose").click();
    EXPECT_TRUE(said(window).contains("takes the alignment of the family"));
}

TEST_F(FamilyDeskTest, TheDialogsOrderIsWrittenAndRunAndShown)
{
    known();
    Alignment &shown = family({"known", "a", "b"});
    answering<app::FamilyDialog>([this](app::FamilyDialog &dialog) {
        dialog.findChild<QLineEdit *>("Filter")->setText("b");
        dialog.findChild<QPushButton *>("None")->click();
        dialog.findChild<QLineEdit *>("Folder")->setText(path("models"));
        dialog.findChild<QPushButton *>("Build")->click();
    });
    m_Desk->askForModels({&shown}, nullptr, nullptr);
    waitUntil([&] { return !JobList::instance().jobs().empty() || !m_Told.isEmpty(); });
    EXPECT_EQ(m_Told, QStringList());
    const auto folder = families::FamilyFolder::open(path("models").toStdString());
    ASSERT_TRUE(folder);
    ASSERT_EQ(folder.value().targets().size(), 1U);
    EXPECT_EQ(folder.value().targets().front().name, "a");
    EXPECT_TRUE(QFile::exists(path("models/inputs/a.ali")));
    const FamilyWindow &window = show(folder.value());
    EXPECT_TRUE(button(window, "Stop").isEnabled());
    EXPECT_FALSE(button(window, "Run").isEnabled());
    button(window, "Stop").click();
    waitUntil([] { return JobList::instance().jobs().empty(); });
    EXPECT_TRUE(JobList::instance().failures().empty());
    waitUntil([&] { return button(window, "Run").isEnabled(); });
}

TEST_F(FamilyDeskTest, ARunGoesOnWithoutItsWindowAndIsFoundAgain)
{
    const auto folder = makeFolder({"a", "b"});
    ASSERT_EQ(mkfifo(path("models/go").toUtf8().constData(), 0600), 0);
    FamilyWindow &first = show(folder);
    waitUntil([&] { return button(first, "Run").isEnabled(); });
    button(first, "Run").click();
    EXPECT_EQ(JobList::instance().jobs().size(), 1U);
    first.close(false);
    waitUntil([] {
        return QApplication::topLevelWidgets().isEmpty() ||
               std::ranges::none_of(QApplication::topLevelWidgets(), [](auto *widget) {
                   return qobject_cast<FamilyWindow *>(widget) != nullptr;
               });
    });
    EXPECT_EQ(JobList::instance().jobs().size(), 1U);
    const FamilyWindow &again = show(folder);
    EXPECT_TRUE(button(again, "Stop").isEnabled());
    write("models/go", "\n");
    waitUntil([] { return JobList::instance().jobs().empty(); });
    waitUntil([&] { return button(again, "Run").isEnabled(); });
}

TEST_F(FamilyDeskTest, ARunThatAnotherProgramHasStartedIsSeen)
{
    const auto folder = makeFolder({"a"});
    const auto lock = families::FolderLock::take(folder.path());
    ASSERT_TRUE(lock);
    const FamilyWindow &window = show(folder);
    EXPECT_EQ(progress(window), "0 of 1 ok, 1 to go");
    EXPECT_FALSE(button(window, "Run").isEnabled());
    EXPECT_FALSE(button(window, "Stop").isEnabled());
    EXPECT_EQ(button(window, "Stop").toolTip(),
              "Another program has started this run, and stops it");
}

// ---- In the workbench

class FamilyWorkbenchTest : public FamilyFiles
{
protected:
    FamilyWorkbenchTest() : m_Kestram(qgetenv("KESTRAM")), m_Path(qgetenv("PATH"))
    {
        QFile adapter(write("kestram", "#!/bin/sh\n"));
        adapter.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", m_Folder.path().toUtf8());
        qputenv("KESTRAM", "1");
        m_Workbench =
            std::make_unique<app::Workbench>(app::Workbench::Attendance::Nobody, withoutPlugins());
    }
    ~FamilyWorkbenchTest() override
    {
        m_Workbench->undo().history().clear();
        m_Workbench.reset();
        qputenv("PATH", m_Path);
        if (m_Kestram.isNull())
            qunsetenv("KESTRAM");
        else
            qputenv("KESTRAM", m_Kestram);
    }

    QAction *entry(const QString &text)
    {
        for (QAction *top : m_Workbench->window().menuBar()->actions()) {
            if (top->text().remove(u'&') != "Tools")
                continue;
            for (QAction *action : top->menu()->actions()) {
                if (action->text().remove(u'&') == text)
                    return action;
            }
        }
        return nullptr;
    }

    QByteArray m_Kestram;
    QByteArray m_Path;
    std::unique_ptr<app::Workbench> m_Workbench;
};

TEST_F(FamilyWorkbenchTest, TheMenuSaysWhyThereCanBeNoModels)
{
    QAction *const models = entry("Models of a Family…");
    ASSERT_NE(models, nullptr);
    EXPECT_FALSE(models->isEnabled());
    EXPECT_EQ(models->toolTip(), "It takes an alignment, and none is open.");
    family({"known", "a"});
    EXPECT_TRUE(models->isEnabled());
    qputenv("KESTRAM", "");
    family({"known", "b"});
    EXPECT_FALSE(models->isEnabled());
    EXPECT_TRUE(models->toolTip().contains("switched off"));
    EXPECT_TRUE(entry("Results of a Family…")->isEnabled()) << "they can be looked at";
}

TEST_F(FamilyWorkbenchTest, ModelsOfAFolderAreNoUnsavedWorkAndAreSavedToAnotherPlace)
{
    const auto folder = makeFolder({"a"});
    build(folder, "a");
    LoadReport report;
    QObject::connect(m_Workbench.get(), &app::Workbench::opened, m_Workbench.get(),
                     [&](const LoadReport &opened) { report = opened; });
    const FamilyWindow *const window = m_Workbench->families().show(folder.path());
    auto &open = *window->findChild<QPushButton *>("Open");
    waitUntil([&] { return open.isEnabled(); });
    open.click();
    waitUntil([&] { return !report.structures.empty(); });
    const Structure &model = *report.structures.front();
    EXPECT_FALSE(m_Workbench->undo().history().isModified(model));
    ASSERT_NE(m_Workbench->notes().of(model), nullptr);
}

} // namespace FamilyDeskTest
