// SPDX-License-Identifier: GPL-3.0-or-later
#include "BlockDrag.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "CellCursor.h"
#include "DataPoint.h"
#include "KeptRegion.h"
#include "SlicedWork.h"
#include "Texts.h"

#include <QKeyEvent>
#include <QMainWindow>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace companion {

using TAMBO::WindowArea;

namespace {

// Above the cursor.
constexpr int kDragZ = 30;
constexpr int kTargetThickness = 2;
constexpr QColor kTarget(0, 120, 60);
constexpr QColor kRefused(200, 0, 0);
constexpr int kTargetGroundAlpha = 80;

QString wayText(unsigned long rows, long columns)
{
    const QString text =
        columns < 0 ? tr("To the left by %L1, rows: %L2") : tr("To the right by %L1, rows: %L2");
    return text.arg(std::abs(columns)).arg(rows);
}

} // namespace

BlockDrag::BlockDrag(TAMBO::AlignmentWindow &window, CellCursor &cursor, Telling telling)
    : AlignmentViewObserver(window),
      CellOverlay(window, WindowArea::Cells, kDragZ),
      CellEventFilter(window, WindowArea::Cells),
      m_Cursor(cursor),
      m_Telling(std::move(telling))
{
    m_Looking.setInterval(0);
    m_Looking.callOnTimeout([this] { goOnLooking(); });
}

BlockDrag::~BlockDrag() = default;

TAMBO::AlignmentWindow &BlockDrag::shown() const
{
    return *AlignmentViewObserver::window();
}

void BlockDrag::alignmentShown()
{
    end();
}

// What is held may be something else now.
void BlockDrag::layoutRebuilt()
{
    if (m_Drag && shown().alignment()->layoutRevision() != m_Drag->revision)
        end();
}

bool BlockDrag::isTaken(const QMouseEvent &mouse, const TAMBO::CellIndex &cell) const
{
    const TAMBO::Alignment &alignment = *shown().alignment();
    const bool isGap = alignment.letterAt(cell.row, cell.col) == '\0';
    const bool isDrag =
        mouse.button() == Qt::MiddleButton || (mouse.button() == Qt::LeftButton && isGap);
    if (!isDrag || CellCursor::drawsBlock(mouse))
        return false;
    return (m_Cursor.hasBlock() && m_Cursor.block()->contains(cell)) || keptColumns(alignment);
}

bool BlockDrag::press(const QMouseEvent &mouse)
{
    if (m_Drag)
        return true;
    const std::optional<TAMBO::CellIndex> cell = shown().cellAt(mouse.pos());
    const TAMBO::Alignment *const alignment = shown().alignment();
    if (!cell || alignment == nullptr || !isTaken(mouse, *cell))
        return false;
    Drag drag{*cell, TAMBO::CellBlock::of(*cell), false, cell->col, alignment->layoutRevision()};
    if (m_Cursor.hasBlock() && m_Cursor.block()->contains(*cell)) {
        drag.isOfBlock = true;
        drag.cells.rowBegin = m_Cursor.block()->rowBegin;
        drag.cells.rowEnd = m_Cursor.block()->rowEnd;
    } else {
        m_Cursor.click(*cell);
    }
    m_Drag = drag;
    m_IsRefused = false;
    shown().areaWidget(WindowArea::Cells)->setCursor(Qt::ClosedHandCursor);
    if (drag.isOfBlock && !keptColumns(*alignment) && m_News.began) {
        m_News.began({*cell, mouse.button(), cell->col}, drag.cells);
        m_News.moved(cell);
    }
    return true;
}

void BlockDrag::moveTo(const QPoint &point)
{
    if (shown().alignment()->layoutRevision() != m_Drag->revision)
        return end();
    const bool isInSight = QRect(QPoint(0, 0), shown().visibleSize()).contains(point);
    const std::optional<TAMBO::CellIndex> cell = isInSight ? shown().cellAt(point) : std::nullopt;
    std::optional<unsigned long> to;
    if (cell && cell->row >= m_Drag->cells.rowBegin && cell->row < m_Drag->cells.rowEnd)
        to = cell->col;
    if (to == m_Drag->to)
        return;
    m_Drag->to = to;
    if (m_News.moved)
        m_News.moved(to ? std::optional(TAMBO::CellIndex{m_Drag->from.row, *to}) : std::nullopt);
    beginLooking();
}

