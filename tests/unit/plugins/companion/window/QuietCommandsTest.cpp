// SPDX-License-Identifier: GPL-3.0-or-later
// What is said of commands and drags of the editor that do nothing, which says nothing of it
// itself.
#include "guide/GuidedFamily.h"

#include "DataPoint.h"
#include "ObjectOperations.h"
#include "StatusDesk.h"
#include "support/LogLines.h"

#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

namespace QuietCommandsTest {

class QuietCommand : public GuidedFamily
{
protected:
    QuietCommand()
    {
        qputenv("KESTRAM", "1");
        setSettings("[KALMO2]\nFont = DejaVu Sans Mono, 11\nToolbarName1 = Alignment\n"
                    "ToolbarLocation1 = Top\nTools1 = 6||Color;11||Realign\n");
        QObject::connect(&TAMBO::services::StatusDesk::instance(),
                         &TAMBO::services::StatusDesk::said, &m_Said,
                         [this](const QString &text) { m_Status = text; });
    }
    ~QuietCommand() override { qunsetenv("KESTRAM"); }

    QAction &action(const QString &menu, const QString &text)
    {
        for (const QAction *title : m_Window->menuBar()->actions()) {
            if (title->text().remove('&') != menu)
                continue;
            for (QAction *each : title->menu()->actions())
                if (each->text().remove('&') == text)
                    return *each;
        }
        ADD_FAILURE() << "there is no " << menu.toStdString() << ", " << text.toStdString();
        return m_None;
    }
    void choose(const QString &menu, const QString &text)
    {
        m_Status.clear();
        action(menu, text).trigger();
    }
    void press(const QString &button)
    {
        m_Status.clear();
        for (QAction *each : m_Window->findChild<QToolBar *>("Tools1")->actions())
            if (each->text() == button)
                each->trigger();
    }
    // Without the window, which it names at its end.
    [[nodiscard]] QString status() const
    {
        const QString window = QStringLiteral(" (%1)").arg(m_Window->windowTitle());
        EXPECT_TRUE(m_Status.isEmpty() || m_Status.endsWith(window)) << m_Status.toStdString();
        return m_Status.left(m_Status.size() - window.size());
    }
    [[nodiscard]] QString line() const
    {
        return m_Window->findChild<QToolBar *>("UnderThePointer")->findChild<QLabel *>()->text();
    }
    void range(unsigned long begin, unsigned long end)
    {
        DataPoint<TAMBO::Alignment> change(nullptr, m_Shown);
        change->range({begin, end});
    }
    void drag(const TAMBO::CellIndex &from, const QPoint &to)
    {
        QWidget *const cells = m_Served->areaWidget(TAMBO::WindowArea::Cells);
        AlignmentWindowFixture::press(cells, Qt::LeftButton, m_Served->cellRect(from).center());
        move(cells, Qt::LeftButton, to);
        release(cells, Qt::LeftButton, to);
    }

