// SPDX-License-Identifier: GPL-3.0-or-later
#include "TitleWidths.h"

#include <QDialog>
#include <QInputDialog>
#include <QLabel>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using TAMBO::services::TitleWidths;

namespace TitleWidthsTest {

// As the application's own, on one dialog.
class TitleWidthsTest : public ::testing::Test
{
protected:
    int shownWidth(QDialog &dialog)
    {
        dialog.installEventFilter(&m_Widths);
        dialog.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&dialog));
        return dialog.width();
    }

    struct Filter : TitleWidths
    {
        using TitleWidths::eventFilter;
    } m_Widths;
};

TEST_F(TitleWidthsTest, ABoxIsAsWideAsItsTitle)
{
    QInputDialog box;
    box.setWindowTitle("Renumber a sequence with a rather long name of its own");
    box.setLabelText("Number");
    EXPECT_LT(box.sizeHint().width(), TitleWidths::widthFor(box.windowTitle()));
    EXPECT_EQ(shownWidth(box), TitleWidths::widthFor(box.windowTitle()));
}

TEST_F(TitleWidthsTest, ABoxThatIsWiderStaysSo)
{
    QDialog box;
    box.setWindowTitle("x");
    box.resize(500, 100);
    EXPECT_EQ(shownWidth(box), 500);
}

TEST_F(TitleWidthsTest, ABoxOfAFixedSizeKeepsIt)
{
    QDialog box;
    box.setWindowTitle("A title that is wider than a hundred pixels");
    box.setFixedSize(100, 100);
    EXPECT_EQ(shownWidth(box), 100);
}

TEST_F(TitleWidthsTest, NoTitleMakesABoxWiderThanTheScreen)
{
    QDialog box;
    box.setWindowTitle(QString(5000, 'W'));
    EXPECT_LT(shownWidth(box), 5000);
}

} // namespace TitleWidthsTest
