// SPDX-License-Identifier: GPL-3.0-or-later
// What is added to a window, without a mouse and without eyes.
#include "../window/CompanionFixture.h"

#include "Commands.h"
#include "PairsDialog.h"
#include "TrackCanvas.h"
#include "Tracks.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QDockWidget>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>
#include <QToolTip>

#include <set>

namespace KeyboardTest {

using companion::SelectBy;

class Keyboard : public AlignmentCompanion
{
protected:
    Keyboard() { QApplication::setActiveWindow(m_Window); }

    [[nodiscard]] QWidget &cells() const
    {
        return *m_Served->areaWidget(WindowArea::Cells)->parentWidget();
    }
    // To whatever has the keyboard.
    static void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
        QCoreApplication::processEvents();
    }
    void openEverything()
    {
        m_Companion->colorBy(companion::ColumnRule::Identity);
        m_Companion->overview().toggle();
        m_Companion->tracks().toggle();
        m_Companion->showPairs();
        m_Companion->showWrapped();
        m_Companion->goTo().ask();
        m_Companion->find().ask();
        m_Companion->selecting().ask(SelectBy::Block);
        m_Companion->tree().toggle();
        m_Companion->askForPages(companion::PageDialog::For::Export);
        QCoreApplication::processEvents();
    }
};

// ---- From part to part

TEST_F(Keyboard, EachPartOfTheWindowIsReachedAndEscapeGoesBackToTheCells)
{
    openEverything();
    QApplication::setActiveWindow(m_Window);
    cells().setFocus();
    std::set<const QWidget *> seen;
    const auto part = [&] {
        const QWidget *widget = QApplication::focusWidget();
        while (widget != nullptr && widget != &cells() && widget->parentWidget() != m_Window)
            widget = widget->parentWidget();
        return widget;
    };
    for (int i = 0; i < 50; ++i) {
        m_Companion->stops().next();
        if (part() == &cells())
            break;
        seen.insert(part());
    }
    EXPECT_EQ(part(), &cells());
    for (const QWidget *const wanted : std::initializer_list<const QWidget *>{
             &m_Companion->overview(), &m_Companion->tracks(), &m_Companion->find(),
             &m_Companion->goTo(), m_Window->findChild<QToolBar *>("Legend")})
        EXPECT_TRUE(seen.contains(wanted)) << wanted->objectName().toStdString();
    // The other way round as well, and back from anywhere.
    m_Companion->stops().previous();
    EXPECT_NE(part(), &cells());
    key(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), &cells());
    m_Companion->overview().view().setFocus();
    key(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), &cells());
    EXPECT_TRUE(m_Companion->overview().isVisible());
}

TEST_F(Keyboard, KeysMoveTheFrameOfTheOverview)
{
    m_Companion->overview().toggle();
    QWidget &view = m_Companion->overview().view();
    view.setFocus();
    key(Qt::Key_Right);
    key(Qt::Key_Down);
    const QPoint once = m_Served->scrollPosition();
    EXPECT_GT(once.x(), 0);
    EXPECT_GT(once.y(), 0);
    key(Qt::Key_PageDown);
    EXPECT_EQ(m_Served->scrollPosition(), once + QPoint(0, m_Served->visibleSize().height()));
    key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(m_Served->visibleCells().rowEnd, 120U);
    EXPECT_EQ(m_Served->visibleCells().colEnd, 400U);
    key(Qt::Key_Home);
    EXPECT_EQ(m_Served->scrollPosition().x(), 0);
    EXPECT_EQ(m_Served->visibleCells().rowEnd, 120U);
    key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(m_Served->scrollPosition(), QPoint(0, 0));
    // Thicker while keys move it.
    const QImage with = pictureOf(&view);
    cells().setFocus();
    EXPECT_NE(pictureOf(&view), with);
}

TEST_F(Keyboard, TheOverviewSaysWhatIsInSight)
{
    m_Companion->overview().toggle();
    m_Companion->overview().view().setFocus();
    m_Served->scrollTo({500, 500});
    QCoreApplication::processEvents();
    const TAMBO::CellBlock seen = m_Served->visibleCells();
    const QString text = QAccessible::queryAccessibleInterface(&m_Companion->overview().view())
                             ->text(QAccessible::Description);
    EXPECT_TRUE(
        text.contains(QString("Rows %1 to %2 of 120").arg(seen.rowBegin + 1).arg(seen.rowEnd)))
        << text.toStdString();
    EXPECT_TRUE(
        text.contains(QString("columns %1 to %2 of 400").arg(seen.colBegin + 1).arg(seen.colEnd)))
        << text.toStdString();
}

