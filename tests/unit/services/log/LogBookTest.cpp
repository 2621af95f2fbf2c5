// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogBook.h"

#include "support/ExpectMessage.h"
#include "support/LogLines.h"

#include "Check.h"
#include "Hooks.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace TAMBO::services;
using Severity = Logger::Severity;

namespace LogBookTest {

QStringList linesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
}

TEST(LogBook, KeepsTimeSeverityAndTextInOrder)
{
    LogBook book{QString()};
    const QDateTime before = QDateTime::currentDateTime();
    book.write("one", Severity::Info);
    book.write("two", Severity::Error);
    const auto entries = book.entries();
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].text, "one");
    EXPECT_EQ(entries[0].severity, Severity::Info);
    EXPECT_GE(entries[0].time, before);
    EXPECT_EQ(entries[1].text, "two");
    EXPECT_EQ(entries[1].severity, Severity::Error);
    EXPECT_EQ(entries[1].number, entries[0].number + 1);
}

TEST(LogBook, KeepsTheLatestEntriesOnly)
{
    LogBook book(QString(), 3);
    for (const char *text : {"1", "2", "3", "4", "5"})
        book.write(text, Severity::Info);
    const auto entries = book.entries();
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries.front().text, "3");
    EXPECT_EQ(entries.back().text, "5");
    EXPECT_EQ(entries.back().number, 5U);
}

TEST(LogBook, TellsEveryEntry)
{
    LogBook book{QString()};
    const QSignalSpy spy(&book, &LogBook::written);
    book.write("hello", Severity::Warning);
    ASSERT_EQ(spy.count(), 1);
    const auto entry = spy.first().first().value<LogEntry>();
    EXPECT_EQ(entry.text, "hello");
    EXPECT_EQ(entry.severity, Severity::Warning);
}

TEST(LogBook, OverlooksBlankTextsAndCutsLineEndsAtTheEnd)
{
    LogBook book{QString()};
    book.write("", Severity::Info);
    book.write(" \n\n", Severity::Info);
    book.write("two\nlines\n", Severity::Info);
    ASSERT_EQ(book.entries().size(), 1U);
    EXPECT_EQ(book.entries().front().text, "two\nlines");
}

TEST(LogBook, AppendsEveryEntryToTheFile)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("deep/tambo.log");
    {
        LogBook book(path);
        EXPECT_FALSE(QFileInfo::exists(path)) << "nothing is made before the first line";
        book.write("first", Severity::Info);
    }
    LogBook book(path);
    book.write("Größe\nof two lines", Severity::Error);
    const QStringList lines = linesOf(path);
    ASSERT_EQ(lines.size(), 3);
    const QRegularExpression time("^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3} ");
    EXPECT_TRUE(lines[0].contains(time)) << lines[0].toStdString();
    EXPECT_TRUE(lines[0].endsWith(" info first"));
    EXPECT_TRUE(lines[1].contains(time));
    EXPECT_TRUE(lines[1].endsWith(" error Größe"));
    EXPECT_EQ(lines[2], "    of two lines");
    EXPECT_EQ(QFileInfo(path).permissions() & (QFile::ReadOther | QFile::ReadGroup),
              QFile::Permissions());
}

TEST(LogBook, AFileThatHasGrownTooLargeIsPutAside)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("tambo.log");
    LogBook book(path, LogBook::kEntries, 200);
    for (int i = 0; i < 20; ++i)
        book.write(QStringLiteral("line %1").arg(i, 30), Severity::Info);
    EXPECT_LE(QFileInfo(path).size(), 200);
    EXPECT_LE(QFileInfo(path + ".1").size(), 200);
    EXPECT_TRUE(linesOf(path).last().endsWith("19"));
    EXPECT_FALSE(linesOf(path + ".1").isEmpty());
}

TEST(LogBook, AFileThatCannotBeWrittenIsToldOnceAndTheEntriesStay)
{
    LogBook book("/dev/null/tambo.log");
    book.write("one", Severity::Info);
    book.write("two", Severity::Info);
    const auto entries = book.entries();
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].text, "one");
    EXPECT_TRUE(entries[1].text.startsWith("The log file cannot be written: /dev/null/tambo.log"));
    EXPECT_EQ(entries[1].severity, Severity::Warning);
    EXPECT_EQ(entries[2].text, "two");
}

