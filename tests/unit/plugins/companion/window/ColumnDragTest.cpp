// SPDX-License-Identifier: GPL-3.0-or-later
// Marking columns by dragging over the header, and what an empty window says.
#include "CompanionFixture.h"

#include "DataMaker.h"
#include "support/WaitUntil.h"

#include <QLabel>
#include <QTest>

namespace ColumnDragTest {

using Range = TAMBO::Alignment::Range;

class OverTheHeader : public AlignmentCompanion
{
protected:
    [[nodiscard]] QWidget *header() const { return m_Served->areaWidget(WindowArea::Header); }
    // In the line of the marks.
    [[nodiscard]] QPoint markOf(unsigned long column) const
    {
        const QSize cell = m_Served->cellSize();
        return {m_Served->cellRect({0, column}).center().x(),
                3 * cell.height() + cell.height() / 2};
    }
    void drag(unsigned long from, std::initializer_list<unsigned long> over,
              Qt::MouseButton button = Qt::LeftButton)
    {
        press(header(), button, markOf(from));
        unsigned long last = from;
        for (const unsigned long column : over) {
            move(header(), button, markOf(column));
            last = column;
        }
        release(header(), button, markOf(last));
        QCoreApplication::processEvents();
    }
    [[nodiscard]] std::vector<unsigned long> selected() const
    {
        std::vector<unsigned long> columns;
        for (unsigned long col = 0; col < m_Shown.width(); ++col)
            if (m_Shown.isColumnSelected(col))
                columns.push_back(col);
        return columns;
    }
    using Columns = std::vector<unsigned long>;
};

TEST_F(OverTheHeader, TheColumnsFromThePressToThePointerAreTheRangeAndSelected)
{
    drag(3, {4, 6, 8, 6});
    EXPECT_EQ(m_Shown.range(), Range(3, 7));
    EXPECT_EQ(selected(), (Columns{3, 4, 5, 6}));
}

TEST_F(OverTheHeader, TheDragGoesToTheLeftAsWell)
{
    drag(8, {7, 5});
    EXPECT_EQ(m_Shown.range(), Range(5, 9));
    EXPECT_EQ(selected(), (Columns{5, 6, 7, 8}));
}

TEST_F(OverTheHeader, APressThatDeselectsAColumnDeselectsAllThatTheDragMeets)
{
    drag(3, {8});
    drag(5, {7});
    EXPECT_EQ(m_Shown.range(), Range(5, 8));
    EXPECT_EQ(selected(), (Columns{3, 4, 8}));
}

TEST_F(OverTheHeader, EscapeGivesTheDragUp)
{
    press(header(), Qt::LeftButton, markOf(3));
    move(header(), Qt::LeftButton, markOf(6));
    ASSERT_EQ(m_Shown.range(), Range(3, 7));
    QTest::keyClick(m_Served->areaWidget(WindowArea::Cells)->parentWidget(), Qt::Key_Escape);
    EXPECT_EQ(m_Shown.range(), Range(3, 4));
    move(header(), Qt::LeftButton, markOf(8));
    release(header(), Qt::LeftButton, markOf(8));
    EXPECT_EQ(m_Shown.range(), Range(3, 4));
    EXPECT_EQ(selected(), Columns{3});
}

TEST_F(OverTheHeader, AClickMeansWhatItMeantWithoutIt)
{
    drag(3, {});
    EXPECT_EQ(m_Shown.range(), Range(3, 4));
    EXPECT_EQ(selected(), Columns{3});
    drag(3, {3});
    EXPECT_EQ(selected(), Columns());
    mouse(header(), QEvent::MouseButtonPress, Qt::LeftButton, markOf(6), Qt::LeftButton,
          Qt::ShiftModifier);
    move(header(), Qt::LeftButton, markOf(9));
    release(header(), Qt::LeftButton, markOf(9));
    EXPECT_EQ(m_Shown.range(), Range(3, 7)) << "with Shift it is the window's alone";
}

TEST_F(OverTheHeader, BesideTheColumnsItScrollsOn)
{
    press(header(), Qt::LeftButton, markOf(3));
    move(header(), Qt::LeftButton, {m_Served->visibleSize().width() + 30, markOf(3).y()});
    const unsigned long seen = m_Served->visibleCells().colEnd;
    ASSERT_TRUE(waitUntil([&] { return m_Shown.range().second > seen + 3; }));
    EXPECT_EQ(m_Shown.range().first, 3U);
    release(header(), Qt::LeftButton, {m_Served->visibleSize().width() + 30, markOf(3).y()});
    const Range marked = m_Shown.range();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_Shown.range(), marked);
}

TEST_F(OverTheHeader, NothingOfItIsAStepOfUndo)
{
    history.clear();
    drag(3, {8});
    EXPECT_FALSE(history.canUndo());
}

// ---- A window without cells

TEST_F(AlignmentCompanion, AnEmptyWindowSaysWhatToDo)
{
    const auto *const hint = m_Window->findChild<QLabel *>("EmptyHint");
    ASSERT_NE(hint, nullptr);
    EXPECT_FALSE(hint->isVisible()) << "there are cells";
    m_Window->Clear();
    QCoreApplication::processEvents();
    EXPECT_TRUE(hint->isVisible());
    EXPECT_TRUE(hint->text().contains("Get Alignment")) << hint->text().toStdString();
    EXPECT_EQ(hint->geometry(), m_Served->areaWidget(WindowArea::Cells)->rect());
    m_Window->resize(600, 300);
    QCoreApplication::processEvents();
    EXPECT_EQ(hint->geometry(), m_Served->areaWidget(WindowArea::Cells)->rect());
    m_Window->Populate(TAMBO::DataMaker::makeAlignment("none", {}));
    QCoreApplication::processEvents();
    EXPECT_TRUE(hint->text().contains("Add Seqs")) << hint->text().toStdString();
    m_Window->Populate(&m_Shown);
    QCoreApplication::processEvents();
    EXPECT_FALSE(hint->isVisible());
}

} // namespace ColumnDragTest
