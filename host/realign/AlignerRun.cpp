// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignerRun.h"

#include <QFile>

#include <csignal>
#include <unistd.h>
#include <utility>

namespace TAMBO::realign {

namespace {

const char *const kInputFile = "input.fasta";
const char *const kOutputFile = "output.fasta";

} // namespace

AlignerRun::AlignerRun(AlignerCommand command, std::string fasta)
    : m_Command(std::move(command)), m_Fasta(std::move(fasta))
{
    connect(&m_Process, &QProcess::readyReadStandardOutput, this, &AlignerRun::readAnswer);
    connect(&m_Process, &QProcess::readyReadStandardError, this, &AlignerRun::readErrors);
    connect(&m_Process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            finish(tr("was not found or cannot be started"));
    });
    connect(&m_Process, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
        readAnswer();
        readErrors();
        if (status == QProcess::CrashExit)
            finish(tr("crashed"));
        else if (code != 0)
            finish(m_LastLine.isEmpty() ? tr("failed with status %1").arg(code)
                                        : tr("failed: %1").arg(m_LastLine));
        else
            finish(QString());
    });
}

AlignerRun::~AlignerRun()
{
    m_Process.disconnect(this);
    stop(QString());
}

void AlignerRun::start()
{
    QFile input(m_Folder.filePath(kInputFile));
    const auto size = static_cast<qint64>(m_Fasta.size());
    if (!m_Folder.isValid() || !input.open(QIODevice::WriteOnly) ||
        input.write(m_Fasta.data(), size) != size || !input.flush())
        return finish(tr("has no folder to work in: %1").arg(input.errorString()));
    input.close();
    m_Process.setWorkingDirectory(m_Folder.path());
    m_Process.setStandardInputFile(QProcess::nullDevice());
    // Aligners may be scripts: what they start has to end with them.
    m_Process.setChildProcessModifier([] { setpgid(0, 0); });
    m_Process.start(m_Command.program, m_Command.argumentsFor(kInputFile, kOutputFile));
}

void AlignerRun::stop(const QString &reason)
{
    if (const qint64 id = m_Process.processId(); id > 0) {
        kill(static_cast<pid_t>(-id), SIGKILL);
        m_Process.kill();
        finish(reason);
        m_Process.waitForFinished();
    }
}

std::string AlignerRun::answer() const
{
    if (m_Command.printsAnswer)
        return m_Answer.toStdString();
    QFile output(m_Folder.filePath(kOutputFile));
    return output.open(QIODevice::ReadOnly) ? output.readAll().toStdString() : std::string();
}

void AlignerRun::readAnswer()
{
    // More columns than residues make no alignment: this one prints for ever.
    constexpr qint64 kLeast = 1 << 24;
    constexpr qint64 kTimesInput = 1000;
    m_Answer += m_Process.readAllStandardOutput();
    if (m_Answer.size() > kLeast + kTimesInput * static_cast<qint64>(m_Fasta.size()))
        stop(tr("printed more than any alignment needs"));
}

void AlignerRun::readErrors()
{
    const QString text = QString::fromLocal8Bit(m_Process.readAllStandardError()).trimmed();
    if (text.isEmpty())
        return;
    m_LastLine = text.mid(text.lastIndexOf(QLatin1Char('\n')) + 1).section('\r', -1).trimmed();
    emit said(m_LastLine);
}

void AlignerRun::finish(const QString &error)
{
    if (std::exchange(m_IsOver, true))
        return;
    m_Error = error;
    emit ended();
}

} // namespace TAMBO::realign
