// SPDX-License-Identifier: GPL-3.0-or-later
// What becomes of the output of a modelling job, however the program ends.
#include "ModellingFixture.h"

#include "JobList.h"

#include <gmock/gmock.h>

#include <csignal>

using testing::ElementsAre;
using testing::IsEmpty;

namespace ModellingOutputTest {

class ModellingOutput : public ModellingFixture
{
protected:
    // Gives model.pdb after a job of the script.
    QByteArray modelOf(const QByteArray &script)
    {
        install(script);
        runJob(*m_Window);
        EXPECT_EQ(m_Told.back(), complete(*m_Window));
        return contents("model.pdb");
    }

    ZEP::KALMO2 *m_Window = &open(templateAndTarget());
};

// The window of these goes during the job.
class ModellingWithoutWindow : public ModellingFixture
{
};

TEST_F(ModellingOutput, MegabytesInBurstsArriveWhole)
{
    const QByteArray model = modelOf("python3 -c \"\nimport sys\nfor i in range(50):\n"
                                     "    sys.stdout.write(f'{i:07d}' + 'x' * 1048568 + chr(10))\n"
                                     "    sys.stderr.write('e' * 65536 + chr(10))\n\"");
    ASSERT_EQ(model.size(), 50 * 1048576);
    for (int i = 0; i < 50; ++i)
        ASSERT_EQ(model.mid(i * 1048576, 8), QByteArray::number(i).rightJustified(7, '0') + 'x');
}

TEST_F(ModellingOutput, WhatIsWrittenJustBeforeTheEndIsComplete)
{
    for (int i = 0; i < 5; ++i)
        ASSERT_EQ(modelOf("exec head -c 1048576 /dev/zero | tr '\\0' y").size(), 1048576);
}

TEST_F(ModellingOutput, EachReadCountsUpToItsFirstZeroByte)
{
    install("printf 'AB\\000CD'; wait_for_go; printf EF");
    DialogDriver dialogs;
    dialogs.expect(close());
    int reads = 0;
    // Its reader has run when this does, being connected before it.
    QObject::connect(&processOf(*m_Window), &QProcess::readyReadStandardOutput, m_Window,
                     [&] { ++reads; });
    call(*m_Window, "kestram");
    waitFor([&] { return reads == 1; });
    letGo();
    waitFor([this] { return !m_Told.empty(); });
    EXPECT_EQ(contents("model.pdb"), "ABEF");
}

TEST_F(ModellingOutput, OutputWithoutALineEndIsCompleteAndNothingIsAdded)
{
    EXPECT_EQ(modelOf("printf END"), "END");
    EXPECT_EQ(modelOf("printf 'A\\r\\nB\\n\\n'"), "A\r\nB\n\n");
}

TEST_F(ModellingOutput, BytesAbove127StayAsTheyAre)
{
    EXPECT_EQ(modelOf("printf '\\351\\377\\303\\251'"), "\xE9\xFF\xC3\xA9");
}

TEST_F(ModellingOutput, NothingIsAModelToo)
{
    EXPECT_EQ(modelOf("exit 0"), "");
    EXPECT_THAT(m_Read, ElementsAre(scratch("model.pdb").toLatin1()));
}

TEST_F(ModellingOutput, AnOlderModelIsReplacedWhole)
{
    modelOf("echo a long model");
    EXPECT_EQ(modelOf("echo new"), "new\n");
}

TEST_F(ModellingOutput, AnExitStatusIsNoFailure)
{
    EXPECT_EQ(modelOf("echo ATOM; echo sorry >&2; exit 1"), "ATOM\n");
    EXPECT_EQ(m_Read.size(), 1U);
    EXPECT_EQ(modelOf("exit 255"), "");
}

TEST_F(ModellingOutput, ErrorsGoToTheLogAndNeverIntoTheModel)
{
    const LogLines log;
    EXPECT_EQ(modelOf("echo one >&2; echo ATOM; printf 'two \\351' >&2"), "ATOM\n");
    EXPECT_THAT(log.texts(), ElementsAre(QString::fromLatin1("one\ntwo \xE9")));
}

TEST_F(ModellingOutput, TheOrderIsLogModelReadingBoxDone)
{
    install("echo ATOM; echo warn >&2");
    const LogLines log;
    MessageRecorder messages;
    m_OnRead = [&] {
        EXPECT_THAT(log.texts(), ElementsAre("warn"));
        EXPECT_EQ(contents("model.pdb"), "ATOM\n");
        EXPECT_THAT(messages.messages(), IsEmpty());
    };
    DialogDriver dialogs;
    dialogs.expect([&](QDialog &dialog) {
        EXPECT_EQ(m_Order, (std::vector<std::string>{"save", "read"}));
        EXPECT_THAT(messages.messages(), IsEmpty()) << "Done comes when the box is closed";
        close()(dialog);
    });
    call(*m_Window, "kestram");
    waitFor([&] { return messages.count("Done") == 1; });
    EXPECT_EQ(m_Told, std::vector{complete(*m_Window)});
    EXPECT_THAT(messages.messages(), ElementsAre("Done"));
    EXPECT_THAT(m_Read, ElementsAre(scratch("model.pdb").toLatin1()));
}

TEST_F(ModellingOutput, AModelThatCannotBeWrittenIsAskedForAllTheSame)
{
    QDir(scratch()).mkdir("model.pdb");
    install("echo ATOM");
    runJob(*m_Window);
    EXPECT_EQ(m_Read.size(), 1U);
    EXPECT_EQ(m_Told, std::vector{complete(*m_Window)});
    QDir(scratch()).rmdir("model.pdb");
}

// ---- What the workbench is told

TEST_F(ModellingOutput, ARunWithoutAModelIsAFailedJobWithTheReason)
{
    const auto &failures = TAMBO::services::JobList::instance().failures();
    modelOf("echo remark >&2; echo 'kestram: out of paper' >&2; exit 4");
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].title, "Kestram");
    EXPECT_EQ(failures[0].what, "No model was built: out of paper: remark.");
    EXPECT_EQ(failures[0].lastLines, (QStringList{"remark", "kestram: out of paper"}));
    modelOf("exit 0");
    ASSERT_EQ(failures.size(), 1U) << "the later one took the place of the earlier one";
    EXPECT_EQ(failures[0].what, "No model was built: the program printed nothing.");
    modelOf("echo no structure");
    EXPECT_EQ(failures.at(0).what, "No model was built: what the program printed is no structure.");
}

