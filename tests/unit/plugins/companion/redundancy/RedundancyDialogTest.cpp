// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/CompanionFixture.h"

#include "RedundancyDialog.h"

#include <QDoubleSpinBox>
#include <QPointer>
#include <QPushButton>
#include <QTableView>

namespace RedundancyDialogTest {

using companion::RedundancyModel;

class InTheRedundantRows : public AlignmentCompanion
{
protected:
    InTheRedundantRows()
    {
        m_Companion.reset();
        m_Rows = &alignment({"ACDEFGHIKL", "WWWWWWWWWW", "ACDEFGHIK-", "ACDEFGHIWW", "WWWWW-----"},
                            "rows", {"one", "two", "three", "four", "five"});
        m_Window = &show(*m_Rows, {700, 400});
        m_Served = &served(*m_Window);
        m_Companion = std::make_unique<Companion>(*m_Served);
        m_Dialog = m_Companion->showRedundancy();
        search();
    }
    ~InTheRedundantRows() override { delete m_Dialog; }

    void search()
    {
        QCoreApplication::processEvents();
        while (m_Dialog != nullptr && m_Dialog->isSearching())
            QCoreApplication::processEvents();
    }
    [[nodiscard]] RedundancyModel &model() const { return m_Dialog->model(); }
    [[nodiscard]] QString text(int row, int column) const
    {
        return model().index(row, column).data().toString();
    }
    [[nodiscard]] QPushButton &button(const QString &text) const
    {
        for (QPushButton *const each : m_Dialog->findChildren<QPushButton *>())
            if (each->text() == text)
                return *each;
        throw std::runtime_error(text.toStdString());
    }
    [[nodiscard]] std::string told() const
    {
        auto *const bar = m_Window->findChild<QToolBar *>("UnderThePointer");
        return bar->findChild<QLabel *>()->text().toStdString();
    }

    TAMBO::Alignment *m_Rows = nullptr;
    QPointer<companion::RedundancyDialog> m_Dialog;
};

TEST_F(InTheRedundantRows, AreListedWithTheRowThatTheyAreLike)
{
    ASSERT_EQ(model().rowCount(), 2);
    EXPECT_EQ(text(0, RedundancyModel::Row), "3");
    EXPECT_EQ(text(0, RedundancyModel::Name), "three");
    EXPECT_EQ(text(0, RedundancyModel::KeptRow), "1");
    EXPECT_EQ(text(0, RedundancyModel::KeptName), "one");
    EXPECT_EQ(text(0, RedundancyModel::Identity), "100.0");
    EXPECT_EQ(text(0, RedundancyModel::Structure), "");
    EXPECT_EQ(text(1, RedundancyModel::KeptName), "two");
    EXPECT_EQ(m_Dialog->stateText(), "2 of 5 rows are redundant; 2 of them would go.");
    EXPECT_EQ(history.position(), 0U);
}

TEST_F(InTheRedundantRows, NamesHaveTheRoomThatNumbersLeave)
{
    m_Dialog->show();
    QCoreApplication::processEvents();
    const auto &table = *m_Dialog->findChild<QTableView *>();
    const QString longName = "A0A0B2VV24_TOXCA/1469-1521";
    for (const int column : {RedundancyModel::Name, RedundancyModel::KeptName})
        EXPECT_GT(table.columnWidth(column), table.fontMetrics().horizontalAdvance(longName));
    // At a slash a name would be broken, and the numbers behind it be on a line that is not seen.
    EXPECT_FALSE(table.wordWrap());
    EXPECT_EQ(table.textElideMode(), Qt::ElideMiddle);
}

TEST_F(InTheRedundantRows, AnotherRuleFindsOthers)
{
    m_Dialog->findChild<QDoubleSpinBox *>()->setValue(80);
    search();
    EXPECT_EQ(model().rowCount(), 3);
    m_Dialog->findChildren<QComboBox *>().at(0)->setCurrentIndex(2);
    search();
    ASSERT_EQ(model().rowCount(), 2);
    EXPECT_EQ(text(0, RedundancyModel::Identity), "90.0");
    EXPECT_EQ(text(1, RedundancyModel::Identity), "80.0");
    m_Dialog->findChild<QDoubleSpinBox *>()->setValue(100);
    search();
    EXPECT_EQ(model().rowCount(), 0);
    EXPECT_EQ(m_Dialog->stateText(), "No row is redundant.");
    EXPECT_FALSE(button("&Remove").isEnabled());
}

TEST_F(InTheRedundantRows, TickedOnesGoInOneStep)
{
    button("&Remove").click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(m_Dialog, nullptr);
    EXPECT_EQ(rowsOf(*m_Rows), (Texts{"ACDEFGHIKL", "WWWWWWWWWW", "ACDEFGHIWW"}));
    EXPECT_EQ(told(), "2 redundant rows removed.");
    EXPECT_EQ(history.position(), 1U);
    EXPECT_EQ(history.undoLabel().substr(0, 21), "Remove redundant rows");
    history.undo();
    EXPECT_EQ(m_Rows->height(), 5U);
    EXPECT_EQ(m_Rows->GetSeqName(4), "five");
}

TEST_F(InTheRedundantRows, ThoseWithoutATickStay)
{
    EXPECT_TRUE(
        model().setData(model().index(0, RedundancyModel::Row), Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_EQ(m_Dialog->stateText(), "2 of 5 rows are redundant; 1 of them would go.");
    EXPECT_TRUE(m_Dialog->removeTicked());
    EXPECT_EQ(m_Rows->height(), 4U);
    EXPECT_EQ(m_Rows->GetSeqName(2), "three");
    EXPECT_EQ(told(), "1 redundant row removed.");
}

TEST_F(InTheRedundantRows, TheSpaceBarTicksWhatIsSelectedInTheTable)
{
    auto &table = *m_Dialog->findChild<QTableView *>();
    table.selectAll();
    QTest::keyClick(&table, Qt::Key_Space);
    EXPECT_EQ(model().tickedCount(), 0);
    EXPECT_FALSE(m_Dialog->removeTicked());
    EXPECT_FALSE(button("&Remove").isEnabled());
    table.selectRow(1);
    QTest::keyClick(&table, Qt::Key_Space);
    EXPECT_FALSE(model().isTicked(0));
    EXPECT_TRUE(model().isTicked(1));
    button("Tick &All").click();
    EXPECT_EQ(model().tickedCount(), 2);
    button("Tick &None").click();
    EXPECT_EQ(model().tickedCount(), 0);
}

TEST_F(InTheRedundantRows, WhatWasFoundGoesWithAnEdit)
{
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, m_Rows);
        m_Rows->removeRow(2);
    }
    // Before the window has heard of it, too.
    EXPECT_FALSE(m_Dialog->removeTicked());
    QCoreApplication::processEvents();
    EXPECT_EQ(model().rowCount(), 0);
    EXPECT_EQ(m_Dialog->stateText(), "The alignment has changed since it was searched.");
    button("&Search Again").click();
    search();
    ASSERT_EQ(model().rowCount(), 1);
    EXPECT_EQ(text(0, RedundancyModel::Name), "five");
}

TEST_F(InTheRedundantRows, AnEditDuringTheSearchIsSearchedToo)
{
    button("&Search Again").click();
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, m_Rows);
        m_Rows->removeRow(2);
    }
    search();
    ASSERT_EQ(model().rowCount(), 1);
    EXPECT_EQ(text(0, RedundancyModel::Row), "4");
}

