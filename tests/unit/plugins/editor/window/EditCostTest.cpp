// SPDX-License-Identifier: GPL-3.0-or-later
// What an edit costs: as much as the screen shows, however many rows and columns there are. Counted
// in items that exist and in cells that are read to be painted.
#include "Hands.h"
#include "WindowFixture.h"

#include "AlignmentWindow.h"
#include "QCanvasItem.h"

namespace EditCostTest {

// Items that exist after what is done, and cells painted by it.
struct Cost
{
    const char *what = nullptr;
    unsigned long items = 0;
    unsigned long cells = 0;
};

class EditCost : public WindowFixture
{
protected:
    std::vector<Cost> costsOf(unsigned long rows, unsigned long columns)
    {
        std::string row;
        while (row.size() < columns)
            row += "ACD-EFGHI--KLMNPQRST";
        row.resize(columns);
        // As wide, whatever is dragged.
        row.back() = '-';
        TAMBO::Alignment &shown = alignment(Texts(rows, row));
        const unsigned long before = QCanvasItem::aliveCount();
        ZEP::KALMO2 &window = show(shown, {900, 500});
        const WindowParts parts(window);
        const Hands hands(window);
        std::vector<Cost> costs;
        const auto note = [&](const char *what, const auto &act) {
            const unsigned long painted = parts.cells->cellsPainted();
            act();
            returnToEventLoop();
            costs.push_back(
                {what, QCanvasItem::aliveCount() - before, parts.cells->cellsPainted() - painted});
        };
        const MessageRecorder quiet;
        note("populated", [] {});
        note("a gap moved", [&] { hands.drag(Hands::kLeft, 2, 3, 8); });
        note("that undone", [&] { history.undo(); });
        note("that redone", [&] { history.redo(); });
        note("a gap put in", [&] { hands.clickCell(Hands::kMiddle, 3, 5); });
        note("a row moved", [&] { hands.dragName(1, 4); });
        note("that undone", [&] { history.undo(); });
        note("a column put in", [&] { hands.clickMark(Hands::kMiddle, 6); });
        note("that undone", [&] { history.undo(); });
        note("a column selected", [&] { hands.clickMark(Hands::kLeft, 6); });
        note("a gap moved beside what is selected", [&] { hands.drag(Hands::kLeft, 2, 8, 3); });
        auto &seen = *TAMBO::AlignmentWindow::Of(&window);
        note("larger cells", [&] { seen.setCellSize(2 * seen.ownCellSize()); });
        EXPECT_EQ(shown.height(), rows);
        closeWindows();
        EXPECT_EQ(QCanvasItem::aliveCount(), before);
        return costs;
    }

private:
    static void returnToEventLoop()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

TEST_F(EditCost, DoesNotGrowWithRowsOrColumns)
{
    const std::vector<Cost> small = costsOf(100, 500);
    for (const auto &[rows, columns] :
         {std::pair(100'000UL, 200UL), std::pair(100UL, 100'000UL), std::pair(2'000UL, 2'000UL)}) {
        SCOPED_TRACE(testing::Message() << rows << " x " << columns);
        const std::vector<Cost> large = costsOf(rows, columns);
        ASSERT_EQ(large.size(), small.size());
        for (std::size_t i = 0; i < small.size(); ++i) {
            EXPECT_GT(large[i].items, 0U) << small[i].what;
            EXPECT_LE(large[i].items, small[i].items) << small[i].what;
            EXPECT_LE(large[i].cells, small[i].cells) << small[i].what;
        }
    }
}

TEST_F(EditCost, PopulatingMakesTheMarkerAlone)
{
    const unsigned long before = QCanvasItem::aliveCount();
    const ZEP::KALMO2 &window = open(alignment(Texts(200, std::string(3000, 'A'))));
    EXPECT_EQ(QCanvasItem::aliveCount() - before, 1U);
    EXPECT_EQ(WindowParts(window).cells->cellsPainted(), 0U);
}

} // namespace EditCostTest
