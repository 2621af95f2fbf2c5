// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompanionFixture.h"

namespace FindBarTest {

class InTheFindBar : public AlignmentCompanion
{
protected:
    InTheFindBar() { bar().ask(); }

    companion::FindBar &bar() { return m_Companion->find(); }
    // In the rows W, a gap and C follow each other again and again.
    void type(const QString &text)
    {
        bar().findChild<QLineEdit *>()->setText(text);
        while (bar().isSearching())
            QCoreApplication::processEvents();
    }
    QString state() { return bar().findChildren<QLabel *>().back()->text(); }
};

TEST_F(InTheFindBar, HitsAreCountedAsOneTypes)
{
    type("WC");
    const QString found = state();
    EXPECT_GT(found.section(' ', 0, 0).toInt(), 1000) << found.toStdString();
    EXPECT_TRUE(found.endsWith(" found")) << found.toStdString();
    type("WW");
    EXPECT_EQ(state(), "nothing found: allow mismatches, or look in names");
    type("");
    EXPECT_EQ(state(), "");
}

TEST_F(InTheFindBar, TheNextHitIsBroughtIntoSightAndFramed)
{
    type("VAE");
    const QImage before = pictureOf(m_Served->areaWidget(WindowArea::Cells));
    bar().next();
    EXPECT_TRUE(state().startsWith("1 of "));
    EXPECT_NE(pictureOf(m_Served->areaWidget(WindowArea::Cells)), before);
    bar().previous();
    const QString last = state();
    EXPECT_EQ(last.section(' ', 0, 0), last.section(' ', 2, 2));
    EXPECT_TRUE(m_Served->visibleCells().contains({119, m_Served->visibleCells().colBegin}));
}

TEST_F(InTheFindBar, TheFirstHitAmongNamesComesIntoSightWhileOneTypes)
{
    bar().findChildren<QComboBox *>().at(1)->setCurrentIndex(1);
    const QPoint before = m_Served->scrollPosition();
    type(QString::fromStdString(m_Shown.GetSeqName(100)));
    EXPECT_GE(m_Served->visibleCells().rowEnd, 101U);
    EXPECT_LE(m_Served->visibleCells().rowBegin, 100U);
    EXPECT_EQ(m_Served->scrollPosition().x(), before.x());
    EXPECT_EQ(state(), "1 found") << "nothing was gone to";
    QCoreApplication::processEvents();
    bar().next();
    EXPECT_EQ(state(), "1 of 1");
}

TEST_F(InTheFindBar, EachLetterMoreIsLookedForFromWhereTheTypingBegan)
{
    bar().findChildren<QComboBox *>().at(1)->setCurrentIndex(1);
    const QString far = QString::fromStdString(m_Shown.GetSeqName(110));
    const QString near = QString::fromStdString(m_Shown.GetSeqName(60));
    type(far);
    QCoreApplication::processEvents();
    EXPECT_GE(m_Served->visibleCells().rowEnd, 111U);
    type(near);
    EXPECT_TRUE(m_Served->visibleCells().contains({60, m_Served->visibleCells().colBegin}));
    // What is in sight is not moved.
    const QPoint place = m_Served->scrollPosition();
    type(QString::fromStdString(m_Shown.GetSeqName(60)).chopped(1));
    EXPECT_EQ(m_Served->scrollPosition(), place);
}

TEST_F(InTheFindBar, AHitInASequenceComesIntoSightAndAnEditScrollsNothing)
{
    std::vector<std::string> rows(60, std::string(400, 'A'));
    rows[50][350] = 'W';
    TAMBO::Alignment &shown = alignment(rows, "one");
    m_Window->Populate(&shown);
    QCoreApplication::processEvents();
    type("AWA");
    EXPECT_TRUE(m_Served->visibleCells().contains({50, 350}));
    m_Served->scrollTo({0, 0});
    QCoreApplication::processEvents();
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &shown);
        shown.insertGapCol(0, 1);
    }
    QCoreApplication::processEvents();
    while (bar().isSearching())
        QCoreApplication::processEvents();
    EXPECT_EQ(state(), "1 found");
    EXPECT_EQ(m_Served->scrollPosition(), QPoint(0, 0));
}

TEST_F(InTheFindBar, AnEditSearchesAnew)
{
    type("WC");
    bar().next();
    const QString before = state();
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.removeRow(0);
    }
    QCoreApplication::processEvents();
    while (bar().isSearching())
        QCoreApplication::processEvents();
    EXPECT_NE(state(), before);
    EXPECT_GT(state().section(' ', 0, 0).toInt(), 1000);
}

TEST_F(InTheFindBar, AMistakeIsTold)
{
    bar().findChildren<QComboBox *>().back()->setCurrentIndex(2);
    type("N-{P");
    EXPECT_EQ(state(), "Character 5: expected a letter or \"}\".");
}

TEST_F(InTheFindBar, AllHitsAreSelected)
{
    type("WC");
    bar().selectAll();
    EXPECT_TRUE(state().endsWith(" selected"));
    unsigned long selected = 0;
    for (unsigned long col = 0; col < m_Shown.width(); ++col) {
        const TAMBO::Compound *const residue = m_Shown.getItem(0, col);
        if (residue == nullptr)
            continue;
        const char letter = residue->TypeCode();
        EXPECT_TRUE(!residue->IsSelected() || letter == 'W' || letter == 'C') << letter;
        selected += residue->IsSelected() ? 1 : 0;
    }
    EXPECT_GT(selected, 30U);
}

TEST_F(InTheFindBar, SelectingAllCanBeCancelledAndThenSelectsNothing)
{
    TAMBO::Alignment &many = large(600, 60);
    ZEP::KALMO2 &window = show(many, {700, 400});
    Companion other(served(window));
    other.find().ask();
    other.find().findChild<QLineEdit *>()->setText("WC");
    ASSERT_TRUE(other.find().isSearching());
    const WithoutMoment withoutMoment;
    const CancelledProgress cancel(other.find());
    other.find().selectAll();
    EXPECT_EQ(cancel.count(), 1);
    for (unsigned long row = 0; row < many.height(); ++row)
        for (unsigned long col = 0; col < many.width(); ++col)
            if (const TAMBO::Compound *const residue = many.getItem(row, col))
                ASSERT_FALSE(residue->IsSelected());
}

TEST_F(InTheFindBar, EscapeClosesItAndTakesTheFramesAway)
{
    const QImage before = pictureOf(m_Served->areaWidget(WindowArea::Cells));
    type("A");
    EXPECT_NE(pictureOf(m_Served->areaWidget(WindowArea::Cells)), before);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(&bar(), &escape);
    EXPECT_TRUE(bar().isHidden());
    QCoreApplication::processEvents();
    EXPECT_EQ(pictureOf(m_Served->areaWidget(WindowArea::Cells)).copy(before.rect()).size(),
              before.size());
}

TEST_F(InTheFindBar, WhatWasFoundIsInTheListOfTheNextWindow)
{
    type("WC");
    bar().next();
    ZEP::KALMO2 &next = show(m_Shown, {700, 400});
    Companion other(served(next));
    EXPECT_EQ(other.find().findChild<QComboBox *>()->itemText(0), "WC");
}

} // namespace FindBarTest
