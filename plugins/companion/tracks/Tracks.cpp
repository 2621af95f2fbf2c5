// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tracks.h"

#include "AlignmentWindow.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMainWindow>
#include <QMenu>

namespace companion {

Tracks::Tracks(TAMBO::AlignmentWindow &window)
    : QDockWidget(tr("Tracks"), window.mainWindow()), m_Canvas(new TrackCanvas(window))
{
    setObjectName(QStringLiteral("Tracks"));
    // Only above and below the cells columns can stand in line with them.
    setAllowedAreas(Qt::TopDockWidgetArea | Qt::BottomDockWidgetArea);
    setFeatures(DockWidgetClosable | DockWidgetMovable);
    setWidget(m_Canvas);
    window.mainWindow()->addDockWidget(Qt::BottomDockWidgetArea, this);
    hide();
}

Tracks::~Tracks() = default;

void Tracks::toggle()
{
    setVisible(isHidden());
    if (isHidden() || m_HasHeight)
        return;
    m_HasHeight = true;
    setHeight(sizeHint().height());
}

void Tracks::fillMenu(QMenu &menu)
{
    for (const Track track : kTracks) {
        QAction *const action = menu.addAction(trackName(track));
        action->setToolTip(trackMeaning(track));
        action->setCheckable(true);
        action->setChecked(m_Canvas->isOn(track));
        connect(action, &QAction::toggled, this, [this, track](bool isOn) { setOn(track, isOn); });
    }
}

void Tracks::contextMenuEvent(QContextMenuEvent *event)
{
    auto *const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    fillMenu(*menu);
    menu->popup(event->globalPos());
}

// Each track keeps its height; the dock gets another one.
void Tracks::setOn(Track track, bool isOn)
{
    const int before = m_Canvas->sizeHint().height();
    m_Canvas->setOn(track, isOn);
    const int more = m_Canvas->sizeHint().height() - before;
    setHeight(height() + more);
}

void Tracks::setHeight(int height)
{
    if (auto *const owner = qobject_cast<QMainWindow *>(parentWidget()))
        owner->resizeDocks({this}, {height}, Qt::Vertical);
}

} // namespace companion
