// SPDX-License-Identifier: GPL-3.0-or-later
#include "KestramProcess.h"

#include "Logger.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace ZEP {

namespace {

// A program may say a lot; the end of it is enough to find the last line, or what is shown of it.
constexpr qsizetype kLongestLine = 1000;

// Lives on when the application ends, and with it the programs.
std::vector<KestramProcess *> &leftBehind()
{
    static auto *const processes = new std::vector<KestramProcess *>;
    return *processes;
}

} // namespace

KestramProcess::KestramProcess(QObject *window) : QProcess(window) { }

void KestramProcess::noteBegin(const QString &title)
{
    m_Job = RunningJobs::Begin(title, processId());
}

void KestramProcess::noteErrors(const QString &errors)
{
    const QStringView text = QStringView(errors).trimmed();
    const QStringView end = text.last(std::min(text.size(), kLongestLine));
    if (!end.isEmpty())
        RunningJobs::Say(m_Job, end.sliced(end.lastIndexOf('\n') + 1).toString().simplified());
}

void KestramProcess::noteEnd()
{
    RunningJobs::End(takeJob());
}

RunningJobs::Number KestramProcess::takeJob()
{
    return std::exchange(m_Job, 0);
}

void KestramProcess::letGo()
{
    if (state() == NotRunning)
        return;
    disconnect(parent());
    setParent(nullptr);
    leftBehind().push_back(this);
    connect(this, &QProcess::readyReadStandardOutput, this, [this] { readAllStandardOutput(); });
    connect(this, &QProcess::readyReadStandardError, this,
            [this] { noteErrors(QString::fromLatin1(readAllStandardError())); });
    connect(this, &QProcess::finished, this, [this] {
        noteEnd();
        Logger::Write(QStringLiteral(
            "A run of Kestram has ended. Its window was closed, so its model was not read."));
        std::erase(leftBehind(), this);
        deleteLater();
    });
}

} // namespace ZEP
