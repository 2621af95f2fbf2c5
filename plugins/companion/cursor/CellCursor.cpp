// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellCursor.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "DataPoint.h"
#include "Keyboard.h"
#include "SlicedWork.h"
#include "Texts.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

namespace companion {

using TAMBO::WindowArea;

namespace {

constexpr int kCursorThickness = 3;
// Seen on all colors of residues, and on white.
constexpr QColor kCursorOuter(0, 0, 0);
constexpr QColor kCursorInner(255, 255, 255);
constexpr QColor kBlockGround(0, 60, 200, 60);
constexpr QColor kBlockOuter(0, 40, 140);
// Above the frames of hits.
constexpr int kCursorZ = 20;
// So many cells of a block are looked at for a residue.
constexpr int kCellsOfALook = 4096;
constexpr auto kBetweenScrolls = std::chrono::milliseconds(40);

// By so many, and not beyond the last of all.
unsigned long onward(unsigned long from, unsigned long by, unsigned long all)
{
    return std::min(from + by, all - 1);
}

unsigned long back(unsigned long from, unsigned long by)
{
    return from - std::min(from, by);
}

Qt::KeyboardModifiers withoutKeypad(const QInputEvent &event)
{
    return event.modifiers() & ~Qt::KeypadModifier;
}

std::optional<Toward> towardOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return Toward::Left;
    case Qt::Key_Right:
        return Toward::Right;
    case Qt::Key_Up:
        return Toward::Up;
    case Qt::Key_Down:
        return Toward::Down;
    default:
        return std::nullopt;
    }
}

bool movesCursor(int key)
{
    return towardOf(key) || key == Qt::Key_Home || key == Qt::Key_End || key == Qt::Key_PageUp ||
           key == Qt::Key_PageDown;
}

// A frame far beyond what is seen has no sides there.
QRect seenPart(const QRect &rect, const QRect &seen)
{
    return rect.intersected(
        seen.adjusted(-kCursorThickness, -kCursorThickness, kCursorThickness, kCursorThickness));
}

// The one in the cell, else the first of the block.
TAMBO::Compound *residueOf(const TAMBO::Alignment &alignment, const TAMBO::CellIndex &cell,
                           const TAMBO::CellBlock &block)
{
    if (TAMBO::Compound *const residue = alignment.getItem(cell.row, cell.col))
        return residue;
    int looks = 0;
    for (unsigned long row = block.rowBegin; row < block.rowEnd; ++row) {
        for (unsigned long col = block.colBegin; col < block.colEnd; ++col) {
            if (TAMBO::Compound *const residue = alignment.getItem(row, col))
                return residue;
            if (++looks == kCellsOfALook)
                return nullptr;
        }
    }
    return nullptr;
}

std::vector<bool> flags(unsigned long begin, unsigned long end)
{
    std::vector<bool> flags(begin, false);
    flags.resize(end, true);
    return flags;
}

void drawCursorFrame(QPainter &painter, const QRect &rect, const QColor &outer)
{
    painter.setPen(QPen(outer, kCursorThickness));
    painter.drawRect(rect);
    painter.setPen(QPen(kCursorInner, 1));
    painter.drawRect(rect);
}

} // namespace

CellCursor::CellCursor(TAMBO::AlignmentWindow &window, News news)
    : AlignmentViewObserver(window),
      CellOverlay(window, WindowArea::Cells, kCursorZ),
      CellEventFilter(window, WindowArea::Cells),
      m_News(std::move(news))
{
    m_Walking.setInterval(0);
    m_Walking.callOnTimeout([this] { goOnWalking(); });
    m_Scrolling.setInterval(kBetweenScrolls);
    m_Scrolling.callOnTimeout([this] { drawTo(*m_Pointer); });
}

CellCursor::~CellCursor() = default;

// Window managers may keep Alt for themselves.
bool CellCursor::drawsBlock(const QMouseEvent &mouse)
{
    const Qt::KeyboardModifiers keys = mouse.modifiers();
    return mouse.button() == Qt::LeftButton &&
           (keys == Qt::AltModifier || keys == (Qt::ControlModifier | Qt::ShiftModifier));
}

