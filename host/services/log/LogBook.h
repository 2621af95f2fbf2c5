// SPDX-License-Identifier: GPL-3.0-or-later
// The log of the workbench: the latest entries in memory for the log dock, all of them in a file.
// May be written from any thread.
#pragma once

#include "LogFile.h"
#include "Logger.h"

#include <QByteArray>
#include <QDateTime>
#include <QMetaType>
#include <QObject>
#include <QString>

#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace TAMBO::services {

struct LogEntry
{
    // Counts all entries of this run from 1.
    quint64 number = 0;
    QDateTime time;
    Logger::Severity severity = Logger::Severity::Info;
    QString text;
    // Lines of one command have one, also counted from 1: what the GUI thread writes without a look
    // at events, and what any thread writes at once.
    quint64 command = 0;
    // A failed check, or what the toolkit says of itself: of no use but for who mends the program.
    bool isForDevelopers = false;
};

class LogBook : public QObject
{
    Q_OBJECT

public:
    static constexpr std::size_t kEntries = 10000;
    static constexpr qint64 kFileSize = 1 << 20;
    // In characters. Of a longer text the beginning and the end are kept.
    static constexpr qsizetype kLongest = 1 << 20;

    // An empty path keeps the log in memory only.
    explicit LogBook(const QString &path, std::size_t entries = kEntries,
                     qint64 fileSize = kFileSize);
    ~LogBook() override;

    // The book behind Logger, with tambo.log in the user's data directory. Never destroyed, so that
    // the last destructor of the program can still write to it.
    static LogBook &instance();

    // What stands for the middle of a text that was too long.
    [[nodiscard]] static QString leftOut(qsizetype length);
    // A text without any character but blanks is not worth an entry.
    void write(const QString &text, Logger::Severity severity);
    void writeForDevelopers(const QString &text, Logger::Severity severity);
    // So many, in their order. Of those that would be gone again behind the last one nobody hears,
    // but they are counted.
    void write(std::size_t count, const Logger::LineAt &lineAt);
    // The latest ones, oldest first.
    [[nodiscard]] std::vector<LogEntry> entries() const;
    void clear();
    [[nodiscard]] QString path() const;

    // Sends all messages of the toolkit, and what the model has to say, here. What showed messages
    // before goes on showing them.
    static void routeMessages();

signals:
    // Emitted in the thread that wrote.
    void written(const TAMBO::services::LogEntry &entry);

private:
    // A text as it is kept, without what nobody would see.
    [[nodiscard]] static QString trimmed(const QString &text);
    // The last ones, which are all that list and file keep of so many; skipped: how many come
    // before them.
    [[nodiscard]] std::vector<Logger::Line> keptOf(std::size_t count, const Logger::LineAt &lineAt,
                                                   std::size_t &skipped) const;
    void write(const QString &text, Logger::Severity severity, bool isForDevelopers);
    // Of the line that is being written.
    quint64 commandNow();
    LogEntry add(LogEntry entry);
    // With the file's complaint behind it, if there is one.
    void addTo(std::vector<LogEntry> &added, LogEntry entry);
    bool writeToFile(const LogEntry &entry);

    mutable std::mutex m_Mutex;
    std::deque<LogEntry> m_Entries;
    std::size_t m_Largest;
    qint64 m_FileSize;
    quint64 m_Count = 0;
    quint64 m_Command = 0;
    // Of the thread that the book lives in, until it looks at events.
    std::optional<quint64> m_OpenCommand;
    // Of the last entry.
    qint64 m_Now = 0;
    QDateTime m_Time;
    QByteArray m_TimeText;
    std::unique_ptr<LogFile> m_File;
};

} // namespace TAMBO::services

Q_DECLARE_METATYPE(TAMBO::services::LogEntry)
