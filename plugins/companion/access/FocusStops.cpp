// SPDX-License-Identifier: GPL-3.0-or-later
#include "FocusStops.h"

#include "AlignmentWindow.h"

#include <QApplication>
#include <QDockWidget>
#include <QKeyEvent>
#include <QMainWindow>
#include <QToolBar>

#include <algorithm>

namespace companion {

namespace {

bool takesTheKeyboard(const QWidget &widget)
{
    return (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget.isEnabled() &&
           widget.isVisible() && widget.focusProxy() == nullptr;
}

// In the order of Tab.
QWidget *firstIn(QWidget &part)
{
    for (QWidget *widget = part.nextInFocusChain(); widget != &part;
         widget = widget->nextInFocusChain()) {
        if (part.isAncestorOf(widget) && takesTheKeyboard(*widget))
            return widget;
    }
    return nullptr;
}

} // namespace

FocusStops::FocusStops(TAMBO::AlignmentWindow &window) : m_Window(window)
{
    window.mainWindow()->installEventFilter(this);
}

FocusStops::~FocusStops() = default;

QWidget &FocusStops::cells() const
{
    return *m_Window.areaWidget(TAMBO::WindowArea::Cells)->parentWidget();
}

std::vector<QWidget *> FocusStops::stops() const
{
    std::vector<QWidget *> parts;
    const QMainWindow &owner = *m_Window.mainWindow();
    for (QWidget *const part :
         owner.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        const bool isPart = qobject_cast<QToolBar *>(part) != nullptr ||
                            qobject_cast<QDockWidget *>(part) != nullptr;
        if (isPart && part->isVisible() && firstIn(*part) != nullptr)
            parts.push_back(part);
    }
    std::ranges::stable_sort(parts, {}, [](const QWidget *part) {
        const QPoint place = part->mapToGlobal(QPoint(0, 0));
        return std::pair(place.y(), place.x());
    });
    parts.insert(parts.begin(), &cells());
    return parts;
}

void FocusStops::go(int step)
{
    const std::vector<QWidget *> parts = stops();
    const QWidget *const focused = QApplication::focusWidget();
    const auto found = std::ranges::find_if(parts, [focused](const QWidget *part) {
        return focused != nullptr && (part == focused || part->isAncestorOf(focused));
    });
    // Names and header stand for the cells.
    const auto now = found == parts.end() ? 0 : found - parts.begin();
    const auto count = static_cast<std::ptrdiff_t>(parts.size());
    QWidget *const part = parts[static_cast<std::size_t>((now + step + count) % count)];
    QWidget *const widget = part == &cells() ? part : firstIn(*part);
    if (auto *const dock = qobject_cast<QDockWidget *>(part); dock != nullptr) {
        dock->installEventFilter(this);
        // One behind another comes to the front.
        dock->raise();
    }
    widget->window()->activateWindow();
    widget->setFocus(Qt::TabFocusReason);
}

bool FocusStops::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress &&
        static_cast<const QKeyEvent *>(event)->key() == Qt::Key_Escape && !cells().hasFocus()) {
        cells().window()->activateWindow();
        cells().setFocus(Qt::OtherFocusReason);
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace companion
