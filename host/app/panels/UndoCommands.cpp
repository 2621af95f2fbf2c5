// SPDX-License-Identifier: GPL-3.0-or-later
#include "UndoCommands.h"

#include "Config.h"
#include "PlainText.h"
#include "UndoActions.h"

#include <QAction>

namespace TAMBO::app {

namespace {

using services::UndoActions;

constexpr float kMegabyte = 1024.0F * 1024.0F;
// More would not fit into the counter on any machine.
constexpr float kMostMegabytes = 1e6F;

void describeAction(QAction *action, const QString &verb, const std::string &label)
{
    QString step = QString::fromStdString(label);
    // The key of the menu entry is the verb's; a name may hold the sign that marks keys.
    step.replace(u'&', QStringLiteral("&&"));
    action->setText(step.isEmpty() ? verb : verb + u' ' + step);
    action->setIconText(QString(verb).remove(u'&'));
    action->setToolTip(
        plainToolTip(QString(verb).remove(u'&') + u' ' + QString::fromStdString(label)));
}

} // namespace

UndoCommands::UndoCommands(History &history, QObject *parent) : QObject(parent), m_History(history)
{
    setEditRecorder(&m_History);
    m_History.setChangeCallback([this] { historyChanged(); });
    connect(UndoActions::undo(), &QAction::triggered, this, [this] { m_History.undo(); });
    connect(UndoActions::redo(), &QAction::triggered, this, [this] { m_History.redo(); });
    m_Timer.setSingleShot(true);
    m_Timer.setInterval(0);
    connect(&m_Timer, &QTimer::timeout, this, [this] {
        describe();
        emit changed();
    });
    readLimit();
    historyChanged();
    describe();
}

UndoCommands::~UndoCommands()
{
    m_History.setChangeCallback({});
    UndoActions::undo()->setEnabled(false);
    UndoActions::redo()->setEnabled(false);
}

void UndoCommands::readLimit()
{
    bool isNumber = false;
    const float megabytes = Config::GetSetting("General", "UndoMemory").ToFloat(&isNumber);
    const bool isSensible = isNumber && megabytes >= 0 && megabytes <= kMostMegabytes;
    m_History.setLimit(isSensible ? std::size_t(megabytes * kMegabyte) : History::kDefaultLimit);
}

// Called inside of changes, so that it leaves everything but the keys for later.
void UndoCommands::historyChanged()
{
    UndoActions::undo()->setEnabled(m_History.canUndo());
    UndoActions::redo()->setEnabled(m_History.canRedo());
    if (!m_Timer.isActive())
        m_Timer.start();
}

void UndoCommands::describe()
{
    describeAction(UndoActions::undo(), tr("&Undo"), m_History.undoLabel());
    describeAction(UndoActions::redo(), tr("&Redo"), m_History.redoLabel());
}

} // namespace TAMBO::app

#include "moc_UndoCommands.cpp"
