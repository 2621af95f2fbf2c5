// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsoleOutput.h"

#include "ConsoleColors.h"

#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>

#include <gtest/gtest.h>

namespace ConsoleOutputTest {

using namespace TAMBO::app;

OutputLines::News lines(int from, int to, LineKind kind = LineKind::Output)
{
    OutputLines::News news;
    for (int i = from; i < to; ++i)
        news.lines.push_back({QString::number(i), kind});
    return news;
}

class ConsoleOutputTest : public testing::Test
{
protected:
    ConsoleOutputTest()
    {
        m_Output.resize(300, 200);
        m_Output.QWidget::show();
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QPoint middleOf(int line) const
    {
        QTextCursor cursor(m_Output.document()->findBlockByNumber(line));
        cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, 4);
        return m_Output.cursorRect(cursor).center();
    }

    ConsoleOutput m_Output;
};

TEST_F(ConsoleOutputTest, LinesKeepTheirKindsAndCanBeRead)
{
    m_Output.show(
        {false, {{"a", LineKind::Output}, {"bad", LineKind::Error}, {"b", LineKind::Output}}});
    EXPECT_EQ(m_Output.toPlainText(), "a\nbad\nb");
    EXPECT_EQ(m_Output.kindOf(0), LineKind::Output);
    EXPECT_EQ(m_Output.kindOf(1), LineKind::Error);
    EXPECT_EQ(m_Output.kindOf(2), LineKind::Output);
}

TEST_F(ConsoleOutputTest, ALineThatGoesOnIsReplaced)
{
    m_Output.show({false, {{"first", LineKind::Output}, {"10 %", LineKind::Error}}});
    m_Output.show({true, {{"20 %", LineKind::Error}, {"next", LineKind::Output}}});
    EXPECT_EQ(m_Output.toPlainText(), "first\n20 %\nnext");
    EXPECT_EQ(m_Output.kindOf(1), LineKind::Error);
    EXPECT_EQ(m_Output.kindOf(2), LineKind::Output);
}

TEST_F(ConsoleOutputTest, TheViewFollowsTheEnd)
{
    m_Output.show(lines(0, 500));
    const QScrollBar *const bar = m_Output.verticalScrollBar();
    EXPECT_GT(bar->maximum(), 0);
    EXPECT_EQ(bar->value(), bar->maximum());
    m_Output.show(lines(500, 600));
    EXPECT_EQ(bar->value(), bar->maximum());
}

TEST_F(ConsoleOutputTest, TheViewFollowsTheEndOfLinesThatAreWrapped)
{
    const QScrollBar *const bar = m_Output.verticalScrollBar();
    QTextCursor last(m_Output.document());
    for (int i = 0; i < 60; ++i) {
        const QString text = QString("line %1 of what was written ").arg(i).repeated(1 + i % 7);
        m_Output.show({false, {{"Traceback:", LineKind::Error}, {text, LineKind::Output}}});
        if (i % 3 == 0)
            QCoreApplication::processEvents();
        if (i % 10 == 0)
            m_Output.resize(200 + 7 * i, 120 + i);
        EXPECT_EQ(bar->value(), bar->maximum()) << i;
        last.movePosition(QTextCursor::End);
        EXPECT_TRUE(m_Output.viewport()->rect().contains(m_Output.cursorRect(last).center())) << i;
    }
}

TEST_F(ConsoleOutputTest, WhatWasWrittenBeforeItIsShownFirstIsShownByItsEnd)
{
    ConsoleOutput output;
    output.resize(300, 200);
    const QString text = QString("what was written ").repeated(9);
    for (int i = 0; i < 50; ++i)
        output.show({false, {{text, LineKind::Output}}});
    output.QWidget::show();
    QCoreApplication::processEvents();
    const QScrollBar *const bar = output.verticalScrollBar();
    EXPECT_EQ(bar->value(), bar->maximum());
    output.hide();
    for (int i = 0; i < 50; ++i)
        output.show({false, {{text, LineKind::Output}}});
    output.resize(220, 90);
    output.QWidget::show();
    QCoreApplication::processEvents();
    output.show({false, {{text, LineKind::Output}}});
    EXPECT_EQ(bar->value(), bar->maximum());
    QTextCursor last(output.document());
    last.movePosition(QTextCursor::End);
    EXPECT_TRUE(output.viewport()->rect().contains(output.cursorRect(last).center()));
}

TEST_F(ConsoleOutputTest, WhoeverHasScrolledUpAndTypesSeesWhatComesOfIt)
{
    m_Output.show(lines(0, 500));
    QScrollBar *const bar = m_Output.verticalScrollBar();
    bar->setValue(0);
    m_Output.show(lines(500, 501));
    EXPECT_EQ(bar->value(), 0);
    m_Output.show({false, {{">>> 1", LineKind::Input}, {"1", LineKind::Output}}});
    EXPECT_EQ(bar->value(), bar->maximum());
    m_Output.show(lines(501, 600));
    EXPECT_EQ(bar->value(), bar->maximum());
}

TEST_F(ConsoleOutputTest, AReaderWhoHasScrolledUpStaysWithHisLine)
{
    m_Output.show(lines(0, ConsoleOutput::kMostLines));
    QScrollBar *const bar = m_Output.verticalScrollBar();
    bar->setValue(5000);
    const auto topLine = [&] { return m_Output.cursorForPosition({20, 6}).block().text(); };
    const QString read = topLine();
    // A thousand lines above go.
    m_Output.show(lines(ConsoleOutput::kMostLines, ConsoleOutput::kMostLines + 1000));
    EXPECT_EQ(m_Output.blockCount(), ConsoleOutput::kMostLines);
    EXPECT_EQ(topLine(), read);
    EXPECT_EQ(m_Output.document()->firstBlock().text(), "1000");
}

TEST_F(ConsoleOutputTest, ErrorsAreMarkedBesideTheText)
{
    m_Output.show({false, {{"fine", LineKind::Output}}});
    QCoreApplication::processEvents();
    // Left of the text.
    const QRect strip(m_Output.contentsRect().topLeft(),
                      QSize(m_Output.viewport()->x() - m_Output.contentsRect().x(),
                            m_Output.viewport()->height()));
    ASSERT_GT(strip.width(), 4);
    const auto inkIn = [&] {
        const QImage image = m_Output.grab(strip).toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y) == m_Output.palette().color(QPalette::Base) ? 0 : 1;
        return count;
    };
    EXPECT_EQ(inkIn(), 0);
    m_Output.show({false, {{"bad", LineKind::Error}}});
    EXPECT_GT(inkIn(), 0);
}

