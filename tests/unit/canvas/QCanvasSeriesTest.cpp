// SPDX-License-Identifier: GPL-3.0-or-later
// The items of a canvas's series: made on demand, but reported and painted as if all existed.
#include "ItemSeries.h"
#include "LetterLattice.h"
#include "QCanvasText.h"

#include <QCoreApplication>
#include <QImage>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace QCanvasSeriesTest {

// A mark that shows another text from its first painting on.
class Mark : public QCanvasText
{
public:
    Mark(unsigned long slot, QCanvas *canvas) : QCanvasText(QStringLiteral("O"), canvas), slot(slot)
    { }
    void draw(QPainter &painter) override
    {
        setText(slot % 2 == 0 ? QStringLiteral("X") : QStringLiteral("w"));
        QCanvasText::draw(painter);
    }

    const unsigned long slot;
};

constexpr int kStep = 11;

// One for each step to the right; every third slot is empty. Of different depths.
class Marks : public ItemSeries
{
public:
    explicit Marks(unsigned long count, int y = 0) : m_Count(count), m_Y(y) { }

    unsigned long slotCount() const override { return m_Count; }
    SlotRange slotsIn(const QRect &rect) const override
    {
        const int reach = QCanvasText::farthest(QFont(), 1, 0);
        return placesIn(rect.left() - reach, rect.right() + reach, kStep, m_Count);
    }
    QCanvasItem *makeItem(QCanvas &canvas, unsigned long slot) override
    {
        if (slot % 3 == 2)
            return nullptr;
        auto *mark = new Mark(slot, &canvas);
        mark->move(static_cast<double>(slot) * kStep, m_Y);
        mark->setZ(slot % 4 == 0 ? 1 : 0);
        mark->show();
        return mark;
    }

private:
    unsigned long m_Count;
    int m_Y;
};

void giveMarks(QCanvas &canvas, unsigned long count, bool onDemand, int y = 0)
{
    auto marks = std::make_unique<Marks>(count, y);
    if (onDemand) {
        canvas.addSeries(std::move(marks));
        return;
    }
    for (unsigned long slot = 0; slot < count; ++slot)
        (void)marks->makeItem(canvas, slot);
}

std::vector<unsigned long> slotsOf(const QCanvasItemList &items)
{
    std::vector<unsigned long> result;
    for (const QCanvasItem *item : items) {
        const auto *mark = dynamic_cast<const Mark *>(item);
        result.push_back(mark == nullptr ? 999'999'999 : mark->slot);
    }
    return result;
}

QImage pictureOf(QCanvas &canvas, const QRect &rect)
{
    QImage image(rect.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    painter.translate(-rect.topLeft());
    canvas.drawArea(rect, &painter);
    return image;
}

void returnToEventLoop()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

class QCanvasSeries : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_Canvas.resize(1000 * kStep, 60);
        m_Before = QCanvasItem::aliveCount();
    }
    [[nodiscard]] unsigned long made() const { return QCanvasItem::aliveCount() - m_Before; }

    QCanvas m_Canvas;
    unsigned long m_Before = 0;
};

TEST_F(QCanvasSeries, AddingOneMakesNoItem)
{
    giveMarks(m_Canvas, 1'000'000, true);
    EXPECT_EQ(made(), 0U);
}

TEST_F(QCanvasSeries, AskingForAPointMakesTheItemsAroundItAlone)
{
    giveMarks(m_Canvas, 1000, true);
    EXPECT_EQ(slotsOf(m_Canvas.collisions(QPoint(300 * kStep + 1, 1))),
              std::vector<unsigned long>{300});
    EXPECT_LT(made(), 50U);
}

