// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCursor.h"

#include "AlignmentWindow.h"

#include <QKeyEvent>
#include <QToolTip>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace companion {

TrackCursor::TrackCursor(QWidget &widget, TAMBO::AlignmentWindow &window,
                         std::function<QString(unsigned long)> values)
    : m_Widget(widget), m_Window(window), m_Values(std::move(values))
{
    m_Widget.setFocusPolicy(Qt::StrongFocus);
    m_Widget.installEventFilter(this);
}

TrackCursor::~TrackCursor() = default;

std::optional<unsigned long> TrackCursor::column() const
{
    return m_Widget.hasFocus() && m_Column < m_Window.columns() ? std::optional(m_Column)
                                                                : std::nullopt;
}

void TrackCursor::refresh()
{
    if (column() && m_Values(m_Column) != m_Told)
        tell(QToolTip::isVisible());
}

std::optional<unsigned long> TrackCursor::target(const QKeyEvent &key) const
{
    const unsigned long columns = m_Window.columns();
    if (columns == 0 || (key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return std::nullopt;
    const TAMBO::CellBlock cells = m_Window.visibleCells();
    const unsigned long page = std::max(2UL, cells.colEnd - cells.colBegin) - 1;
    switch (key.key()) {
    case Qt::Key_Left:
        return m_Column - std::min(m_Column, 1UL);
    case Qt::Key_Right:
        return std::min(m_Column + 1, columns - 1);
    case Qt::Key_PageUp:
        return m_Column - std::min(m_Column, page);
    case Qt::Key_PageDown:
        return std::min(m_Column + page, columns - 1);
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return columns - 1;
    default:
        return std::nullopt;
    }
}

// A pointer in the widget has tool tips of its own.
void TrackCursor::tell(bool isSeen)
{
    m_Told = m_Values(m_Column);
    m_Widget.setAccessibleDescription(m_Told);
    m_Widget.update();
    if (!isSeen)
        return;
    const QPoint cell = m_Window.cellRect({0, m_Column}).bottomRight();
    const QWidget &cells = *m_Window.areaWidget(TAMBO::WindowArea::Cells);
    QToolTip::showText({cells.mapToGlobal(cell).x(), m_Widget.mapToGlobal(QPoint(0, 0)).y()},
                       m_Told, &m_Widget);
}

bool TrackCursor::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        // It stays where it was, unless the window has gone on.
        if (const TAMBO::CellBlock cells = m_Window.visibleCells();
            m_Column < cells.colBegin || m_Column >= cells.colEnd)
            m_Column = cells.colBegin;
        tell(false);
        return false;
    case QEvent::FocusOut:
        QToolTip::hideText();
        m_Widget.update();
        return false;
    case QEvent::KeyPress:
        break;
    default:
        return false;
    }
    const std::optional<unsigned long> to = target(static_cast<const QKeyEvent &>(*event));
    if (!to)
        return false;
    m_Column = *to;
    m_Window.showCell({m_Window.visibleCells().rowBegin, m_Column});
    tell(true);
    return true;
}

} // namespace companion