TEST(LogBook, TakesManyLinesAtOnceAsOneAfterTheOther)
{
    const QTemporaryDir directory;
    LogBook single(directory.filePath("single.log"));
    LogBook many(directory.filePath("many.log"));
    const std::vector<Logger::Line> lines = {
        {"one", Severity::Info}, {" \n", Severity::Error}, {"zwei Größen\n", Severity::Warning}};
    for (const Logger::Line &line : lines)
        single.write(line.text, line.severity);
    const QSignalSpy spy(&many, &LogBook::written);
    many.write(lines.size(), [&](std::size_t i) { return lines[i]; });
    ASSERT_EQ(many.entries().size(), single.entries().size());
    EXPECT_EQ(std::size_t(spy.count()), many.entries().size());
    for (std::size_t i = 0; i < many.entries().size(); ++i) {
        EXPECT_EQ(many.entries()[i].text, single.entries()[i].text);
        EXPECT_EQ(many.entries()[i].severity, single.entries()[i].severity);
        EXPECT_EQ(many.entries()[i].number, single.entries()[i].number);
    }
    constexpr qsizetype kTime = 24;
    const QStringList expected = linesOf(single.path());
    const QStringList written = linesOf(many.path());
    ASSERT_EQ(written.size(), expected.size());
    for (qsizetype i = 0; i < written.size(); ++i)
        EXPECT_EQ(written[i].mid(kTime), expected[i].mid(kTime));
}

TEST(LogBook, OfManyLinesThoseThatWouldBeGoneAgainAreNotAskedFor)
{
    const QTemporaryDir directory;
    constexpr std::size_t kLines = 1'000'000;
    constexpr qint64 kFileSize = 10'000;
    LogBook book(directory.filePath("tambo.log"), 100, kFileSize);
    book.write("before", Severity::Info);
    const QSignalSpy spy(&book, &LogBook::written);
    std::size_t asked = 0;
    book.write(kLines, [&](std::size_t i) {
        ++asked;
        return Logger::Line{QStringLiteral("line %1").arg(i, 45)};
    });
    EXPECT_EQ(asked, 400U) << "lines of 50 characters in two files";
    EXPECT_EQ(spy.count(), 100);
    const auto entries = book.entries();
    ASSERT_EQ(entries.size(), 100U);
    EXPECT_TRUE(entries.front().text.endsWith(" 999900"));
    EXPECT_EQ(entries.back().number, kLines + 1);
    EXPECT_LE(QFileInfo(book.path()).size(), kFileSize);
    EXPECT_TRUE(linesOf(book.path()).last().endsWith(" 999999"));
    EXPECT_FALSE(linesOf(book.path() + ".1").isEmpty());
    EXPECT_FALSE(linesOf(book.path() + ".1").join(' ').contains("before"));
}

TEST(LogBook, ManyLinesInMemoryAloneAreAskedForAsManyAsAreKept)
{
    LogBook book(QString(), 100);
    std::size_t asked = 0;
    book.write(1'000'000, [&](std::size_t i) {
        ++asked;
        return Logger::Line{QString::number(i)};
    });
    EXPECT_EQ(asked, 100U);
    EXPECT_EQ(book.entries().back().text, "999999");
}

