// SPDX-License-Identifier: GPL-3.0-or-later
#include "QCanvas.h"

#include "CanvasWatcher.h"
#include "HandedOutItems.h"
#include "ItemIndex.h"
#include "LatticePainter.h"
#include "SeriesItems.h"

#include <QPainter>
#include <QRegion>

#include <algorithm>
#include <tuple>
#include <utility>

namespace {

// Beyond this many separate changes it is cheaper to paint everything that is to be seen.
constexpr std::size_t kMostChanges = 32;

} // namespace

ItemHost *ItemHost::of(QCanvas *canvas) noexcept
{
    return canvas;
}

QCanvas::QCanvas(QObject *parent, const char *name)
    : QObject(parent),
      ItemHost(this),
      m_Index(std::make_unique<ItemIndex>()),
      m_LatticePainter(std::make_unique<LatticePainter>())
{
    setObjectName(QString::fromUtf8(name));
}

QCanvas::QCanvas(int width, int height) : QCanvas()
{
    resize(width, height);
}

QCanvas::~QCanvas()
{
    clear();
    delete m_HandedOut;
    for (CanvasWatcher *view : std::exchange(m_Views, {}))
        view->canvasGone();
}

void QCanvas::resize(int width, int height)
{
    const QSize size(std::max(0, width), std::max(0, height));
    if (size == m_Size)
        return;
    m_Size = size;
    m_Index->setSize(size);
    setAllChanged();
    for (CanvasWatcher *view : m_Views)
        view->canvasResized();
    emit resized();
}

void QCanvas::setBackgroundColor(const QColor &color)
{
    m_Background = color;
    setAllChanged();
}

QCanvasItemList QCanvas::allItems()
{
    QCanvasItemList items;
    addLatticeItems(m_Lattice.cellsIn(m_Lattice.rect()), items);
    QCanvasItemList inSeries;
    for (const auto &series : m_Series)
        series->collectAll(inSeries);
    handOut(inSeries);
    items.append(inSeries);
    for (QCanvasItem *item = m_First; item != nullptr; item = item->m_After)
        items.append(item);
    std::ranges::sort(items, {}, [](const QCanvasItem *item) { return item->m_Serial; });
    return items;
}

QCanvasItemList QCanvas::collisions(const QPoint &point)
{
    return collisions(QRect(point, QSize(1, 1)));
}

QCanvasItemList QCanvas::collisions(const QRect &rect)
{
    QCanvasItemList items = itemsReaching(rect);
    // What an item may reach is more than what it covers.
    items.removeIf(
        [&rect](const QCanvasItem *item) { return !item->boundingRect().intersects(rect); });
    handOut(items);
    addLatticeItems(m_Lattice.cellsIn(rect), items);
    std::ranges::sort(items, [](const QCanvasItem *a, const QCanvasItem *b) {
        return std::tuple(a->m_Z, a->m_Serial) > std::tuple(b->m_Z, b->m_Serial);
    });
    return items;
}

void QCanvas::setLattice(const CellLattice &lattice, std::unique_ptr<LatticeSource> source)
{
    if (m_HandedOut != nullptr)
        m_HandedOut->buryAll();
    m_Source = std::move(source);
    m_Lattice = m_Source == nullptr ? CellLattice() : lattice;
    m_LatticeSerial = m_NextSerial;
    m_NextSerial += m_Lattice.cellCount();
    setAllChanged();
}

const ItemSeries *QCanvas::addSeries(std::unique_ptr<ItemSeries> series)
{
    const ItemSeries *added = series.get();
    const auto make = [this](ItemSeries &from, unsigned long slot) {
        return makeItemFor(Keeper::Series, [&] { return from.makeItem(*this, slot); });
    };
    m_Series.push_back(std::make_unique<SeriesItems>(std::move(series), m_NextSerial, make));
    m_NextSerial += added->slotCount();
    setAllChanged();
    return added;
}

void QCanvas::makeItems(const ItemSeries *series)
{
    QCanvasItemList made;
    for (const auto &items : m_Series) {
        if (items->series() == series)
            items->collectAll(made);
    }
}

void QCanvas::removeSeries(const ItemSeries *series)
{
    std::erase_if(m_Series, [&](const auto &items) {
        if (items->series() != series)
            return false;
        items->bury(*m_Index, m_HandedOut);
        setAllChanged();
        return true;
    });
}

void QCanvas::clear()
{
    setAllChanged();
    setLattice({}, nullptr);
    for (const auto &series : m_Series)
        series->bury(*m_Index, m_HandedOut);
    m_Series.clear();
    while (m_Last != nullptr) {
        QCanvasItem *item = m_Last;
        if (item->m_HandedOut && m_HandedOut != nullptr) {
            m_Index->remove(*item);
            unlink(item);
            m_HandedOut->bury(item);
        } else {
            delete item;
        }
    }
}

void QCanvas::setAllChanged()
{
    m_AllChanged = true;
    m_Changed.clear();
}

void QCanvas::setChanged(const QRect &rect)
{
    if (m_AllChanged || rect.isEmpty())
        return;
    if (m_Changed.size() == kMostChanges)
        setAllChanged();
    else
        m_Changed.push_back(rect);
}

void QCanvas::update()
{
    for (CanvasWatcher *view : m_Views) {
        if (m_AllChanged)
            view->canvasChanged();
        else
            view->canvasChanged(m_Changed);
    }
    m_AllChanged = false;
    m_Changed.clear();
}

