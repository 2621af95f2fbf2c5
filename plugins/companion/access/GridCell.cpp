// SPDX-License-Identifier: GPL-3.0-or-later
#include "GridCell.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "PlaceText.h"
#include "Texts.h"

#include <QWidget>

#include <utility>

namespace companion {

using TAMBO::WindowArea;

namespace {

WindowArea areaOf(GridPart part)
{
    switch (part) {
    case GridPart::RowHeader:
        return WindowArea::Names;
    case GridPart::ColumnHeader:
        return WindowArea::Header;
    case GridPart::Corner:
        return WindowArea::Corner;
    case GridPart::Cell:
        break;
    }
    return WindowArea::Cells;
}

// The numbers above the cells are those of the first row.
QString columnName(const TAMBO::Alignment &alignment, unsigned long col)
{
    const QString name = tr("Column %1").arg(col + 1);
    const auto *const group = dynamic_cast<const TAMBO::Group *>(alignment.getItem(0, col));
    return group == nullptr
               ? name
               : tr("%1, number %2")
                     .arg(name, QString::fromStdString(group->GetSeqId().getValue()).trimmed());
}

QString letterName(char letter)
{
    return letter == '\0' ? tr("gap") : QString(QLatin1Char(letter));
}

} // namespace

GridCell::GridCell(std::weak_ptr<Grid> grid, const GridPlace &place)
    : m_Grid(std::move(grid)), m_Place(place)
{ }

GridCell::~GridCell() = default;

std::shared_ptr<Grid> GridCell::grid() const
{
    std::shared_ptr<Grid> grid = m_Grid.lock();
    return grid != nullptr && grid->has(m_Place) ? grid : nullptr;
}

bool GridCell::isValid() const
{
    return grid() != nullptr;
}

QWindow *GridCell::window() const
{
    const auto grid = this->grid();
    return grid == nullptr ? nullptr : grid->widget().window()->windowHandle();
}

QAccessibleInterface *GridCell::parent() const
{
    const auto grid = this->grid();
    return grid == nullptr ? nullptr : grid->table();
}

QString GridCell::name(const Grid &grid) const
{
    const TAMBO::Alignment &alignment = *grid.alignment();
    switch (m_Place.part) {
    case GridPart::RowHeader:
        return QString::fromStdString(alignment.GetSeqName(m_Place.row));
    case GridPart::ColumnHeader:
        return columnName(alignment, m_Place.col);
    case GridPart::Corner:
        return QString::fromStdString(alignment.Name());
    case GridPart::Cell:
        break;
    }
    return letterName(alignment.letterAt(m_Place.row, m_Place.col));
}

QString GridCell::text(QAccessible::Text kind) const
{
    const auto grid = this->grid();
    if (grid == nullptr)
        return {};
    if (kind == QAccessible::Name)
        return name(*grid);
    if (kind == QAccessible::Description && m_Place.part == GridPart::Cell)
        return placeText(*grid->alignment(), {m_Place.row, m_Place.col});
    return {};
}

QRect GridCell::rect() const
{
    const auto grid = this->grid();
    if (grid == nullptr)
        return {};
    const WindowArea area = areaOf(m_Place.part);
    const TAMBO::CellBlock block = TAMBO::CellBlock::of({m_Place.row, m_Place.col});
    const QWidget &widget = *grid->window().areaWidget(area);
    const QRect place = grid->window().blockRect(block, area);
    return {widget.mapToGlobal(place.topLeft()), place.size()};
}

QAccessible::Role GridCell::role() const
{
    switch (m_Place.part) {
    case GridPart::RowHeader:
        return QAccessible::RowHeader;
    case GridPart::ColumnHeader:
    case GridPart::Corner:
        return QAccessible::ColumnHeader;
    case GridPart::Cell:
        break;
    }
    return QAccessible::Cell;
}

QAccessible::State GridCell::state() const
{
    QAccessible::State state;
    const auto grid = this->grid();
    if (grid == nullptr) {
        state.invalid = true;
        return state;
    }
    state.readOnly = true;
    if (m_Place.part != GridPart::Cell)
        return state;
    const TAMBO::CellIndex cell{m_Place.row, m_Place.col};
    state.selectable = true;
    state.multiSelectable = true;
    state.selected = isSelected();
    state.focusable = true;
    state.focused = grid->cursor() == cell && grid->widget().hasFocus();
    state.offscreen = !grid->window().visibleCells().contains(cell);
    return state;
}

void *GridCell::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TableCellInterface && m_Place.part == GridPart::Cell
               ? static_cast<QAccessibleTableCellInterface *>(this)
               : nullptr;
}

bool GridCell::isSelected() const
{
    const auto grid = this->grid();
    if (grid == nullptr || m_Place.part != GridPart::Cell)
        return false;
    const TAMBO::Compound *const residue = grid->alignment()->getItem(m_Place.row, m_Place.col);
    return residue != nullptr && residue->IsSelected();
}

QList<QAccessibleInterface *> GridCell::columnHeaderCells() const
{
    const auto grid = this->grid();
    if (grid == nullptr)
        return {};
    return {grid->at({GridPart::ColumnHeader, 0, m_Place.col})};
}

QList<QAccessibleInterface *> GridCell::rowHeaderCells() const
{
    const auto grid = this->grid();
    if (grid == nullptr)
        return {};
    return {grid->at({GridPart::RowHeader, m_Place.row, 0})};
}

} // namespace companion