GapEdit BlockDrag::edit(unsigned long to) const
{
    return {GapEdit::Kind::Move, m_Drag->cells, long(to) - long(m_Drag->from.col)};
}

void BlockDrag::beginLooking()
{
    m_Run.reset();
    m_Looking.stop();
    m_IsRefused = false;
    shown().areaWidget(WindowArea::Cells)->setCursor(Qt::ClosedHandCursor);
    repaintRows();
    if (!m_Drag->to || *m_Drag->to == m_Drag->from.col)
        return m_Telling.show({});
    m_Telling.show(wayText(m_Drag->cells.rowEnd - m_Drag->cells.rowBegin, edit(*m_Drag->to).count));
    const TAMBO::Alignment &alignment = *shown().alignment();
    m_Run.emplace(alignment, edit(*m_Drag->to), keptColumns(alignment));
    m_Looking.start();
    goOnLooking();
}

// Of a million rows each look is some of them.
void BlockDrag::goOnLooking()
{
    const bool isMore = m_Run->goOn(kSlice);
    if (isMore)
        return;
    m_Looking.stop();
    m_IsRefused = !m_Run->outcome().isDone;
    if (!m_IsRefused)
        return;
    m_Telling.show(m_Run->outcome().reason);
    shown().areaWidget(WindowArea::Cells)->setCursor(Qt::ForbiddenCursor);
    repaintRows();
}

// As the window's own drag of one gap, which is let go with the left button.
Outcome BlockDrag::movePoint(unsigned long to) const
{
    TAMBO::Alignment &alignment = *shown().alignment();
    const auto [first, last] = std::minmax(m_Drag->from.col, to);
    const auto kept = keptColumns(alignment);
    if (kept && first < kept->second && last >= kept->first)
        return {false,
                tr("%1: the gap would move columns that are kept, %2 to %3.")
                    .arg(QString::fromStdString(alignment.GetSeqName(m_Drag->from.row)))
                    .arg(kept->first + 1)
                    .arg(kept->second),
                0};
    DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
    if (!change.m_good)
        return {false, {}, 0};
    alignment.moveGap(m_Drag->from.row, m_Drag->from.col, to, true);
    return {true, {}, 0};
}

void BlockDrag::release(Qt::MouseButton button)
{
    const Drag drag = *m_Drag;
    TAMBO::Alignment *const alignment = shown().alignment();
    const bool isDrop = drag.to && (button == Qt::LeftButton || button == Qt::MiddleButton) &&
                        alignment->layoutRevision() == drag.revision;
    if (!isDrop) {
        end();
        if (!drag.to)
            m_Telling.tell(tr("The gaps were let go outside of their rows: nothing was moved."));
        return;
    }
    const bool isInserting = *drag.to == drag.from.col;
    if (isInserting && button != Qt::MiddleButton)
        return end();
    const bool isPoint = !drag.isOfBlock && button == Qt::LeftButton &&
                         alignment->letterAt(drag.from.row, drag.from.col) == '\0';
    GapEdit wanted = edit(*drag.to);
    if (isInserting)
        wanted = {GapEdit::Kind::Insert, drag.cells, 1};
    const Outcome point = isPoint ? movePoint(*drag.to) : Outcome{};
    end();
    // The window may be closed while long work lets events through.
    const QPointer<TAMBO::AlignmentWindow> alive(&shown());
    const Outcome outcome =
        isPoint ? point
                : applyGapEdit(*alignment, wanted, keptColumns(*alignment), shown().mainWindow());
    if (alive == nullptr)
        return;
    if (!outcome.isDone && !outcome.reason.isEmpty())
        m_Telling.tell(outcome.reason);
    else if (outcome.isDone && drag.isOfBlock)
        m_Cursor.moveBy(isInserting || outcome.moved == 0 ? 0 : wanted.count);
}