TEST(LogBook, TakesEntriesOfManyThreads)
{
    const QTemporaryDir directory;
    LogBook book(directory.filePath("tambo.log"));
    constexpr int kThreads = 4;
    constexpr int kLines = 200;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread)
        threads.emplace_back([&book, thread] {
            for (int i = 0; i < kLines; ++i)
                book.write(QStringLiteral("thread %1 line %2").arg(thread).arg(i), Severity::Info);
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(book.entries().size(), std::size_t(kThreads * kLines));
    const QStringList lines = linesOf(book.path());
    EXPECT_EQ(lines.size(), kThreads * kLines);
    for (const QString &line : lines)
        EXPECT_TRUE(line.contains(QRegularExpression(" info thread \\d line \\d+$")))
            << line.toStdString();
}

TEST(LogBook, MessagesOfTheModelAndWarningsOfTheToolkitCanBeRoutedHere)
{
    const auto hookBefore = TAMBO::modelHooks().log;
    LogBook::routeMessages();
    LogBook::routeMessages();
    const LogLines log;
    TAMBO::modelHooks().log("from the model", TAMBO::LogSeverity::Warning);
    {
        const ExpectMessage still(QtWarningMsg, "from the toolkit");
        qWarning("from the toolkit");
    }
    EXPECT_EQ(log.texts(), QStringList({"from the model", "from the toolkit"}));
    installTestMessageHandler();
    TAMBO::modelHooks().log = hookBefore;
}

// What is on the terminal is in the log, too.
TEST(LogBook, ChecksAndTalkOfTheToolkitAreThereForDevelopers)
{
    const auto hookBefore = TAMBO::modelHooks().log;
    LogBook::routeMessages();
    const quint64 before = LogBook::instance().entries().back().number;
    const LogLines log;
    {
        const MessageRecorder still;
        qDebug("Got Alignment 5 by 3");
        TAMBO::checkCondition(false, "0 < Count", "KALMO2", 993);
        TAMBO::checkPointer(nullptr, "AcidColor", 12);
        qWarning("QFont::setPixelSize: Pixel size <= 0 (0)");
        qCWarning(QLoggingCategory("qt.qpa.screen"), "no screen");
        qWarning("Quite another thing");
    }
    EXPECT_EQ(log.texts(), QStringList{"Quite another thing"});
    QStringList forDevelopers;
    for (const LogEntry &entry : LogBook::instance().entries())
        if (entry.number > before && entry.isForDevelopers)
            forDevelopers << entry.text;
    EXPECT_EQ(forDevelopers,
              QStringList({"Got Alignment 5 by 3", "ASSERT: \"0 < Count\" in KALMO2 (993)",
                           "In file AcidColor, line 12: Out of memory",
                           "QFont::setPixelSize: Pixel size <= 0 (0)", "no screen"}));
    installTestMessageHandler();
    TAMBO::modelHooks().log = hookBefore;
}

TEST(LogBook, TheFileSaysWhatIsForDevelopers)
{
    const QTemporaryDir directory;
    LogBook book(directory.filePath("tambo.log"));
    book.writeForDevelopers("0 < Count", Severity::Warning);
    ASSERT_EQ(linesOf(book.path()).size(), 1);
    EXPECT_TRUE(linesOf(book.path()).front().endsWith(" check 0 < Count"));
}

TEST(LogBook, LinesOfOneCommandAreThoseBetweenTwoLooksAtEvents)
{
    LogBook book{QString()};
    book.write("one", Severity::Info);
    book.write(2, [](std::size_t) { return Logger::Line{"of several", Severity::Info}; });
    QCoreApplication::processEvents();
    book.write("another", Severity::Info);
    std::thread([&book] { book.write("beside it", Severity::Info); }).join();
    book.write("the other again", Severity::Info);
    std::vector<quint64> commands;
    for (const LogEntry &entry : book.entries())
        commands.push_back(entry.command);
    EXPECT_EQ(commands, (std::vector<quint64>{1, 1, 1, 2, 3, 2}));
}

TEST(LogBook, OfATextThatIsTooLongBeginningAndEndAreKept)
{
    LogBook book{QString()};
    const qsizetype longest = LogBook::kLongest;
    book.write("begin" + QString(3 * longest, 'x') + "end", Logger::Severity::Info);
    const QString text = book.entries().at(0).text;
    EXPECT_LT(text.size(), longest + 100);
    EXPECT_TRUE(text.startsWith("beginx"));
    EXPECT_TRUE(text.endsWith("xend"));
    EXPECT_TRUE(text.contains(
        QStringLiteral("\n[… %1 characters are left out here …]\n").arg(2 * longest + 8)));
    book.write(QString(longest, 'x'), Logger::Severity::Info);
    EXPECT_EQ(book.entries().at(1).text.size(), longest);
}

TEST(LogBook, ALongTextOfAProgramIsCutBetweenCharacters)
{
    const QByteArray bytes = "b" + QByteArray("\xE2\x82\xAC").repeated(1'000'000) + "e";
    Logger::Write(bytes.constData());
    const QString text = LogBook::instance().entries().back().text;
    EXPECT_LT(text.size(), LogBook::kLongest + 100);
    EXPECT_TRUE(text.startsWith(u"b€€"));
    EXPECT_TRUE(text.endsWith(u"€€e"));
    EXPECT_EQ(text.count(QChar(0x20ac)) + text.count(QRegularExpression("[ -~\n…]")), text.size())
        << "nothing else";
}

} // namespace LogBookTest
