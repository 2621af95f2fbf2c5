// SPDX-License-Identifier: GPL-3.0-or-later
// A plane of items that any number of views show, with the interface of the toolkit's version 3.
// It may have a lattice, a grid of cells, and series, lines of items, whose items are made when
// somebody asks for them.
#pragma once

#include "CellLattice.h"
#include "ItemHost.h"
#include "QCanvasItem.h"

#include <QColor>
#include <QObject>
#include <QSize>

#include <memory>
#include <vector>

class CanvasWatcher;
class HandedOutItems;
class ItemIndex;
class ItemSeries;
class LatticePainter;
class LatticeSource;
class QCanvasView;
class SeriesItems;

class QCanvas : public QObject, private ItemHost
{
    Q_OBJECT

public:
    explicit QCanvas(QObject *parent = nullptr, const char *name = nullptr);
    QCanvas(int width, int height);
    // Deletes all items.
    ~QCanvas() override;

    // Items keep their places; views keep their scroll position as far as the new size allows.
    void resize(int width, int height);
    [[nodiscard]] int width() const noexcept { return m_Size.width(); }
    [[nodiscard]] int height() const noexcept { return m_Size.height(); }
    [[nodiscard]] QSize size() const noexcept { return m_Size; }
    [[nodiscard]] QRect rect() const noexcept { return {QPoint(0, 0), m_Size}; }
    [[nodiscard]] bool onCanvas(int x, int y) const { return rect().contains(x, y); }
    [[nodiscard]] bool onCanvas(const QPoint &point) const { return rect().contains(point); }

    // White at the start; also around the canvas where a view is larger.
    [[nodiscard]] QColor backgroundColor() const { return m_Background; }
    void setBackgroundColor(const QColor &color);

    // In the order of making. This makes every item of the lattice and the series: for few cells
    // and for tests; to get rid of the items use clear().
    [[nodiscard]] QCanvasItemList allItems();
    // The visible items there, from the top item down. They stay alive until control is back in the
    // event loop, even when the canvas is rebuilt meanwhile; canvas() of such an item is null.
    [[nodiscard]] QCanvasItemList collisions(const QPoint &point);
    [[nodiscard]] QCanvasItemList collisions(const QRect &rect);

    // Replaces the lattice. The cells count as visible items of depth 0, made now and row by row.
    void setLattice(const CellLattice &lattice, std::unique_ptr<LatticeSource> source);
    [[nodiscard]] const CellLattice &lattice() const noexcept { return m_Lattice; }
    // The items count as made now, visible, slot by slot.
    const ItemSeries *addSeries(std::unique_ptr<ItemSeries> series);
    // Makes those that nobody has asked for yet: what they show is about to change, and they are to
    // show what was before.
    void makeItems(const ItemSeries *series);
    // Deletes the series and its items.
    void removeSeries(const ItemSeries *series);
    // Deletes all items, the lattice and the series.
    void clear();

    // What changed is painted after the next update().
    void setAllChanged();
    void setChanged(const QRect &rect);
    // Background and items, in the canvas's coordinates, whatever the painter paints on.
    void drawArea(const QRect &rect, QPainter *painter);
    // How many cells of lattices have been read to be painted, since the beginning.
    [[nodiscard]] unsigned long cellsPainted() const noexcept { return m_CellsPainted; }

public slots:
    virtual void update();

signals:
    void resized();

private:
    friend class ItemHost;
    friend class QCanvasView;

    using Keeper = QCanvasItem::Keeper;

    void addItem(QCanvasItem *item) override;
    void removeItem(QCanvasItem *item) override;
    void unlink(QCanvasItem *item);
    void itemLeaves(QCanvasItem &item) override;
    void itemEnters(QCanvasItem &item) override;
    void itemChanged(const QCanvasItem &item) override;
    template <typename Make> [[nodiscard]] QCanvasItem *makeItemFor(Keeper keeper, Make make);
    [[nodiscard]] QCanvasItem *latticeItem(const Cell &cell);
    [[nodiscard]] HandedOutItems &handedOut();
    void addLatticeItems(const CellRange &cells, QCanvasItemList &out);
    // What may draw into the rectangle, but for the lattice.
    [[nodiscard]] QCanvasItemList itemsReaching(const QRect &rect);
    void handOut(const QCanvasItemList &items);
    void fillBackground(const QRect &rect, QPainter *painter) const;

    QSize m_Size;
    QColor m_Background{Qt::white};
    std::vector<CanvasWatcher *> m_Views;

    QCanvasItem *m_First = nullptr;
    QCanvasItem *m_Last = nullptr;
    unsigned long m_NextSerial = 0;
    std::unique_ptr<ItemIndex> m_Index;

    CellLattice m_Lattice;
    std::unique_ptr<LatticeSource> m_Source;
    std::unique_ptr<LatticePainter> m_LatticePainter;
    unsigned long m_LatticeSerial = 0;
    unsigned long m_CellsPainted = 0;
    // Of the item that is being made.
    Keeper m_MakingFor = Keeper::Canvas;
    std::vector<std::unique_ptr<SeriesItems>> m_Series;
    HandedOutItems *m_HandedOut = nullptr;

    std::vector<QRect> m_Changed;
    bool m_AllChanged = true;
    // Items may set their text while they are drawn; that asks for no further painting.
    bool m_Drawing = false;
};
