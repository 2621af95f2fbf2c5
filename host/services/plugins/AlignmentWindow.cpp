// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWindow.h"

#include "AlignmentWindows.h"
#include "WindowUsers.h"

#include <QMainWindow>

#include <algorithm>

namespace TAMBO {

namespace {

// Far from the end of int, so that sums of positions and lengths stay within it.
constexpr long kLastPlace = 0x3fffffff;

int cellEdge(unsigned long index, int size, int scrolled)
{
    const long step = std::max(1, size);
    const auto last = static_cast<unsigned long>(kLastPlace / step);
    const long place = index > last ? kLastPlace : static_cast<long>(index) * step;
    return static_cast<int>(std::clamp(place - scrolled, -kLastPlace, kLastPlace));
}

std::optional<unsigned long> indexAt(int at, int size, int scrolled, unsigned long count)
{
    const long place = static_cast<long>(at) + scrolled;
    if (place < 0 || size <= 0)
        return std::nullopt;
    const auto index = static_cast<unsigned long>(place / size);
    return index < count ? std::optional(index) : std::nullopt;
}

// How many of count cells begin before the place.
unsigned long cellsBefore(long place, int size, unsigned long count)
{
    if (place <= 0 || size <= 0)
        return 0;
    return std::min(count, static_cast<unsigned long>((place - 1) / size) + 1);
}

// How far to scroll to bring what is at [begin, end) into a view of that length.
int wayIntoSight(int begin, int end, int length)
{
    if (begin < 0 || end - begin > length)
        return begin;
    return std::max(0, end - length);
}

} // namespace

AlignmentWindow::AlignmentWindow() : m_Users(std::make_shared<services::WindowUsers>()) { }

AlignmentWindow::~AlignmentWindow() = default;

std::vector<AlignmentWindow *> AlignmentWindow::All()
{
    return services::AlignmentWindows::instance().all();
}

AlignmentWindow *AlignmentWindow::Of(const QWidget *widget)
{
    const std::vector<AlignmentWindow *> &windows = services::AlignmentWindows::instance().all();
    for (; widget != nullptr; widget = widget->parentWidget()) {
        const auto found = std::ranges::find(windows, widget, [](const AlignmentWindow *window) {
            return static_cast<const QWidget *>(window->mainWindow());
        });
        if (found != windows.end())
            return *found;
    }
    return nullptr;
}

AlignmentWindow *AlignmentWindow::LastUsed()
{
    return services::AlignmentWindows::instance().lastUsed();
}

QRect AlignmentWindow::cellRect(const CellIndex &cell) const
{
    const QPoint scrolled = scrollPosition();
    const QSize size = cellSize();
    return {QPoint(cellEdge(cell.col, size.width(), scrolled.x()),
                   cellEdge(cell.row, size.height(), scrolled.y())),
            size};
}

QRect AlignmentWindow::blockRect(const CellBlock &block, WindowArea area) const
{
    if (block.isEmpty())
        return {};
    const QRect whole = areaWidget(area)->rect();
    const QPoint scrolled = scrollPosition();
    const QSize size = cellSize();
    const int left = cellEdge(block.colBegin, size.width(), scrolled.x());
    const int right = cellEdge(block.colEnd, size.width(), scrolled.x());
    const int top = cellEdge(block.rowBegin, size.height(), scrolled.y());
    const int bottom = cellEdge(block.rowEnd, size.height(), scrolled.y());
    switch (area) {
    case WindowArea::Cells:
        return {left, top, right - left, bottom - top};
    case WindowArea::Names:
        return {0, top, whole.width(), bottom - top};
    case WindowArea::Header:
        return {left, 0, right - left, whole.height()};
    case WindowArea::Corner:
        break;
    }
    return whole;
}

std::optional<CellIndex> AlignmentWindow::cellAt(const QPoint &point) const
{
    const std::optional<unsigned long> row = rowAt(point.y());
    const std::optional<unsigned long> col = columnAt(point.x());
    return row && col ? std::optional(CellIndex{*row, *col}) : std::nullopt;
}

std::optional<unsigned long> AlignmentWindow::rowAt(int y) const
{
    return indexAt(y, cellSize().height(), scrollPosition().y(), rows());
}

std::optional<unsigned long> AlignmentWindow::columnAt(int x) const
{
    return indexAt(x, cellSize().width(), scrollPosition().x(), columns());
}

CellBlock AlignmentWindow::visibleCells() const
{
    return cellsIn(QRect(QPoint(0, 0), visibleSize()));
}

CellBlock AlignmentWindow::cellsIn(const QRect &rect, WindowArea area) const
{
    if (rect.isEmpty())
        return {};
    const QPoint scrolled = scrollPosition();
    const QSize size = cellSize();
    const long top = static_cast<long>(rect.top()) + scrolled.y();
    const long left = static_cast<long>(rect.left()) + scrolled.x();
    const bool hasRows = area == WindowArea::Cells || area == WindowArea::Names;
    const bool hasColumns = area == WindowArea::Cells || area == WindowArea::Header;
    CellBlock block{0, rows(), 0, columns()};
    if (hasRows) {
        block.rowBegin = static_cast<unsigned long>(std::max(0L, top) / std::max(1, size.height()));
        block.rowEnd = cellsBefore(top + rect.height(), size.height(), rows());
    }
    if (hasColumns) {
        block.colBegin = static_cast<unsigned long>(std::max(0L, left) / std::max(1, size.width()));
        block.colEnd = cellsBefore(left + rect.width(), size.width(), columns());
    }
    return block.isEmpty() ? CellBlock{} : block;
}

void AlignmentWindow::scrollBy(const QPoint &distance)
{
    if (!distance.isNull())
        scrollTo(scrollPosition() + distance);
}

void AlignmentWindow::showCell(const CellIndex &cell, Placement placement)
{
    if (cell.row >= rows() || cell.col >= columns())
        return;
    const QRect rect = cellRect(cell);
    const QSize seen = visibleSize();
    if (placement == Placement::Centred)
        scrollBy({rect.left() - (seen.width() - rect.width()) / 2,
                  rect.top() - (seen.height() - rect.height()) / 2});
    else
        scrollBy({wayIntoSight(rect.left(), rect.right() + 1, seen.width()),
                  wayIntoSight(rect.top(), rect.bottom() + 1, seen.height())});
}

std::optional<QFont> AlignmentWindow::nameFont() const
{
    return mainWindow()->font();
}

std::optional<QFont> AlignmentWindow::chosenFont() const
{
    return std::nullopt;
}

void AlignmentWindow::setChosenFont(const QFont &) { }

} // namespace TAMBO
