// SPDX-License-Identifier: GPL-3.0-or-later
#include "GridTable.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "DataPoint.h"
#include "GridCell.h"
#include "Space.h"
#include "Texts.h"

#include <QWidget>

#include <algorithm>
#include <limits>
#include <vector>

namespace companion {

namespace {

// Of the cells in sight, when they are so small that nobody reads them one by one.
constexpr std::size_t kMostLookedAt = Grid::kMostKept / 2;

int toInt(unsigned long value)
{
    return static_cast<int>(
        std::min<unsigned long>(value, static_cast<unsigned>(std::numeric_limits<int>::max())));
}

// The work gets an alignment that may be changed.
template <typename Work>
bool select(const std::weak_ptr<Grid> &weak, const GridPlace &place, Work work)
{
    const std::shared_ptr<Grid> grid = weak.lock();
    if (grid == nullptr || !grid->has(place))
        return false;
    DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
    if (!change.m_good)
        return false;
    work(*grid->window().alignment());
    return true;
}

GridPlace cellPlace(int row, int column)
{
    // A negative number is beyond all rows.
    return {GridPart::Cell, static_cast<unsigned long>(row), static_cast<unsigned long>(column)};
}

} // namespace

GridTable::GridTable(const std::shared_ptr<Grid> &grid)
    : QAccessibleWidget(&grid->widget(), QAccessible::Table), m_Grid(grid)
{ }

GridTable::~GridTable() = default;

QString GridTable::text(QAccessible::Text kind) const
{
    const auto grid = m_Grid.lock();
    const TAMBO::Alignment *const alignment = grid == nullptr ? nullptr : grid->alignment();
    if (kind == QAccessible::Name)
        return alignment == nullptr
                   ? companion::tr("Cells of the alignment")
                   : companion::tr("Alignment %1").arg(QString::fromStdString(alignment->Name()));
    if (kind == QAccessible::Description)
        return alignment == nullptr
                   ? companion::tr("No alignment is shown.")
                   : companion::tr("%1, %2").arg(
                         grid->rows() == 1 ? companion::tr("1 row")
                                           : companion::tr("%L1 rows").arg(grid->rows()),
                         grid->columns() == 1 ? companion::tr("1 column")
                                              : companion::tr("%L1 columns").arg(grid->columns()));
    return QAccessibleWidget::text(kind);
}

QAccessible::State GridTable::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.multiSelectable = true;
    return state;
}

int GridTable::childCount() const
{
    const auto grid = m_Grid.lock();
    if (grid == nullptr || grid->rows() == 0)
        return 0;
    const unsigned long line = grid->columns() + 1;
    const unsigned long lines = std::min<unsigned long>(grid->rows() + 1, Grid::kMostKept);
    return toInt(std::min<unsigned long>(lines * line, Grid::kMostKept));
}

QAccessibleInterface *GridTable::child(int index) const
{
    const auto grid = m_Grid.lock();
    const auto place = grid == nullptr ? std::nullopt : grid->placeOf(index);
    return place ? grid->at(*place) : nullptr;
}

QAccessibleInterface *GridTable::childAt(int x, int y) const
{
    const auto grid = m_Grid.lock();
    if (grid == nullptr)
        return nullptr;
    const QWidget &cells = *grid->window().areaWidget(TAMBO::WindowArea::Cells);
    const QPoint point = cells.mapFromGlobal(QPoint(x, y));
    const auto cell = cells.rect().contains(point) ? grid->window().cellAt(point) : std::nullopt;
    return cell ? grid->at({GridPart::Cell, cell->row, cell->col}) : nullptr;
}

int GridTable::indexOfChild(const QAccessibleInterface *child) const
{
    const auto grid = m_Grid.lock();
    const auto *const cell = dynamic_cast<const GridCell *>(child);
    if (grid == nullptr || cell == nullptr || cell->parent() != this)
        return -1;
    return grid->numberOf(cell->place()).value_or(-1);
}

QAccessibleInterface *GridTable::focusChild() const
{
    const auto grid = m_Grid.lock();
    if (grid == nullptr || !grid->cursor() || !grid->widget().hasFocus())
        return nullptr;
    return grid->at({GridPart::Cell, grid->cursor()->row, grid->cursor()->col});
}

void *GridTable::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface *>(this)
                                               : QAccessibleWidget::interface_cast(type);
}

// ---- QAccessibleTableInterface

QAccessibleInterface *GridTable::cellAt(int row, int column) const
{
    const auto grid = m_Grid.lock();
    return grid == nullptr ? nullptr : grid->at(cellPlace(row, column));
}

