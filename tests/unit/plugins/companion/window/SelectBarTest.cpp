// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompanionFixture.h"

#include "IdentityDistances.h"

#include <QDoubleSpinBox>
#include <QSpinBox>
#include <QToolButton>

namespace SelectBarTest {

using companion::SelectBy;
using How = TAMBO::Alignment::Selecting;

class InTheSelectBar : public AlignmentCompanion
{
protected:
    companion::SelectBar &bar() { return m_Companion->selecting(); }
    void ask(SelectBy by)
    {
        bar().ask(by);
        count();
    }
    void count()
    {
        while (bar().isCounting())
            QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }
    QString state() { return bar().findChild<QLabel *>("State")->text(); }
    template <typename Widget> Widget &control(const char *name)
    {
        for (Widget *const each : bar().findChildren<Widget *>()) {
            if (each->accessibleName() == name)
                return *each;
        }
        throw std::runtime_error(name);
    }
    void set(const char *name, int value) { control<QSpinBox>(name).setValue(value); }
    void choose(const char *name, int place) { control<QComboBox>(name).setCurrentIndex(place); }
    void limit(double value)
    {
        bar().findChild<QDoubleSpinBox *>()->setValue(value);
        count();
    }
    [[nodiscard]] unsigned long selectedRows() const
    {
        unsigned long count = 0;
        for (unsigned long row = 0; row < m_Shown.height(); ++row)
            count += m_Shown.isRowSelected(row) ? 1 : 0;
        return count;
    }
    [[nodiscard]] unsigned long selectedColumns() const
    {
        unsigned long count = 0;
        for (unsigned long col = 0; col < m_Shown.width(); ++col)
            count += m_Shown.isColumnSelected(col) ? 1 : 0;
        return count;
    }
    void press(int key)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&bar(), &event);
    }
};

TEST_F(InTheSelectBar, ABlockIsFilledInWithWhatIsInSightAndSelected)
{
    const TAMBO::CellBlock seen = m_Served->visibleCells();
    ask(SelectBy::Block);
    EXPECT_EQ(control<QSpinBox>("First row").value(), int(seen.rowBegin + 1));
    EXPECT_EQ(control<QSpinBox>("Last row").value(), int(seen.rowEnd));
    EXPECT_EQ(control<QSpinBox>("Last column").value(), int(seen.colEnd));
    set("First row", 3);
    set("Last row", 5);
    set("First column", 11);
    set("Last column", 40);
    EXPECT_EQ(state(), "3 of 120 rows × 30 of 400 columns");
    press(Qt::Key_Return);
    EXPECT_EQ(state(), "Selected: 3 of 120 rows × 30 of 400 columns");
    for (unsigned long row = 0; row < 10; ++row)
        for (unsigned long col = 0; col < 60; ++col)
            if (const TAMBO::Compound *const residue = m_Shown.getItem(row, col))
                ASSERT_EQ(residue->IsSelected(), row >= 2 && row < 5 && col >= 10 && col < 40);
}

TEST_F(InTheSelectBar, ABlockIsFilledInWithTheColumnsOfTheRange)
{
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.range({100, 120});
    }
    ask(SelectBy::Block);
    EXPECT_EQ(control<QSpinBox>("First column").value(), 101);
    EXPECT_EQ(control<QSpinBox>("Last column").value(), 120);
}

TEST_F(InTheSelectBar, RowsLikeTheSelectedOneAreCountedAndSelected)
{
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.selectInRow(30, {0, 400});
    }
    QCursor::setPos(0, 0);
    ask(SelectBy::Likeness);
    ASSERT_EQ(control<QSpinBox>("Which row they are like").value(), 31);
    const std::string reference = m_Shown.GetSequence(30, false);
    for (const auto compared :
         {companion::IdentityOf::AlignedPairs, companion::IdentityOf::ShorterSequence}) {
        choose("What identical pairs are a share of",
               compared == companion::IdentityOf::AlignedPairs ? 0 : 1);
        for (const int percent : {90, 10, 100}) {
            limit(percent);
            unsigned long expected = 0;
            for (unsigned long row = 0; row < m_Shown.height(); ++row) {
                const std::vector<std::string> rows = {reference, m_Shown.GetSequence(row, false)};
                const double identity =
                    row == 30 ? 1 : 1 - companion::identityDistances(rows, compared)->at(0, 1);
                expected += identity * 100 >= percent - 1e-9 ? 1 : 0;
            }
            EXPECT_EQ(state(), QString("%1 of 120 rows are like %2")
                                   .arg(expected)
                                   .arg(QString::fromStdString(m_Shown.GetSeqName(30))));
            EXPECT_TRUE(bar().apply());
            EXPECT_EQ(selectedRows(), expected);
        }
    }
}

TEST_F(InTheSelectBar, TheRowUnderThePointerIsTheOneThatRowsAreLike)
{
    m_Window->activateWindow();
    QWidget *const cells = m_Served->areaWidget(WindowArea::Cells);
    if (!cells->isActiveWindow())
        GTEST_SKIP() << "no window is active here";
    const QRect place = m_Served->cellRect({4, 2});
    QCursor::setPos(cells->mapToGlobal(place.center()));
    ask(SelectBy::Likeness);
    EXPECT_EQ(control<QSpinBox>("Which row they are like").value(), 5);
}

