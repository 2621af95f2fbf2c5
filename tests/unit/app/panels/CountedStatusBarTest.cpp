// SPDX-License-Identifier: GPL-3.0-or-later
#include "CountedStatusBar.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMainWindow>

#include <gtest/gtest.h>

namespace CountedStatusBarTest {

using TAMBO::app::CountedStatusBar;

class CountedStatusBarTest : public testing::Test
{
protected:
    CountedStatusBarTest()
    {
        m_Notice->hide();
        m_Bar->addNotice(m_Notice);
        m_Window.setStatusBar(m_Bar);
        m_Bar->setCount("9 structures, 3 alignments, 1,024 sequences");
        m_Window.show();
        widen(4 * advance(m_Count->text()));
    }

    int advance(const QString &text) const { return m_Bar->fontMetrics().horizontalAdvance(text); }
    void widen(int width)
    {
        m_Window.resize(width, 100);
        settle();
    }
    static void settle()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    // A text that takes about so many pixels.
    QString text(int width) const { return QString(std::max(1, width / advance("x")), 'x'); }

    CountedStatusBar *const m_Bar = new CountedStatusBar;
    QLabel *const m_Notice = new QLabel;
    QLabel *const m_Count = m_Bar->findChild<QLabel *>("ObjectCount");
    QMainWindow m_Window;
};

TEST_F(CountedStatusBarTest, AShortMessageStandsBesideTheCount)
{
    m_Bar->showMessage("Opened");
    settle();
    EXPECT_FALSE(m_Count->isHidden());
    EXPECT_EQ(m_Bar->shownMessage(), "Opened");
}

TEST_F(CountedStatusBarTest, AMessageThatWouldTouchTheCountHidesIt)
{
    const int beside = m_Bar->width() - m_Count->sizeHint().width();
    const QString said = text(beside - advance("x"));
    m_Bar->showMessage(said);
    settle();
    EXPECT_TRUE(m_Count->isHidden());
    EXPECT_EQ(m_Bar->shownMessage(), said);
    m_Bar->clearMessage();
    EXPECT_FALSE(m_Count->isHidden());
}

TEST_F(CountedStatusBarTest, ANoticeThatComesWhileAMessageStandsHidesTheCountAsWell)
{
    const QString said = text(m_Bar->width() - 2 * m_Count->sizeHint().width());
    m_Bar->showMessage(said);
    settle();
    ASSERT_FALSE(m_Count->isHidden());
    m_Notice->setText(m_Count->text());
    m_Notice->show();
    settle();
    EXPECT_TRUE(m_Count->isHidden());
    EXPECT_EQ(m_Bar->shownMessage(), said);
    m_Notice->hide();
    settle();
    EXPECT_FALSE(m_Count->isHidden());
}

TEST_F(CountedStatusBarTest, ACountThatGrowsWhileAMessageStandsGivesWay)
{
    m_Bar->setCount("1");
    const QString said = text(m_Bar->width() - advance("1") - 100);
    m_Bar->showMessage(said);
    settle();
    ASSERT_FALSE(m_Count->isHidden());
    m_Bar->setCount("1 structure, 1 alignment, 13,600 sequences");
    EXPECT_TRUE(m_Count->isHidden());
}

TEST_F(CountedStatusBarTest, AMessageThatTheNoticesLeaveNoRoomForEndsInAnEllipsisBeforeThem)
{
    m_Notice->setText(m_Count->text());
    m_Notice->show();
    const QString said = text(m_Bar->width() - advance("xx"));
    m_Bar->showMessage(said);
    settle();
    const QString shown = m_Bar->shownMessage();
    EXPECT_TRUE(shown.endsWith(u'…')) << shown.toStdString();
    EXPECT_LT(advance(shown), m_Notice->x());
    EXPECT_TRUE(m_Bar->toolTip().contains(said));
    EXPECT_EQ(m_Bar->currentMessage(), said);
    // Nothing of it is painted on the last pixels before the notice.
    const QImage with = m_Bar->grab({m_Notice->x() - 4, 0, 4, m_Bar->height()}).toImage();
    m_Bar->clearMessage();
    settle();
    EXPECT_EQ(with, m_Bar->grab({m_Notice->x() - 4, 0, 4, m_Bar->height()}).toImage());
}

TEST_F(CountedStatusBarTest, AWindowThatIsMadeNarrowKeepsTheMessageAndGivesUpTheCount)
{
    const QString said = text(m_Count->sizeHint().width());
    m_Bar->showMessage(said);
    settle();
    ASSERT_FALSE(m_Count->isHidden());
    widen(m_Count->sizeHint().width() + 100);
    EXPECT_TRUE(m_Count->isHidden());
    EXPECT_EQ(m_Bar->shownMessage(), said);
    widen(4 * m_Count->sizeHint().width());
    EXPECT_FALSE(m_Count->isHidden());
}

} // namespace CountedStatusBarTest
