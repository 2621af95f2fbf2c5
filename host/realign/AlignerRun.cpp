// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignerRun.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>
#include <unistd.h>
#include <utility>

namespace TAMBO::realign {

namespace {

const char *const kInputFile = "input.fasta";
const char *const kAddedFile = "added.fasta";
const char *const kOutputFile = "output.fasta";
const char *const kWork = "work";
const char *const kTemporary = "tmp";
// What shells end with when a program that a script calls is not there.
constexpr int kShellFoundNothing = 127;

// What was ended has no time to tidy up, so its temporary files stand below our own folder too.
QProcessEnvironment environmentWith(const QString &temporary)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), temporary);
    // It would come first.
    environment.remove(QStringLiteral("MAFFT_TMPDIR"));
    return environment;
}

// A program that was just ended may still be making files.
void removeFolder(const std::filesystem::path &folder)
{
    using namespace std::chrono_literals;
    constexpr int kAttempts = 100;
    std::error_code error;
    for (int i = 0; i < kAttempts && std::filesystem::exists(folder, error); ++i) {
        if (i > 0)
            std::this_thread::sleep_for(10ms);
        std::filesystem::remove_all(folder, error);
    }
}

} // namespace

AlignerRun::AlignerRun(AlignerCommand command, std::string fasta, std::string added)
    : m_Command(std::move(command)), m_Fasta(std::move(fasta)), m_Added(std::move(added))
{
    m_Folder.setAutoRemove(false);
    connect(&m_Process, &QProcess::readyReadStandardOutput, this, &AlignerRun::readAnswer);
    connect(&m_Process, &QProcess::readyReadStandardError, this, &AlignerRun::readErrors);
    connect(&m_Process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            fail(FailureKind::NotFound, tr("was not found or cannot be started"));
    });
    connect(&m_Process, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
        readAnswer();
        readErrors();
        if (status == QProcess::CrashExit)
            fail(FailureKind::System, tr("crashed"));
        else if (code != 0)
            fail(code == kShellFoundNothing ? FailureKind::NotFound : FailureKind::System,
                 m_LastLine.isEmpty() ? tr("failed with status %1").arg(code)
                                      : tr("failed: %1").arg(m_LastLine));
        else
            finish({});
    });
}

AlignerRun::~AlignerRun()
{
    m_Process.disconnect(this);
    stop({FailureKind::Cancelled, {}});
    if (m_Folder.isValid())
        removeFolder(QFile::encodeName(m_Folder.path()).toStdString());
}

void AlignerRun::start()
{
    const QDir folder(m_Folder.path());
    QString cause;
    if (!m_Folder.isValid() || !folder.mkdir(kWork) || !folder.mkdir(kTemporary))
        cause = m_Folder.errorString();
    else if (cause = written(kInputFile, m_Fasta); cause.isEmpty() && !m_Added.empty())
        cause = written(kAddedFile, m_Added);
    if (!cause.isEmpty())
        return fail(FailureKind::System, tr("has no folder to work in: %1").arg(cause));
    m_Process.setWorkingDirectory(folder.filePath(kWork));
    m_Process.setProcessEnvironment(environmentWith(folder.filePath(kTemporary)));
    m_Process.setStandardInputFile(QProcess::nullDevice());
    // Aligners may be scripts: what they start has to end with them.
    m_Process.setChildProcessModifier([] { setpgid(0, 0); });
    m_Process.start(m_Command.program, m_Command.argumentsFor(kInputFile, kOutputFile, kAddedFile));
}

void AlignerRun::stop(const Failure &failure)
{
    if (const qint64 id = m_Process.processId(); id > 0) {
        kill(static_cast<pid_t>(-id), SIGKILL);
        m_Process.kill();
        finish(failure);
        m_Process.waitForFinished();
    }
}

QString AlignerRun::written(const char *name, const std::string &text) const
{
    QFile file(workFile(name));
    const auto size = static_cast<qint64>(text.size());
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(text.data(), size) == size && file.flush();
    return isWritten ? QString() : file.errorString();
}

QString AlignerRun::workFile(const char *name) const
{
    return m_Folder.filePath(
        QStringLiteral("%1/%2").arg(QLatin1String(kWork), QLatin1String(name)));
}

std::string AlignerRun::answer() const
{
    if (m_Command.printsAnswer)
        return m_Answer.toStdString();
    QFile output(workFile(kOutputFile));
    return output.open(QIODevice::ReadOnly) ? output.readAll().toStdString() : std::string();
}

void AlignerRun::readAnswer()
{
    // More columns than residues make no alignment: this one prints for ever.
    constexpr qint64 kLeast = 1 << 24;
    constexpr qint64 kTimesInput = 1000;
    m_Answer += m_Process.readAllStandardOutput();
    if (m_Answer.size() >
        kLeast + kTimesInput * static_cast<qint64>(m_Fasta.size() + m_Added.size()))
        stop({FailureKind::BadInput, tr("printed more than any alignment needs").toStdString()});
}

void AlignerRun::readErrors()
{
    const QString text = QString::fromLocal8Bit(m_Process.readAllStandardError()).trimmed();
    if (text.isEmpty())
        return;
    m_LastLine = text.mid(text.lastIndexOf(QLatin1Char('\n')) + 1).section('\r', -1).trimmed();
    emit said(m_LastLine);
}

void AlignerRun::fail(FailureKind kind, const QString &cause)
{
    finish(Failure{kind, cause.toStdString()});
}

void AlignerRun::finish(const Result<void> &outcome)
{
    if (std::exchange(m_IsOver, true))
        return;
    m_Outcome = outcome;
    emit ended();
}

} // namespace TAMBO::realign

#include "moc_AlignerRun.cpp"
