// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellCursor.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "DataPoint.h"

#include <QKeyEvent>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace companion {

using TAMBO::WindowArea;

namespace {

constexpr int kCursorThickness = 3;
// Seen on all colors of residues, and on white.
constexpr QColor kCursorOuter(0, 0, 0);
constexpr QColor kCursorInner(255, 255, 255);
// Above the frames of hits.
constexpr int kCursorZ = 20;

// By so many, and not beyond the last of all.
unsigned long onward(unsigned long from, unsigned long by, unsigned long all)
{
    return std::min(from + by, all - 1);
}

unsigned long back(unsigned long from, unsigned long by)
{
    return from - std::min(from, by);
}

} // namespace

CellCursor::CellCursor(TAMBO::AlignmentWindow &window, std::function<void(const Place &)> moved)
    : AlignmentViewObserver(window),
      CellOverlay(window, WindowArea::Cells, kCursorZ),
      CellEventFilter(window, WindowArea::Cells),
      m_Moved(std::move(moved))
{ }

CellCursor::~CellCursor() = default;

TAMBO::AlignmentWindow &CellCursor::shown() const
{
    return *AlignmentViewObserver::window();
}

void CellCursor::toggle()
{
    const TAMBO::CellBlock cells = shown().visibleCells();
    if (m_Place || cells.isEmpty())
        return set(std::nullopt);
    set(TAMBO::CellIndex{cells.rowBegin, cells.colBegin});
    shown().areaWidget(WindowArea::Cells)->parentWidget()->setFocus(Qt::ShortcutFocusReason);
}

void CellCursor::set(const Place &place)
{
    const auto repaintAt = [this](const Place &cell) {
        if (cell)
            repaint(TAMBO::CellBlock::of(*cell), kCursorThickness);
    };
    repaintAt(std::exchange(m_Place, place));
    repaintAt(m_Place);
    if (m_Place)
        shown().showCell(*m_Place);
    m_Moved(m_Place);
}

void CellCursor::alignmentShown()
{
    if (m_Place)
        set(std::nullopt);
}

// It stays where it is as long as the alignment reaches so far.
void CellCursor::layoutRebuilt()
{
    if (!m_Place)
        return;
    const unsigned long rows = shown().rows();
    const unsigned long columns = shown().columns();
    if (rows == 0 || columns == 0)
        set(std::nullopt);
    else
        set(TAMBO::CellIndex{std::min(m_Place->row, rows - 1),
                             std::min(m_Place->col, columns - 1)});
}

void CellCursor::paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
                       const TAMBO::OverlayExposure &)
{
    if (!m_Place)
        return;
    const QRect cell = window.cellRect(*m_Place);
    painter.setPen(QPen(kCursorOuter, kCursorThickness));
    painter.drawRect(cell);
    painter.setPen(QPen(kCursorInner, 1));
    painter.drawRect(cell);
}

CellCursor::Place CellCursor::target(const QKeyEvent &key) const
{
    const unsigned long rows = shown().rows();
    const unsigned long columns = shown().columns();
    const bool isCtrl = key.modifiers() == Qt::ControlModifier;
    if (rows == 0 || columns == 0 || (!isCtrl && (key.modifiers() & ~Qt::KeypadModifier) != 0))
        return std::nullopt;
    const TAMBO::CellBlock cells = shown().visibleCells();
    const unsigned long page = std::max(2UL, cells.rowEnd - cells.rowBegin) - 1;
    TAMBO::CellIndex to = *m_Place;
    switch (key.key()) {
    case Qt::Key_Home:
        return TAMBO::CellIndex{isCtrl ? 0 : to.row, 0};
    case Qt::Key_End:
        return TAMBO::CellIndex{isCtrl ? rows - 1 : to.row, columns - 1};
    default:
        break;
    }
    if (isCtrl)
        return std::nullopt;
    switch (key.key()) {
    case Qt::Key_Left:
        to.col = back(to.col, 1);
        break;
    case Qt::Key_Right:
        to.col = onward(to.col, 1, columns);
        break;
    case Qt::Key_Up:
        to.row = back(to.row, 1);
        break;
    case Qt::Key_Down:
        to.row = onward(to.row, 1, rows);
        break;
    case Qt::Key_PageUp:
        to.row = back(to.row, page);
        break;
    case Qt::Key_PageDown:
        to.row = onward(to.row, page, rows);
        break;
    default:
        return std::nullopt;
    }
    return to;
}

bool CellCursor::handle(TAMBO::AlignmentWindow &, WindowArea, QEvent &event)
{
    if (!m_Place || event.type() != QEvent::KeyPress)
        return false;
    const auto &key = static_cast<const QKeyEvent &>(event);
    if (const Place to = target(key)) {
        set(to);
        return true;
    }
    if (key.modifiers() != Qt::NoModifier)
        return false;
    if (key.key() == Qt::Key_Escape)
        set(std::nullopt);
    else if (key.key() == Qt::Key_Space)
        toggleSelected();
    else
        return false;
    return true;
}

void CellCursor::toggleSelected() const
{
    const TAMBO::Alignment *const alignment = shown().alignment();
    TAMBO::Compound *const residue =
        alignment == nullptr ? nullptr : alignment->getItem(m_Place->row, m_Place->col);
    if (residue == nullptr)
        return;
    DataPoint<TAMBO::Compound> change(nullptr, residue);
    if (change.m_good)
        change->ToggleSelected();
}

} // namespace companion
