// SPDX-License-Identifier: GPL-3.0-or-later
// The whole command, with programs of the test's own and with the real one.
#include "RealignCommand.h"

#include "AppFixture.h"
#include "ObjectOperations.h"
#include "support/LogLines.h"
#include "support/ScopedSettings.h"
#include "support/WaitUntil.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include <csignal>
#include <sys/types.h>

namespace RealignCommandTest {

using TAMBO::Alignment;
using TAMBO::app::RealignCommand;
using Range = Alignment::Range;
using Texts = std::vector<std::string>;

// Calls handle with the modal dialog once it is there.
template <typename Dialog, typename Handle> void whenOpen(const Handle &handle)
{
    QTimer::singleShot(1, qApp, [handle] {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        if (dialog != nullptr)
            handle(*dialog);
        else
            whenOpen<Dialog>(handle);
    });
}

class RealignCommandTest : public RecordedFixture
{
protected:
    // A program that is called with the input's name and may write to output.fasta.
    QString standIn(const QByteArray &script)
    {
        const QString path = write("aligner", "#!/bin/sh\n" + script);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }
    void use(const QString &command)
    {
        m_Settings.reset();
        m_Settings =
            std::make_unique<ScopedSettings>("[Realign]\nAligner = " + command.toUtf8() + '\n');
    }
    void useScript(const QByteArray &script) { use(standIn(script) + " {input}"); }

