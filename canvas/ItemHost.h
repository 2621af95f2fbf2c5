// SPDX-License-Identifier: GPL-3.0-or-later
// What an item tells the canvas that it stands on. Apart from the canvas, which knows its items, so
// that of the two only one knows the other.
#pragma once

class QCanvas;
class QCanvasItem;

class ItemHost
{
public:
    // The canvas as its items see it; null for none. Stands with the canvas.
    [[nodiscard]] static ItemHost *of(QCanvas *canvas) noexcept;

    [[nodiscard]] QCanvas *canvas() const noexcept { return m_Canvas; }

    virtual void addItem(QCanvasItem *item) = 0;
    // From the item's destructor, when the item can no longer say what it covered.
    virtual void removeItem(QCanvasItem *item) = 0;
    // A visible item: takes it out of the index for a change and puts it back after it.
    virtual void itemLeaves(QCanvasItem &item) = 0;
    virtual void itemEnters(QCanvasItem &item) = 0;
    virtual void itemChanged(const QCanvasItem &item) = 0;

protected:
    explicit ItemHost(QCanvas *canvas) noexcept : m_Canvas(canvas) { }
    ItemHost(const ItemHost &) = delete;
    ItemHost &operator=(const ItemHost &) = delete;
    ~ItemHost() = default;

private:
    QCanvas *const m_Canvas;
};
