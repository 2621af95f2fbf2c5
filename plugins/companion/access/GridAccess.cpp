// SPDX-License-Identifier: GPL-3.0-or-later
#include "GridAccess.h"

#include "AlignmentWindow.h"
#include "GridCell.h"
#include "GridTable.h"

#include <QEvent>
#include <QWidget>

#include <chrono>
#include <map>
#include <utility>

namespace companion {

using TAMBO::WindowArea;

namespace {

constexpr auto kBeforeSelection = std::chrono::milliseconds(100);

// By the widgets that are their tables.
std::map<const QObject *, std::shared_ptr<Grid>> &grids()
{
    static std::map<const QObject *, std::shared_ptr<Grid>> grids;
    return grids;
}

QAccessibleInterface *makeCell(const std::weak_ptr<Grid> &grid, const GridPlace &place)
{
    return new GridCell(grid, place);
}

// Asked by the toolkit for every object that a client wants to know, and for each of its classes.
QAccessibleInterface *makeTable(const QString &, QObject *object)
{
    const auto found = grids().find(object);
    if (found == grids().end())
        return nullptr;
    found->second->noteTable();
    return new GridTable(found->second);
}

// The toolkit makes another one when it is asked again.
void forgetInterface(QWidget &widget)
{
    QAccessible::deleteAccessibleInterface(
        QAccessible::uniqueId(QAccessible::queryAccessibleInterface(&widget)));
}

} // namespace

GridAccess::GridAccess(TAMBO::AlignmentWindow &window, Tell tell)
    : AlignmentViewObserver(window),
      m_Grid(std::make_shared<Grid>(window, makeCell)),
      m_Tell(std::move(tell)),
      m_IsHeard(QAccessible::isActive())
{
    QAccessible::installActivationObserver(this);
    if (grids().empty())
        QAccessible::installFactory(makeTable);
    // Somebody may have asked for the widget before.
    forgetInterface(m_Grid->widget());
    grids().emplace(&m_Grid->widget(), m_Grid);
    m_Grid->widget().installEventFilter(this);
    // Beside the table; the names of rows and columns are in it as well.
    window.areaWidget(WindowArea::Names)
        ->parentWidget()
        ->setAccessibleName(tr("Names of the rows"));
    window.areaWidget(WindowArea::Header)
        ->parentWidget()
        ->setAccessibleName(tr("Numbers and marks of the columns"));
    m_Selecting.setSingleShot(true);
    m_Selecting.setInterval(kBeforeSelection);
    m_Selecting.callOnTimeout([this] { this->tell(QAccessible::SelectionWithin); });
}

GridAccess::~GridAccess()
{
    QAccessible::removeActivationObserver(this);
    QWidget *const widget = &m_Grid->widget();
    grids().erase(widget);
    if (grids().empty())
        QAccessible::removeFactory(makeTable);
    // What is kept for the widget would stay as long as the widget does.
    if (m_Grid->hasTable())
        forgetInterface(*widget);
}

void GridAccess::tellClients(QAccessibleEvent &event)
{
    QAccessible::updateAccessibility(&event);
}

void GridAccess::tell(QAccessible::Event type)
{
    if (!m_IsHeard)
        return;
    QAccessibleEvent event(&m_Grid->widget(), type);
    m_Tell(event);
}

void GridAccess::setCursor(const std::optional<TAMBO::CellIndex> &cell)
{
    m_Grid->setCursor(cell);
    tellFocus();
}

void GridAccess::alignmentShown()
{
    layoutRebuilt();
}

void GridAccess::layoutRebuilt()
{
    if (!m_IsHeard)
        return;
    QAccessibleTableModelChangeEvent event(&m_Grid->widget(),
                                           QAccessibleTableModelChangeEvent::ModelReset);
    m_Tell(event);
}

void GridAccess::scrolled()
{
    tell(QAccessible::VisibleDataChanged);
}

void GridAccess::commUpdate()
{
    if (m_IsHeard && !m_Selecting.isActive())
        m_Selecting.start();
}

void GridAccess::tellFocus()
{
    if (!m_IsHeard || !m_Grid->cursor() || !m_Grid->widget().hasFocus())
        return;
    const TAMBO::CellIndex cell = *m_Grid->cursor();
    if (QAccessibleInterface *const focused = m_Grid->at({GridPart::Cell, cell.row, cell.col})) {
        QAccessibleEvent event(focused, QAccessible::Focus);
        m_Tell(event);
    }
}

bool GridAccess::eventFilter(QObject *watched, QEvent *event)
{
    // The widget tells of itself first.
    if (event->type() == QEvent::FocusIn)
        QMetaObject::invokeMethod(
            this, [this] { tellFocus(); }, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

} // namespace companion
