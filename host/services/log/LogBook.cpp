// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogBook.h"

#include "Directories.h"
#include "Hooks.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QMetaObject>
#include <QRegularExpression>
#include <QThread>

#include <algorithm>
#include <utility>

namespace TAMBO::services {

namespace {

QtMessageHandler s_NextHandler = nullptr;

// In the file.
const char *kindName(const LogEntry &entry)
{
    if (entry.isForDevelopers)
        return "check";
    switch (entry.severity) {
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

Logger::Severity fromToolkit(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
    case QtInfoMsg:
        return Logger::Severity::Info;
    case QtWarningMsg:
        return Logger::Severity::Warning;
    case QtCriticalMsg:
    case QtFatalMsg:
        break;
    }
    return Logger::Severity::Error;
}

// The checks of the kit, and what the toolkit says of its own classes or in its own categories.
bool isForDevelopers(QtMsgType type, const char *category, const QString &text)
{
    static const QRegularExpression kOfChecks(
        QStringLiteral("^(ASSERT: \"|In file .*, line \\d+: Out of memory$|Q[A-Z]\\w*(::|: ))"));
    return type == QtDebugMsg || QByteArrayView(category).startsWith("qt.") ||
           kOfChecks.match(text).hasMatch();
}

void routeToolkitMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // A slot of the log dock may itself make the toolkit complain.
    thread_local bool isWriting = false;
    if (!isWriting) {
        isWriting = true;
        LogBook &book = LogBook::instance();
        if (isForDevelopers(type, context.category, text))
            book.writeForDevelopers(text, fromToolkit(type));
        else
            book.write(text, fromToolkit(type));
        isWriting = false;
    }
    if (s_NextHandler != nullptr)
        s_NextHandler(type, context, text);
}

} // namespace

LogBook::LogBook(const QString &path, std::size_t entries, qint64 fileSize)
    : m_Largest(entries),
      m_FileSize(fileSize),
      m_File(path.isEmpty() ? nullptr : new LogFile(path, fileSize))
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

QString LogBook::trimmed(const QString &text)
{
    QString line = text;
    if (line.size() > kLongest)
        line = text.left(kLongest / 2) + leftOut(text.size() - kLongest) + text.right(kLongest / 2);
    while (!line.isEmpty() && line.back().isSpace())
        line.chop(1);
    return line;
}

void LogBook::write(const QString &text, Logger::Severity severity)
{
    write(text, severity, false);
}

void LogBook::writeForDevelopers(const QString &text, Logger::Severity severity)
{
    write(text, severity, true);
}

void LogBook::write(const QString &text, Logger::Severity severity, bool isForDevelopers)
{
    const QString line = trimmed(text);
    if (line.isEmpty())
        return;
    std::vector<LogEntry> added;
    {
        const std::lock_guard lock(m_Mutex);
        addTo(added, {0, {}, severity, line, commandNow(), isForDevelopers});
    }
    for (const LogEntry &entry : added)
        emit written(entry);
}

void LogBook::write(std::size_t count, const Logger::LineAt &lineAt)
{
    std::size_t skipped = 0;
    const std::vector<Logger::Line> lines = keptOf(count, lineAt, skipped);
    std::vector<LogEntry> added;
    added.reserve(lines.size());
    {
        const std::lock_guard lock(m_Mutex);
        m_Count += skipped;
        const quint64 command = commandNow();
        for (const Logger::Line &line : lines)
            addTo(added, {0, {}, line.severity, line.text, command, false});
    }
    const std::size_t kept = std::min(added.size(), m_Largest);
    for (auto entry = added.end() - std::ptrdiff_t(kept); entry != added.end(); ++entry)
        emit written(*entry);
}

// The file and the one that was put aside hold no more than twice what one may.
std::vector<Logger::Line> LogBook::keptOf(std::size_t count, const Logger::LineAt &lineAt,
                                          std::size_t &skipped) const
{
    qint64 room = path().isEmpty() ? 0 : 2 * m_FileSize;
    std::vector<Logger::Line> lines;
    for (skipped = count; skipped > 0 && (room > 0 || lines.size() < m_Largest); --skipped) {
        Logger::Line line = lineAt(skipped - 1);
        line.text = trimmed(line.text);
        if (line.text.isEmpty())
            continue;
        room -= line.text.size();
        lines.push_back(std::move(line));
    }
    std::ranges::reverse(lines);
    return lines;
}

// While a command runs in the GUI thread nobody looks at events.
quint64 LogBook::commandNow()
{
    if (QThread::currentThread() != thread() || QCoreApplication::instance() == nullptr)
        return ++m_Command;
    if (!m_OpenCommand) {
        m_OpenCommand = ++m_Command;
        QMetaObject::invokeMethod(
            this,
            [this] {
                const std::lock_guard lock(m_Mutex);
                m_OpenCommand.reset();
            },
            Qt::QueuedConnection);
    }
    return *m_OpenCommand;
}

void LogBook::addTo(std::vector<LogEntry> &added, LogEntry entry)
{
    added.push_back(add(std::move(entry)));
    if (!m_File || writeToFile(added.back()))
        return;
    const QString complaint = QStringLiteral("The log file cannot be written: %1: %2")
                                  .arg(m_File->path(), m_File->error());
    m_File.reset();
    added.push_back(
        add({0, {}, Logger::Severity::Warning, complaint, added.back().command, false}));
}

LogEntry LogBook::add(LogEntry entry)
{
    // A search of many rows writes hundreds of lines a millisecond.
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (now != m_Now) {
        m_Now = now;
        m_Time = QDateTime::fromMSecsSinceEpoch(now);
        m_TimeText = m_Time.toString(Qt::ISODateWithMs).toUtf8();
    }
    entry.number = ++m_Count;
    entry.time = m_Time;
    m_Entries.push_back(entry);
    if (m_Entries.size() > m_Largest)
        m_Entries.pop_front();
    return entry;
}

bool LogBook::writeToFile(const LogEntry &entry)
{
    QByteArray line = m_TimeText;
    line += ' ';
    line += kindName(entry);
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
