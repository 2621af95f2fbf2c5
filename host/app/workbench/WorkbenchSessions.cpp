// SPDX-License-Identifier: GPL-3.0-or-later
// How the work is kept while one works, recovered, and saved and opened as sessions.
#include "Workbench.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "LiveStore.h"
#include "Logger.h"
#include "MainWindow.h"
#include "ObjectSpace.h"
#include "OpenWindows.h"
#include "PluginParts.h"
#include "Recovery.h"
#include "RecoveryDialog.h"
#include "SavingAsFiles.h"
#include "SessionCommands.h"
#include "SessionFolder.h"
#include "Space.h"

#include <QCoreApplication>
#include <QProcess>

#include <algorithm>
#include <memory>
#include <utility>

namespace TAMBO::app {

// ---- What is kept, and what others have left

void Workbench::makeValues()
{
    OpenWindows::Doors doors;
    doors.open = [this](Alignment &alignment) -> QWidget * {
        return m_Plugins.alignmentViewers().empty() ? nullptr : openInEditor(&alignment);
    };
    doors.showIn = &Plugins::showIn;
    doors.canShowIn = &Plugins::canShowIn;
    m_OpenWindows = std::make_unique<OpenWindows>(std::move(doors));
    m_Values.add(*m_OpenWindows);
    m_PluginParts = std::make_unique<PluginParts>(m_Values);
}

void Workbench::keepWork()
{
    if (mayHaveLeftWork())
        askToRecover();
    if (m_LiveStore == nullptr)
        beginLiveStore();
}

bool Workbench::mayHaveLeftWork()
{
    return SessionFolder().hasFiles();
}

void Workbench::askToRecover()
{
    std::vector<LeftSession> left = SessionFolder().leftBehind();
    if (left.empty())
        return;
    RecoveryDialog dialog(std::move(left), &window());
    connect(&dialog, &RecoveryDialog::filesWanted, &dialog, [&](const LeftSession &session) {
        askAndSaveAsFiles(session, ObjectSpace::get(), m_History, &dialog);
    });
    dialog.exec();
    if (dialog.answer() == RecoveryDialog::Answer::Recover)
        recoverWork(dialog.chosen());
}

void Workbench::recoverWork(const LeftSession &session)
{
    const Result<sessions::LoadedSession> loaded =
        recover(session, ObjectSpace::get(), m_History, m_Values);
    // What the user has called off he need not be told.
    if (!loaded && loaded.error().kind == FailureKind::Cancelled)
        return;
    if (!loaded) {
        tellFailure(tr("The work could not be recovered. It is kept."),
                    {QString::fromStdString(loaded.error().message())});
        return;
    }
    beginLiveStore();
    if (m_LiveStore != nullptr && !loaded.value().problem)
        m_LiveStore->whenSafe([file = session.file] { SessionFolder::remove(file); });
    if (loaded.value().problem)
        tellFailure(tr("The last changes could not be recovered. What is left of them is kept."),
                    {QString::fromStdString(loaded.value().problem->message())});
    showFirstAlignment();
    say(tr("Recovered."));
    const QStringList arriving = m_Arriving.takeLeft();
    if (arriving.isEmpty())
        return;
    // Somebody has seen them in a window already, or was about to.
    connect(
        &m_Loader, &Loader::finished, this,
        [this] {
            if (AlignmentWindow::All().empty())
                showFirstAlignment();
        },
        Qt::SingleShotConnection);
    open(arriving);
}

void Workbench::showFirstAlignment()
{
    // Unless the session says which windows it had.
    if (m_OpenWindows->areLoaded())
        return;
    const auto first = std::find_if(
        Space::instance()->begin(), Space::instance()->end(),
        [](const Compound *object) { return object->Kind() == CompoundKind::Alignment; });
    if (first != Space::instance()->end())
        openInEditor(*first);
}

void Workbench::beginLiveStore()
{
    const Result<QString> file = SessionFolder().newFile();
    if (!file) {
        const QString cause = tr("A crash would lose what you do now: %1")
                                  .arg(QString::fromStdString(file.error().message()));
        Logger::Write(cause, Logger::Severity::Warning);
        warn(cause);
        return;
    }
    m_LiveStore =
        std::make_unique<LiveStore>(ObjectSpace::get(), m_History, m_Values, file.value());
    m_Arriving.recordsBegin();
    connect(m_LiveStore.get(), &LiveStore::warningChanged, this, &Workbench::warn);
}

void Workbench::makeSessions()
{
    // Beginning anew is for those who had begun.
    const auto isKept = std::make_shared<bool>(false);
    SessionCommands::Actions actions;
    actions.endKeeping = [this, isKept] {
        *isKept = *isKept || m_LiveStore != nullptr;
        m_LiveStore.reset();
    };
    actions.beginKeeping = [this, isKept] {
        if (std::exchange(*isKept, false))
            beginLiveStore();
    };
    actions.showFirstAlignment = [this] { showFirstAlignment(); };
    actions.startWorkbench = [this](const QStringList &files) {
        return m_Starter ? m_Starter(files)
                         : QProcess::startDetached(QCoreApplication::applicationFilePath(),
                                                   QStringList(QStringLiteral("--new")) + files);
    };
    actions.tellFailure = [this](const QString &headline, const QStringList &causes) {
        tellFailure(headline, causes);
    };
    const bool mayAsk = m_Attendance == Attendance::User;
    m_Sessions = std::make_unique<SessionCommands>(
        SessionCommands::Parts{
            {m_History, m_Values, m_Document, m_Question, m_Loader, *m_Window, mayAsk},
            m_Saving,
            *m_RecentFiles},
        std::move(actions));
}

} // namespace TAMBO::app
