// SPDX-License-Identifier: GPL-3.0-or-later
// The cells of a window as assistive technology reads them, against the alignment.
#include "GridAccess.h"

#include "../window/CompanionFixture.h"
#include "CellCursor.h"
#include "support/WaitUntil.h"

#include <QAccessible>

#include <random>

namespace GridAccessTest {

using companion::Grid;

class GridOfAWindow : public AlignmentCompanion
{
protected:
    ~GridOfAWindow() override { QAccessible::setActive(false); }

    [[nodiscard]] QWidget *view() const
    {
        return m_Served->areaWidget(WindowArea::Cells)->parentWidget();
    }
    [[nodiscard]] QAccessibleInterface *table() const
    {
        return QAccessible::queryAccessibleInterface(view());
    }
    [[nodiscard]] QAccessibleTableInterface &rows() const { return *table()->tableInterface(); }
    [[nodiscard]] QAccessibleInterface *cell(int row, int col) const
    {
        return rows().cellAt(row, col);
    }
    // Alone, and heard by the test.
    void listen()
    {
        m_Companion.reset();
        m_Access = std::make_unique<companion::GridAccess>(
            *m_Served, [this](QAccessibleEvent &event) { m_Heard.push_back(event.type()); });
    }
    [[nodiscard]] bool hasHeard(QAccessible::Event type) const
    {
        return std::ranges::find(m_Heard, type) != m_Heard.end();
    }