void BlockDrag::end()
{
    if (!m_Drag)
        return;
    repaintRows();
    if (m_News.ended)
        m_News.ended();
    m_Drag.reset();
    m_Run.reset();
    m_Looking.stop();
    m_IsRefused = false;
    m_Telling.show({});
    shown().areaWidget(WindowArea::Cells)->unsetCursor();
}

void BlockDrag::repaintRows() const
{
    TAMBO::CellBlock rows = shown().visibleCells();
    rows.rowBegin = std::max(rows.rowBegin, m_Drag->cells.rowBegin);
    rows.rowEnd = std::min(rows.rowEnd, m_Drag->cells.rowEnd);
    if (!rows.isEmpty())
        repaint(rows, kTargetThickness);
}

TAMBO::CellBlock BlockDrag::target(unsigned long row, const TAMBO::CellBlock &seen) const
{
    const TAMBO::Alignment &alignment = *shown().alignment();
    const unsigned long from = m_Drag->from.col;
    const unsigned long to = *m_Drag->to;
    // Pushed by so much, or pulled.
    if (alignment.letterAt(row, from) != '\0')
        return {row, row + 1, std::min(from, to), std::max(from, to)};
    const unsigned long distance = std::max(from, to) - std::min(from, to);
    // What comes into sight has no room beyond that.
    const unsigned long first = seen.colBegin - std::min(seen.colBegin, distance + 1);
    const unsigned long last = std::min(seen.colEnd + distance + 1, alignment.width());
    unsigned long begin = from;
    while (begin > first && alignment.letterAt(row, begin - 1) == '\0')
        --begin;
    unsigned long end = from + 1;
    while (end < last && alignment.letterAt(row, end) == '\0')
        ++end;
    const unsigned long length = end - begin;
    const unsigned long moved = to > from ? std::min(begin + distance, alignment.width() - length)
                                          : begin - std::min(begin, distance);
    return {row, row + 1, moved, moved + length};
}

void BlockDrag::paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
                      const TAMBO::OverlayExposure &exposed)
{
    if (!m_Drag || !m_Drag->to || *m_Drag->to == m_Drag->from.col ||
        window.alignment()->layoutRevision() != m_Drag->revision)
        return;
    const TAMBO::CellBlock seen = window.visibleCells();
    const QColor color = m_IsRefused ? kRefused : kTarget;
    QColor ground = color;
    ground.setAlpha(kTargetGroundAlpha);
    painter.setPen(QPen(color, kTargetThickness));
    const unsigned long end = std::min(exposed.cells.rowEnd, m_Drag->cells.rowEnd);
    for (unsigned long row = std::max(exposed.cells.rowBegin, m_Drag->cells.rowBegin); row < end;
         ++row) {
        const QRect rect = window.blockRect(target(row, seen)).adjusted(1, 1, -1, -1);
        painter.fillRect(rect, ground);
        painter.drawRect(rect);
    }
}

bool BlockDrag::handle(TAMBO::AlignmentWindow &, WindowArea, QEvent &event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return press(static_cast<const QMouseEvent &>(event));
    case QEvent::MouseMove:
        if (m_Drag && static_cast<const QMouseEvent &>(event).buttons() == Qt::NoButton)
            end();
        else if (m_Drag)
            moveTo(static_cast<const QMouseEvent &>(event).pos());
        return m_Drag.has_value();
    case QEvent::MouseButtonRelease:
        if (!m_Drag)
            return false;
        moveTo(static_cast<const QMouseEvent &>(event).pos());
        if (m_Drag)
            release(static_cast<const QMouseEvent &>(event).button());
        return true;
    case QEvent::KeyPress:
        if (!m_Drag || static_cast<const QKeyEvent &>(event).key() != Qt::Key_Escape)
            return false;
        end();
        return true;
    default:
        return false;
    }
}

} // namespace companion
