// SPDX-License-Identifier: GPL-3.0-or-later
// Files that are written beside the user's work, or while he waits.
#include "WriteJob.h"

#include "AppFixture.h"
#include "DataMaker.h"
#include "FileWriter.h"
#include "PipeFile.h"
#include "WritableObject.h"
#include "WriteProgress.h"
#include "WriteWait.h"
#include "support/Answering.h"
#include "support/Outcome.h"
#include "support/ScopedSettings.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTest>

#include <random>

namespace WriteJobTest {

using namespace TAMBO;
using app::WritableObject;
using app::WriteJob;
using app::WriteProgress;

constexpr const char *kPirText = ">P1;family1\nsequence:family1::::::::\nAC-D*\n\n"
                                 ">P1;family2\nsequence:family2::::::::\nACCD*\n\n";

class WriteJobTest : public RecordedFixture
{
protected:
    static std::shared_ptr<const WritableObject> valuesOf(const Compound &object)
    {
        return std::make_shared<const WritableObject>(object);
    }
    static std::string bytesOf(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().toStdString();
    }
    // Any of the ways in which cells change.
    static void edit(Alignment &alignment, std::mt19937 &random)
    {
        const unsigned long row = random() % alignment.height();
        const unsigned long column = random() % alignment.width();
        switch (random() % 4) {
        case 0:
            alignment.insertGap(row, column);
            break;
        case 1:
            alignment.insertGapCol(column, 1 + random() % 3);
            break;
        case 2:
            alignment.bubbleRow(row, random() % alignment.height());
            break;
        default:
            alignment.moveGap(row, column, random() % alignment.width(), random() % 2 == 0);
        }
    }

    Alignment &m_Family = alignment("family", {"AC-D", "ACCD"});
};

TEST_F(WriteJobTest, AJobWritesTheFileAndTellsItsEnd)
{
    WriteJob job(valuesOf(m_Family), m_Folder.filePath("x.ali"), {});
    int ended = 0;
    QObject::connect(&job, &WriteJob::ended, [&] { ++ended; });
    EXPECT_FALSE(job.isOver());
    job.start();
    waitUntil([&] { return job.isOver(); });
    EXPECT_EQ(complaintOf(job.outcome()), "");
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(bytesOf(job.path()), kPirText);
    EXPECT_GT(job.done(), 0.9);
}

TEST_F(WriteJobTest, AJobKeepsTheLastVersionsWhenTheSettingsSaySo)
{
    const auto filesAfterWriting = [this] {
        WriteJob job(valuesOf(m_Family), m_Folder.filePath("x.ali"), {});
        job.start();
        waitUntil([&] { return job.isOver(); });
        EXPECT_EQ(complaintOf(job.outcome()), "");
        return QDir(m_Folder.path()).entryList({"x.ali*"}, QDir::Files, QDir::Name);
    };
    write("x.ali", "old");
    {
        const ScopedSettings settings("[Files]\nBackups = true\n");
        EXPECT_EQ(filesAfterWriting(), (QStringList{"x.ali", "x.ali.1.bak~"}));
        EXPECT_EQ(bytesOf(m_Folder.filePath("x.ali.1.bak~")), "old");
        EXPECT_EQ(filesAfterWriting().size(), 2) << "nothing has changed";
    }
    QFile::remove(m_Folder.filePath("x.ali.1.bak~"));
    m_Family.insertGap(0, 0);
    EXPECT_EQ(filesAfterWriting(), QStringList("x.ali"));
}

TEST_F(WriteJobTest, AFileWhoseVersionCannotBeKeptIsNotWritten)
{
    const ScopedSettings settings("[Files]\nBackups = true\n");
    // No room for the name of a version.
    const QString name = QString(250, 'x') + ".ali";
    write(name, "old");
    WriteJob job(valuesOf(m_Family), m_Folder.filePath(name), {});
    job.start();
    waitUntil([&] { return job.isOver(); });
    EXPECT_TRUE(complaintOf(job.outcome())
                    .ends_with("was not written, because its old version cannot be kept: File name "
                               "too long"));
    EXPECT_EQ(bytesOf(m_Folder.filePath(name)), "old");
    EXPECT_FALSE(job.written().has_value());
}

TEST_F(WriteJobTest, WhatIsWrittenIsWhatWasThereWhenItWasAsked)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    WriteJob job(valuesOf(m_Family), pipe.path(), {});
    job.start();
    m_Family.insertGap(0, 0);
    DataMaker::Destroy(&m_Family);
    m_History.clear();
    pipe.read();
    waitUntil([&] { return job.isOver(); });
    EXPECT_EQ(complaintOf(job.outcome()), "");
    EXPECT_EQ(pipe.text(), kPirText);
}

// Edits stand between any two steps of the writing.
TEST_F(WriteJobTest, RandomEditsDuringAWriteDoNotReachTheFile)
{
    std::mt19937 random(7);
    for (const char *format : {"pir", "fasta", "stockholm", "clustal", "a2m"}) {
        std::vector<std::string> rows;
        for (int row = 0; row < 40; ++row) {
            std::string text;
            for (int column = 0; column < 130; ++column)
                text += random() % 4 == 0 ? '-' : "ACDEFGHIKL"[random() % 10];
            rows.push_back(text);
        }
        Alignment &family = alignment("random", rows);
        const WriteOptions options = writeOptionsNamed(format).value();
        const QString before = m_Folder.filePath("before");
        ASSERT_EQ(complaintOf(WritableObject(family).write(before, options)), "");
        const QString during = m_Folder.filePath("during");
        const WritableObject values(family);
        WriteAids aids;
        int steps = 0;
        aids.step = [&](WriteStage, double) {
            for (int i = 0; i < 20; ++i, ++steps)
                edit(family, random);
            return true;
        };
        ASSERT_EQ(complaintOf(values.write(during, options, aids)), "") << format;
        EXPECT_GE(steps, 20 * kWriteStages);
        EXPECT_EQ(bytesOf(during), bytesOf(before)) << format;
        EXPECT_NE(rowsOf(family), rows) << format;
    }
}