TEST_F(ModellingOutput, ARunWithAModelIsNoFailedJobWhateverItsStatus)
{
    m_Model = true;
    modelOf("echo ATOM; echo sorry >&2; exit 1");
    EXPECT_TRUE(TAMBO::services::JobList::instance().failures().empty());
}

TEST_F(ModellingOutput, AKilledProgramIsAFailedJob)
{
    const auto &failures = TAMBO::services::JobList::instance().failures();
    const MessageRecorder messages;
    install("ulimit -c 0; kill -s KILL $$");
    runJob(*m_Window);
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].what, "No model was built: the program was killed or has crashed.");
    install("ulimit -c 0; echo 'loop 3 of 7' >&2; kill -s KILL $$");
    runJob(*m_Window);
    EXPECT_EQ(failures.at(0).what,
              "No model was built: the program was killed or has crashed: loop 3 of 7.");
}

TEST_F(ModellingOutput, AJobCanBeCancelledInTheListOfJobs)
{
    install("trap 'echo bye > \"$NOTES/bye\"; exit 4' TERM; echo up > \"$NOTES/up\"\n"
            "while :; do sleep 0.05; done");
    auto &jobs = TAMBO::services::JobList::instance();
    DialogDriver dialogs;
    dialogs.expect(close());
    call(*m_Window, "kestram");
    waitFor([this] { return noted("up") == "up\n"; });
    ASSERT_EQ(jobs.jobs().size(), 1U);
    jobs.cancel(jobs.jobs()[0].number);
    waitFor([this] { return !m_Told.empty(); });
    waitForIdle(*m_Window);
    EXPECT_EQ(noted("bye"), "bye\n");
    EXPECT_TRUE(jobs.jobs().empty());
    EXPECT_TRUE(jobs.failures().empty()) << "who cancels knows";
}

TEST_F(ModellingOutput, OfAFloodOfErrorsTheLogKeepsBeginningAndEnd)
{
    const LogLines log;
    modelOf("echo begin >&2; head -c 52428800 /dev/zero | tr '\\0' x >&2; echo; echo end >&2");
    ASSERT_EQ(log.count(), 1);
    const QString text = log.texts()[0];
    EXPECT_LT(text.size(), TAMBO::services::LogBook::kLongest + 100);
    EXPECT_TRUE(text.startsWith("begin\nxxx"));
    EXPECT_TRUE(text.endsWith("xxxend"));
}

// ---- Programs that die