TAMBO::AlignmentWindow &CellCursor::shown() const
{
    return *AlignmentViewObserver::window();
}

CellCursor::Place CellCursor::beginning() const
{
    const TAMBO::CellBlock cells = shown().visibleCells();
    if (cells.isEmpty() || shown().alignment() == nullptr)
        return std::nullopt;
    return m_Begin && cells.contains(*m_Begin) ? m_Begin
                                               : TAMBO::CellIndex{cells.rowBegin, cells.colBegin};
}

void CellCursor::toggle()
{
    if (m_Place)
        return set(std::nullopt);
    set(beginning());
    if (m_Place)
        takeKeyboard(*shown().areaWidget(WindowArea::Cells)->parentWidget());
}

std::optional<TAMBO::CellBlock> CellCursor::block() const
{
    if (!m_Place)
        return std::nullopt;
    const TAMBO::CellBlock cell = TAMBO::CellBlock::of(*m_Place);
    return m_Anchor ? cell.united(TAMBO::CellBlock::of(*m_Anchor)) : cell;
}

bool CellCursor::hasBlock() const noexcept
{
    return m_Place && m_Anchor && *m_Anchor != *m_Place;
}

// The window may not have been told yet how large the alignment is now.
TAMBO::CellIndex CellCursor::inBounds(const TAMBO::CellIndex &cell) const
{
    const TAMBO::Alignment &alignment = *shown().alignment();
    return {std::min(cell.row, alignment.height() - 1), std::min(cell.col, alignment.width() - 1)};
}

void CellCursor::set(const Place &place)
{
    change(std::nullopt, place, Shown::Yes);
}

void CellCursor::setBlock(const TAMBO::CellIndex &anchor, const TAMBO::CellIndex &place)
{
    change(anchor, place, Shown::Yes);
}

void CellCursor::moveBy(long columns)
{
    const TAMBO::Alignment *const alignment = shown().alignment();
    if (!m_Place || alignment == nullptr)
        return;
    const TAMBO::CellBlock cells = *block();
    const unsigned long room =
        columns < 0 ? cells.colBegin
                    : alignment->width() - std::min(alignment->width(), cells.colEnd);
    const unsigned long by = std::min(static_cast<unsigned long>(std::abs(columns)), room);
    const auto moved = [columns, by](const TAMBO::CellIndex &cell) {
        return TAMBO::CellIndex{cell.row, columns < 0 ? cell.col - by : cell.col + by};
    };
    change(m_Anchor ? Place(moved(*m_Anchor)) : std::nullopt, moved(*m_Place), Shown::Yes);
}

void CellCursor::change(const Place &anchor, const Place &place, Shown isShown)
{
    m_Walking.stop();
    m_Walk.reset();
    const auto repaintBlock = [this] {
        if (const auto cells = block())
            repaint(*cells, kCursorThickness);
    };
    repaintBlock();
    if (m_Place)
        m_Begin = m_Place;
    const TAMBO::Alignment *const alignment = shown().alignment();
    const bool hasCells = alignment != nullptr && alignment->height() > 0;
    m_Place = place && hasCells ? Place(inBounds(*place)) : std::nullopt;
    m_Anchor = m_Place && anchor ? Place(inBounds(*anchor)) : std::nullopt;
    repaintBlock();
    if (m_Place && isShown == Shown::Yes) {
        m_IsNewToWindow = m_Place->row >= shown().rows() || m_Place->col >= shown().columns();
        shown().showCell(*m_Place);
    }
    m_News.moved(m_Place);
    if (hasBlock())
        tellBlock();
}

void CellCursor::tellBlock() const
{
    const TAMBO::CellBlock cells = *block();
    m_News.tell(tr("Block of %1 × %2 cells: rows %3 to %4, columns %5 to %6")
                    .arg(cells.rowEnd - cells.rowBegin)
                    .arg(cells.colEnd - cells.colBegin)
                    .arg(cells.rowBegin + 1)
                    .arg(cells.rowEnd)
                    .arg(cells.colBegin + 1)
                    .arg(cells.colEnd));
}

void CellCursor::alignmentShown()
{
    m_Pointer.reset();
    m_Scrolling.stop();
    if (m_Place)
        set(std::nullopt);
    m_Begin.reset();
}