TEST_F(QCanvasSeries, PaintingMakesTheItemsThereAlone)
{
    giveMarks(m_Canvas, 1'000'000, true);
    (void)pictureOf(m_Canvas, QRect(500'000, 0, 200, 60));
    const unsigned long painted = made();
    EXPECT_GT(painted, 10U);
    EXPECT_LT(painted, 60U);
    (void)pictureOf(m_Canvas, QRect(500'000, 0, 200, 60));
    EXPECT_EQ(made(), painted) << "those of the last time are painted again";
}

TEST_F(QCanvasSeries, AskingTwiceGivesTheSameItem)
{
    giveMarks(m_Canvas, 100, true);
    const QCanvasItemList once = m_Canvas.collisions(QPoint(kStep + 1, 1));
    ASSERT_EQ(once.size(), 1);
    (void)pictureOf(m_Canvas, m_Canvas.rect());
    EXPECT_EQ(m_Canvas.collisions(QPoint(kStep + 1, 1)), once);
    EXPECT_EQ(m_Canvas.allItems().at(1), once.first());
    returnToEventLoop();
    EXPECT_EQ(m_Canvas.collisions(QPoint(kStep + 1, 1)), once);
}

TEST_F(QCanvasSeries, MakingAllItemsKeepsWhatTheyShow)
{
    const ItemSeries *series = m_Canvas.addSeries(std::make_unique<Marks>(30));
    m_Canvas.makeItems(series);
    EXPECT_EQ(made(), 20U);
    (void)m_Canvas.allItems();
    EXPECT_EQ(made(), 20U);
}

TEST_F(QCanvasSeries, AnItemThatWasHandedOutOutlivesItsSeries)
{
    const ItemSeries *series = m_Canvas.addSeries(std::make_unique<Marks>(100));
    const QCanvasItem *item = m_Canvas.collisions(QPoint(1, 1)).first();
    m_Canvas.removeSeries(series);
    EXPECT_TRUE(m_Canvas.allItems().isEmpty());
    EXPECT_EQ(item->canvas(), nullptr);
    EXPECT_EQ(static_cast<const Mark *>(item)->slot, 0U);
    EXPECT_EQ(made(), 1U);
    returnToEventLoop();
    EXPECT_EQ(made(), 0U);
}

TEST_F(QCanvasSeries, ClearTakesAllSeriesAway)
{
    giveMarks(m_Canvas, 100, true);
    giveMarks(m_Canvas, 100, true, 30);
    const QCanvasItem *item = m_Canvas.collisions(QPoint(1, 31)).first();
    m_Canvas.clear();
    EXPECT_TRUE(m_Canvas.allItems().isEmpty());
    EXPECT_TRUE(m_Canvas.collisions(m_Canvas.rect()).isEmpty());
    EXPECT_EQ(item->canvas(), nullptr);
    returnToEventLoop();
    EXPECT_EQ(made(), 0U);
}

TEST_F(QCanvasSeries, AnItemThatSomebodyMovedOrChangedStaysSo)
{
    giveMarks(m_Canvas, 100, true);
    QCanvasItemList items = m_Canvas.allItems();
    items[0]->move(500, 20);
    items[1]->hide();
    static_cast<Mark *>(items[2])->setText(QStringLiteral("long text"));
    EXPECT_EQ(m_Canvas.collisions(QPoint(501, 30)).last(), items[0]);
    EXPECT_FALSE(m_Canvas.collisions(QPoint(1, 1)).contains(items[0]));
    EXPECT_FALSE(m_Canvas.collisions(QPoint(kStep + 1, 1)).contains(items[1]));
    EXPECT_TRUE(m_Canvas.collisions(QPoint(6 * kStep, 1)).contains(items[2]));
    EXPECT_EQ(m_Canvas.allItems(), items);
    items[1]->show();
    EXPECT_TRUE(m_Canvas.collisions(QPoint(kStep + 1, 1)).contains(items[1]));
}

TEST_F(QCanvasSeries, ADeletedItemIsGone)
{
    giveMarks(m_Canvas, 30, true);
    const qsizetype count = m_Canvas.allItems().size();
    delete m_Canvas.collisions(QPoint(1, 1)).first();
    EXPECT_EQ(m_Canvas.allItems().size(), count - 1);
    EXPECT_TRUE(m_Canvas.collisions(QPoint(1, 1)).isEmpty());
}

TEST_F(QCanvasSeries, ItemsOfALongWayAreNotKeptForEver)
{
    constexpr unsigned long kMany = 100'000;
    m_Canvas.resize(kMany * kStep, 60);
    giveMarks(m_Canvas, kMany, true);
    const QCanvasItem *held = m_Canvas.collisions(QPoint(1, 1)).first();
    for (int x = 0; x < m_Canvas.width(); x += 2000)
        (void)pictureOf(m_Canvas, QRect(x, 0, 2000, 60));
    EXPECT_LT(made(), 20'000U);
    EXPECT_EQ(m_Canvas.collisions(QPoint(1, 1)).first(), held);
    EXPECT_EQ(pictureOf(m_Canvas, QRect(0, 0, 2000, 60)).size(), QSize(2000, 60));
}

TEST_F(QCanvasSeries, TheCanvasMayGoWhileItsItemsAreStillAlive)
{
    {
        QCanvas canvas(500, 50);
        giveMarks(canvas, 30, true);
        EXPECT_EQ(canvas.allItems().size(), 20);
    }
    EXPECT_EQ(made(), 0U);
    returnToEventLoop();
}

// ---- Against a canvas that has all items from the beginning

class Twins
{
public:
    explicit Twins(unsigned int seed) : m_Random(seed)
    {
        for (const auto &canvas : {&eager, &lazy})
            canvas->resize(100 * kStep, 60);
        both([](QCanvas &canvas, bool onDemand) { giveMarks(canvas, 100, onDemand); });
        both([](QCanvas &canvas, bool) {
            auto *box = new QCanvasRectangle(50, 5, 300, 20, &canvas);
            box->setBrush(QColor(Qt::yellow));
            box->show();
        });
        both([](QCanvas &canvas, bool onDemand) { giveMarks(canvas, 60, onDemand, 20); });
    }
    void both(const std::function<void(QCanvas &, bool onDemand)> &act)
    {
        act(eager, false);
        act(lazy, true);
    }
    QRect anyRect()
    {
        const auto any = [this](int from, int to) {
            return std::uniform_int_distribution<int>(from, to)(m_Random);
        };
        return {any(-40, 1100), any(-20, 60), any(1, 300), any(1, 40)};
    }
    bool anyBool() { return (m_Random() & 1U) != 0; }

    QCanvas eager;
    QCanvas lazy;

private:
    std::mt19937 m_Random;
};

TEST(QCanvasSeriesAgainstAll, ItemsPicturesAndCollisionsAreTheSame)
{
    for (unsigned int seed = 0; seed < 20; ++seed) {
        Twins twins(seed);
        for (int step = 0; step < 30; ++step) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " step " << step);
            const QRect rect = twins.anyRect();
            ASSERT_EQ(pictureOf(twins.lazy, rect), pictureOf(twins.eager, rect));
            const QRect asked = twins.anyBool() ? QRect(rect.topLeft(), QSize(1, 1)) : rect;
            ASSERT_EQ(slotsOf(twins.lazy.collisions(asked)),
                      slotsOf(twins.eager.collisions(asked)));
        }
        EXPECT_EQ(slotsOf(twins.lazy.allItems()), slotsOf(twins.eager.allItems()));
    }
}

} // namespace QCanvasSeriesTest
