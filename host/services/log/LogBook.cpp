// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogBook.h"

#include "Directories.h"
#include "Hooks.h"

#include <QByteArray>

namespace TAMBO::services {

namespace {

QtMessageHandler s_NextHandler = nullptr;

const char *severityName(Logger::Severity severity)
{
    switch (severity) {
    case Logger::Severity::Info:
        return "info";
    case Logger::Severity::Warning:
        return "warning";
    case Logger::Severity::Error:
        return "error";
    }
    return "";
}

Logger::Severity fromModel(LogSeverity severity)
{
    switch (severity) {
    case LogSeverity::Info:
        return Logger::Severity::Info;
    case LogSeverity::Warning:
        return Logger::Severity::Warning;
    case LogSeverity::Error:
        break;
    }
    return Logger::Severity::Error;
}

void routeToolkitMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // A slot of the log dock may itself make the toolkit complain.
    thread_local bool isWriting = false;
    if (!isWriting && type != QtDebugMsg) {
        isWriting = true;
        const bool isError = type == QtCriticalMsg || type == QtFatalMsg;
        LogBook::instance().write(text, type == QtInfoMsg ? Logger::Severity::Info
                                        : isError         ? Logger::Severity::Error
                                                          : Logger::Severity::Warning);
        isWriting = false;
    }
    if (s_NextHandler != nullptr)
        s_NextHandler(type, context, text);
}

} // namespace

LogBook::LogBook(const QString &path, std::size_t entries, qint64 fileSize)
    : m_Largest(entries), m_File(path.isEmpty() ? nullptr : new LogFile(path, fileSize))
{
    qRegisterMetaType<TAMBO::services::LogEntry>();
}

LogBook::~LogBook() = default;

LogBook &LogBook::instance()
{
    static auto *book = new LogBook(Directories::data() + QStringLiteral("/tambo.log"));
    return *book;
}

QString LogBook::leftOut(qsizetype length)
{
    return QStringLiteral("\n[… %1 characters are left out here …]\n").arg(length);
}

void LogBook::write(const QString &text, Logger::Severity severity)
{
    QString line = text;
    if (line.size() > kLongest)
        line = text.left(kLongest / 2) + leftOut(text.size() - kLongest) + text.right(kLongest / 2);
    while (!line.isEmpty() && line.back().isSpace())
        line.chop(1);
    if (line.isEmpty())
        return;

    LogEntry entry;
    LogEntry complaint;
    {
        const std::lock_guard lock(m_Mutex);
        entry = add(line, severity);
        if (m_File && !writeToFile(entry)) {
            complaint = add(QStringLiteral("The log file cannot be written: %1: %2")
                                .arg(m_File->path(), m_File->error()),
                            Logger::Severity::Warning);
            m_File.reset();
        }
    }
    emit written(entry);
    if (complaint.number != 0)
        emit written(complaint);
}

LogEntry LogBook::add(const QString &text, Logger::Severity severity)
{
    // A search of many rows writes hundreds of lines a millisecond.
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (now != m_Now) {
        m_Now = now;
        m_Time = QDateTime::fromMSecsSinceEpoch(now);
        m_TimeText = m_Time.toString(Qt::ISODateWithMs).toUtf8();
    }
    LogEntry entry{++m_Count, m_Time, severity, text};
    m_Entries.push_back(entry);
    if (m_Entries.size() > m_Largest)
        m_Entries.pop_front();
    return entry;
}

bool LogBook::writeToFile(const LogEntry &entry)
{
    QByteArray line = m_TimeText;
    line += ' ';
    line += severityName(entry.severity);
    line += ' ';
    // The further lines of a text are set in, so that every entry starts with its time.
    if (entry.text.contains(u'\n'))
        line += QString(entry.text).replace(u'\n', QStringLiteral("\n    ")).toUtf8();
    else
        line += entry.text.toUtf8();
    line += '\n';
    return m_File->append(line);
}

std::vector<LogEntry> LogBook::entries() const
{
    const std::lock_guard lock(m_Mutex);
    return {m_Entries.begin(), m_Entries.end()};
}

void LogBook::clear()
{
    const std::lock_guard lock(m_Mutex);
    m_Entries.clear();
}

QString LogBook::path() const
{
    const std::lock_guard lock(m_Mutex);
    return m_File ? m_File->path() : QString();
}

void LogBook::routeMessages()
{
    modelHooks().log = [](const std::string &message, LogSeverity severity) {
        instance().write(QString::fromStdString(message), fromModel(severity));
    };
    const QtMessageHandler before = qInstallMessageHandler(routeToolkitMessage);
    if (before != routeToolkitMessage)
        s_NextHandler = before;
}

} // namespace TAMBO::services

#include "moc_LogBook.cpp"