std::vector<TAMBO::CellIndex> GridTable::selectedInSight() const
{
    std::vector<TAMBO::CellIndex> selected;
    const auto grid = m_Grid.lock();
    if (grid == nullptr || grid->alignment() == nullptr)
        return selected;
    const TAMBO::CellBlock cells = grid->window().visibleCells();
    std::size_t looks = 0;
    for (unsigned long row = cells.rowBegin; row < cells.rowEnd; ++row) {
        for (unsigned long col = cells.colBegin; col < cells.colEnd; ++col) {
            if (++looks > kMostLookedAt)
                return selected;
            const TAMBO::Compound *const residue = grid->alignment()->getItem(row, col);
            if (residue != nullptr && residue->IsSelected())
                selected.push_back({row, col});
        }
    }
    return selected;
}

int GridTable::selectedCellCount() const
{
    return toInt(selectedInSight().size());
}

QList<QAccessibleInterface *> GridTable::selectedCells() const
{
    QList<QAccessibleInterface *> cells;
    for (const TAMBO::CellIndex &cell : selectedInSight())
        cells << cellAt(toInt(cell.row), toInt(cell.col));
    return cells;
}

QString GridTable::nameOf(const GridPlace &place) const
{
    const auto grid = m_Grid.lock();
    const QAccessibleInterface *const part = grid == nullptr ? nullptr : grid->at(place);
    return part == nullptr ? QString() : part->text(QAccessible::Name);
}

QString GridTable::columnDescription(int column) const
{
    return nameOf({GridPart::ColumnHeader, 0, static_cast<unsigned long>(column)});
}

QString GridTable::rowDescription(int row) const
{
    return nameOf({GridPart::RowHeader, static_cast<unsigned long>(row), 0});
}

int GridTable::columnCount() const
{
    const auto grid = m_Grid.lock();
    return grid == nullptr ? 0 : toInt(grid->columns());
}

int GridTable::rowCount() const
{
    const auto grid = m_Grid.lock();
    return grid == nullptr ? 0 : toInt(grid->rows());
}

QList<int> GridTable::selectedColumns() const
{
    QList<int> columns;
    const auto grid = m_Grid.lock();
    if (grid == nullptr)
        return columns;
    const TAMBO::CellBlock cells = grid->window().visibleCells();
    for (unsigned long col = cells.colBegin; col < cells.colEnd; ++col)
        if (isColumnSelected(toInt(col)))
            columns << toInt(col);
    return columns;
}

QList<int> GridTable::selectedRows() const
{
    QList<int> rows;
    const auto grid = m_Grid.lock();
    if (grid == nullptr)
        return rows;
    const TAMBO::CellBlock cells = grid->window().visibleCells();
    for (unsigned long row = cells.rowBegin; row < cells.rowEnd; ++row)
        if (isRowSelected(toInt(row)))
            rows << toInt(row);
    return rows;
}

int GridTable::selectedColumnCount() const
{
    return toInt(static_cast<unsigned long>(selectedColumns().size()));
}

int GridTable::selectedRowCount() const
{
    return toInt(static_cast<unsigned long>(selectedRows().size()));
}

bool GridTable::isColumnSelected(int column) const
{
    const auto grid = m_Grid.lock();
    return grid != nullptr && grid->has(cellPlace(0, column)) &&
           grid->alignment()->isColumnSelected(static_cast<unsigned long>(column));
}

bool GridTable::isRowSelected(int row) const
{
    const auto grid = m_Grid.lock();
    return grid != nullptr && grid->has(cellPlace(row, 0)) &&
           grid->alignment()->isRowSelected(static_cast<unsigned long>(row));
}

bool GridTable::selectRow(int row)
{
    return select(m_Grid, cellPlace(row, 0), [row](TAMBO::Alignment &alignment) {
        alignment.selectInRow(static_cast<unsigned long>(row), {0, alignment.width()});
    });
}

bool GridTable::unselectRow(int row)
{
    return select(m_Grid, cellPlace(row, 0), [row](TAMBO::Alignment &alignment) {
        alignment.GetSeq(static_cast<unsigned long>(row))->SetSelected(false);
    });
}

bool GridTable::selectColumn(int column)
{
    return select(m_Grid, cellPlace(0, column), [column](TAMBO::Alignment &alignment) {
        const auto col = static_cast<unsigned long>(column);
        alignment.select({col, col + 1}, true);
    });
}

bool GridTable::unselectColumn(int column)
{
    return select(m_Grid, cellPlace(0, column), [column](TAMBO::Alignment &alignment) {
        const auto col = static_cast<unsigned long>(column);
        alignment.select({col, col + 1}, false);
    });
}

} // namespace companion