TEST_F(Keyboard, TheValuesOfAColumnOfTheTracksAreReadByKeys)
{
    m_Companion->tracks().toggle();
    auto &canvas = *m_Window->findChild<companion::TrackCanvas *>();
    canvas.setFocus();
    while (canvas.isComputing())
        QCoreApplication::processEvents();
    const QImage before = pictureOf(&canvas);
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    const auto text = [&] {
        return QAccessible::queryAccessibleInterface(&canvas)->text(QAccessible::Description);
    };
    EXPECT_TRUE(text().startsWith("Column 3 of 400")) << text().toStdString();
    EXPECT_TRUE(text().contains("Occupancy: ")) << text().toStdString();
    EXPECT_TRUE(text().contains("Conservation: ")) << text().toStdString();
    EXPECT_EQ(QToolTip::text(), text());
    EXPECT_NE(pictureOf(&canvas), before);
    // One that is out of sight comes, and is computed.
    key(Qt::Key_End);
    while (canvas.isComputing())
        QCoreApplication::processEvents();
    EXPECT_TRUE(m_Served->visibleCells().contains({0, 399}));
    EXPECT_TRUE(text().startsWith("Column 400 of 400")) << text().toStdString();
    EXPECT_TRUE(text().contains("Occupancy: ")) << text().toStdString();
    cells().setFocus();
    EXPECT_FALSE(QToolTip::isVisible());
}

// ---- Menus

TEST_F(Keyboard, NoTwoEntriesOfAMenuHaveOneKey)
{
    QMenu menu;
    companion::fillMenu(menu, [] { return nullptr; });
    QList<QMenu *> menus = menu.findChildren<QMenu *>();
    menus << &menu;
    for (const QMenu *const each : menus) {
        QStringList taken;
        for (const QAction *const action : each->actions()) {
            if (action->isSeparator())
                continue;
            const QString key = QKeySequence::mnemonic(action->text()).toString();
            EXPECT_FALSE(key.isEmpty()) << action->text().toStdString();
            EXPECT_FALSE(taken.contains(key)) << action->text().toStdString();
            taken << key;
        }
    }
}

// ---- Names

// What a user does something with.
bool isControl(const QWidget &widget)
{
    if (qobject_cast<const QScrollBar *>(&widget) != nullptr ||
        qobject_cast<const QHeaderView *>(&widget) != nullptr)
        return false;
    return widget.focusPolicy() != Qt::NoFocus ||
           qobject_cast<const QAbstractButton *>(&widget) != nullptr ||
           qobject_cast<const QAbstractSlider *>(&widget) != nullptr;
}

// Tells those in sight that have none; gives how many there are.
int expectNames()
{
    int controls = 0;
    for (QWidget *const widget : QApplication::allWidgets()) {
        if (!widget->isVisible() || !isControl(*widget))
            continue;
        ++controls;
        const QAccessibleInterface *const told = QAccessible::queryAccessibleInterface(widget);
        const QWidget *const owner = widget->parentWidget();
        EXPECT_NE(told, nullptr);
        EXPECT_TRUE(told != nullptr && !told->text(QAccessible::Name).trimmed().isEmpty())
            << widget->metaObject()->className() << " \"" << widget->objectName().toStdString()
            << "\" of " << (owner == nullptr ? "nobody" : owner->metaObject()->className()) << " \""
            << (owner == nullptr ? std::string() : owner->objectName().toStdString()) << '"';
    }
    return controls;
}

TEST_F(Keyboard, EveryControlHasANameForThoseWhoDoNotSeeIt)
{
    openEverything();
    EXPECT_GT(expectNames(), 40);
    // The line for selecting has others for each choice.
    for (const SelectBy by : {SelectBy::Block, SelectBy::Likeness, SelectBy::Conservation,
                              SelectBy::Gaps, SelectBy::Names}) {
        m_Companion->selecting().ask(by);
        QCoreApplication::processEvents();
        EXPECT_GT(expectNames(), 40);
    }
}

// The other dialogs of the program are closed by Escape as well.
TEST_F(Keyboard, EveryDockAndBarHasATitle)
{
    openEverything();
    for (const QDockWidget *const dock : m_Window->findChildren<QDockWidget *>())
        EXPECT_FALSE(dock->windowTitle().isEmpty()) << dock->objectName().toStdString();
    for (const QToolBar *const bar : m_Window->findChildren<QToolBar *>())
        EXPECT_FALSE(bar->windowTitle().isEmpty()) << bar->objectName().toStdString();
}

} // namespace KeyboardTest
