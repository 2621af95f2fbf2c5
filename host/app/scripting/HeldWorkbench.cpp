// SPDX-License-Identifier: GPL-3.0-or-later
#include "HeldWorkbench.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTabBar>
#include <QWidget>

#include <algorithm>

namespace TAMBO::app {

namespace {

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::ToolTip:
    case QEvent::WhatsThis:
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::HoverLeave:
    case QEvent::InputMethod:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::NativeGesture:
        return true;
    default:
        return false;
    }
}

bool isDone(QEvent::Type type)
{
    return type == QEvent::MouseButtonPress || type == QEvent::KeyPress || type == QEvent::Drop ||
           type == QEvent::TouchBegin || type == QEvent::TabletPress;
}

// Lines of the status and tabs of docks, which may come up with the console.
bool isEdge(const QWidget *widget)
{
    return qobject_cast<const QStatusBar *>(widget) != nullptr ||
           qobject_cast<const QTabBar *>(widget) != nullptr;
}

bool isModifier(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
           key == Qt::Key_Meta || key == Qt::Key_AltGr;
}

bool hasSelectedText()
{
    const auto *const text = qobject_cast<const QPlainTextEdit *>(QApplication::focusWidget());
    return text != nullptr && text->textCursor().hasSelection();
}

} // namespace

HeldWorkbench::HeldWorkbench(QWidget &console) : m_Console(&console)
{
    // What stands in windows, not these themselves: they still show what they have painted when
    // another one has covered them.
    for (QWidget *const window : QApplication::topLevelWidgets()) {
        if (!window->isVisible())
            continue;
        for (QObject *const child : window->children()) {
            auto *const part = qobject_cast<QWidget *>(child);
            if (part != nullptr && !part->isWindow() && part != &console &&
                !part->isAncestorOf(&console) && !isEdge(part))
                freeze(*part);
        }
    }
    qApp->installEventFilter(this);
}

HeldWorkbench::~HeldWorkbench()
{
    qApp->removeEventFilter(this);
    for (const QPointer<QWidget> &widget : m_Frozen) {
        if (widget)
            widget->setUpdatesEnabled(true);
    }
    for (const QPointer<QWidget> &widget : m_Unpainted) {
        if (widget)
            widget->update();
    }
}

void HeldWorkbench::freeze(QWidget &widget)
{
    if (!widget.updatesEnabled())
        return;
    widget.setUpdatesEnabled(false);
    m_Frozen.emplace_back(&widget);
}

// What it has painted fits no more; it is filled with its ground instead.
void HeldWorkbench::thaw(const QWidget &window)
{
    for (const QPointer<QWidget> &widget : m_Frozen) {
        if (widget && widget->window() == &window)
            widget->setUpdatesEnabled(true);
    }
}

bool HeldWorkbench::isFree(const QWidget &widget) const
{
    if (m_Console && (&widget == m_Console || m_Console->isAncestorOf(&widget)))
        return true;
    const QWidget *const window = widget.window();
    return window == QApplication::activeModalWidget() ||
           window == QApplication::activePopupWidget();
}

bool HeldWorkbench::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    // Commands of menus and windows; the console has none that change anything.
    if (type == QEvent::Shortcut) {
        for (const QObject *owner = watched; owner != nullptr; owner = owner->parent()) {
            if (owner == m_Console)
                return false;
        }
        if (QApplication::activeModalWidget() != nullptr)
            return false;
        emit refused();
        return true;
    }
    auto *const widget = qobject_cast<QWidget *>(watched);
    if (widget == nullptr)
        return false;
    if (type == QEvent::Resize && widget->isWindow())
        thaw(*widget);
    if ((type == QEvent::KeyPress || type == QEvent::ShortcutOverride) && takeKey(*event, *widget))
        return true;
    if (type == QEvent::Paint && !isFree(*widget)) {
        // The line at the edge of the window and what frames the console know no model.
        if (widget->isAncestorOf(m_Console) || isEdge(widget) || isEdge(widget->parentWidget()))
            return false;
        // A window that has become larger has something there, at least.
        QPainter(widget).fillRect(static_cast<QPaintEvent *>(event)->rect(),
                                  widget->palette().color(widget->backgroundRole()));
        if (std::find(m_Unpainted.begin(), m_Unpainted.end(), widget) == m_Unpainted.end())
            m_Unpainted.emplace_back(widget);
        return true;
    }
    if (type == QEvent::Close && event->spontaneous() && !isFree(*widget)) {
        event->ignore();
        emit refused();
        return true;
    }
    if (!isInput(type) || isFree(*widget))
        return false;
    if (isDone(type) &&
        (type != QEvent::KeyPress || !isModifier(static_cast<QKeyEvent *>(event)->key())))
        emit refused();
    return true;
}

// Wherever in the program it is pressed.
bool HeldWorkbench::takeKey(QEvent &event, const QWidget &widget)
{
    if (QApplication::activeModalWidget() != nullptr ||
        QApplication::activePopupWidget() != nullptr)
        return false;
    auto &key = static_cast<QKeyEvent &>(event);
    const bool isFromConsole = isFree(widget);
    const bool isStop = key.key() == Qt::Key_Escape ||
                        (key.matches(QKeySequence::Copy) && !(isFromConsole && hasSelectedText()));
    if (!isStop)
        return false;
    event.accept();
    if (event.type() == QEvent::KeyPress && !key.isAutoRepeat())
        emit stopAsked();
    return true;
}

} // namespace TAMBO::app

#include "moc_HeldWorkbench.cpp"