TEST_F(ConsoleOutputTest, ColorsCanBeReadOnBrightAndOnDarkGround)
{
    for (const char *ground : {"#ffffff", "#eeeeee", "#1e1e1e", "#000000", "#31363b"}) {
        QPalette palette;
        palette.setColor(QPalette::Base, QColor(ground));
        palette.setColor(QPalette::Text, QColor(ground).lightness() > 127 ? Qt::black : Qt::white);
        EXPECT_GE(contrastOf(errorColor(palette), QColor(ground)), kLeastContrast) << ground;
        EXPECT_GE(contrastOf(noticeColor(palette), QColor(ground)), kLeastContrast) << ground;
    }
    EXPECT_NEAR(contrastOf(Qt::black, Qt::white), 21, 0.01);
}

TEST_F(ConsoleOutputTest, LinesTakeTheColorsOfANewPalette)
{
    m_Output.show({false, {{"bad", LineKind::Error}}});
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::black);
    palette.setColor(QPalette::Text, Qt::white);
    m_Output.setPalette(palette);
    QTextCursor cursor(m_Output.document());
    cursor.movePosition(QTextCursor::NextCharacter);
    EXPECT_EQ(cursor.charFormat().foreground().color(), errorColor(palette));
}

TEST_F(ConsoleOutputTest, AClickOnAPlaceGivesTheTextOfItsLine)
{
    m_Output.show({false,
                   {{"Traceback (most recent call last):", LineKind::Error},
                    {"  File \"/a/sites.py\", line 12, in <module>", LineKind::Error},
                    {"    print(rows[9])", LineKind::Error},
                    {"IndexError: no such row", LineKind::Error}}});
    m_Output.resize(900, 200);
    QCoreApplication::processEvents();
    QSignalSpy places(&m_Output, &ConsoleOutput::placeClicked);
    QTest::mouseClick(m_Output.viewport(), Qt::LeftButton, {}, middleOf(0));
    EXPECT_EQ(places.count(), 0);
    QTest::mouseClick(m_Output.viewport(), Qt::LeftButton, {}, middleOf(1));
    ASSERT_EQ(places.count(), 1);
    EXPECT_EQ(places[0], (QVariantList{"/a/sites.py", 12, "print(rows[9])"}));
}

} // namespace ConsoleOutputTest