    std::vector<QAccessible::Event> m_Heard;
    std::unique_ptr<companion::GridAccess> m_Access;
};

TEST_F(GridOfAWindow, IsATableWithTheNameAndTheSizeOfTheAlignment)
{
    ASSERT_NE(table()->tableInterface(), nullptr);
    EXPECT_EQ(table()->role(), QAccessible::Table);
    EXPECT_TRUE(table()->isValid());
    EXPECT_EQ(table()->text(QAccessible::Name), "Alignment large");
    EXPECT_EQ(table()->text(QAccessible::Description), "120 rows, 400 columns");
    EXPECT_EQ(rows().rowCount(), 120);
    EXPECT_EQ(rows().columnCount(), 400);
}

TEST_F(GridOfAWindow, CellsHaveTheirLettersTheirHeadersAndTheirPlaces)
{
    std::mt19937 random(7);
    for (int i = 0; i < 300; ++i) {
        const auto row = random() % m_Served->rows();
        const auto col = random() % m_Served->columns();
        QAccessibleInterface *const found = cell(int(row), int(col));
        ASSERT_NE(found, nullptr);
        const char letter = m_Shown.letterAt(row, col);
        EXPECT_EQ(found->text(QAccessible::Name).toStdString(),
                  letter == '\0' ? "gap" : std::string(1, letter));
        EXPECT_EQ(found->role(), QAccessible::Cell);
        EXPECT_EQ(found->parent(), table());
        EXPECT_EQ(table()->child(table()->indexOfChild(found)), found);
        EXPECT_EQ(cell(int(row), int(col)), found);
        const QAccessibleTableCellInterface &place = *found->tableCellInterface();
        EXPECT_EQ(place.rowIndex(), int(row));
        EXPECT_EQ(place.columnIndex(), int(col));
        EXPECT_EQ(place.table(), table());
        ASSERT_EQ(place.rowHeaderCells().size(), 1);
        EXPECT_EQ(place.rowHeaderCells().front()->text(QAccessible::Name).toStdString(),
                  m_Shown.GetSeqName(row));
        EXPECT_EQ(place.rowHeaderCells().front()->role(), QAccessible::RowHeader);
        ASSERT_EQ(place.columnHeaderCells().size(), 1);
        const QString column = place.columnHeaderCells().front()->text(QAccessible::Name);
        EXPECT_EQ(column.section(',', 0, 0), QString("Column %1").arg(col + 1));
        EXPECT_EQ(column.contains("number"), m_Shown.letterAt(0, col) != '\0');
        EXPECT_EQ(rows().columnDescription(int(col)), column);
        const QRect rect = m_Served->cellRect({row, col});
        EXPECT_EQ(found->rect().topLeft(),
                  m_Served->areaWidget(WindowArea::Cells)->mapToGlobal(rect.topLeft()));
        EXPECT_EQ(found->state().offscreen, !m_Served->visibleCells().contains({row, col}));
    }
}

TEST_F(GridOfAWindow, AColumnHasTheResidueNumberThatStandsAboveIt)
{
    // Of the first row, in which gaps stand before it.
    unsigned long residues = m_Shown.residueCount(0, 100);
    unsigned long col = 100;
    while (m_Shown.letterAt(0, col) == '\0')
        ++col;
    ASSERT_LT(residues, col);
    EXPECT_EQ(rows().columnDescription(int(col)),
              QString("Column %1, number %2").arg(col + 1).arg(residues + 1));
}

TEST_F(GridOfAWindow, TheDescriptionOfACellIsWhatTheLineUnderThePointerSays)
{
    const QString text = cell(2, 5)->text(QAccessible::Description);
    EXPECT_TRUE(text.startsWith("s2")) << text.toStdString();
    EXPECT_TRUE(text.contains("row 3 of 120")) << text.toStdString();
    EXPECT_TRUE(text.contains("column 6 of 400")) << text.toStdString();
}

TEST_F(GridOfAWindow, NothingIsBeyondTheLastRowAndTheLastColumn)
{
    EXPECT_EQ(cell(120, 0), nullptr);
    EXPECT_EQ(cell(0, 400), nullptr);
    EXPECT_EQ(cell(-1, 0), nullptr);
    EXPECT_EQ(cell(0, -1), nullptr);
    EXPECT_EQ(table()->child(-1), nullptr);
    EXPECT_EQ(table()->child(121 * 401), nullptr);
    EXPECT_NE(table()->child(121 * 401 - 1), nullptr);
    EXPECT_FALSE(rows().selectRow(120));
    EXPECT_FALSE(rows().selectColumn(-1));
    EXPECT_FALSE(rows().isRowSelected(120));
    EXPECT_FALSE(rows().isColumnSelected(400));
    EXPECT_TRUE(rows().rowDescription(-1).isEmpty());
}

TEST_F(GridOfAWindow, RowsAndColumnsAreSelectedAsByHand)
{
    EXPECT_TRUE(rows().selectRow(3));
    EXPECT_TRUE(m_Shown.isRowSelected(3));
    EXPECT_TRUE(rows().isRowSelected(3));
    EXPECT_EQ(rows().selectedRows(), QList<int>{3});
    EXPECT_EQ(rows().selectedRowCount(), 1);
    int selected = 0;
    for (unsigned long col = 0; col < m_Shown.width(); ++col) {
        const bool isResidue = m_Shown.letterAt(3, col) != '\0';
        EXPECT_EQ(cell(3, int(col))->state().selected, isResidue);
        selected += isResidue && m_Served->visibleCells().contains({3, col}) ? 1 : 0;
    }
    EXPECT_EQ(rows().selectedCellCount(), selected);
    EXPECT_EQ(rows().selectedCells().size(), selected);
    EXPECT_TRUE(rows().unselectRow(3));
    EXPECT_FALSE(m_Shown.isRowSelected(3));

    EXPECT_TRUE(rows().selectColumn(4));
    EXPECT_TRUE(m_Shown.isColumnSelected(4));
    EXPECT_EQ(rows().selectedColumns(), QList<int>{4});
    EXPECT_TRUE(rows().unselectColumn(4));
    EXPECT_EQ(rows().selectedColumnCount(), 0);
}

TEST_F(GridOfAWindow, TheCellUnderAPlaceOfTheScreenIsFound)
{
    const QRect place = cell(2, 7)->rect();
    EXPECT_EQ(table()->childAt(place.center().x(), place.center().y()), cell(2, 7));
    const QPoint outside = view()->mapToGlobal(QPoint(-50, 5));
    EXPECT_EQ(table()->childAt(outside.x(), outside.y()), nullptr);
}

TEST_F(GridOfAWindow, OnlyWhatIsAskedForIsMade)
{
    listen();
    QAccessible::setActive(true);
    m_Served->scrollTo({500, 500});
    QCoreApplication::processEvents();
    EXPECT_EQ(table()->childCount(), int(Grid::kMostKept));
    EXPECT_EQ(m_Access->grid().kept(), 0U);
    (void)cell(100, 300);
    (void)cell(100, 300);
    EXPECT_EQ(m_Access->grid().kept(), 1U);
}

TEST_F(GridOfAWindow, TheOldestGoWhenManyHaveBeenRead)
{
    const QAccessible::Id first = QAccessible::uniqueId(cell(0, 0));
    for (std::size_t i = 1; i <= Grid::kMostKept; ++i)
        ASSERT_NE(cell(int(i / 400), int(i % 400)), nullptr);
    EXPECT_LE(m_Companion->access().grid().kept(), Grid::kMostKept);
    EXPECT_EQ(QAccessible::accessibleInterface(first), nullptr);
    const char letter = m_Shown.letterAt(0, 0);
    EXPECT_EQ(cell(0, 0)->text(QAccessible::Name), QString(QLatin1Char(letter)));
}

TEST_F(GridOfAWindow, CellsOfColumnsThatAreGoneAreInvalid)
{
    QAccessibleInterface *const gone = cell(5, 350);
    QAccessibleInterface *const left = cell(5, 250);
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.remove({300, 400});
    }
    EXPECT_FALSE(gone->isValid());
    EXPECT_TRUE(gone->text(QAccessible::Name).isEmpty());
    EXPECT_TRUE(gone->text(QAccessible::Description).isEmpty());
    EXPECT_TRUE(gone->state().invalid);
    EXPECT_FALSE(gone->tableCellInterface()->isSelected());
    EXPECT_TRUE(gone->tableCellInterface()->rowHeaderCells().isEmpty());
    EXPECT_TRUE(gone->tableCellInterface()->columnHeaderCells().isEmpty());
    EXPECT_EQ(gone->parent(), nullptr);
    EXPECT_EQ(gone->window(), nullptr);
    EXPECT_TRUE(gone->rect().isEmpty());
    EXPECT_EQ(table()->indexOfChild(gone), -1);
    EXPECT_EQ(cell(5, 350), nullptr);
    EXPECT_TRUE(left->isValid());
    QCoreApplication::processEvents();
    EXPECT_EQ(rows().columnCount(), 300);
}

