// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptRegion.h"

#include "CursorFixture.h"

#include "PluginValues.h"

namespace KeptRegionTest {

using companion::ColumnRange;
using companion::keepColumns;
using companion::keepNoColumns;
using companion::keptColumns;

class Kept : public CursorFixture
{
protected:
    [[nodiscard]] ColumnRange kept() const { return keptColumns(m_Shown).value_or(ColumnRange{}); }
    [[nodiscard]] QWidget *header() const { return m_Served->areaWidget(WindowArea::Header); }
    template <typename Edit> void edit(const Edit &edit)
    {
        {
            DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
            ASSERT_TRUE(change.m_good);
            edit();
        }
        QCoreApplication::processEvents();
    }
    template <typename IsKept> TAMBO::Alignment *copyOf(const IsKept &isKept)
    {
        std::vector<bool> columns(m_Shown.width());
        for (std::size_t col = 0; col < columns.size(); ++col)
            columns[col] = isKept(col);
        const DataPointBase guard(nullptr, Publisher::Add);
        return m_Shown.duplicate(std::vector<bool>(m_Shown.height(), true), columns, "part");
    }
    void keepByCommand() { m_Companion->editing().kept().keep(); }
};

TEST_F(Kept, AreTheColumnsOfTheBlock)
{
    cursor().setBlock({3, 5}, {6, 9});
    keepByCommand();
    EXPECT_EQ(kept(), ColumnRange(5, 10));
    EXPECT_TRUE(line().contains("6 to 10")) << line().toStdString();
}

TEST_F(Kept, AreThoseOfTheRangeWithoutABlock)
{
    m_Shown.range({20, 30});
    cursor().set(TAMBO::CellIndex{0, 0});
    keepByCommand();
    EXPECT_EQ(kept(), ColumnRange(20, 30));
}

TEST_F(Kept, AreNoneWithoutABlockAndARange)
{
    m_Shown.range({0, 0});
    keepByCommand();
    EXPECT_FALSE(keptColumns(m_Shown));
    EXPECT_TRUE(line().contains("block")) << line().toStdString();
    EXPECT_FALSE(history.canUndo());
}

TEST_F(Kept, AreKeptNoLongerByTheOtherCommand)
{
    keepColumns(m_Shown, {5, 10});
    m_Companion->editing().kept().keepNoLonger();
    EXPECT_FALSE(keptColumns(m_Shown));
    EXPECT_FALSE(keepNoColumns(m_Shown));
}

TEST_F(Kept, AreAStepOfUndo)
{
    keepColumns(m_Shown, {5, 10});
    keepColumns(m_Shown, {7, 12});
    EXPECT_FALSE(keepColumns(m_Shown, {7, 12}));
    history.undo();
    EXPECT_EQ(kept(), ColumnRange(5, 10));
    history.undo();
    EXPECT_FALSE(keptColumns(m_Shown));
}

TEST_F(Kept, AreMarkedOverTheCellsAndAboveThem)
{
    const QImage cellsBefore = pictureOf(cells());
    const QImage headerBefore = pictureOf(header());
    keepColumns(m_Shown, {5, 10});
    EXPECT_NE(pictureOf(cells()), cellsBefore);
    EXPECT_NE(pictureOf(header()), headerBefore);
    keepNoColumns(m_Shown);
    EXPECT_EQ(pictureOf(cells()), cellsBefore);
    EXPECT_EQ(pictureOf(header()), headerBefore);
}

TEST_F(Kept, AreInTheToolTipOfTheirHeader)
{
    keepColumns(m_Shown, {5, 10});
    const int height = header()->height() / 2;
    const auto tip = [&](unsigned long column) {
        return toolTipAt(header(), {m_Served->cellRect({0, column}).center().x(), height});
    };
    // One that has been seen stays for a moment.
    EXPECT_FALSE(tip(12).contains("6 to 10")) << tip(12).toStdString();
    EXPECT_TRUE(tip(7).contains("column 8") && tip(7).contains("6 to 10")) << tip(7).toStdString();
}

TEST_F(Kept, MoveAlongWithWhatComesAndGoesBeforeThem)
{
    keepColumns(m_Shown, {5, 10});
    edit([&] { m_Shown.insertGapCol(2, 3); });
    EXPECT_EQ(kept(), ColumnRange(8, 13));
    edit([&] { m_Shown.remove({0, 2}); });
    EXPECT_EQ(kept(), ColumnRange(6, 11));
    edit([&] { m_Shown.remove({0, 200}); });
    EXPECT_FALSE(keptColumns(m_Shown));
}

// Undo takes back both, and an edit behind it begins where it then is.
TEST_F(Kept, FollowUndoAndRedo)
{
    keepColumns(m_Shown, {5, 10});
    edit([&] { m_Shown.insertGapCol(2, 3); });
    history.undo();
    QCoreApplication::processEvents();
    EXPECT_EQ(kept(), ColumnRange(5, 10));
    history.redo();
    QCoreApplication::processEvents();
    EXPECT_EQ(kept(), ColumnRange(8, 13));
    history.undo();
    edit([&] { m_Shown.insertGapCol(0, 1); });
    EXPECT_EQ(kept(), ColumnRange(6, 11));
}

TEST_F(Kept, StayWhenManyRowsGo)
{
    keepColumns(m_Shown, {5, 10});
    std::vector<bool> rows(120, false);
    for (std::size_t row = 0; row < rows.size(); row += 2)
        rows[row] = true;
    edit([&] { m_Shown.removeRows(rows); });
    EXPECT_EQ(kept(), ColumnRange(5, 10));
}

TEST_F(Kept, StayWhenGapsMoveInManyRows)
{
    keepColumns(m_Shown, {5, 10});
    edit([&] {
        for (unsigned long row = 0; row < 120; ++row)
            m_Shown.insertGap(row, 200);
    });
    EXPECT_EQ(kept(), ColumnRange(5, 10));
}

TEST_F(Kept, AreKeptNoLongerWhenNobodyCanTellWhichTheyAre)
{
    keepColumns(m_Shown, {5, 10});
    std::vector<bool> columns(400, false);
    for (std::size_t col = 0; col < columns.size(); col += 2)
        columns[col] = true;
    edit([&] { m_Shown.removeColumns(columns); });
    EXPECT_FALSE(keptColumns(m_Shown));
    history.undo();
    EXPECT_EQ(kept(), ColumnRange(5, 10));
}

TEST_F(Kept, GoWithACopyOfTheAlignment)
{
    keepColumns(m_Shown, {5, 10});
    const TAMBO::Alignment *copy = nullptr;
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        copy = m_Shown.duplicate(10);
    }
    EXPECT_EQ(keptColumns(*copy), ColumnRange(5, 10));
}

