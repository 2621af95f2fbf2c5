// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgramFolder.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace companion {

namespace {

const QString kFolderName = QStringLiteral("tambo-fasttree-");
// Between being made and being locked a folder looks like one that was left behind.
constexpr qint64 kOldSeconds = 60;

// The folder, when nobody else has it; else -1. Those of other users cannot be opened.
int lockFolder(const QString &path)
{
    const int folder =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder >= 0 && flock(folder, LOCK_EX | LOCK_NB) == 0)
        return folder;
    if (folder >= 0)
        close(folder);
    return -1;
}

} // namespace

ProgramFolder::ProgramFolder()
    : m_Folder(QDir::temp().filePath(kFolderName + QStringLiteral("XXXXXX")))
{
    if (m_Folder.isValid())
        m_Lock = lockFolder(m_Folder.path());
}

ProgramFolder::~ProgramFolder()
{
    remove();
}

void ProgramFolder::remove()
{
    m_Folder.remove();
    if (m_Lock >= 0)
        close(m_Lock);
    m_Lock = -1;
}

void ProgramFolder::removeLeftBehind()
{
    const QDir all = QDir::temp();
    const QDateTime young = QDateTime::currentDateTime().addSecs(-kOldSeconds);
    for (const QFileInfo &each :
         all.entryInfoList({kFolderName + u'*'}, QDir::Dirs | QDir::NoSymLinks)) {
        if (each.ownerId() != geteuid() || each.lastModified() > young)
            continue;
        const int lock = lockFolder(each.filePath());
        if (lock < 0)
            continue;
        QDir(each.filePath()).removeRecursively();
        close(lock);
    }
}

} // namespace companion
