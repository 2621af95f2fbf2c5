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
    // Each track keeps its height.
    connect(m_Canvas, &TrackCanvas::heightWanted, this, [this](int more) {
        if (!isHidden())
            setHeight(height() + more);
    });
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
        connect(action, &QAction::toggled, m_Canvas,
                [this, track](bool isOn) { m_Canvas->setOn(track, isOn); });
    }
    fillLines(menu);
    fillRows(menu);
}

void Tracks::fillLines(QMenu &menu)
{
    QStringList known;
    for (const LineTrack &line : m_Canvas->lines()) {
        // Those of several rows are switched together.
        if (known.contains(line.key))
            continue;
        if (known.isEmpty())
            menu.addSeparator();
        known << line.key;
        QAction *const action = menu.addAction(lineTitle(line).replace(u'&', QStringLiteral("&&")));
        action->setCheckable(true);
        action->setChecked(m_Canvas->isOn(line));
        connect(action, &QAction::toggled, m_Canvas,
                [this, line](bool isOn) { m_Canvas->setOn(line, isOn); });
    }
}

void Tracks::fillRows(QMenu &menu)
{
    menu.addSeparator();
    QAction *const choose = menu.addAction(tr("Tracks of Selected Rows"));
    choose->setToolTip(tr("Secondary structure and annotation of the rows with selected residues"));
    connect(choose, &QAction::triggered, this, &Tracks::chooseRows);
    for (const LineTrack &line : m_Canvas->lines()) {
        // Each row once.
        if (!line.row || line.line || line.isScore)
            continue;
        const QString name = QString(line.name).replace(u'&', QStringLiteral("&&"));
        QAction *const action = menu.addAction(tr("Without %1").arg(name));
        connect(action, &QAction::triggered, m_Canvas,
                [this, row = *line.row] { m_Canvas->giveUpRow(row); });
    }
}

void Tracks::chooseRows()
{
    if (isHidden())
        toggle();
    m_Canvas->chooseRows();
}

void Tracks::giveUpRows()
{
    m_Canvas->giveUpRows();
}

void Tracks::contextMenuEvent(QContextMenuEvent *event)
{
    auto *const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    fillMenu(*menu);
    menu->popup(event->globalPos());
}

void Tracks::setHeight(int height)
{
    if (auto *const owner = qobject_cast<QMainWindow *>(parentWidget()))
        owner->resizeDocks({this}, {height}, Qt::Vertical);
}

} // namespace companion
