// SPDX-License-Identifier: GPL-3.0-or-later
// What a modelling job gets, how it is started and what its window does meanwhile.
#include "ModellingFixture.h"

#include "JobList.h"
#include "ResidueItem.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace ModellingJobTest {

class ModellingJob : public ModellingFixture
{
protected:
    // The command is silent and leaves no file.
    void expectNothing(ZEP::KALMO2 &window)
    {
        const DialogDriver dialogs;
        const MessageRecorder messages;
        call(window, "kestram");
        EXPECT_THAT(dialogs.titles(), IsEmpty());
        EXPECT_THAT(messages.messages(), IsEmpty());
        EXPECT_THAT(QDir(scratch()).entryList(QDir::Files), IsEmpty());
        EXPECT_FALSE(isRunning(window));
    }
};

// ---- Refusals

TEST_F(ModellingJob, WithoutTheVariableNothingHappens)
{
    install("echo");
    ZEP::KALMO2 &window = open(templateAndTarget());
    qunsetenv("KESTRAM");
    expectNothing(window);
    qputenv("KESTRAM", "");
    expectNothing(window);
}

TEST_F(ModellingJob, WithoutAnAlignmentNothingHappens)
{
    install("echo");
    expectNothing(open());
}

TEST_F(ModellingJob, WithOneRowOrWithoutColumnsNothingHappens)
{
    install("echo");
    structure("known", "ACD");
    expectNothing(open(alignment({"AC-D"}, "one", {"known"})));
    expectNothing(open(alignmentWithoutColumns()));
}

TEST_F(ModellingJob, ATemplateWithoutAtomsIsRefusedWithABox)
{
    install("echo");
    structure("known", "ACD");
    ZEP::KALMO2 &window = open(alignment({"A-CD", "AC-D"}, "family", {"wanted", "known"}));
    DialogDriver dialogs;
    dialogs.expect(close());
    call(window, "kestram");
    const Told expected{"Structure required",
                        "First sequence (the structure template) must have coordinates.",
                        QMessageBox::Warning, nullptr, QMessageBox::Ok};
    ASSERT_EQ(m_Told.size(), 1U);
    EXPECT_EQ(m_Told[0], expected);
    EXPECT_THAT(QDir(scratch()).entryList(QDir::Files), IsEmpty());
    EXPECT_FALSE(isRunning(window));
}

// ---- The files

TEST_F(ModellingJob, TwoRowsAreSentAsTheyAre)
{
    install("cat seq.ali str.pdb");
    TAMBO::Alignment &shown = templateAndTarget();
    ZEP::KALMO2 &window = open(shown);
    const Texts before = topLevelNames();
    runJob(window);
    EXPECT_EQ(topLevelNames(), before);
    ASSERT_EQ(m_Saved.size(), 1U);
    EXPECT_EQ(m_Saved[0].first, scratch("seq.ali"));
    EXPECT_EQ(m_Saved[0].second, &shown);
    // Both files were complete when the program began.
    EXPECT_EQ(contents("model.pdb"), contents("seq.ali") + contents("str.pdb"));
    EXPECT_EQ(contents("seq.ali"), "AC-D\nA-CD\n");
    EXPECT_EQ(contents("str.pdb").count('\n'), 3);
}

TEST_F(ModellingJob, OfMoreRowsACopyOfTheFirstTwoIsSentAndStays)
{
    install("echo");
    TAMBO::Alignment &shown = templateAndTarget({"ACCD"});
    ZEP::KALMO2 &window = open(shown);
    runJob(window);
    ASSERT_EQ(alignments().size(), 2U);
    TAMBO::Alignment *copy = alignments()[1];
    EXPECT_EQ(m_Saved[0].second, copy);
    EXPECT_EQ(rowsOf(*copy), (Texts{"AC-D", "A-CD"}));
    EXPECT_EQ(rowsOf(shown), (Texts{"AC-D", "A-CD", "ACCD"}));
    EXPECT_EQ(contents("seq.ali"), "AC-D\nA-CD\n");
    EXPECT_EQ(contents("str.pdb").count('\n'), 3);
    EXPECT_EQ(WindowParts(window).corner->text(), "family");
    EXPECT_EQ(itemsOf(*WindowParts(window).cells, ResidueItem::RTTI), 12) << "still the three rows";
}

