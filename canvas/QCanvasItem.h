// SPDX-License-Identifier: GPL-3.0-or-later
// Something that stands on a canvas and draws itself. Not a QObject; the canvas owns it, and
// deleting it takes it off the canvas.
#pragma once

#include "ItemHost.h"

#include <QList>
#include <QRect>

class QPainter;

using QCanvasItemList = QList<QCanvasItem *>;

class QCanvasItem
{
public:
    enum RttiValues { Rtti_Item = 0, Rtti_Text = 3, Rtti_Rectangle = 5 };

    // At (0, 0, 0), hidden. Without a canvas the item is nobody's.
    explicit QCanvasItem(QCanvas *canvas);
    virtual ~QCanvasItem();
    QCanvasItem(const QCanvasItem &) = delete;
    QCanvasItem &operator=(const QCanvasItem &) = delete;

    [[nodiscard]] double x() const noexcept { return m_X; }
    [[nodiscard]] double y() const noexcept { return m_Y; }
    // Items with a higher z are in front; of equal ones, the item made last.
    [[nodiscard]] double z() const noexcept { return m_Z; }
    void move(double x, double y);
    void moveBy(double dx, double dy) { move(m_X + dx, m_Y + dy); }
    void setX(double x) { move(x, m_Y); }
    void setY(double y) { move(m_X, y); }
    void setZ(double z);

    [[nodiscard]] bool isVisible() const noexcept { return m_Visible; }
    void setVisible(bool visible);
    void show() { setVisible(true); }
    void hide() { setVisible(false); }

    // Null once the canvas has been destroyed or has thrown the item out.
    [[nodiscard]] QCanvas *canvas() const noexcept
    {
        return m_Host == nullptr ? nullptr : m_Host->canvas();
    }

    virtual void draw(QPainter &painter) = 0;
    [[nodiscard]] virtual int rtti() const;
    // What the item covers, in whole pixels of the canvas.
    [[nodiscard]] virtual QRect boundingRect() const = 0;
    [[nodiscard]] bool collidesWith(const QCanvasItem *other) const;

    // How many items there are, on whatever canvas.
    [[nodiscard]] static unsigned long aliveCount() noexcept { return s_Alive; }

protected:
    // An area that holds whatever the item may draw. It may be too large, but must be cheap.
    [[nodiscard]] virtual QRect reach() const { return boundingRect(); }
    // To be called around every change of what reach() gives.
    void aboutToChange();
    void hasChanged();

private:
    friend class HandedOutItems;
    friend class ItemIndex;
    friend class QCanvas;
    friend class SeriesItems;

    // Who keeps the item. Those of a lattice or a series are not listed among the canvas's own.
    enum class Keeper : signed char { Canvas, Lattice, Series };

    static inline unsigned long s_Alive = 0;

    // Null when it is on no canvas.
    ItemHost *m_Host;
    double m_X = 0;
    double m_Y = 0;
    double m_Z = 0;
    unsigned long m_Serial = 0;
    // Neighbours in the order of making, and in the index.
    QCanvasItem *m_Before = nullptr;
    QCanvasItem *m_After = nullptr;
    QCanvasItem *m_IndexBefore = nullptr;
    QCanvasItem *m_IndexAfter = nullptr;
    int m_IndexPlace = -1;
    bool m_Visible = false;
    Keeper m_Keeper = Keeper::Canvas;
    bool m_HandedOut = false;
    // An item of a series that somebody has changed: what the series knows of its place does not
    // hold any more, and the index has it instead.
    bool m_IsChanged = false;
};
