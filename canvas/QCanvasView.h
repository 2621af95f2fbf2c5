// SPDX-License-Identifier: GPL-3.0-or-later
// A scrolled view of a canvas. Contents coordinates are those of the canvas; scrolling moves the
// pixels that stay visible and paints the rest.
#pragma once

#include "CanvasWatcher.h"
#include "QCanvasItem.h"

#include <QAbstractScrollArea>
#include <QPointer>

#include <functional>
#include <memory>

class DragScroller;
class QCanvas;

class QCanvasView : public QAbstractScrollArea, private CanvasWatcher
{
    Q_OBJECT

public:
    enum ScrollBarMode { Auto, AlwaysOff, AlwaysOn };

    explicit QCanvasView(QCanvas *canvas = nullptr, QWidget *parent = nullptr,
                         const char *name = nullptr, Qt::WindowFlags flags = {});
    ~QCanvasView() override;

    [[nodiscard]] QCanvas *canvas() const noexcept { return m_Canvas; }
    void setCanvas(QCanvas *canvas);

    [[nodiscard]] int contentsX() const noexcept { return m_ContentsPos.x(); }
    [[nodiscard]] int contentsY() const noexcept { return m_ContentsPos.y(); }
    [[nodiscard]] int contentsWidth() const;
    [[nodiscard]] int contentsHeight() const;
    [[nodiscard]] int visibleWidth() const { return viewport()->width(); }
    [[nodiscard]] int visibleHeight() const { return viewport()->height(); }
    [[nodiscard]] QPoint viewportToContents(const QPoint &point) const
    {
        return point + m_ContentsPos;
    }
    [[nodiscard]] QPoint contentsToViewport(const QPoint &point) const
    {
        return point - m_ContentsPos;
    }
    // The canvas's collisions; none without a canvas.
    [[nodiscard]] QCanvasItemList itemsAt(const QPoint &contents) const;
    // Whether the point of the contents is to be seen now.
    [[nodiscard]] bool isInSight(const QPoint &contents) const;

    void setVScrollBarMode(ScrollBarMode mode);
    void setHScrollBarMode(ScrollBarMode mode);
    // The bars follow a canvas's new size from the event loop; asking for one brings it up to date.
    [[nodiscard]] QScrollBar *horizontalScrollBar();
    [[nodiscard]] QScrollBar *verticalScrollBar();

    // The view that this one goes along with: the wheel, keys and drags at the edge scroll that
    // one. Null for none.
    void setLeader(QCanvasView *leader);
    // The leader, or the view itself.
    [[nodiscard]] QCanvasView &scrolledView() { return m_Leader ? *m_Leader : *this; }
    // Gives the text for a point of the contents; an empty text shows no tip.
    void setToolTips(std::function<QString(const QPoint &)> textAt);
    // Paints over the contents on the screen, and on nothing else: a rectangle of the viewport, in
    // its coordinates. Null for nothing.
    void setForeground(std::function<void(QPainter &, const QRect &)> paint);

public slots:
    // Cut off at the ends of the contents.
    void setContentsPos(int x, int y);

signals:
    // Before the contents move; the new position.
    void contentsMoving(int x, int y);

protected:
    // The events' positions are contents coordinates.
    virtual void contentsMousePressEvent(QMouseEvent *event);
    virtual void contentsMouseReleaseEvent(QMouseEvent *event);
    virtual void contentsMouseMoveEvent(QMouseEvent *event);
    // A press, unless reimplemented.
    virtual void contentsMouseDoubleClickEvent(QMouseEvent *event);
    // Paints a rectangle of the contents, in contents coordinates.
    virtual void drawContents(QPainter *painter, int x, int y, int width, int height);

    // While it is on, the pointer shows that something is held, and being at the edge scrolls.
    void setDragging(bool dragging);

    bool viewportEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    using Handler = void (QCanvasView::*)(QMouseEvent *);

    void forward(QMouseEvent *event, Handler handler);
    bool showToolTip(const QPoint &point, const QPoint &global);
    void canvasResized() override;
    void canvasGone() override;
    void canvasChanged() override;
    void canvasChanged(const std::vector<QRect> &rects) override;
    [[nodiscard]] std::unique_ptr<DragScroller> makeDragScroller();
    void syncBars();
    void paintRect(QPainter &painter, const QRect &rect);

    QCanvas *m_Canvas = nullptr;
    QPoint m_ContentsPos;
    bool m_BarsAreStale = false;
    QPointer<QCanvasView> m_Leader;
    std::function<QString(const QPoint &)> m_ToolTips;
    std::function<void(QPainter &, const QRect &)> m_Foreground;
    std::unique_ptr<DragScroller> m_DragScroller;
};