TEST_F(InTheSelectBar, ColumnsByGapsAreAddedAndTakenOut)
{
    // No column of these rows has many.
    ask(SelectBy::Gaps);
    choose("At least or at most", 1);
    limit(100);
    EXPECT_EQ(state(), "400 of 400 columns");
    EXPECT_TRUE(bar().apply());
    EXPECT_EQ(selectedColumns(), 400U);
    limit(13);
    const unsigned long few = state().section(' ', 0, 0).toULong();
    EXPECT_GT(few, 0U);
    EXPECT_LT(few, 400U);
    choose("What becomes of the selection", 2);
    EXPECT_TRUE(bar().apply());
    EXPECT_EQ(state(), QString("Taken out of the selection: %1 of 400 columns").arg(few));
    EXPECT_EQ(selectedColumns(), 400 - few);
    choose("What becomes of the selection", 1);
    EXPECT_TRUE(bar().apply());
    EXPECT_EQ(selectedColumns(), 400U);
}

TEST_F(InTheSelectBar, ConservationHasALimitOfItsOwn)
{
    ask(SelectBy::Gaps);
    limit(20);
    ask(SelectBy::Conservation);
    EXPECT_EQ(bar().findChild<QDoubleSpinBox *>()->maximum(), 1);
    limit(0);
    EXPECT_EQ(state(), "400 of 400 columns");
    limit(1);
    EXPECT_EQ(state(), "0 of 400 columns");
    ask(SelectBy::Gaps);
    EXPECT_EQ(bar().findChild<QDoubleSpinBox *>()->value(), 20);
}

TEST_F(InTheSelectBar, RowsByNameAreCountedAsOneTypes)
{
    ask(SelectBy::Names);
    EXPECT_EQ(state(), "");
    auto &name = control<QLineEdit>("What the name is like");
    const QString first = QString::fromStdString(m_Shown.GetSeqName(0));
    name.setText(first.left(1));
    count();
    EXPECT_EQ(state(), "120 of 120 rows");
    name.setText("no such name");
    count();
    EXPECT_EQ(state(), "0 of 120 rows");
    choose("How the name is written", 2);
    name.setText("(");
    EXPECT_TRUE(state().startsWith("Character ")) << state().toStdString();
    EXPECT_FALSE(bar().apply());
    name.setText("^" + first + "$");
    count();
    EXPECT_TRUE(bar().apply());
    EXPECT_EQ(selectedRows(), state().section(' ', 1, 1).toULong());
    EXPECT_TRUE(m_Shown.isRowSelected(0));
}

TEST_F(InTheSelectBar, AnEditCountsAnew)
{
    ask(SelectBy::Names);
    control<QLineEdit>("What the name is like")
        .setText(QString::fromStdString(m_Shown.GetSeqName(0)).left(1));
    count();
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.removeRow(0);
    }
    QCoreApplication::processEvents();
    count();
    EXPECT_EQ(state(), "119 of 119 rows");
}

TEST_F(InTheSelectBar, CountingCanBeCancelledAndThenNothingChanges)
{
    TAMBO::Alignment &many = large(600, 300);
    ZEP::KALMO2 &window = show(many, {700, 400});
    Companion other(served(window));
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &many);
        many.selectInRow(1, {0, 300});
    }
    other.selecting().ask(SelectBy::Conservation);
    ASSERT_TRUE(other.selecting().isCounting());
    const WithoutMoment withoutMoment;
    const CancelledProgress cancel(other.selecting());
    EXPECT_FALSE(other.selecting().apply());
    EXPECT_EQ(cancel.count(), 1);
    EXPECT_TRUE(many.isRowSelected(1));
    EXPECT_FALSE(many.isRowSelected(0));
    EXPECT_TRUE(other.selecting().isCounting()) << "it goes on";
}

TEST_F(InTheSelectBar, SelectingIsNoStepOfUndo)
{
    const std::size_t position = history.position();
    ask(SelectBy::Block);
    EXPECT_TRUE(bar().apply());
    m_Companion->invertSelection();
    m_Companion->selectAll();
    EXPECT_EQ(selectedRows(), 120U);
    EXPECT_EQ(history.position(), position);
}

TEST_F(InTheSelectBar, OnlyTheControlsOfTheChoiceAreShownAndAllHaveNames)
{
    for (const SelectBy by : {SelectBy::Block, SelectBy::Likeness, SelectBy::Conservation,
                              SelectBy::Gaps, SelectBy::Names}) {
        ask(by);
        EXPECT_EQ(control<QSpinBox>("First row").isHidden(), by != SelectBy::Block);
        EXPECT_EQ(control<QLineEdit>("What the name is like").isHidden(), by != SelectBy::Names);
        EXPECT_EQ(bar().findChild<QDoubleSpinBox *>()->isHidden(),
                  by == SelectBy::Block || by == SelectBy::Names);
    }
    for (const QWidget *const each : bar().findChildren<QWidget *>()) {
        const bool isControl = qobject_cast<const QAbstractSpinBox *>(each) != nullptr ||
                               qobject_cast<const QComboBox *>(each) != nullptr;
        EXPECT_TRUE(!isControl || !each->accessibleName().isEmpty());
    }
}

TEST_F(InTheSelectBar, NoChoiceMakesTheWindowWider)
{
    m_Window->resize(420, 400);
    QCoreApplication::processEvents();
    const int before = m_Window->width();
    for (const SelectBy by : {SelectBy::Block, SelectBy::Likeness, SelectBy::Conservation,
                              SelectBy::Gaps, SelectBy::Names}) {
        ask(by);
        EXPECT_EQ(m_Window->width(), before);
        EXPECT_TRUE(bar().findChild<QLabel *>("State")->isVisible());
    }
}

TEST_F(InTheSelectBar, EscapeClosesIt)
{
    ask(SelectBy::Conservation);
    press(Qt::Key_Escape);
    EXPECT_TRUE(bar().isHidden());
    EXPECT_FALSE(bar().isCounting());
}

} // namespace SelectBarTest
