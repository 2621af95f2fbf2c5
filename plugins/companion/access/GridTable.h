// SPDX-License-Identifier: GPL-3.0-or-later
// The scrolled cells of an alignment window, as a table that assistive technology reads.
#pragma once

#include "Grid.h"

#include <QAccessibleWidget>

namespace companion {

// Belongs to the toolkit's table of interfaces. Without its window it has neither rows nor columns.
// Everything of a cell is reached by row and column, whatever the size; what would otherwise grow
// with the alignment is cut off: children are counted up to Grid::kMostKept, and selected rows,
// columns and cells are those in sight.
class GridTable : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit GridTable(const std::shared_ptr<Grid> &grid);

    // ---- QAccessibleInterface

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface *child(int index) const override;
    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *child) const override;
    [[nodiscard]] QAccessibleInterface *focusChild() const override;
    [[nodiscard]] void *interface_cast(QAccessible::InterfaceType type) override;

    // ---- QAccessibleTableInterface

    [[nodiscard]] QAccessibleInterface *caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *cellAt(int row, int column) const override;
    [[nodiscard]] int selectedCellCount() const override;
    [[nodiscard]] QList<QAccessibleInterface *> selectedCells() const override;
    [[nodiscard]] QString columnDescription(int column) const override;
    [[nodiscard]] QString rowDescription(int row) const override;
    [[nodiscard]] int selectedColumnCount() const override;
    [[nodiscard]] int selectedRowCount() const override;
    [[nodiscard]] int columnCount() const override;
    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] QList<int> selectedColumns() const override;
    [[nodiscard]] QList<int> selectedRows() const override;
    [[nodiscard]] bool isColumnSelected(int column) const override;
    [[nodiscard]] bool isRowSelected(int row) const override;
    // False when there is no such row or column, or nothing can be changed.
    bool selectRow(int row) override;
    bool selectColumn(int column) override;
    bool unselectRow(int row) override;
    bool unselectColumn(int column) override;
    void modelChange(QAccessibleTableModelChangeEvent *) override { }

protected:
    ~GridTable() override;

private:
    [[nodiscard]] QString nameOf(const GridPlace &place) const;
    [[nodiscard]] std::vector<TAMBO::CellIndex> selectedInSight() const;

    std::weak_ptr<Grid> m_Grid;
};

} // namespace companion