// It stays where it is as long as the alignment reaches so far.
void CellCursor::layoutRebuilt()
{
    if (!m_Place)
        return;
    const TAMBO::Alignment *const alignment = shown().alignment();
    const bool isIn = alignment != nullptr && alignment->height() > 0 &&
                      inBounds(*m_Place) == *m_Place &&
                      (!m_Anchor || inBounds(*m_Anchor) == *m_Anchor);
    if (!isIn)
        change(m_Anchor, m_Place, Shown::Yes);
    else if (m_IsNewToWindow)
        shown().showCell(*m_Place);
    m_IsNewToWindow = false;
}

void CellCursor::paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
                       const TAMBO::OverlayExposure &exposed)
{
    if (!m_Place)
        return;
    if (hasBlock()) {
        const QRect cells = seenPart(window.blockRect(*block()), exposed.rect);
        if (!cells.isEmpty()) {
            painter.fillRect(cells, kBlockGround);
            drawCursorFrame(painter, cells, kBlockOuter);
        }
    }
    drawCursorFrame(painter, window.cellRect(*m_Place), kCursorOuter);
}

CellCursor::Place CellCursor::target(int key, bool isCtrl) const
{
    const unsigned long rows = shown().rows();
    const unsigned long columns = shown().columns();
    if (rows == 0 || columns == 0)
        return std::nullopt;
    const TAMBO::CellBlock cells = shown().visibleCells();
    const unsigned long page = std::max(2UL, cells.rowEnd - cells.rowBegin) - 1;
    TAMBO::CellIndex to = *m_Place;
    switch (key) {
    case Qt::Key_Home:
        return TAMBO::CellIndex{isCtrl ? 0 : to.row, 0};
    case Qt::Key_End:
        return TAMBO::CellIndex{isCtrl ? rows - 1 : to.row, columns - 1};
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

void CellCursor::walk(Toward toward, bool extends)
{
    // A key that is held would begin it again and again.
    if (m_Walk && m_Walk->toward() == toward && m_WalkExtends == extends)
        return;
    const TAMBO::Alignment &alignment = *shown().alignment();
    m_Walk.emplace(alignment, *m_Place, toward);
    m_WalkRevision = alignment.layoutRevision();
    m_WalkExtends = extends;
    m_Walking.start();
    goOnWalking();
}

void CellCursor::goOnWalking()
{
    const TAMBO::Alignment *const alignment = shown().alignment();
    if (alignment == nullptr || alignment->layoutRevision() != m_WalkRevision) {
        m_Walking.stop();
        m_Walk.reset();
    } else if (!m_Walk->goOn(kSlice)) {
        const TAMBO::CellIndex end = m_Walk->place();
        change(m_WalkExtends ? Place(m_Anchor.value_or(*m_Place)) : std::nullopt, end, Shown::Yes);
    }
}

bool CellCursor::handleKey(const QKeyEvent &key)
{
    const Qt::KeyboardModifiers modifiers = withoutKeypad(key);
    if (key.key() == Qt::Key_Escape && modifiers == Qt::NoModifier)
        return handleEscape(key);
    if (key.key() == Qt::Key_Space && modifiers == Qt::ControlModifier && m_Place) {
        toggleSelected();
        return true;
    }
    if (!movesCursor(key.key()) || (modifiers & ~(Qt::ShiftModifier | Qt::ControlModifier)) != 0)
        return false;
    const bool extends = modifiers.testFlag(Qt::ShiftModifier);
    const bool isCtrl = modifiers.testFlag(Qt::ControlModifier);
    const std::optional<Toward> toward = towardOf(key.key());
    if (isCtrl && !toward && key.key() != Qt::Key_Home && key.key() != Qt::Key_End)
        return false;
    if (!m_Place) {
        // An arrow shows first where the cursor is.
        set(beginning());
        if (!m_Place)
            return false;
        if (toward && !isCtrl && !extends)
            return true;
    }
    if (isCtrl && toward)
        walk(*toward, extends);
    else if (const Place to = target(key.key(), isCtrl))
        change(extends ? Place(m_Anchor.value_or(*m_Place)) : std::nullopt, to, Shown::Yes);
    return true;
}

// One thing at a time.
bool CellCursor::handleEscape(const QKeyEvent &key)
{
    if (m_Pointer) {
        m_Pointer.reset();
        m_Scrolling.stop();
        set(m_Anchor);
        return true;
    }
    // Rows and columns are dragged in the panels.
    const bool wasDragged = m_News.endDrag && m_News.endDrag();
    if (wasDragged || QGuiApplication::mouseButtons() != Qt::NoButton) {
        shown().endDrag();
        return true;
    }
    // Who holds the key down wants one thing to end.
    if (key.isAutoRepeat())
        return true;
    if (hasBlock()) {
        set(m_Place);
    } else if (!m_News.deselect || !m_News.deselect()) {
        if (!m_Place)
            return false;
        set(std::nullopt);
    }
    return true;
}

// The cursor's residue says which of both, else the first one.
void CellCursor::toggleSelected()
{
    using Selecting = TAMBO::Alignment::Selecting;
    TAMBO::Alignment *const alignment = shown().alignment();
    DataPoint<TAMBO::Alignment> change(nullptr, alignment);
    if (!change.m_good)
        return;
    const TAMBO::CellBlock cells = *block();
    const TAMBO::Compound *const residue = residueOf(*alignment, *m_Place, cells);
    const bool isSelected = residue != nullptr && residue->IsSelected();
    alignment->selectCells(flags(cells.rowBegin, cells.rowEnd), flags(cells.colBegin, cells.colEnd),
                           isSelected ? Selecting::Remove : Selecting::Add);
}

CellCursor::Place CellCursor::cellNear(const QPoint &point) const
{
    const TAMBO::CellBlock seen = shown().visibleCells();
    if (seen.isEmpty())
        return std::nullopt;
    const auto near = [](std::optional<unsigned long> at, bool isBefore, unsigned long count) {
        return at.value_or(isBefore ? 0 : count - 1);
    };
    return TAMBO::CellIndex{near(shown().rowAt(point.y()), point.y() < 0, shown().rows()),
                            near(shown().columnAt(point.x()), point.x() < 0, shown().columns())};
}

// Beside the window it goes on for as long as the button is held.
void CellCursor::drawTo(const QPoint &point)
{
    m_Pointer = point;
    const Place to = cellNear(point);
    if (!to || !m_Place) {
        m_Scrolling.stop();
        return;
    }
    const Place anchor = m_Anchor.value_or(*m_Place);
    if (to != m_Place)
        change(anchor, to, Shown::Yes);
    if (QRect(QPoint(0, 0), shown().visibleSize()).contains(point))
        m_Scrolling.stop();
    else if (!m_Scrolling.isActive())
        m_Scrolling.start();
}

bool CellCursor::handlePress(const QMouseEvent &mouse)
{
    const Place cell = shown().cellAt(mouse.pos());
    if (mouse.button() != Qt::LeftButton || !cell)
        return false;
    if (!drawsBlock(mouse)) {
        click(*cell);
        return false;
    }
    m_Begin = cell;
    m_Pointer = mouse.pos();
    change(cell, cell, Shown::No);
    return true;
}

// The window looks what is under the pointer afterwards: nothing may scroll.
void CellCursor::click(const TAMBO::CellIndex &cell)
{
    m_Begin = cell;
    if (m_Place)
        change(std::nullopt, cell, Shown::No);
}

bool CellCursor::handleDrag(const QMouseEvent &mouse)
{
    if (!m_Pointer)
        return false;
    // Its release may have got lost.
    if (mouse.buttons().testFlag(Qt::LeftButton)) {
        drawTo(mouse.pos());
    } else {
        m_Pointer.reset();
        m_Scrolling.stop();
    }
    return true;
}

bool CellCursor::handle(TAMBO::AlignmentWindow &, WindowArea, QEvent &event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
        return handleKey(static_cast<const QKeyEvent &>(event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return handlePress(static_cast<const QMouseEvent &>(event));
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        return handleDrag(static_cast<const QMouseEvent &>(event));
    default:
        return false;
    }
}

} // namespace companion