TEST_F(Kept, AreTheSameColumnsInACopyThatLeavesOutOthers)
{
    keepColumns(m_Shown, {100, 120});
    const TAMBO::Alignment *const block = copyOf([](std::size_t col) { return col >= 90; });
    EXPECT_EQ(keptColumns(*block), ColumnRange(10, 30));
    const TAMBO::Alignment *const holes =
        copyOf([](std::size_t col) { return col != 10 && col != 50 && col != 105 && col != 200; });
    EXPECT_EQ(keptColumns(*holes), ColumnRange(98, 117));
    const TAMBO::Alignment *const without = copyOf([](std::size_t col) { return col < 100; });
    EXPECT_FALSE(keptColumns(*without));
    const TAMBO::Alignment *const scattered = copyOf([](std::size_t col) { return col % 2 == 0; });
    EXPECT_FALSE(keptColumns(*scattered)) << "more have gone than is known of it";
    EXPECT_EQ(kept(), ColumnRange(100, 120));
}

TEST_F(Kept, MoveWithTheNextEditWhenTheyCouldNotMoveWithOne)
{
    keepColumns(m_Shown, {5, 10});
    edit([&] {
        m_Shown.insertGapCol(2, 3);
        TAMBO::setObjectLocked(m_Shown, true);
    });
    TAMBO::setObjectLocked(m_Shown, false);
    EXPECT_EQ(kept(), ColumnRange(5, 10));
    edit([&] { m_Shown.insertGapCol(0, 1); });
    EXPECT_EQ(kept(), ColumnRange(9, 14));
    edit([&] { m_Shown.insertGapCol(0, 1); });
    EXPECT_EQ(kept(), ColumnRange(10, 15));
}

TEST_F(Kept, AreNoneWhenAValueIsNone)
{
    for (const char *const text : {"", "7", "7 ", "7 5", "5 5", "a b", "5 10 x", "-1 4", "900 950",
                                   "99999999999999999999999 5"}) {
        {
            DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
            PluginValues::Set(&m_Shown, "companion", "kept-columns", text);
        }
        EXPECT_FALSE(keptColumns(m_Shown)) << text;
    }
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        PluginValues::Set(&m_Shown, "companion", "kept-columns", "390 1000");
    }
    EXPECT_EQ(kept(), ColumnRange(390, 400));
}

} // namespace KeptRegionTest