    Alignment &sample()
    {
        Alignment &ali = alignment("sample", {"AC-DEF", "A-CDEF", "ACD-EF"});
        ali.range(Range(1, 4));
        m_History.clear();
        return ali;
    }
    // The one message of a run that leaves the alignment as it is.
    QString refusal()
    {
        Alignment &ali = sample();
        const Texts before = rowsOf(ali);
        const LogLines log;
        EXPECT_FALSE(RealignCommand(nullptr, false).run(ali));
        EXPECT_EQ(rowsOf(ali), before);
        EXPECT_EQ(ali.range(), Range(1, 4));
        EXPECT_FALSE(m_History.canUndo());
        EXPECT_EQ(log.count(), 1) << log.texts().join('\n').toStdString();
        return log.texts().join('\n');
    }

private:
    std::unique_ptr<ScopedSettings> m_Settings;
};

constexpr const char *kGoodAnswer = "printf '>r0\\nCD\\n>r1\\nCD\\n>r2\\nCD\\n'\n";

TEST_F(RealignCommandTest, ReplacesTheColumnsOfTheRangeInOneStep)
{
    useScript(kGoodAnswer);
    Alignment &ali = sample();
    EXPECT_TRUE(RealignCommand(nullptr, true).run(ali));
    EXPECT_EQ(rowsOf(ali), (Texts{"ACDEF", "ACDEF", "ACDEF"}));
    EXPECT_EQ(ali.range(), Range(1, 3)) << "the new columns";
    EXPECT_TRUE(m_History.undo());
    EXPECT_EQ(rowsOf(ali), (Texts{"AC-DEF", "A-CDEF", "ACD-EF"}));
    EXPECT_EQ(ali.range(), Range(1, 4));
    EXPECT_FALSE(m_History.canUndo());
    EXPECT_TRUE(m_History.redo());
    EXPECT_EQ(rowsOf(ali), (Texts{"ACDEF", "ACDEF", "ACDEF"}));
}

// ---- All columns

TEST_F(RealignCommandTest, AllColumnsAreReplacedAndAreTheRangeInOneStep)
{
    useScript("printf '>r0\\nACDEF\\n>r1\\nACDEF\\n>r2\\nACDEF\\n'\n");
    Alignment &ali = sample();
    const LogLines log;
    QString told;
    EXPECT_TRUE(RealignCommand(nullptr, true).runOnAll(ali, &told));
    EXPECT_EQ(rowsOf(ali), (Texts{"ACDEF", "ACDEF", "ACDEF"}));
    EXPECT_EQ(ali.range(), Range(0, 5));
    EXPECT_EQ(told, QStringLiteral("Realigned 3 rows of sample with %1: 5 columns, 6 before")
                        .arg(m_Folder.filePath("aligner")));
    EXPECT_EQ(log.count(), 0) << "who asks tells it";
    EXPECT_TRUE(m_History.undo());
    EXPECT_EQ(rowsOf(ali), (Texts{"AC-DEF", "A-CDEF", "ACD-EF"}));
    EXPECT_FALSE(m_History.canUndo());
    EXPECT_TRUE(m_History.redo());
    EXPECT_EQ(rowsOf(ali), (Texts{"ACDEF", "ACDEF", "ACDEF"}));
}

TEST_F(RealignCommandTest, ColumnsThatStayAsTheyAreAreNoStep)
{
    useScript("printf '>r0\\nAC-DEF\\n>r1\\nA-CDEF\\n>r2\\nACD-EF\\n'\n");
    Alignment &ali = sample();
    QString told;
    EXPECT_TRUE(RealignCommand(nullptr, false).runOnAll(ali, &told));
    EXPECT_EQ(told, m_Folder.filePath("aligner") + " leaves the columns of sample as they are");
    EXPECT_EQ(rowsOf(ali), (Texts{"AC-DEF", "A-CDEF", "ACD-EF"}));
    EXPECT_EQ(ali.range(), Range(0, 6));
    EXPECT_FALSE(m_History.canUndo());
}

TEST_F(RealignCommandTest, AllColumnsStayWithTheirRangeWhenTheProgramFails)
{
    for (const char *const script : {"exit 7\n", "printf '>r0\\nCD\\n>r1\\nCD\\n>r2\\nCD\\n'\n"}) {
        useScript(script);
        Alignment &ali = sample();
        const LogLines log;
        QString told;
        EXPECT_FALSE(RealignCommand(nullptr, false).runOnAll(ali, &told));
        EXPECT_EQ(rowsOf(ali), (Texts{"AC-DEF", "A-CDEF", "ACD-EF"}));
        EXPECT_EQ(ali.range(), Range(1, 4));
        EXPECT_EQ(told, QString());
        EXPECT_EQ(log.count(), 1);
        EXPECT_FALSE(m_History.canUndo());
    }
}

TEST_F(RealignCommandTest, AllColumnsOfFewerThanTwoRowsWithResiduesNeedNoProgram)
{
    use("no-such-aligner {input}");
    Alignment &ali = alignment("sample", {"ACD", "---"});
    QString told;
    EXPECT_TRUE(RealignCommand(nullptr, false).runOnAll(ali, &told));
    EXPECT_EQ(told, "Nothing to realign in sample: fewer than two sequences have residues there.");
}

TEST_F(RealignCommandTest, AnAnswerMayComeInAFile)
{
    use(standIn(QByteArray("exec > \"$2\"\n") + kGoodAnswer) + " {input} {output}");
    Alignment &ali = sample();
    EXPECT_TRUE(RealignCommand(nullptr, true).run(ali));
    EXPECT_EQ(rowsOf(ali), (Texts{"ACDEF", "ACDEF", "ACDEF"}));
}

TEST_F(RealignCommandTest, RowsWithoutResiduesInTheRangeStayGaps)
{
    useScript("printf '>r0\\nCD\\n>r1\\n-D\\n'\n");
    Alignment &ali = alignment("sample", {"AC-DEF", "A---EF", "A-D-EF"});
    ali.range(Range(1, 4));
    EXPECT_TRUE(RealignCommand(nullptr, true).run(ali));
    EXPECT_EQ(rowsOf(ali), (Texts{"ACDEF", "A--EF", "A-DEF"}));
}

TEST_F(RealignCommandTest, FewerThanTwoRowsWithResiduesNeedNoProgram)
{
    use("no-such-aligner {input}");
    Alignment &ali = alignment("sample", {"ACD", "A--"});
    ali.range(Range(1, 3));
    const LogLines log;
    EXPECT_TRUE(RealignCommand(nullptr, true).run(ali));
    EXPECT_EQ(rowsOf(ali), (Texts{"ACD", "A--"}));
    EXPECT_EQ(
        log.texts(),
        QStringList{"Nothing to realign in sample: fewer than two sequences have residues there."});
}

TEST_F(RealignCommandTest, TheProgramsFolderHoldsNothingButItsInput)
{
    useScript("test \"$(ls)\" = input.fasta || exit 3\n" + QByteArray(kGoodAnswer));
    EXPECT_TRUE(RealignCommand(nullptr, true).run(sample()));
}

TEST_F(RealignCommandTest, ReadingStandardInputFindsItsEnd)
{
    useScript("cat > /dev/null\n" + QByteArray(kGoodAnswer));
    EXPECT_TRUE(RealignCommand(nullptr, true).run(sample()));
}

TEST_F(RealignCommandTest, AMissingProgramIsNamedWithWhatToDo)
{
    use("no-such-aligner {input}");
    EXPECT_EQ(refusal(), "The columns of sample were not realigned: no-such-aligner was not found "
                         "or cannot be started. Install it, or choose another aligner in the "
                         "settings.");
}

TEST_F(RealignCommandTest, AProgramThatAScriptMissesIsOneToInstallToo)
{
    useScript("no-such-program\n");
    EXPECT_TRUE(refusal().endsWith(" Install it, or choose another aligner in the settings."))
        << refusal().toStdString();
}

TEST_F(RealignCommandTest, WhatTheProgramDoesNotFindIsNotTheProgram)
{
    useScript("echo 'matrix not found' >&2; exit 3\n");
    EXPECT_TRUE(refusal().endsWith("failed: matrix not found.")) << refusal().toStdString();
}

TEST_F(RealignCommandTest, AFailingProgramIsToldWithItsLastWords)
{
    useScript("echo first >&2; echo 'out of paper' >&2; exit 7\n");
    EXPECT_TRUE(refusal().endsWith("failed: out of paper.")) << refusal().toStdString();
}

TEST_F(RealignCommandTest, AFailingProgramWithoutWordsIsToldWithItsStatus)
{
    useScript("exit 7\n");
    EXPECT_TRUE(refusal().endsWith("failed with status 7.")) << refusal().toStdString();
}

TEST_F(RealignCommandTest, AGoodAnswerOfAFailingProgramIsNotTaken)
{
    useScript(QByteArray(kGoodAnswer) + "exit 1\n");
    EXPECT_TRUE(refusal().endsWith("failed with status 1."));
}

TEST_F(RealignCommandTest, ACrashIsTold)
{
    useScript("kill -SEGV $$\n");
    EXPECT_TRUE(refusal().endsWith("crashed."));
}

TEST_F(RealignCommandTest, ALieIsTold)
{
    useScript("printf '>r0\\nCD\\n>r1\\nCD\\n>r2\\nDC\\n'\n");
    EXPECT_TRUE(refusal().endsWith("is not to be trusted; it changed the residues of a sequence."));
}

TEST_F(RealignCommandTest, SilenceIsNoAnswer)
{
    useScript("true\n");
    EXPECT_TRUE(refusal().endsWith("is not to be trusted; its answer lacks a sequence."));
}

TEST_F(RealignCommandTest, OneThatPrintsForEverIsStopped)
{
    useScript("while :; do head -c 1000000 /dev/zero; done\n");
    EXPECT_TRUE(refusal().endsWith("printed more than any alignment needs."));
}

TEST_F(RealignCommandTest, ACommandWithoutInputIsRefused)
{
    use("mafft --auto");
    EXPECT_EQ(refusal(), "The columns were not realigned: the command of the aligner, \"mafft "
                         "--auto\", has no {input}.");
}

TEST_F(RealignCommandTest, TheUserIsToldInOneBox)
{
    useScript("exit 7\n");
    QWidget window;
    window.show();
    EXPECT_FALSE(RealignCommand(&window, true).run(sample()));
    const QList<QMessageBox *> boxes = window.findChildren<QMessageBox *>();
    ASSERT_EQ(boxes.size(), 1) << "it is there and nobody waits for it";
    EXPECT_TRUE(boxes[0]->isVisible());
    EXPECT_EQ(boxes[0]->textFormat(), Qt::PlainText);
    EXPECT_TRUE(boxes[0]->text().endsWith("failed with status 7."));
}

TEST_F(RealignCommandTest, AHangingProgramCanBeCancelledAndEndsWithItsChildren)
{
    const QString ids = m_Folder.filePath("ids");
    useScript("sleep 1000 &\necho $$ $! > '" + ids.toUtf8() + "'\necho 'thinking' >&2\nwait\n");
    Alignment &ali = sample();
    const LogLines log;
    whenOpen<QProgressDialog>(
        [](const QProgressDialog &dialog) { dialog.findChild<QPushButton *>()->click(); });
    EXPECT_FALSE(RealignCommand(nullptr, true).run(ali));
    EXPECT_EQ(rowsOf(ali), (Texts{"AC-DEF", "A-CDEF", "ACD-EF"}));
    EXPECT_FALSE(m_History.canUndo());
    EXPECT_EQ(log.texts(), QStringList()) << "who cancels needs no message";

    QFile file(ids);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    for (const QByteArray &id : file.readAll().simplified().split(' ')) {
        // Somebody has to collect an orphan first.
        const auto isAlive = [&id] {
            QFile stat("/proc/" + id + "/stat");
            return stat.open(QIODevice::ReadOnly) && !stat.readAll().contains(") Z ");
        };
        EXPECT_TRUE(waitUntil([&] { return !isAlive(); })) << id.toStdString();
    }
}

TEST_F(RealignCommandTest, ACancelledProgramLeavesNoFolderOfItsOwnBehind)
{
    const QDir folder(m_Folder.path());
    ASSERT_TRUE(folder.mkdir("tmp") && folder.mkdir("mafft"));
    useScript("made=$(env TMPDIR=\"${MAFFT_TMPDIR:-$TMPDIR}\" mktemp -d)\n"
              "touch \"$made/infile\"\necho \"$made\" > '" +
              m_Folder.filePath("made").toUtf8() + "'\nsleep 1000\n");
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", folder.filePath("tmp").toUtf8());
    qputenv("MAFFT_TMPDIR", folder.filePath("mafft").toUtf8());
    whenOpen<QProgressDialog>([this](const QProgressDialog &dialog) {
        while (!QFile::exists(m_Folder.filePath("made")))
            QCoreApplication::processEvents();
        dialog.findChild<QPushButton *>()->click();
    });
    EXPECT_FALSE(RealignCommand(nullptr, true).run(sample()));
    qunsetenv("MAFFT_TMPDIR");
    qputenv("TMPDIR", before);
    if (before.isEmpty())
        qunsetenv("TMPDIR");
    const auto all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    EXPECT_EQ(QDir(folder.filePath("tmp")).entryList(all), QStringList());
    EXPECT_EQ(QDir(folder.filePath("mafft")).entryList(all), QStringList());
}

TEST_F(RealignCommandTest, WindowsRepaintWhileItRuns)
{
    useScript("while [ ! -e '" + m_Folder.filePath("go").toUtf8() + "' ]; do sleep 0.02; done\n" +
              QByteArray(kGoodAnswer));
    int rounds = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++rounds; });
    timer.start(5);
    whenOpen<QProgressDialog>([this](const QProgressDialog &dialog) {
        EXPECT_EQ(dialog.windowModality(), Qt::ApplicationModal);
        write("go", "");
    });
    EXPECT_TRUE(RealignCommand(nullptr, true).run(sample()));
    EXPECT_GT(rounds, 0);
}

