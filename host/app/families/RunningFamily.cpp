// SPDX-License-Identifier: GPL-3.0-or-later
#include "RunningFamily.h"

#include <QFile>

#include <algorithm>
#include <chrono>
#include <unistd.h>
#include <utility>
#include <vector>

namespace TAMBO::app {

namespace {

constexpr std::chrono::seconds kBetweenLines(2);
// Enough for the lines that are shown.
constexpr qint64 kEndOfLog = 4000;
constexpr qsizetype kShownLines = 5;

QString fileText(const std::filesystem::path &file)
{
    return QFile::decodeName(QByteArray::fromStdString(file.string()));
}

// Lives on when the workbench ends, and with it the programs: the toolkit would kill them.
std::vector<QProcess *> &programsLeftBehind()
{
    static auto *const programs = new std::vector<QProcess *>;
    return *programs;
}

} // namespace

RunningFamily::RunningFamily(QString program, std::filesystem::path folder, const QString &family,
                             QObject *parent)
    : QObject(parent), m_Program(std::move(program)), m_Folder(std::move(folder)), m_Family(family)
{
    m_Listen.setInterval(kBetweenLines);
    connect(&m_Listen, &QTimer::timeout, this, [this] {
        const QStringList lines = lastLines();
        if (!lines.isEmpty())
            RunningJobs::Say(m_Job, lines.back());
    });
}

RunningFamily::~RunningFamily()
{
    if (!isRunning())
        return;
    RunningJobs::End(std::exchange(m_Job, 0));
    QProcess *const process = m_Process;
    process->disconnect(this);
    process->setParent(nullptr);
    programsLeftBehind().push_back(process);
    connect(process, &QProcess::finished, process, [process] {
        std::erase(programsLeftBehind(), process);
        process->deleteLater();
    });
}

bool RunningFamily::isRunning() const
{
    return m_Process != nullptr && m_Process->state() != QProcess::NotRunning;
}

Result<void> RunningFamily::start(const RunOrder &order)
{
    if (isRunning())
        return Failure(FailureKind::Refused, tr("It is running already.").toStdString());
    m_Process = new QProcess(this);
    m_Process->setWorkingDirectory(fileText(m_Folder));
    m_Process->setStandardInputFile(QProcess::nullDevice());
    // A pipe would break when the workbench ends. What a link of this name leads to stays as it is.
    QFile::remove(fileText(m_Folder / kSaysFile));
    m_Process->setProcessChannelMode(QProcess::MergedChannels);
    m_Process->setStandardOutputFile(fileText(m_Folder / kSaysFile));
    // The end of a terminal, or Ctrl+C there, is not meant for it.
    m_Process->setChildProcessModifier([] { setsid(); });
    connect(m_Process, &QProcess::finished, this, &RunningFamily::ended);
    m_Process->start(m_Program, QStringList{QStringLiteral("models"), QStringLiteral("--continue"),
                                            fileText(m_Folder)} +
                                    order.words());
    if (!m_Process->waitForStarted(-1)) {
        const QString cause = m_Process->errorString();
        delete m_Process;
        return Failure(FailureKind::System,
                       tr("%1 could not be started: %2").arg(m_Program, cause).toStdString());
    }
    m_IsStopping = false;
    m_Job = RunningJobs::Begin(tr("Models of %1").arg(m_Family), m_Process->processId());
    m_Listen.start();
    emit changed();
    return {};
}

void RunningFamily::stop()
{
    if (!isRunning())
        return;
    m_IsStopping = true;
    m_Process->terminate();
    emit changed();
}

void RunningFamily::ended()
{
    m_Listen.stop();
    const bool isWell =
        m_Process->exitStatus() == QProcess::NormalExit && m_Process->exitCode() == 0;
    m_Process->deleteLater();
    m_Process = nullptr;
    const RunningJobs::Number job = std::exchange(m_Job, 0);
    if (isWell || std::exchange(m_IsStopping, false))
        RunningJobs::End(job);
    else
        RunningJobs::Fail(job, tr("Not all models of %1 were built.").arg(m_Family), lastLines());
    emit changed();
}

QStringList RunningFamily::lastLines() const
{
    QFile file(fileText(m_Folder / kSaysFile));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    file.seek(std::max<qint64>(0, file.size() - kEndOfLog));
    QStringList lines;
    for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts))
        lines << line.simplified();
    return lines.size() <= kShownLines ? lines : lines.last(kShownLines);
}

} // namespace TAMBO::app

#include "moc_RunningFamily.cpp"
