// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionFolder.h"

#include "ArrivingFiles.h"
#include "Directories.h"
#include "Logger.h"
#include "PrivateDirectory.h"
#include "SessionKinds.h"
#include "SessionSummary.h"
#include "StoreReader.h"
#include "UnsavedCount.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <unistd.h>

namespace TAMBO::app {

namespace {

using sessions::StoreReader;

const QString kEnding = QStringLiteral(".session");
const QString kAttempts = QStringLiteral(".attempts");

int attemptsOn(const QString &file)
{
    QFile noted(file + kAttempts);
    return noted.open(QIODevice::ReadOnly) ? noted.read(10).toInt() : 0;
}

// Nothing for one that runs, or in which nothing has happened.
std::optional<LeftSession> lookAtSession(const QFileInfo &file)
{
    LeftSession session;
    session.file = file.absoluteFilePath();
    session.time = file.lastModified();
    session.attempts = attemptsOn(session.file);
    auto store = StoreReader::open(QFile::encodeName(session.file).toStdString(),
                                   StoreReader::Kind::LeftBehind);
    if (!store) {
        if (store.error().kind != FailureKind::Refused)
            Logger::Write(QStringLiteral("The work that an earlier workbench has left cannot be "
                                         "read: %1")
                              .arg(QString::fromStdString(store.error().message())),
                          Logger::Severity::Warning);
        return std::nullopt;
    }
    const Result<sessions::RecordTally> changes =
        store.value()->tally(std::uint32_t(sessions::RecordKind::Change));
    QStringList arriving;
    const Result<void> seen =
        store.value()->forEachValue([&](std::string_view name, std::string_view content) {
            if (name == SessionSummary::kName)
                session.objects = QString::fromUtf8(content.data(), qsizetype(content.size()));
            if (name == ArrivingFiles::kName)
                arriving = ArrivingFiles::filesIn(content);
            if (name == UnsavedCount::kName)
                session.unsaved = UnsavedCount::read(content);
            return Result<void>();
        });
    if (changes) {
        session.changes = changes.value().count;
        // The file itself may be older: its journal is in another one.
        if (changes.value().lastTime != 0)
            session.time = QDateTime::fromMSecsSinceEpoch(changes.value().lastTime);
    }
    for (QString &file : arriving)
        file = QFileInfo(file).fileName();
    if (!arriving.isEmpty())
        session.objects +=
            (session.objects.isEmpty() ? QString() : QStringLiteral("; ")) +
            QCoreApplication::translate("TAMBO::app::SessionFolder", "was being opened: %1")
                .arg(arriving.join(QStringLiteral(", ")));
    if (changes && seen && session.changes == 0 && session.objects.isEmpty()) {
        store.value().reset();
        SessionFolder::remove(session.file);
        return std::nullopt;
    }
    return session;
}

} // namespace

SessionFolder::SessionFolder()
    : m_Path(services::Directories::state() + QStringLiteral("/sessions"))
{ }

Result<QString> SessionFolder::newFile() const
{
    const Result<QString> folder = services::makePrivateDirectory(m_Path, ::geteuid());
    if (!folder)
        return folder.error();
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    const QString process = QString::number(QCoreApplication::applicationPid());
    QString name = QStringLiteral("/%1-%2").arg(time, process);
    for (int number = 2; QFileInfo::exists(folder.value() + name + kEnding); ++number)
        name = QStringLiteral("/%1-%2-%3").arg(time, process).arg(number);
    return folder.value() + name + kEnding;
}

bool SessionFolder::hasFiles() const
{
    return !QDir(m_Path).entryList({u'*' + kEnding}, QDir::Files).isEmpty();
}

std::vector<LeftSession> SessionFolder::leftBehind() const
{
    std::vector<LeftSession> found;
    const QFileInfoList files = QDir(m_Path).entryInfoList({u'*' + kEnding}, QDir::Files);
    for (const QFileInfo &file : files) {
        if (std::optional<LeftSession> session = lookAtSession(file))
            found.push_back(std::move(*session));
    }
    std::ranges::stable_sort(found, std::ranges::greater(), &LeftSession::time);
    return found;
}

void SessionFolder::noteAttempt(const LeftSession &session)
{
    QFile noted(session.file + kAttempts);
    if (noted.open(QIODevice::WriteOnly))
        noted.write(QByteArray::number(session.attempts + 1));
}

void SessionFolder::takeBackAttempt(const LeftSession &session)
{
    forgetAttempts(session.file);
    if (session.attempts == 0)
        return;
    LeftSession before = session;
    --before.attempts;
    noteAttempt(before);
}

void SessionFolder::forgetAttempts(const QString &file)
{
    QFile::remove(file + kAttempts);
}

void SessionFolder::remove(const QString &file)
{
    forgetAttempts(file);
    for (const char *const ending : {"", "-wal", "-shm", "-journal"})
        QFile::remove(file + QString::fromLatin1(ending));
}

} // namespace TAMBO::app