TEST_F(ModellingOutput, AKilledProgramIsToldAndItsModelIsNotRead)
{
    modelOf("echo old");
    m_Read.clear();
    m_Told.clear();
    for (const char *signal : {"KILL", "SEGV", "TERM"}) {
        install(QByteArray("ulimit -c 0; echo new; echo warn >&2; kill -s ") + signal + " $$");
        const LogLines log;
        DialogDriver dialogs;
        dialogs.expect([&](QDialog &dialog) {
            EXPECT_THAT(log.texts(), ElementsAre("warn")) << "before the box";
            close()(dialog);
        });
        const MessageRecorder messages;
        call(*m_Window, "kestram");
        waitFor([this] { return !m_Told.empty(); });
        waitForIdle(*m_Window);
        EXPECT_THAT(messages.messages(), ElementsAre("Failed")) << signal;
        EXPECT_EQ(m_Told, std::vector{failed(*m_Window)}) << signal;
        EXPECT_THAT(m_Read, IsEmpty());
        EXPECT_EQ(contents("model.pdb"), "old\n");
        m_Told.clear();
    }
    EXPECT_EQ(modelOf("echo again"), "again\n") << "the next job runs";
}

// ---- Windows that go

TEST_F(ModellingOutput, AnIdleWindowTakesItsProcessWithIt)
{
    modelOf("echo");
    const QPointer<QProcess> process(&processOf(*m_Window));
    closeWindows();
    EXPECT_TRUE(process.isNull());
}

TEST_F(ModellingOutput, AWindowMayCloseUnderTheBoxOfItsJob)
{
    for (const char *script : {"echo model", "kill -9 $$"}) {
        install(script);
        ZEP::KALMO2 &window = open(*alignments().front());
        const MessageRecorder messages;
        DialogDriver dialogs;
        bool isClosed = false;
        dialogs.expect([&](QDialog &) {
            closeWindows();
            isClosed = true;
        });
        call(window, "kestram");
        waitFor([&] { return isClosed && QApplication::activeModalWidget() == nullptr; });
        EXPECT_EQ(dialogs.titles(), QStringList{"Tambo"});
    }
    m_Window = nullptr;
}

TEST_F(ModellingOutput, AWindowMayCloseUnderTheBoxOfAFailedStart)
{
    install("echo");
    uninstall();
    DialogDriver dialogs;
    dialogs.expect([this](QDialog &) { closeWindows(); });
    const ExpectMessage expected(QtDebugMsg, "Start failed");
    call(*m_Window, "kestram");
    EXPECT_EQ(dialogs.titles(), QStringList{"Tambo"});
}

TEST_F(ModellingWithoutWindow, TheProgramGoesOnAndItsModelIsNotRead)
{
    install("trap 'echo signal > \"$NOTES/signal\"' TERM INT HUP\n"
            "echo up > \"$NOTES/up\"; echo line >&2; wait_for_go\n"
            "echo much of a model; echo more >&2; echo end > \"$NOTES/end\"");
    ZEP::KALMO2 &window = open(templateAndTarget());
    const DialogDriver dialogs;
    const LogLines log;
    const auto &jobs = TAMBO::services::JobList::instance().jobs();
    call(window, "kestram");
    waitFor([this] { return noted("up") == "up\n"; });
    closeWindows();
    EXPECT_EQ(jobs.size(), 1U) << "it still runs";
    letGo();
    waitFor([&] { return jobs.empty(); });
    EXPECT_EQ(noted("end"), "end\n");
    EXPECT_EQ(noted("signal"), "");
    EXPECT_THAT(m_Read, IsEmpty());
    EXPECT_THAT(dialogs.titles(), IsEmpty());
    EXPECT_FALSE(exists("model.pdb"));
    EXPECT_THAT(log.texts(), ElementsAre("A run of Kestram has ended. Its window was closed, so "
                                         "its model was not read."));
    // What is left of it goes by itself.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(ModellingWithoutWindow, AFloodAfterTheWindowHasGoneBlocksNothing)
{
    install("echo up > \"$NOTES/up\"; wait_for_go; head -c 20000000 /dev/zero; "
            "head -c 5000000 /dev/zero >&2; echo end > \"$NOTES/end\"");
    ZEP::KALMO2 &window = open(templateAndTarget());
    call(window, "kestram");
    waitFor([this] { return noted("up") == "up\n"; });
    closeWindows();
    letGo();
    waitFor([] { return TAMBO::services::JobList::instance().jobs().empty(); });
    EXPECT_EQ(noted("end"), "end\n");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(ModellingWithoutWindow, ADeadProgramOfAClosedWindowIsSilentToo)
{
    install("echo up > \"$NOTES/up\"; wait_for_go; kill -9 $$");
    ZEP::KALMO2 &window = open(templateAndTarget());
    const DialogDriver dialogs;
    call(window, "kestram");
    waitFor([this] { return noted("up") == "up\n"; });
    closeWindows();
    letGo();
    waitFor([] { return TAMBO::services::JobList::instance().jobs().empty(); });
    EXPECT_THAT(dialogs.titles(), IsEmpty());
    EXPECT_THAT(m_Read, IsEmpty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace ModellingOutputTest
