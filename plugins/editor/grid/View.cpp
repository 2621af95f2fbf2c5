// SPDX-License-Identifier: GPL-3.0-or-later
#include "View.h"

#include "Alignment.h"
#include "CellToolTip.h"
#include "Check.h"
#include "DataPoint.h"
#include "PlainText.h"
#include "QCanvas.h"
#include "ResidueItem.h"

#include <QMouseEvent>
#include <QPointer>

#include <utility>

View::View(QCanvas &canvas, QWidget *parent, const char *name, unsigned int flags)
    : QCanvasView(&canvas, parent, name, Qt::WindowFlags::fromInt(static_cast<int>(flags))),
      m_Dragging(false),
      m_Row(0),
      m_Col(0)
{
    setToolTips([this](const QPoint &point) {
        const ResidueItem *item = itemAt(point);
        return item == nullptr ? QString()
                               : TAMBO::plainToolTip(cellToolTip(*item->getTarget(), item->getRow(),
                                                                 item->getCol()));
    });
}

View::~View() = default;

void View::print(QPainter *painter, int x, int y, int width, int height)
{
    QCanvasView::drawContents(painter, x, y, width, height);
}

ResidueItem *View::itemAt(const QPoint &point) const
{
    for (QCanvasItem *item : itemsAt(point)) {
        if (item->rtti() == ResidueItem::RTTI)
            return static_cast<ResidueItem *>(item);
    }
    return nullptr;
}

void View::endDrag()
{
    setDragging(false);
    m_Dragging = false;
    tellHeld(Held::Ends, std::nullopt);
}

void View::setHeldNews(std::function<void(const Held &)> tell)
{
    m_TellHeld = std::move(tell);
}

std::optional<unsigned long> View::columnInRow(const QPoint &point) const
{
    const std::optional<Cell> cell =
        isInSight(point) ? canvas()->lattice().cellAt(point) : std::nullopt;
    return cell && cell->row == m_Row ? std::optional(cell->col) : std::nullopt;
}

void View::tellHeld(Held::What what, std::optional<unsigned long> to)
{
    if (!m_Held)
        return;
    m_Held->what = what;
    m_Held->to = to;
    const Held news = *m_Held;
    if (what == Held::Ends)
        m_Held.reset();
    if (m_TellHeld)
        m_TellHeld(news);
}

void View::tellHeld()
{
    if (!m_Held)
        return;
    const std::optional<unsigned long> to = columnInRow(viewportToContents(m_Pointer));
    if (to != m_Held->to)
        tellHeld(Held::Moves, to);
}

void View::contentsMousePressEvent(QMouseEvent *event)
{
    endDrag();
    // The item's own actions and the menu may end in a rebuild, or in the end of this window.
    const QPointer<View> alive(this);
    if (ResidueItem *item = itemAt(event->pos())) {
        const unsigned long row = item->getRow();
        const unsigned long col = item->getCol();
        if (event->button() == Qt::RightButton)
            showMenu(*item->getTarget(), row, col);
        else if (event->button() == Qt::LeftButton && !item->isGap())
            item->hit();
        else
            beginDrag(row, col);
        if (alive && m_Dragging && m_TellHeld) {
            m_Pointer = contentsToViewport(event->pos());
            m_Held = Held{Held::Begins, event->button(), row, col, col};
            tellHeld(Held::Begins, col);
        }
    }
    if (alive)
        emit Update();
}

void View::contentsMouseReleaseEvent(QMouseEvent *event)
{
    // An edit is published before it returns, and whoever hears of it may close this window.
    const QPointer<View> alive(this);
    if (m_Dragging) {
        // Over a panel or another window there may be a cell that is scrolled out of sight.
        const ResidueItem *item = isInSight(event->pos()) ? itemAt(event->pos()) : nullptr;
        if (item != nullptr && item->getRow() == m_Row) {
            tellHeld(Held::Ends, item->getCol());
            if (!alive)
                return;
            if (item->getCol() == m_Col)
                insertGap(event->button(), *item->getTarget(), item->getCol());
            else
                moveGap(event->button(), *item->getTarget(), item->getCol());
        }
        if (!alive)
            return;
        endDrag();
    }
    emit Update();
}

void View::contentsMouseMoveEvent(QMouseEvent *event)
{
    QCanvasView::contentsMouseMoveEvent(event);
    m_Pointer = contentsToViewport(event->pos());
    tellHeld();
}

void View::showMenu(const TAMBO::Alignment &alignment, unsigned long row, unsigned long col)
{
    if (TAMBO::Compound *residue = alignment.getItem(row, col))
        residue->ShowMenu();
}

void View::beginDrag(unsigned long row, unsigned long col)
{
    m_Row = row;
    m_Col = col;
    m_Dragging = true;
    setDragging(true);
}

void View::insertGap(Qt::MouseButton button, TAMBO::Alignment &alignment, unsigned long col)
{
    if (button != Qt::MiddleButton)
        return;
    qDebug("Drag terminal gap to here");
    TAMBO::checkCondition(col == m_Col, "Col == m_Col", "View", 116);
    DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
    if (!guard.m_good) {
        qDebug("Cannot update CDB!");
        return;
    }
    guard->insertGap(m_Row, col);
    canvas()->setAllChanged();
    emit ReArrange();
}

void View::moveGap(Qt::MouseButton button, TAMBO::Alignment &alignment, unsigned long col)
{
    // Kept: a drag that began on a residue is reported and carried out all the same; the alignment
    // decides what that means.
    TAMBO::checkCondition(alignment.getItem(m_Row, m_Col) == nullptr,
                          "0 == Target->getItem( m_Row, m_Col )", "View", 131);
    // Kept: it is the button let go that decides, not the one pressed.
    if (button != Qt::LeftButton && button != Qt::MiddleButton)
        return;
    const bool isPoint = button == Qt::LeftButton;
    DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
    if (!guard.m_good) {
        qDebug("Cannot update CDB!");
        return;
    }
    qDebug(isPoint ? "Drag point" : "Drag range");
    guard->moveGap(m_Row, m_Col, col, isPoint);
    canvas()->setAllChanged();
    emit ReArrange();
}

#include "moc_View.cpp"