TEST_F(GridOfAWindow, WithoutAnAlignmentThereAreNoCells)
{
    QAccessibleInterface *const gone = cell(5, 35);
    ASSERT_TRUE(QMetaObject::invokeMethod(m_Window, "Clear"));
    QCoreApplication::processEvents();
    ASSERT_EQ(m_Served->alignment(), nullptr);
    EXPECT_FALSE(gone->isValid());
    EXPECT_TRUE(gone->text(QAccessible::Name).isEmpty());
    EXPECT_EQ(rows().rowCount(), 0);
    EXPECT_EQ(rows().columnCount(), 0);
    EXPECT_EQ(table()->childCount(), 0);
    EXPECT_EQ(table()->child(0), nullptr);
    EXPECT_FALSE(rows().selectRow(0));
    EXPECT_EQ(rows().selectedCellCount(), 0);
    EXPECT_EQ(table()->text(QAccessible::Description), "No alignment is shown.");
}

TEST_F(GridOfAWindow, NothingIsLeftWhenTheWindowGoes)
{
    const QAccessible::Id ofTable = QAccessible::uniqueId(table());
    const QAccessible::Id ofCell = QAccessible::uniqueId(cell(5, 35));
    m_Companion.reset();
    EXPECT_EQ(QAccessible::accessibleInterface(ofTable), nullptr);
    EXPECT_EQ(QAccessible::accessibleInterface(ofCell), nullptr);
    // The widget is what the editor has made.
    EXPECT_EQ(table()->tableInterface(), nullptr);
}

TEST_F(GridOfAWindow, TwoWindowsHaveATableEach)
{
    ZEP::KALMO2 &next = show(alignment({"AC-", "WWW"}, "small"), {700, 400});
    const Companion other(served(next));
    QWidget *const second = served(next).areaWidget(WindowArea::Cells)->parentWidget();
    const QAccessibleInterface *const small = QAccessible::queryAccessibleInterface(second);
    ASSERT_NE(small->childCount(), 0);
    EXPECT_EQ(small->childCount(), 3 * 4);
    EXPECT_EQ(rows().rowCount(), 120);
    EXPECT_EQ(table()->indexOfChild(small->child(5)), -1);
}

TEST_F(GridOfAWindow, ClientsHearOfScrollingEditsSelectionAndTheCursor)
{
    listen();
    QAccessible::setActive(true);
    QApplication::setActiveWindow(m_Window);
    m_Served->scrollTo({500, 500});
    QCoreApplication::processEvents();
    EXPECT_TRUE(hasHeard(QAccessible::VisibleDataChanged));
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.insertGapCol(0, 1);
    }
    waitUntil([this] { return hasHeard(QAccessible::TableModelChanged); });
    m_Heard.clear();
    rows().selectRow(3);
    waitUntil([this] { return hasHeard(QAccessible::SelectionWithin); });
    m_Heard.clear();
    view()->setFocus();
    m_Access->setCursor(TAMBO::CellIndex{2, 3});
    EXPECT_TRUE(hasHeard(QAccessible::Focus));
    EXPECT_EQ(table()->focusChild(), cell(2, 3));
    EXPECT_TRUE(cell(2, 3)->state().focused);
    EXPECT_FALSE(cell(2, 4)->state().focused);
    m_Access->setCursor(std::nullopt);
    EXPECT_EQ(table()->focusChild(), nullptr);
}

TEST_F(GridOfAWindow, WithoutAClientNothingIsToldAndNothingMade)
{
    listen();
    QApplication::setActiveWindow(m_Window);
    view()->setFocus();
    m_Served->scrollTo({500, 500});
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.insertGapCol(0, 1);
    }
    m_Access->setCursor(TAMBO::CellIndex{2, 3});
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_Heard.empty());
    EXPECT_EQ(m_Access->grid().kept(), 0U);
    EXPECT_FALSE(m_Access->grid().hasTable());
}

} // namespace GridAccessTest
