// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alignment.h"
#include "ColItem.h"
#include "IdentityReport.h"
#include "MessageBox.h"
#include "PlainText.h"
#include "QCanvas.h"
#include "QCanvasRectangle.h"
#include "RowItem.h"
#include "View.h"

#include <QMouseEvent>
#include <QPointer>

#include <utility>

namespace {

// The buttons held after a press, and the keys, as one number.
enum State : unsigned int {
    Left = 1,
    Right = 2,
    Middle = 4,
    OtherButton = 8,
    Shift = 256,
    Control = 512,
    Alt = 1024,
    Meta = 2048
};

unsigned int stateAfter(const QMouseEvent &event)
{
    constexpr Qt::MouseButtons kKnown = Qt::LeftButton | Qt::RightButton | Qt::MiddleButton;
    const Qt::KeyboardModifiers keys = event.modifiers();
    auto state = static_cast<unsigned int>((event.buttons() & kKnown).toInt());
    state |= (event.buttons() & ~kKnown) ? OtherButton : 0U;
    state |= keys.testFlag(Qt::ShiftModifier) ? Shift : 0U;
    state |= keys.testFlag(Qt::ControlModifier) ? Control : 0U;
    state |= keys.testFlag(Qt::AltModifier) ? Alt : 0U;
    state |= keys.testFlag(Qt::MetaModifier) ? Meta : 0U;
    return state;
}

void showIdentity(const TAMBO::Alignment &alignment, unsigned long row)
{
    // The first row is what the others are compared with.
    if (row == 0)
        return;
    if (const auto report = identityReport(alignment, row))
        ZEP::tell(nullptr, QMessageBox::Information, QStringLiteral("Percentage identity"),
                  *report);
}

} // namespace

Panel::Panel(QCanvas &canvas, QWidget *parent, const char *name, unsigned int flags)
    : QCanvasView(&canvas, parent, name, Qt::WindowFlags::fromInt(static_cast<int>(flags))),
      m_Dragging(false),
      m_Row(0),
      m_Begin(0),
      m_End(0),
      m_Marker(nullptr)
{
    setToolTips([this](const QPoint &point) { return toolTipAt(point); });
}

Panel::~Panel() = default;

void Panel::setCellSizeSource(std::function<QSize()> source)
{
    m_CellSize = std::move(source);
}

void Panel::setMarker(QCanvasRectangle *marker)
{
    m_Marker = marker;
    if (m_Marker == nullptr)
        return;
    // Dark enough for a green mark on it, light enough for a black one.
    m_Marker->setBrush(QColor(112, 132, 204));
    m_Marker->setPen(QColor(72, 90, 160));
}

void Panel::resetRange()
{
    m_Marker = nullptr;
    m_Begin = 0;
    m_End = 0;
}

void Panel::SetRange(unsigned long begin, unsigned long end)
{
    m_Begin = begin;
    m_End = end;
    if (m_Marker == nullptr || !m_CellSize)
        return;
    const QSize cell = m_CellSize();
    const auto width = static_cast<unsigned long>(cell.width());
    // Also for bounds the wrong way round, which give a marker without an area.
    m_Marker->setSize(static_cast<int>((end - begin) * width), cell.height());
    m_Marker->setX(static_cast<double>(begin * width));
}

void Panel::endDrag()
{
    setDragging(false);
    m_Dragging = false;
}

void Panel::contentsMousePressEvent(QMouseEvent *event)
{
    endDrag();
    const unsigned int state = stateAfter(*event);
    // What an item sets off may end in a rebuild, or in the end of this window.
    const QPointer<Panel> alive(this);
    for (QCanvasItem *item : itemsAt(event->pos())) {
        auto handling = Handling::GoesOn;
        // An item that a rebuild has thrown out is still in the list, but on no canvas.
        if (item->canvas() == nullptr)
            break;
        if (item->rtti() == RowItem::RTTI)
            handling = pressOnName(*item, state);
        else if (item->rtti() == ColItem::RTTI)
            handling = pressOnColumn(*item, state);
        if (!alive)
            return;
        if (handling == Handling::Stops)
            break;
    }
    emit Update();
}

Panel::Handling Panel::pressOnName(QCanvasItem &item, unsigned int state)
{
    auto &name = static_cast<RowItem &>(item);
    const unsigned long row = name.getRow();
    TAMBO::Alignment *target = name.getTarget();
    switch (state) {
    case Shift | Middle:
        qDebug("Removing row");
        emit RemoveRow(row);
        return Handling::Stops;
    case Shift | Right:
        if (TAMBO::Compound *sequence = target->GetSeq(row))
            sequence->ShowMenu();
        break;
    case Right:
        showIdentity(*target, row);
        break;
    default:
        m_Row = row;
        m_Dragging = true;
        setDragging(true);
        name.hit();
        break;
    }
    return Handling::GoesOn;
}

Panel::Handling Panel::pressOnColumn(QCanvasItem &item, unsigned int state)
{
    auto &mark = static_cast<ColItem &>(item);
    const unsigned long col = mark.getCol();
    switch (state) {
    case Middle:
        emit InsertCol(col);
        return Handling::Stops;
    case Shift | Middle:
        emit RemoveCol(col);
        return Handling::Stops;
    case Shift | Left:
        extendRange(col);
        qDebug("Range [%lu..%lu)", m_Begin, m_End);
        break;
    default: {
        // The selection is published, and whoever hears of it may close this window.
        const QPointer<Panel> alive(this);
        mark.hit();
        if (!alive)
            return Handling::Stops;
        SetRange(col, col + 1);
        break;
    }
    }
    emit ReRange(m_Begin, m_End);
    return Handling::GoesOn;
}

void Panel::extendRange(unsigned long col)
{
    unsigned long begin = m_Begin;
    unsigned long end = m_End;
    if (begin > col) {
        if (begin == end)
            end = begin + 1;
        begin = col;
    } else if (end <= col) {
        end = col + 1;
    }
    SetRange(begin, end);
}

void Panel::contentsMouseReleaseEvent(QMouseEvent *event)
{
    if (m_Dragging) {
        // Beside the panel there may be a name that is scrolled out of sight.
        if (isInSight(event->pos()))
            dropRow(event->pos());
        endDrag();
    }
    emit Update();
}

// Kept: takes no guard and does not ask which button was let go.
void Panel::dropRow(const QPoint &point)
{
    for (const QCanvasItem *item : itemsAt(point)) {
        if (item->canvas() == nullptr || item->rtti() != RowItem::RTTI)
            continue;
        const auto *name = static_cast<const RowItem *>(item);
        const unsigned long row = name->getRow();
        if (row == m_Row)
            continue;
        name->getTarget()->bubbleRow(m_Row, row);
        emit ReArrange();
    }
}

QString Panel::toolTipAt(const QPoint &point) const
{
    for (const QCanvasItem *item : itemsAt(point)) {
        if (item->rtti() == RowItem::RTTI) {
            const auto *name = static_cast<const RowItem *>(item);
            return TAMBO::plainToolTip(
                QString::fromStdString(name->getTarget()->GetSeqName(name->getRow())));
        }
        if (item->rtti() == ColItem::RTTI)
            return QStringLiteral("column %1")
                .arg(static_cast<const ColItem *>(item)->getCol() + 1);
    }
    return {};
}