TEST_F(RealignCommandTest, AnAlignmentThatChangedMeanwhileKeepsTheChange)
{
    useScript("while [ ! -e '" + m_Folder.filePath("go").toUtf8() + "' ]; do sleep 0.02; done\n" +
              QByteArray(kGoodAnswer));
    Alignment &ali = sample();
    const LogLines log;
    whenOpen<QProgressDialog>([&](const QProgressDialog &) {
        ali.bubbleRow(0, 2);
        write("go", "");
    });
    QWidget window;
    EXPECT_FALSE(RealignCommand(&window, true).run(ali));
    EXPECT_EQ(rowsOf(ali), (Texts{"A-CDEF", "ACD-EF", "AC-DEF"}));
    EXPECT_EQ(window.findChildren<QMessageBox *>().size(), 1);
    EXPECT_EQ(log.texts(), QStringList{"The columns of sample were not realigned: it was changed "
                                       "meanwhile."});
}

TEST_F(RealignCommandTest, ALockedAlignmentIsRefusedBeforeAnythingRuns)
{
    useScript("touch '" + m_Folder.filePath("ran").toUtf8() + "'\n" + QByteArray(kGoodAnswer));
    Alignment &ali = sample();
    TAMBO::setObjectLocked(ali, true);
    EXPECT_FALSE(RealignCommand(nullptr, true).run(ali));
    EXPECT_EQ(rowsOf(ali), (Texts{"AC-DEF", "A-CDEF", "ACD-EF"}));
    EXPECT_FALSE(QFile::exists(m_Folder.filePath("ran")));
    EXPECT_EQ(m_Refused, std::vector<std::string>{"sample"}) << "the status line says why";
}

TEST_F(RealignCommandTest, MafftPutsEqualResiduesIntoOneColumn)
{
    use("mafft --amino --auto --anysymbol --quiet {input}");
    Alignment &ali = alignment("sample", {"MKTAYIAKQR---", "---MKTAYIAKQR", "MKTAYxAKQ---R"});
    ali.range(Range(0, 13));
    EXPECT_TRUE(RealignCommand(nullptr, true).run(ali));
    EXPECT_EQ(rowsOf(ali), (Texts{"MKTAYIAKQR", "MKTAYIAKQR", "MKTAYxAKQR"}))
        << "letters that aligners do not know stay as they are";
}

TEST_F(RealignCommandTest, TheShippedSettingIsMafft)
{
    QFile file(SOURCE_DIR "/share/defaults.ini");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const ScopedSettings settings(file.readAll());
    Alignment &ali = alignment("sample", {"MKTAYIAKQR---", "---MKTAYIAKQR"});
    ali.range(Range(0, 13));
    EXPECT_TRUE(RealignCommand(nullptr, true).run(ali));
    EXPECT_EQ(rowsOf(ali), (Texts{"MKTAYIAKQR", "MKTAYIAKQR"}));
}

} // namespace RealignCommandTest