TEST_F(WriteJobTest, ACancelledJobLeavesTheOldFileAndNothingElse)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    WriteJob job(valuesOf(m_Family), pipe.path(), {});
    job.start();
    job.cancel();
    waitUntil([&] { return job.isOver(); });
    ASSERT_FALSE(job.outcome());
    EXPECT_EQ(job.outcome().error().kind, FailureKind::Cancelled);
    EXPECT_EQ(QDir(m_Folder.path()).entryList(QDir::Files | QDir::System | QDir::Hidden),
              QStringList("x.ali"));
}

// Nobody reads the pipe, so the job would never end by itself.
TEST_F(WriteJobTest, AJobThatGoesIsCalledOff)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    {
        WriteJob job(valuesOf(m_Family), pipe.path(), {});
        job.start();
    }
    WriteJob next(valuesOf(m_Family), pipe.path(), {});
    next.start();
    EXPECT_FALSE(next.isOver()) << "the file is free again";
}

TEST_F(WriteJobTest, AFileThatIsBeingWrittenIsNotWrittenByAnother)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    WriteJob first(valuesOf(m_Family), pipe.path(), {});
    first.start();
    QFile::link(pipe.path(), m_Folder.filePath("y.ali"));
    for (const QString &path :
         {pipe.path(), m_Folder.filePath("./x.ali"), m_Folder.filePath("y.ali")}) {
        WriteJob second(valuesOf(m_Family), path, {});
        second.start();
        ASSERT_TRUE(second.isOver());
        EXPECT_EQ(complaintOf(second.outcome()),
                  QFileInfo(path).fileName().toStdString() + ": is being written just now");
    }
    WriteJob other(valuesOf(m_Family), m_Folder.filePath("z.ali"), {});
    other.start();
    waitUntil([&] { return other.isOver(); });
    EXPECT_EQ(complaintOf(other.outcome()), "");
}

TEST_F(WriteJobTest, AFailureNamesFileAndCause)
{
    write("x.ali", "");
    WriteJob job(valuesOf(m_Family), m_Folder.filePath("x.ali/y.ali"), {});
    job.start();
    waitUntil([&] { return job.isOver(); });
    EXPECT_EQ(complaintOf(job.outcome()), "y.ali: cannot be written: Not a directory");
}

// ---- Waiting for it

TEST_F(WriteJobTest, WhoWaitsGetsTheOutcome)
{
    WriteJob job(valuesOf(m_Family), m_Folder.filePath("x.ali"), {});
    job.start();
    EXPECT_EQ(complaintOf(app::waitToTheEnd(job, "Save", nullptr)), "");
    EXPECT_EQ(bytesOf(job.path()), kPirText);
    EXPECT_FALSE(app::isWriteAwaited());
}

TEST_F(WriteJobTest, ADialogShowsALongWriteAndNothingElseIsTaken)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    QPushButton button("Edit");
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&] { ++clicks; });
    button.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&button));
    WriteJob job(valuesOf(m_Family), pipe.path(), {});
    job.start();
    bool isAwaited = false;
    answering<WriteProgress>([&](WriteProgress &dialog) {
        isAwaited = app::isWriteAwaited();
        EXPECT_EQ(dialog.windowTitle(), "Save");
        QTest::mouseClick(button.windowHandle(), Qt::LeftButton);
        QTest::keyClick(button.windowHandle(), Qt::Key_Space);
        pipe.read();
    });
    EXPECT_EQ(complaintOf(app::waitToTheEnd(job, "Save", &button)), "");
    EXPECT_TRUE(isAwaited);
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(pipe.text(), kPirText);
    EXPECT_FALSE(app::isWriteAwaited());
    QTest::mouseClick(button.windowHandle(), Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
}

TEST_F(WriteJobTest, EscapeInTheDialogCallsTheWriteOff)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    WriteJob job(valuesOf(m_Family), pipe.path(), {});
    job.start();
    answering<WriteProgress>(
        [](WriteProgress &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    const Result<void> written = app::waitToTheEnd(job, "Save", nullptr);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind, FailureKind::Cancelled);
}

TEST_F(WriteJobTest, ClosingTheDialogCallsTheWriteOff)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    WriteJob job(valuesOf(m_Family), pipe.path(), {});
    job.start();
    answering<WriteProgress>([](WriteProgress &dialog) { dialog.close(); });
    const Result<void> written = app::waitToTheEnd(job, "Save", nullptr);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().kind, FailureKind::Cancelled);
}

TEST_F(WriteJobTest, TheWindowMayGoWithTheDialog)
{
    PipeFile pipe(m_Folder.filePath("x.ali"));
    ASSERT_TRUE(pipe.isThere());
    auto *const window = new QWidget;
    window->show();
    WriteJob job(valuesOf(m_Family), pipe.path(), {});
    job.start();
    answering<WriteProgress>([&](WriteProgress &) {
        delete window;
        pipe.read();
    });
    EXPECT_EQ(complaintOf(app::waitToTheEnd(job, "Save", window)), "");
    EXPECT_EQ(pipe.text(), kPirText);
}

} // namespace WriteJobTest