void QCanvas::drawArea(const QRect &rect, QPainter *painter)
{
    painter->save();
    painter->setClipRect(rect, Qt::IntersectClip);
    fillBackground(rect, painter);

    QCanvasItemList items = itemsReaching(rect);
    const auto place = [](const QCanvasItem *item) {
        return std::tuple(item->m_Z, item->m_Serial);
    };
    std::ranges::sort(items, {}, place);
    const auto front = std::ranges::lower_bound(items, std::tuple(0.0, m_LatticeSerial), {}, place);
    const bool wasDrawing = std::exchange(m_Drawing, true);
    for (auto item = items.begin(); item != front; ++item)
        (*item)->draw(*painter);
    if (m_Source != nullptr) {
        const CellRange cells = m_Lattice.cellsIn(rect);
        m_CellsPainted += (cells.rowEnd - cells.rowBegin) * (cells.colEnd - cells.colBegin);
        m_LatticePainter->paint(*painter, m_Lattice, *m_Source, cells);
    }
    for (auto item = front; item != items.end(); ++item)
        (*item)->draw(*painter);
    m_Drawing = wasDrawing;
    painter->restore();
    for (const auto &series : m_Series)
        series->trim(rect, m_HandedOut);
}

// Cells cover their whole rectangle, so the background is only needed beside them.
void QCanvas::fillBackground(const QRect &rect, QPainter *painter) const
{
    QRegion region(rect);
    if (!m_Lattice.isEmpty()) {
        // The last pixel is left to the background too: at a broken scale the outer edge of the
        // cells lies within it.
        region -= m_Lattice.rect().adjusted(0, 0, -1, -1);
    }
    for (const QRect &part : region)
        painter->fillRect(part, m_Background);
}

void QCanvas::addItem(QCanvasItem *item)
{
    item->m_Keeper = m_MakingFor;
    if (m_MakingFor != Keeper::Canvas)
        return;
    item->m_Serial = m_NextSerial++;
    item->m_Before = m_Last;
    (m_Last != nullptr ? m_Last->m_After : m_First) = item;
    m_Last = item;
}

void QCanvas::removeItem(QCanvasItem *item)
{
    if (item->m_Keeper == Keeper::Lattice) {
        if (m_HandedOut != nullptr)
            m_HandedOut->disown(item);
        return;
    }
    if (item->m_IndexPlace >= 0) {
        m_Index->remove(*item);
        setAllChanged();
    }
    if (item->m_Keeper == Keeper::Canvas) {
        unlink(item);
        return;
    }
    for (const auto &series : m_Series) {
        if (series->has(*item))
            series->disown(*item);
    }
}

void QCanvas::unlink(QCanvasItem *item)
{
    (item->m_Before != nullptr ? item->m_Before->m_After : m_First) = item->m_After;
    (item->m_After != nullptr ? item->m_After->m_Before : m_Last) = item->m_Before;
    item->m_Before = nullptr;
    item->m_After = nullptr;
}

void QCanvas::itemLeaves(QCanvasItem &item)
{
    if (item.m_Keeper == Keeper::Lattice || m_MakingFor != Keeper::Canvas)
        return;
    m_Index->remove(item);
    itemChanged(item);
}

void QCanvas::itemEnters(QCanvasItem &item)
{
    if (item.m_Keeper == Keeper::Lattice || m_MakingFor != Keeper::Canvas)
        return;
    if (item.m_Keeper == Keeper::Series && !item.m_IsChanged) {
        // Items may set their text while they are drawn; the series has reckoned with that.
        if (m_Drawing)
            return;
        item.m_IsChanged = true;
    }
    m_Index->insert(item);
    itemChanged(item);
}

void QCanvas::itemChanged(const QCanvasItem &item)
{
    if (!m_Drawing && !m_AllChanged)
        setChanged(item.reach());
}

HandedOutItems &QCanvas::handedOut()
{
    // It enters itself, deletes itself in the event loop, and takes itself out.
    if (m_HandedOut == nullptr)
        new HandedOutItems(m_HandedOut);
    return *m_HandedOut;
}

void QCanvas::handOut(const QCanvasItemList &items)
{
    for (QCanvasItem *item : items)
        item->m_HandedOut = true;
    if (!items.isEmpty())
        (void)handedOut();
}

QCanvasItemList QCanvas::itemsReaching(const QRect &rect)
{
    QCanvasItemList items;
    m_Index->collect(rect, items);
    for (const auto &series : m_Series)
        series->collect(rect, items);
    return items;
}

template <typename Make> QCanvasItem *QCanvas::makeItemFor(Keeper keeper, Make make)
{
    const Keeper before = std::exchange(m_MakingFor, keeper);
    QCanvasItem *item = make();
    m_MakingFor = before;
    return item;
}

QCanvasItem *QCanvas::latticeItem(const Cell &cell)
{
    const unsigned long index = m_Lattice.indexOf(cell);
    HandedOutItems &items = handedOut();
    if (QCanvasItem *item = items.find(index))
        return item;
    QCanvasItem *item = makeItemFor(
        Keeper::Lattice, [&] { return m_Source->makeItem(*this, cell, m_Lattice.cellRect(cell)); });
    item->m_Serial = m_LatticeSerial + index;
    item->m_Visible = true;
    items.add(index, item);
    return item;
}

void QCanvas::addLatticeItems(const CellRange &cells, QCanvasItemList &out)
{
    for (unsigned long row = cells.rowBegin; row < cells.rowEnd; ++row) {
        for (unsigned long col = cells.colBegin; col < cells.colEnd; ++col) {
            QCanvasItem *item = latticeItem({row, col});
            // Whoever was handed the item may have hidden it.
            if (item->isVisible())
                out.append(item);
        }
    }
}

#include "moc_QCanvas.cpp"
