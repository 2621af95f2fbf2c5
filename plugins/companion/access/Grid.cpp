// SPDX-License-Identifier: GPL-3.0-or-later
#include "Grid.h"

#include "Alignment.h"
#include "AlignmentWindow.h"

#include <QWidget>

#include <algorithm>
#include <limits>

namespace companion {

Grid::~Grid()
{
    for (const auto &[place, id] : m_Ids)
        QAccessible::deleteAccessibleInterface(id);
}

const TAMBO::Alignment *Grid::alignment() const
{
    return m_Window.alignment();
}

unsigned long Grid::rows() const
{
    return alignment() == nullptr ? 0 : std::min(m_Window.rows(), alignment()->height());
}

unsigned long Grid::columns() const
{
    return alignment() == nullptr ? 0 : std::min(m_Window.columns(), alignment()->width());
}

bool Grid::has(const GridPlace &place) const
{
    return place.row < rows() && place.col < columns();
}

QWidget &Grid::widget() const
{
    return *m_Window.areaWidget(TAMBO::WindowArea::Cells)->parentWidget();
}

QAccessibleInterface *Grid::table() const
{
    return QAccessible::queryAccessibleInterface(&widget());
}

QAccessibleInterface *Grid::at(const GridPlace &place)
{
    if (!has(place))
        return nullptr;
    const auto found = m_Ids.find(place);
    if (found != m_Ids.end()) {
        if (QAccessibleInterface *const made = QAccessible::accessibleInterface(found->second))
            return made;
        m_Ids.erase(found);
        std::erase(m_Made, place);
    }
    if (m_Made.size() >= kMostKept) {
        const auto end = m_Made.begin() + kMostKept / 2;
        for (auto old = m_Made.begin(); old != end; ++old)
            QAccessible::deleteAccessibleInterface(m_Ids.extract(*old).mapped());
        m_Made.erase(m_Made.begin(), end);
    }
    QAccessibleInterface *const made = m_Make(weak_from_this(), place);
    m_Ids.emplace(place, QAccessible::registerAccessibleInterface(made));
    m_Made.push_back(place);
    return made;
}

std::optional<int> Grid::numberOf(const GridPlace &place) const
{
    if (!has(place))
        return std::nullopt;
    const bool isInHeader = place.part == GridPart::ColumnHeader || place.part == GridPart::Corner;
    const bool isRowHeader = place.part == GridPart::RowHeader || place.part == GridPart::Corner;
    const unsigned long line = isInHeader ? 0 : place.row + 1;
    const unsigned long number = line * (columns() + 1) + (isRowHeader ? 0 : place.col + 1);
    return number > static_cast<unsigned>(std::numeric_limits<int>::max())
               ? std::nullopt
               : std::optional(static_cast<int>(number));
}

std::optional<GridPlace> Grid::placeOf(int number) const
{
    if (number < 0)
        return std::nullopt;
    const unsigned long line = static_cast<unsigned>(number) / (columns() + 1);
    const unsigned long col = static_cast<unsigned>(number) % (columns() + 1);
    GridPlace place;
    if (line == 0)
        place =
            col == 0 ? GridPlace{GridPart::Corner} : GridPlace{GridPart::ColumnHeader, 0, col - 1};
    else
        place = col == 0 ? GridPlace{GridPart::RowHeader, line - 1}
                         : GridPlace{GridPart::Cell, line - 1, col - 1};
    return has(place) ? std::optional(place) : std::nullopt;
}

} // namespace companion
