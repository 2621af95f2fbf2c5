// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptDock.h"

#include "WorkbenchValues.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QStringList>

namespace companion {

namespace {

constexpr char kDocksOf[] = "companion";
constexpr int kHighestDock = 10'000;
constexpr char kShownDock[] = "shown";
constexpr char kHiddenDock[] = "hidden";

std::string keyOf(const QDockWidget &dock)
{
    return "dock-" + dock.objectName().toStdString();
}

} // namespace

KeptDock::KeptDock(QMainWindow &window, QDockWidget &dock) : m_Window(window), m_Dock(dock)
{
    restore();
    // Also told when the window itself comes and goes.
    connect(&dock, &QDockWidget::visibilityChanged, this, &KeptDock::keep);
    connect(&dock, &QDockWidget::dockLocationChanged, this, &KeptDock::keep);
}

KeptDock::~KeptDock()
{
    Place place = kept();
    if (!m_WasSeen || m_Dock.isHidden() || m_Dock.isFloating() || !place.isShown)
        return;
    place.height = m_Dock.height();
    set(place);
}

// "shown 8 170": with the area and the height.
KeptDock::Place KeptDock::kept() const
{
    const std::string text = WorkbenchValues::Get(kDocksOf, keyOf(m_Dock)).value_or("");
    const QStringList parts = QString::fromStdString(text).split(u' ');
    if (parts.size() != 3)
        return {};
    return {parts[0] == QLatin1String(kShownDock), parts[1].toInt(), parts[2].toInt()};
}

void KeptDock::set(const Place &place) const
{
    if (place == kept())
        return;
    const QString text = QStringLiteral("%1 %2 %3")
                             .arg(QLatin1String(place.isShown ? kShownDock : kHiddenDock))
                             .arg(place.area)
                             .arg(place.height);
    WorkbenchValues::Set(kDocksOf, keyOf(m_Dock), text.toStdString());
}

void KeptDock::restore()
{
    const Place place = kept();
    const auto area = Qt::DockWidgetArea(place.area);
    const bool isArea = area == Qt::LeftDockWidgetArea || area == Qt::RightDockWidgetArea ||
                        area == Qt::TopDockWidgetArea || area == Qt::BottomDockWidgetArea;
    if (!isArea)
        return;
    if (m_Dock.isAreaAllowed(area) && area != m_Window.dockWidgetArea(&m_Dock))
        m_Window.addDockWidget(area, &m_Dock);
    m_Dock.setVisible(place.isShown);
    if (place.height > 0 && place.height <= kHighestDock)
        m_Window.resizeDocks({&m_Dock}, {place.height}, Qt::Vertical);
}

void KeptDock::keep()
{
    // What happens to a window that is going, or not there yet, says nothing.
    if (!m_Window.isVisible() || m_Dock.isFloating())
        return;
    Place place = kept();
    place.isShown = !m_Dock.isHidden();
    place.area = int(m_Window.dockWidgetArea(&m_Dock));
    // When it comes its height is not laid out yet.
    if (!place.isShown && m_WasSeen)
        place.height = m_Dock.height();
    m_WasSeen = m_WasSeen || place.isShown;
    set(place);
}

} // namespace companion
