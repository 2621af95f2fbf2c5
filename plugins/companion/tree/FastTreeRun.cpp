// SPDX-License-Identifier: GPL-3.0-or-later
#include "FastTreeRun.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace companion {

namespace {

constexpr std::string_view kKnownLetters = "ACDEFGHIKLMNPQRSTVWY";

char letterForProgram(char letter)
{
    if (letter == '-')
        return letter;
    const char capital = letter >= 'a' && letter <= 'z' ? char(letter - 'a' + 'A') : letter;
    return kKnownLetters.find(capital) == std::string_view::npos ? 'X' : capital;
}

} // namespace

QString FastTreeRun::program()
{
    for (const char *const name : {"fasttree", "FastTree"}) {
        const QString found = QStandardPaths::findExecutable(QString::fromLatin1(name));
        if (!found.isEmpty())
            return found;
    }
    return {};
}

std::string FastTreeRun::labelOf(std::size_t row)
{
    return 'r' + std::to_string(row);
}

FastTreeRun::FastTreeRun() : m_Rows(m_Folder.filePath(QStringLiteral("rows.fasta")))
{
    m_CannotWrite = !m_Folder.isValid() || !m_Rows.open(QIODevice::WriteOnly);
    connect(&m_Process, &QProcess::started, this, &FastTreeRun::started);
    connect(&m_Process, &QProcess::readyReadStandardError, this, &FastTreeRun::readErrors);
    connect(&m_Process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            emit failed(
                tr("%1 cannot be started: %2").arg(m_Process.program(), m_Process.errorString()));
    });
    connect(&m_Process, &QProcess::finished, this,
            [this](int code, QProcess::ExitStatus status) { end(status, code); });
    // The toolkit ends no process of windows that nobody closes.
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] {
        m_Process.disconnect(this);
        m_Process.kill();
        m_Process.waitForFinished();
        m_Folder.remove();
    });
}

FastTreeRun::~FastTreeRun()
{
    m_Process.disconnect(this);
    if (m_Process.state() == QProcess::NotRunning)
        return;
    m_Process.kill();
    m_Process.waitForFinished();
}

void FastTreeRun::addRow(std::string_view letters)
{
    std::string text = '>' + labelOf(m_Count++) + '\n';
    text.reserve(text.size() + letters.size() + 1);
    for (const char letter : letters)
        text += letterForProgram(letter);
    text += '\n';
    const auto size = static_cast<qint64>(text.size());
    m_CannotWrite = m_CannotWrite || m_Rows.write(text.data(), size) != size;
}

void FastTreeRun::start()
{
    m_CannotWrite = m_CannotWrite || !m_Rows.flush();
    m_Rows.close();
    if (m_CannotWrite) {
        emit failed(tr("The rows cannot be written for fasttree: %1: %2")
                        .arg(m_Rows.fileName(), m_Rows.errorString()));
        return;
    }
    m_Process.setProgram(program());
    if (m_Process.program().isEmpty()) {
        emit failed(tr("The program fasttree is not installed. On Debian it is in the package "
                       "fasttree."));
        return;
    }
    m_Process.setArguments({m_Rows.fileName()});
    m_Process.setWorkingDirectory(m_Folder.path());
    m_Process.setStandardInputFile(QProcess::nullDevice());
    // Also when the workbench is killed.
    m_Process.setChildProcessModifier([parent = getpid()] {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent)
            raise(SIGKILL);
    });
    m_Process.start();
}

void FastTreeRun::readErrors()
{
    QString text = QString::fromLocal8Bit(m_Process.readAllStandardError());
    text.replace(u'\r', u'\n');
    const QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
    if (lines.isEmpty())
        return;
    m_LastLine = lines.back().simplified();
    emit said(m_LastLine);
}

void FastTreeRun::end(QProcess::ExitStatus status, int code)
{
    readErrors();
    // Whoever ends it in the list of running jobs knows.
    if (status == QProcess::CrashExit && code == SIGTERM)
        emit failed({});
    else if (status == QProcess::CrashExit)
        emit failed(tr("fasttree was ended before its tree was complete."));
    else if (code != 0)
        emit failed(tr("fasttree has failed: %1")
                        .arg(m_LastLine.isEmpty() ? tr("status %1").arg(code) : m_LastLine));
    else
        emit finished(m_Process.readAllStandardOutput());
}

} // namespace companion
