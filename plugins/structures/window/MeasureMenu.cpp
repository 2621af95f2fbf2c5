// SPDX-License-Identifier: GPL-3.0-or-later
#include "MeasureMenu.h"

#include "MeasureTool.h"

#include <QAction>
#include <QMenu>

namespace structures {

MeasureMenu::MeasureMenu(QMenu &menu, MeasureTool &tool) : QObject(&menu), m_Tool(tool)
{
    menu.setToolTipsVisible(true);
    const auto add = [&](std::size_t atoms, const QString &text, const QString &tip) {
        QAction *const action = menu.addAction(text);
        action->setCheckable(true);
        action->setToolTip(tip);
        // As many as there are atoms to click.
        action->setShortcut(Qt::CTRL | Qt::Key(Qt::Key_0 + int(atoms)));
        connect(action, &QAction::triggered, this, [this, atoms] {
            if (m_Tool.atomsWanted() == atoms)
                m_Tool.end();
            else
                m_Tool.begin(atoms);
        });
        m_Kinds[atoms - Measure::kLeast] = action;
    };
    add(2, tr("&Distance"), tr("Of two atoms that are clicked"));
    add(3, tr("&Angle"), tr("At the second of three atoms that are clicked"));
    add(4, tr("&Torsion"), tr("Of four atoms that are clicked"));
    m_End = menu.addAction(tr("&End Measuring"), &m_Tool, &MeasureTool::end);
    menu.addSeparator();
    m_Remove = menu.addAction(tr("&Remove"), &m_Tool, &MeasureTool::removeChosen);
    m_Remove->setShortcut(Qt::Key_Delete);
    m_Remove->setToolTip(tr("The one whose label was clicked"));
    m_RemoveAll = menu.addAction(tr("Remove A&ll"), &m_Tool, &MeasureTool::removeAll);
    connect(&m_Tool, &MeasureTool::runs, this, &MeasureMenu::show);
    connect(&m_Tool, &MeasureTool::changed, this, &MeasureMenu::show);
    show();
}

void MeasureMenu::show()
{
    const bool runs = m_Tool.atomsWanted() != 0;
    for (std::size_t i = 0; i < m_Kinds.size(); ++i)
        m_Kinds[i]->setChecked(m_Tool.atomsWanted() == i + Measure::kLeast);
    m_End->setEnabled(runs);
    // The key means something else while nothing is being measured.
    m_End->setShortcut(runs ? QKeySequence(Qt::Key_Escape) : QKeySequence());
    m_Remove->setEnabled(m_Tool.hasChosen());
    m_RemoveAll->setEnabled(!m_Tool.measures().all().empty());
}

} // namespace structures

#include "moc_MeasureMenu.cpp"