TEST_F(ModellingJob, WhenNothingCanBeAddedAllRowsAreSent)
{
    install("echo");
    TAMBO::Alignment &shown = templateAndTarget({"ACCD"});
    ZEP::KALMO2 &window = open(shown);
    lockAll();
    runJob(window);
    EXPECT_EQ(alignments().size(), 1U);
    EXPECT_EQ(m_Saved[0].second, &shown);
    EXPECT_EQ(contents("seq.ali"), "AC-D\nA-CD\nACCD\n");
    EXPECT_EQ(m_Told, std::vector{complete(window)});
}

// ---- The program

TEST_F(ModellingJob, TheProgramGetsTheFilesByTheirPlainNamesInTheirFolder)
{
    install("echo \"$0: $*\"; pwd; wc -c; echo $MARK");
    qputenv("KESTRAM", "nonsense");
    qputenv("MARK", "inherited");
    ZEP::KALMO2 &window = open(templateAndTarget());
    runJob(window);
    qunsetenv("MARK");
    const QString folder = QFileInfo(scratch()).canonicalFilePath();
    EXPECT_EQ(contents("model.pdb"), note("bin/kestram").toUtf8() + ": seq.ali str.pdb\n" +
                                         folder.toUtf8() + "\n0\ninherited\n")
        << "arguments, folder, bytes of standard input, environment";
}

TEST_F(ModellingJob, TheWindowHasOneProcessForAllJobs)
{
    install("echo A; echo errorA >&2");
    ZEP::KALMO2 &window = open(templateAndTarget());
    ASSERT_EQ(window.findChildren<QProcess *>().size(), 1);
    const QProcess *process = window.findChildren<QProcess *>().at(0);
    EXPECT_EQ(process->objectName(), QString());
    EXPECT_EQ(process->parent(), &window);
    EXPECT_EQ(process->workingDirectory(), scratch());
    EXPECT_EQ(window.metaObject()->indexOfSlot("ProcInit()"), -1);
    runJob(window);
    EXPECT_EQ(contents("model.pdb"), "A\n");
    install("echo B; echo errorB >&2");
    const LogLines log;
    runJob(window);
    EXPECT_EQ(window.findChildren<QProcess *>().size(), 1);
    EXPECT_EQ(window.findChildren<QProcess *>().at(0), process);
    EXPECT_EQ(contents("model.pdb"), "B\n");
    EXPECT_THAT(log.texts(), ElementsAre("errorB"));
}

TEST_F(ModellingJob, AProgramThatCannotStartIsToldOnceAndTheNextJobRuns)
{
    install("echo");
    uninstall();
    ZEP::KALMO2 &window = open(templateAndTarget());
    {
        DialogDriver dialogs;
        dialogs.expect(close());
        const MessageRecorder messages;
        call(window, "kestram");
        EXPECT_THAT(messages.messages(), ElementsAre("Start failed"));
        EXPECT_EQ(m_Told, std::vector{notStarted(window)});
        EXPECT_TRUE(TAMBO::services::JobList::instance().jobs().empty());
    }
    install("echo model");
    runJob(window);
    EXPECT_EQ(m_Told, (std::vector{notStarted(window), complete(window)}));
    EXPECT_THAT(m_Order, ElementsAre("save", "told", "save", "read", "told"));
}

TEST_F(ModellingJob, AFileThatIsNoProgramCannotStart)
{
    install("echo");
    QFile(note("bin/kestram")).setPermissions(QFile::ReadOwner);
    ZEP::KALMO2 &window = open(templateAndTarget());
    DialogDriver dialogs;
    dialogs.expect(close());
    const ExpectMessage expected(QtDebugMsg, "Start failed");
    call(window, "kestram");
    EXPECT_EQ(m_Told, std::vector{notStarted(window)});
}

// ---- While a job runs

