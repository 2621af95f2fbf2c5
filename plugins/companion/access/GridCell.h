// SPDX-License-Identifier: GPL-3.0-or-later
// A cell, or the header of a row or a column, as assistive technology reads it.
#pragma once

#include "Grid.h"

namespace companion {

// Belongs to the toolkit's table of interfaces. Invalid, and without any text, when its place, its
// alignment or its window has gone.
class GridCell : public QAccessibleInterface, public QAccessibleTableCellInterface
{
public:
    GridCell(std::weak_ptr<Grid> grid, const GridPlace &place);

    // ---- QAccessibleInterface

    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] QObject *object() const override { return nullptr; }
    [[nodiscard]] QWindow *window() const override;
    [[nodiscard]] QAccessibleInterface *parent() const override;
    [[nodiscard]] QAccessibleInterface *child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    // Name: the letter, or "gap"; of a row its name, of a column its number and the residue number
    // that stands above it. Description: all that the line under the pointer says.
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString &) override { }
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] void *interface_cast(QAccessible::InterfaceType type) override;

    // ---- QAccessibleTableCellInterface

    [[nodiscard]] bool isSelected() const override;
    [[nodiscard]] QList<QAccessibleInterface *> columnHeaderCells() const override;
    [[nodiscard]] QList<QAccessibleInterface *> rowHeaderCells() const override;
    [[nodiscard]] int columnIndex() const override { return static_cast<int>(m_Place.col); }
    [[nodiscard]] int rowIndex() const override { return static_cast<int>(m_Place.row); }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface *table() const override { return parent(); }

    [[nodiscard]] const GridPlace &place() const noexcept { return m_Place; }

protected:
    ~GridCell() override;

private:
    // Null when the place is not there.
    [[nodiscard]] std::shared_ptr<Grid> grid() const;
    [[nodiscard]] QString name(const Grid &grid) const;

    std::weak_ptr<Grid> m_Grid;
    GridPlace m_Place;
};

} // namespace companion