TEST_F(InTheRedundantRows, TheSearchCanBeStopped)
{
    button("&Search Again").click();
    ASSERT_TRUE(m_Dialog->isSearching());
    button("&Stop").click();
    EXPECT_FALSE(m_Dialog->isSearching());
    EXPECT_EQ(m_Dialog->stateText(), "The search was stopped.");
    EXPECT_EQ(model().rowCount(), 0);
}

TEST_F(InTheRedundantRows, ALockedAlignmentStaysAsItIs)
{
    lockAll();
    EXPECT_FALSE(m_Dialog->removeTicked());
    EXPECT_EQ(m_Dialog->stateText(), "Nothing is removed: the alignment cannot be changed now.");
    EXPECT_EQ(m_Rows->height(), 5U);
}

TEST_F(InTheRedundantRows, TheWindowGoesToARowThatIsChosen)
{
    delete m_Dialog;
    m_Companion.reset();
    TAMBO::Alignment &many = alignment(Texts(90, "ACDEFGHIKL"));
    m_Window = &show(many, {700, 400});
    m_Served = &served(*m_Window);
    m_Companion = std::make_unique<Companion>(*m_Served);
    m_Dialog = m_Companion->showRedundancy();
    search();
    ASSERT_EQ(model().rowCount(), 89);
    m_Dialog->findChild<QTableView *>()->selectRow(85);
    const TAMBO::CellBlock seen = m_Served->visibleCells();
    EXPECT_TRUE(seen.rowBegin <= 86 && 86 < seen.rowEnd);
}

TEST_F(InTheRedundantRows, TheWindowMayGoDuringTheSearch)
{
    button("&Search Again").click();
    m_Companion.reset();
    closeWindows();
    EXPECT_EQ(m_Dialog, nullptr);
}

TEST_F(InTheRedundantRows, AllControlsHaveNamesAndAreReachedByTheKeyboard)
{
    for (const QWidget *const each : m_Dialog->findChildren<QWidget *>()) {
        const auto *const push = qobject_cast<const QPushButton *>(each);
        EXPECT_TRUE(each->focusPolicy() == Qt::NoFocus || push != nullptr ||
                    !each->accessibleName().isEmpty())
            << each->metaObject()->className();
        EXPECT_TRUE(push == nullptr || push->text().contains('&'));
    }
}

} // namespace RedundancyDialogTest
