// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/CompanionFixture.h"

#include "DuplicatesDialog.h"

#include <QPointer>
#include <QTableView>

namespace DuplicatesDialogTest {

using companion::DuplicateModel;
using companion::DuplicatesDialog;

class InTheDuplicates : public AlignmentCompanion
{
protected:
    ~InTheDuplicates() override { delete m_Dialog; }

    TAMBO::Alignment &shown(const Texts &rows, const Texts &names)
    {
        delete m_Dialog;
        m_Companion.reset();
        TAMBO::Alignment &made = alignment(rows, "rows", names);
        m_Window = &show(made, {700, 400});
        m_Served = &served(*m_Window);
        m_Companion = std::make_unique<Companion>(*m_Served);
        m_Dialog = m_Companion->showDuplicates();
        return made;
    }
    [[nodiscard]] Texts listed() const
    {
        Texts texts;
        for (int row = 0; row < m_Dialog->model().rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < DuplicateModel::ColumnCount; ++column)
                cells << m_Dialog->model().index(row, column).data().toString();
            texts.push_back(cells.join(" | ").toStdString());
        }
        return texts;
    }
    [[nodiscard]] std::string told() const
    {
        auto *const bar = m_Window->findChild<QToolBar *>("UnderThePointer");
        return bar->findChild<QLabel *>()->text().toStdString();
    }
    [[nodiscard]] QString state() const { return m_Dialog->findChild<QLabel *>("State")->text(); }
    static std::vector<bool> selectedRows(const TAMBO::Alignment &alignment)
    {
        std::vector<bool> selected;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            selected.push_back(alignment.isRowSelected(row));
        return selected;
    }

    QPointer<DuplicatesDialog> m_Dialog;
};

TEST_F(InTheDuplicates, RowsWithTheSameNameAndWithTheSameSequenceAreListed)
{
    shown({"AC-D", "EF--", "-ACd", "A---", "ACD-"}, {"x", "y", "z", "x", "w"});
    EXPECT_EQ(listed(), (Texts{"1 | x | the first one | 3", "4 | x | row 1, x | 1"}));
    auto &kind = *m_Dialog->findChild<QComboBox *>();
    EXPECT_EQ(kind.itemText(0), "the same name (2 rows)");
    EXPECT_EQ(kind.itemText(1), "the same sequence (3 rows)");
    kind.setCurrentIndex(1);
    EXPECT_EQ(listed(),
              (Texts{"1 | x | the first one | 3", "3 | z | row 1, x | 3", "5 | w | row 1, x | 3"}));
    EXPECT_EQ(state(), "3 rows in 1 group.");
}

TEST_F(InTheDuplicates, WithoutAnyThatIsTold)
{
    shown({"ACD", "EF-", "---", "---"}, {"x", "y", "z", "w"});
    EXPECT_EQ(m_Dialog, nullptr);
    EXPECT_EQ(told(), "No two rows have the same name, and no two the same sequence.");
}

TEST_F(InTheDuplicates, AllOfThemOrAllButTheFirstOnesAreSelected)
{
    TAMBO::Alignment &rows =
        shown({"AC", "EF", "AC", "EF", "AC", "WW"}, {"a", "b", "c", "d", "e", "f"});
    EXPECT_EQ(m_Dialog->model().rowCount(), 5) << "there are no names to show";
    EXPECT_TRUE(m_Dialog->select(DuplicatesDialog::Which::All));
    EXPECT_EQ(selectedRows(rows), (std::vector<bool>{true, true, true, true, true, false}));
    EXPECT_EQ(told(), "5 rows selected.");
    EXPECT_TRUE(m_Dialog->select(DuplicatesDialog::Which::AllButFirst));
    EXPECT_EQ(selectedRows(rows), (std::vector<bool>{false, false, true, true, true, false}));
    EXPECT_EQ(history.position(), 0U);
    lockAll();
    EXPECT_FALSE(m_Dialog->select(DuplicatesDialog::Which::All));
}

TEST_F(InTheDuplicates, AClickGoesToTheRow)
{
    Texts names;
    for (int i = 0; i < 90; ++i)
        names.push_back(i == 80 ? "n3" : "n" + std::to_string(i));
    shown(Texts(90, "ACD"), names);
    ASSERT_EQ(m_Dialog->model().rowCount(), 2);
    auto &table = *m_Dialog->findChild<QTableView *>();
    table.selectRow(1);
    TAMBO::CellBlock seen = m_Served->visibleCells();
    EXPECT_TRUE(seen.rowBegin <= 80 && 80 < seen.rowEnd);
    m_Served->scrollTo({0, 0});
    const QPoint place = table.visualRect(m_Dialog->model().index(1, 1)).center();
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, place);
    seen = m_Served->visibleCells();
    EXPECT_TRUE(seen.rowBegin <= 80 && 80 < seen.rowEnd);
}

TEST_F(InTheDuplicates, WhatWasFoundGoesWithAnEdit)
{
    TAMBO::Alignment &rows = shown({"AC", "AC"}, {"a", "b"});
    {
        const DataPoint<TAMBO::Alignment> change(nullptr, &rows);
        rows.removeRow(0);
    }
    EXPECT_FALSE(m_Dialog->select(DuplicatesDialog::Which::All));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_Dialog->model().rowCount(), 0);
    EXPECT_EQ(state(), "The alignment has changed since it was searched.");
}

TEST_F(InTheDuplicates, TheSearchCanBeCancelled)
{
    const WithoutMoment withoutMoment;
    const CancelledProgress cancel(*m_Window);
    EXPECT_EQ(m_Companion->showDuplicates(), nullptr);
    EXPECT_EQ(cancel.count(), 1);
    EXPECT_EQ(told(), "Nothing is known of duplicates: the search was cancelled.");
}

TEST_F(InTheDuplicates, AllControlsHaveNames)
{
    shown({"AC", "AC"}, {"a", "b"});
    for (const QWidget *const each : m_Dialog->findChildren<QWidget *>())
        EXPECT_TRUE(each->focusPolicy() == Qt::NoFocus || !each->accessibleName().isEmpty() ||
                    qobject_cast<const QPushButton *>(each) != nullptr)
            << each->metaObject()->className();
}

} // namespace DuplicatesDialogTest