TEST_F(ModellingJob, ASecondUseRewritesTheFilesAndStartsNothing)
{
    install("echo started >> \"$NOTES/starts\"; wait_for_go; echo END");
    TAMBO::Alignment &shown = templateAndTarget();
    ZEP::KALMO2 &window = open(shown);
    const DialogDriver noDialogs;
    call(window, "kestram");
    waitFor([this] { return noted("starts") == "started\n"; });
    shown.insertGap(1, 0);
    {
        const ExpectMessage expected(QtDebugMsg, "previous job still running.");
        const MessageRecorder messages;
        call(window, "kestram");
        EXPECT_EQ(messages.count("previous job still running."), 1);
    }
    EXPECT_EQ(contents("seq.ali"), "AC-D-\n-A-CD\n");
    EXPECT_THAT(noDialogs.titles(), IsEmpty());
    EXPECT_EQ(window.findChildren<QProcess *>().size(), 1);
    DialogDriver dialogs;
    dialogs.expect(close());
    letGo();
    waitFor([this] { return !m_Told.empty(); });
    waitForIdle(window);
    EXPECT_EQ(noted("starts"), "started\n");
    EXPECT_EQ(contents("model.pdb"), "END\n");
}

TEST_F(ModellingJob, TheEditorStaysUsable)
{
    install("wait_for_go");
    TAMBO::Alignment &shown = templateAndTarget();
    ZEP::KALMO2 &window = show(shown, QSize(500, 200));
    call(window, "kestram");
    ASSERT_TRUE(isRunning(window));
    shown.range({0, 2});
    call(window, "RangeSelect");
    EXPECT_TRUE(shown.getItem(0, 0)->IsSelected());
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, &shown);
        EXPECT_TRUE(guard.m_good);
        shown.insertGap(0, 0);
    }
    EXPECT_EQ(rowsOf(shown)[0], "-AC-D");
    EXPECT_TRUE(isRunning(window));
    DialogDriver dialogs;
    dialogs.expect(close());
    letGo();
    waitFor([this] { return !m_Told.empty(); });
    waitForIdle(window);
}

TEST_F(ModellingJob, TheWorkbenchSeesTheJobWithItsLastLine)
{
    install("printf 'begin\\nLoop 3 of 7\\n\\n' >&2; wait_for_go; exit 0");
    ZEP::KALMO2 &window = open(templateAndTarget());
    const auto &jobs = TAMBO::services::JobList::instance().jobs();
    EXPECT_THAT(jobs, IsEmpty());
    call(window, "kestram");
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(jobs[0].title, "Kestram");
    waitFor([&] { return jobs[0].lastLine == "Loop 3 of 7"; });
    DialogDriver dialogs;
    dialogs.expect([&](QDialog &dialog) {
        EXPECT_THAT(jobs, IsEmpty()) << "the box is about a job that has ended";
        close()(dialog);
    });
    letGo();
    waitFor([this] { return !m_Told.empty(); });
    waitForIdle(window);
}

TEST_F(ModellingJob, TwoWindowsHaveAJobEachAndShareTheFiles)
{
    install("cp seq.ali \"$NOTES/seq$$\"; echo x >> \"$NOTES/starts\"; wait_for_go; cat seq.ali");
    TAMBO::Alignment &first = templateAndTarget();
    ZEP::KALMO2 &one = open(first);
    ZEP::KALMO2 &two = open(alignment({"-ACD", "ACCD"}, "other", {"known", "wanted"}));
    DialogDriver dialogs;
    dialogs.expect(close());
    dialogs.expect(close());
    call(one, "kestram");
    waitFor([this] { return noted("starts") == "x\n"; });
    call(two, "kestram");
    waitFor([this] { return noted("starts") == "x\nx\n"; });
    EXPECT_TRUE(isRunning(one));
    EXPECT_TRUE(isRunning(two));
    EXPECT_NE(processOf(one).processId(), processOf(two).processId());
    EXPECT_EQ(TAMBO::services::JobList::instance().jobs().size(), 2U);
    letGo();
    letGo();
    waitFor([this] { return m_Told.size() == 2; });
    waitForIdle(one);
    waitForIdle(two);
    EXPECT_EQ(contents("model.pdb"), "-ACD\nACCD\n");
    EXPECT_THAT(m_Told, testing::UnorderedElementsAre(complete(one), complete(two)));
}

} // namespace ModellingJobTest
