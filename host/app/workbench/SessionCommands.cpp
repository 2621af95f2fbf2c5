// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionCommands.h"

#include "ChangeScope.h"
#include "Loader.h"
#include "MainWindow.h"
#include "RecentFiles.h"
#include "SessionDocument.h"
#include "SessionFile.h"
#include "SessionSaving.h"

#include <QFile>
#include <QFileInfo>
#include <QTimer>

#include <utility>

namespace TAMBO::app {

SessionCommands::SessionCommands(const Parts &parts, Actions actions)
    : m_Parts(parts),
      m_Actions(std::move(actions)),
      m_Opening(parts.opening, {m_Actions.endKeeping, m_Actions.beginKeeping,
                                [this](const QString &file) {
                                    m_Actions.showFirstAlignment();
                                    remember(file, tr("Opened %1"));
                                },
                                m_Actions.startWorkbench})
{
    MainWindow &window = m_Parts.opening.window;
    connect(&window, &MainWindow::saveSessionAsked, this, [this] { save(); });
    connect(&window, &MainWindow::saveSessionAsAsked, this, [this] { saveAs(); });
    connect(&m_Parts.opening.document, &SessionDocument::changed, this,
            &SessionCommands::showTitle);
    if (m_Parts.opening.document.hasFile())
        showTitle();
}

SessionCommands::~SessionCommands() = default;

QStringList SessionCommands::takeSessions(QStringList &files)
{
    QStringList sessions;
    QStringList others;
    for (const QString &file : std::as_const(files)) {
        const bool isSession = sessions::isSessionFile(QFile::encodeName(file).toStdString());
        (isSession ? sessions : others) << file;
    }
    files = others;
    return sessions;
}

void SessionCommands::open(const QStringList &sessions, const QStringList &others, Then then,
                           std::function<void()> calledOff)
{
    QTimer::singleShot(0, this,
                       [this, sessions, others = others, then = std::move(then),
                        calledOff = std::move(calledOff)]() mutable {
                           LoadReport report;
                           if (openNow(sessions, others, report))
                               then(report, others);
                           else if (calledOff)
                               calledOff();
                       });
}

bool SessionCommands::openNow(const QStringList &sessions, QStringList &others, LoadReport &report)
{
    const SessionOpening::Outcome outcome = m_Opening.open(sessions, others);
    if (outcome.areOthersElsewhere)
        others.clear();
    QStringList causes;
    for (const Failure &failure : outcome.failures) {
        report.failures.push_back({failure.place.file, failure});
        causes << QString::fromStdString(failure.message());
    }
    if (!causes.isEmpty())
        m_Actions.tellFailure(causes.size() == 1
                                  ? tr("The session could not be opened.")
                                  : tr("%1 sessions could not be opened.").arg(causes.size()),
                              causes);
    return !outcome.isCancelled;
}

bool SessionCommands::save(bool isElsewhere)
{
    QWidget *const window = &m_Parts.opening.window;
    // A step that is not at its end would be missing.
    if (isChanging() ||
        !(isElsewhere ? m_Parts.saving.saveAs(window) : m_Parts.saving.save(window)))
        return false;
    remember(m_Parts.opening.document.file(), tr("Saved %1"));
    return true;
}

void SessionCommands::remember(const QString &file, const QString &text)
{
    m_Parts.recentFiles.add({file});
    m_Parts.opening.window.say(text.arg(QFileInfo(file).fileName()));
}

void SessionCommands::showTitle()
{
    MainWindow &window = m_Parts.opening.window;
    const SessionDocument &document = m_Parts.opening.document;
    // A title without the mark is none of a window with changes.
    if (!document.isModified())
        window.setWindowModified(false);
    window.setWindowTitle(document.title());
    window.setWindowModified(document.isModified());
}

} // namespace TAMBO::app

#include "moc_SessionCommands.cpp"
