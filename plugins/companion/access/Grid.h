// SPDX-License-Identifier: GPL-3.0-or-later
// The cells of one alignment window as assistive technology gets to know them: interfaces that are
// made when somebody asks for one, so that the size of the alignment costs nothing.
#pragma once

#include "CellPlaces.h"

#include <QAccessible>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>

namespace TAMBO {
class Alignment;
class AlignmentWindow;
} // namespace TAMBO

namespace companion {

enum class GridPart { Cell, RowHeader, ColumnHeader, Corner };

// A row header has no column, and so on; what a part does not have is 0.
struct GridPlace
{
    GridPart part = GridPart::Cell;
    unsigned long row = 0;
    unsigned long col = 0;

    friend bool operator==(const GridPlace &, const GridPlace &) = default;
    friend bool operator<(const GridPlace &one, const GridPlace &other)
    {
        return std::tie(one.part, one.row, one.col) < std::tie(other.part, other.row, other.col);
    }
};

// What the interfaces of a window have in common. They know it weakly: when it has gone they are
// invalid.
class Grid : public std::enable_shared_from_this<Grid>
{
public:
    // Of so many parts the interfaces are kept; then those that were made first go.
    static constexpr std::size_t kMostKept = 16384;

    using Make =
        std::function<QAccessibleInterface *(const std::weak_ptr<Grid> &, const GridPlace &)>;

    // make: the interface of a part.
    Grid(TAMBO::AlignmentWindow &window, Make make) : m_Window(window), m_Make(std::move(make)) { }
    // All interfaces go, those that somebody holds too: they are known by their numbers.
    ~Grid();
    Grid(const Grid &) = delete;
    Grid &operator=(const Grid &) = delete;

    [[nodiscard]] TAMBO::AlignmentWindow &window() const noexcept { return m_Window; }
    // Null while the window is empty.
    [[nodiscard]] const TAMBO::Alignment *alignment() const;
    // What both the window and its alignment have.
    [[nodiscard]] unsigned long rows() const;
    [[nodiscard]] unsigned long columns() const;
    [[nodiscard]] bool has(const GridPlace &place) const;

    // The scrolled widget around the cells, which is the table.
    [[nodiscard]] QWidget &widget() const;
    [[nodiscard]] QAccessibleInterface *table() const;
    // Whether somebody has asked for it.
    [[nodiscard]] bool hasTable() const noexcept { return m_HasTable; }
    void noteTable() noexcept { m_HasTable = true; }
    // Null for what the grid does not have.
    [[nodiscard]] QAccessibleInterface *at(const GridPlace &place);
    [[nodiscard]] std::size_t kept() const noexcept { return m_Ids.size(); }

    // Row after row, each with its header first; the headers of the columns come before them all.
    // Nothing when the place, or number, is out of bounds, or too far for a number.
    [[nodiscard]] std::optional<int> numberOf(const GridPlace &place) const;
    [[nodiscard]] std::optional<GridPlace> placeOf(int number) const;

    // Where the cell cursor is.
    void setCursor(const std::optional<TAMBO::CellIndex> &cell) { m_Cursor = cell; }
    [[nodiscard]] const std::optional<TAMBO::CellIndex> &cursor() const noexcept
    {
        return m_Cursor;
    }

private:
    TAMBO::AlignmentWindow &m_Window;
    Make m_Make;
    std::map<GridPlace, QAccessible::Id> m_Ids;
    std::deque<GridPlace> m_Made;
    std::optional<TAMBO::CellIndex> m_Cursor;
    bool m_HasTable = false;
};

} // namespace companion
