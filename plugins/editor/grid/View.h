// SPDX-License-Identifier: GPL-3.0-or-later
// The scrolled views of an editor window: View over the residues, where gaps are edited, and Panel
// over the column marks and over the sequence names.
#pragma once

#include "QCanvasView.h"

#include <QSize>

#include <functional>
#include <optional>

class QCanvasItem;
class QCanvasRectangle;
class QPainter;
class ResidueItem;

namespace TAMBO {
class Alignment;
}

class View : public QCanvasView
{
    Q_OBJECT

public:
    View(QCanvas &canvas, QWidget *parent, const char *name, unsigned int flags);
    ~View() override;

    // The button that may be held has no meaning any more.
    void endDrag();

    // A gap that is held, for those who show it.
    struct Held
    {
        enum What { Begins, Moves, Ends };
        What what = Begins;
        Qt::MouseButton button = Qt::NoButton;
        unsigned long row = 0;
        unsigned long col = 0;
        // Under the pointer; nothing in another row or out of sight. At the end, where the gap will
        // be moved to, which has not happened yet; nothing when it stays.
        std::optional<unsigned long> to;
    };
    // Null for nobody.
    void setHeldNews(std::function<void(const Held &)> tell);
    // The contents have moved below the pointer.
    void tellHeld();

signals:
    void ReArrange();
    void Update();

public slots:
    // Paints a rectangle of the contents on any painter.
    void print(QPainter *painter, int x, int y, int width, int height);

protected:
    void contentsMousePressEvent(QMouseEvent *event) override;
    void contentsMouseReleaseEvent(QMouseEvent *event) override;
    void contentsMouseMoveEvent(QMouseEvent *event) override;

private:
    bool m_Dragging;
    unsigned long m_Row;
    unsigned long m_Col;
    std::function<void(const Held &)> m_TellHeld;
    // What was told last; nothing when nobody has been told of a beginning.
    std::optional<Held> m_Held;
    // Of the viewport.
    QPoint m_Pointer;

    [[nodiscard]] ResidueItem *itemAt(const QPoint &point) const;
    static void showMenu(const TAMBO::Alignment &alignment, unsigned long row, unsigned long col);
    void beginDrag(unsigned long row, unsigned long col);
    [[nodiscard]] std::optional<unsigned long> columnInRow(const QPoint &point) const;
    void tellHeld(Held::What what, std::optional<unsigned long> to);
    // The drag ends with this button in its own column, or in another one of its row.
    void insertGap(Qt::MouseButton button, TAMBO::Alignment &alignment, unsigned long col);
    void moveGap(Qt::MouseButton button, TAMBO::Alignment &alignment, unsigned long col);
};

class Panel : public QCanvasView
{
    Q_OBJECT

public:
    Panel(QCanvas &canvas, QWidget *parent, const char *name, unsigned int flags);
    ~Panel() override;

    // The panel asks its editor window for the size of a cell whenever it needs it.
    void setCellSizeSource(std::function<QSize()> source);
    // The range marker belongs to the header canvas; null forgets it. The marker gets its colours.
    void setMarker(QCanvasRectangle *marker);
    // Before the header's items are deleted: forgets the marker, and no column is in the range.
    void resetRange();
    // The button that may be held has no meaning any more.
    void endDrag();
    // The current column range, half-open.
    [[nodiscard]] unsigned long begin() const noexcept { return m_Begin; }
    [[nodiscard]] unsigned long end() const noexcept { return m_End; }

signals:
    void ReArrange();
    void Update();
    void RemoveRow(unsigned long row);
    void RemoveCol(unsigned long col);
    void InsertCol(unsigned long col);
    void ReRange(unsigned long begin, unsigned long end);

public slots:
    // Without a marker only the bounds are kept.
    void SetRange(unsigned long begin, unsigned long end);

protected:
    void contentsMousePressEvent(QMouseEvent *event) override;
    void contentsMouseReleaseEvent(QMouseEvent *event) override;

private:
    bool m_Dragging;
    unsigned long m_Row;
    unsigned long m_Begin;
    unsigned long m_End;
    QCanvasRectangle *m_Marker;
    std::function<QSize()> m_CellSize;

    // Whether the items behind may still be handled.
    enum class Handling { GoesOn, Stops };
    Handling pressOnName(QCanvasItem &item, unsigned int state);
    Handling pressOnColumn(QCanvasItem &item, unsigned int state);
    void extendRange(unsigned long col);
    void dropRow(const QPoint &point);
    [[nodiscard]] QString toolTipAt(const QPoint &point) const;
};
