// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScriptMenu.h"

#include "PlainText.h"
#include "ScriptDesk.h"

#include <QFileInfo>
#include <QMenu>

namespace TAMBO::app {

namespace {

// Longer ones are cut; the tool tip has them in full.
constexpr int kLongestEntry = 60;

QString entryText(const RecentScripts::Script &script)
{
    QString text = QFileInfo(script.file).fileName();
    if (!script.arguments.isEmpty())
        text += u' ' + script.arguments.simplified();
    if (text.size() > kLongestEntry)
        text = text.first(kLongestEntry - 1) + QStringLiteral("…");
    // "&" marks the next letter.
    return text.replace(u'&', QStringLiteral("&&"));
}

} // namespace

ScriptMenu::ScriptMenu(ScriptDesk &desk, QMenu &menu) : QObject(&menu), m_Desk(desk)
{
    menu.addAction(tr("R&un Script…"), this,
                   [this, &menu] { m_Desk.askAndRun(menu.parentWidget()->window()); })
        ->setToolTip(tr("Run a script in Python on what is loaded"));
    m_Recent = menu.addMenu(tr("Re&cent Scripts"));
    m_Recent->setToolTipsVisible(true);
    connect(m_Recent, &QMenu::aboutToShow, this, &ScriptMenu::fill);
}

void ScriptMenu::fill()
{
    m_Recent->clear();
    const std::vector<RecentScripts::Script> scripts = m_Desk.recent().scripts();
    for (const RecentScripts::Script &script : scripts) {
        // Once the menu has gone: the script holds the events.
        QAction *const action = m_Recent->addAction(
            entryText(script), &m_Desk, [this, script] { m_Desk.run(script); },
            Qt::QueuedConnection);
        action->setToolTip(plainToolTip(
            script.arguments.isEmpty() ? script.file : script.file + u' ' + script.arguments));
    }
    m_Recent->addSeparator();
    QAction *const clear =
        m_Recent->addAction(tr("Clear List"), &m_Desk.recent(), &RecentScripts::clear);
    clear->setEnabled(!scripts.empty());
}

} // namespace TAMBO::app

#include "moc_ScriptMenu.cpp"