    QString m_Status;

private:
    QObject m_Said;
    QAction m_None;
};

TEST_F(QuietCommand, RealignWithoutARangeSaysSoInTheWindowTheLogAndTheStatusLine)
{
    look(family());
    range(3, 3);
    const LogLines log;
    press("Realign");
    EXPECT_EQ(m_Status, "Realign: the range has no columns (Alignment Editor – family)");
    EXPECT_TRUE(log.texts().contains(m_Status));
    EXPECT_TRUE(line().startsWith("Realign: the range has no columns. A click on a mark"))
        << line().toStdString();
}

TEST_F(QuietCommand, RealignOfOneColumnAndOfOneRowSaysWhatItNeeds)
{
    look(family());
    range(3, 4);
    press("Realign");
    EXPECT_EQ(status(), "Realign: the range has one column, and two are needed");
    m_Companion.reset();
    look(alignment({"ACD"}));
    press("Realign");
    EXPECT_EQ(status(), "Realign: the alignment has fewer than two rows");
}

TEST_F(QuietCommand, ByDistanceWithoutStructuresSaysHowManyAreThere)
{
    look(alignment({"ACD", "ACD"}));
    choose("Color", "By Distance");
    EXPECT_EQ(status(), "By Distance: no row has a structure, and two are needed");
    m_Companion.reset();
    look(family(1));
    choose("Color", "By Distance");
    EXPECT_EQ(status(), "By Distance: one row has a structure, and two are needed");
    m_Companion.reset();
    look(family(2));
    choose("Color", "By Distance");
    EXPECT_EQ(status(), "");
}

TEST_F(QuietCommand, CommandsOfTheRangeSayThatItIsEmpty)
{
    look(family());
    range(3, 3);
    for (const char *const command : {"Select", "Remove", "Renumber", "Add SSE"}) {
        choose("Range", command);
        EXPECT_EQ(status(), QStringLiteral("%1: the range has no columns").arg(command));
    }
    EXPECT_EQ(history.size(), 0U);
}

TEST_F(QuietCommand, AddSseSaysWhatItsResiduesLack)
{
    look(family());
    range(0, 2);
    choose("Range", "Add SSE");
    EXPECT_EQ(status(), "Add SSE: row 1 has fewer than three residues in the range");
    range(4, 10);
    choose("Range", "Add SSE");
    EXPECT_EQ(status(), "Add SSE: row 1 has secondary structure in the range already");
}

TEST_F(QuietCommand, RemovingAllColumnsSaysThatNothingWasRemoved)
{
    TAMBO::Alignment &shown = family();
    look(shown);
    const unsigned long width = shown.width();
    range(0, width);
    choose("Range", "Remove");
    EXPECT_TRUE(m_Status.startsWith("Remove: the range has all columns")) << m_Status.toStdString();
    EXPECT_EQ(shown.width(), width);
    EXPECT_EQ(m_Served->alignment(), nullptr);
}

TEST_F(QuietCommand, AnEmptyWindowSaysThatNoAlignmentIsShown)
{
    look(family());
    choose("File", "Close");
    for (const char *const command : {"Add Seqs", "Combine", "Duplicate", "Save", "Print Fat"}) {
        choose("File", command);
        EXPECT_EQ(status(), QStringLiteral("%1: no alignment is shown").arg(command));
    }
    press("Color");
    EXPECT_EQ(m_Status, "Selected: no alignment is shown (Alignment Editor)");
}

TEST_F(QuietCommand, KestramNamesTheRowThatItBuildsWhenAnotherOneIsMarked)
{
    // What it would start is not there, which it tells in a box.
    TAMBO::Alignment &shown = alignment({"ACD", "ACD", "ACD", "ACD"});
    look(shown);
    const auto mark = [&shown](unsigned long row) {
        DataPoint<TAMBO::Alignment> change(nullptr, &shown);
        shown.GetSeq(row)->SetSelected(true);
    };
    QTimer closing;
    QObject::connect(&closing, &QTimer::timeout, &closing, [] {
        if (QWidget *box = QApplication::activeModalWidget())
            box->close();
    });
    closing.start(0);
    choose("Model", "Kestram");
    EXPECT_EQ(status(), "");
    mark(3);
    choose("Model", "Kestram");
    EXPECT_EQ(status(), "Kestram: builds row 2, s1, not row 4, which is marked");
    EXPECT_TRUE(line().contains("move s3 to row 2")) << line().toStdString();
    mark(1);
    choose("Model", "Kestram");
    EXPECT_EQ(status(), "");
}

TEST_F(QuietCommand, AGapThatIsLetGoBesideItsRowIsToldAndOneThatIsGivenUpIsNot)
{
    look(family());
    const TAMBO::CellIndex gap{1, kGap};
    drag(gap, m_Served->cellRect({2, kGap + 3}).center());
    EXPECT_EQ(status(), "Drag: let go outside of row 2, nothing was moved");
    m_Status.clear();
    drag(gap, m_Served->cellRect(gap).center());
    drag(gap, m_Served->cellRect({1, kGap + 3}).center());
    EXPECT_EQ(status(), "");
    QWidget *const cells = m_Served->areaWidget(TAMBO::WindowArea::Cells);
    AlignmentWindowFixture::press(cells, Qt::LeftButton, m_Served->cellRect({2, kGap}).center());
    move(cells, Qt::LeftButton, m_Served->cellRect({3, kGap}).center());
    QTest::keyClick(cells->parentWidget(), Qt::Key_Escape);
    release(cells, Qt::LeftButton, m_Served->cellRect({3, kGap}).center());
    EXPECT_EQ(status(), "");
}

TEST_F(QuietCommand, WhatDoesSomethingIsNotCommentedOn)
{
    look(family());
    range(0, 4);
    choose("Range", "Select");
    EXPECT_EQ(status(), "");
    choose("File", "Duplicate");
    EXPECT_EQ(status(), "");
    choose("Range", "Remove");
    EXPECT_EQ(status(), "");
}

TEST_F(QuietCommand, TheCaptionHasTheAlignmentsNameBehindIt)
{
    TAMBO::Alignment &shown = family();
    look(shown);
    EXPECT_EQ(m_Window->windowTitle(), "Alignment Editor – family");
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &shown);
        TAMBO::renameObject(shown, "kin [*]");
    }
    EXPECT_EQ(m_Window->windowTitle(), "Alignment Editor – kin [*][*]") << "as the toolkit has it";
    choose("File", "Close");
    EXPECT_EQ(m_Window->windowTitle(), "Alignment Editor");
}

TEST_F(QuietCommand, TheCaptionIsTheWindowsOwnAgainWithoutTheCompanion)
{
    look(family());
    m_Companion.reset();
    EXPECT_EQ(m_Window->windowTitle(), "Alignment Editor");
}

} // namespace QuietCommandsTest
