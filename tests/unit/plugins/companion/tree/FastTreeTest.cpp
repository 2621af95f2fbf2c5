// SPDX-License-Identifier: GPL-3.0-or-later
#include "FastTreeRun.h"

#include "JobList.h"

#include "TreeFixture.h"

#include <QFile>
#include <QProcess>

#include <csignal>
#include <random>
#include <set>

namespace FastTreeTest {

using namespace companion;
using Texts = std::vector<std::string>;

// Of each inner node the leaves on the side without the first one: what two trees have in common,
// wherever their roots are.
std::set<std::set<std::string>> splitsOf(const Tree &tree, const std::string &first)
{
    std::vector<std::set<std::string>> below(tree.nodes.size());
    std::set<std::string> all;
    std::vector<std::size_t> order = fromTheRoot(tree);
    for (auto node = order.rbegin(); node != order.rend(); ++node) {
        if (tree.nodes[*node].isLeaf()) {
            below[*node] = {tree.nodes[*node].name};
            all.insert(tree.nodes[*node].name);
        }
        for (const std::size_t child : tree.nodes[*node].children)
            below[*node].insert(below[child].begin(), below[child].end());
    }
    std::set<std::set<std::string>> splits;
    for (std::set<std::string> &side : below) {
        if (side.contains(first)) {
            std::set<std::string> other;
            std::ranges::set_difference(all, side, std::inserter(other, other.end()));
            side = std::move(other);
        }
        if (side.size() > 1)
            splits.insert(side);
    }
    return splits;
}

class TreeByFastTree : public TreeFixture
{
protected:
    ~TreeByFastTree() override { qputenv("PATH", m_Path); }

    // Families of families, by chance.
    static Texts evolved(std::size_t count, std::size_t columns)
    {
        static const std::string letters = "ACDEFGHIKLMNPQRSTVWY";
        std::mt19937 chance(11);
        Texts rows = {std::string(columns, 'A')};
        for (char &letter : rows[0])
            letter = letters[chance() % letters.size()];
        while (rows.size() < count) {
            std::string row = rows[chance() % rows.size()];
            for (std::size_t i = 0; i < columns / 5; ++i)
                row[chance() % columns] = letters[chance() % letters.size()];
            rows.push_back(std::move(row));
        }
        return rows;
    }
    // A program that takes its place.
    void replaceBy(const QByteArray &script)
    {
        const QString name = m_Folder.filePath(QStringLiteral("fasttree"));
        QFile out(name);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write("#!/bin/sh\n" + script);
        out.close();
        ASSERT_TRUE(out.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
        qputenv("PATH", m_Folder.path().toLocal8Bit() + ':' + m_Path);
    }
    // Of a program that writes it there.
    pid_t waitForNumber()
    {
        const QDeadlineTimer late(std::chrono::minutes(2));
        while (!late.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            QFile in(number());
            if (in.open(QIODevice::ReadOnly))
                if (const QByteArray text = in.readAll(); text.endsWith('\n'))
                    return text.trimmed().toInt();
        }
        return 0;
    }
    QString number() const { return m_Folder.filePath(QStringLiteral("number")); }
    QByteArray writesNumberAndWaits() const
    {
        return "echo $$ > '" + number().toLocal8Bit() + "'\nexec sleep 1000\n";
    }
    static TAMBO::services::JobList &jobs() { return TAMBO::services::JobList::instance(); }
    static bool runs(pid_t program) { return ::kill(program, 0) == 0; }

    QByteArray m_Path = qgetenv("PATH");
    QTemporaryDir m_Folder;
};

TEST_F(TreeByFastTree, IsTheOneThatTheProgramMakesOfTheSameRows)
{
    const Texts rows = evolved(60, 120);
    look(alignment(rows));
    ASSERT_FALSE(FastTreeRun::program().isEmpty()) << "the package fasttree is missing";
    dock().compute(TreeMethod::FastTree);
    settle();
    ASSERT_EQ(takeComplaint(), "");
    ASSERT_TRUE(dock().hasTree());
    EXPECT_EQ(shown().rows().size(), rows.size());
    EXPECT_EQ(state().substr(0, 17), "fasttree, 60 rows");
    const QString file = m_Folder.filePath(QStringLiteral("ours.nwk"));
    ASSERT_TRUE(dock().saveTo(file));
    QFile in(file);
    ASSERT_TRUE(in.open(QIODevice::ReadOnly));
    const Tree ours = std::get<Tree>(readNewick(in.readAll().toStdString()));

    QByteArray fasta;
    for (std::size_t i = 0; i < rows.size(); ++i)
        fasta += ">s" + QByteArray::number(qulonglong(i)) + '\n' +
                 QByteArray::fromStdString(rows[i]) + '\n';
    QProcess program;
    program.start(FastTreeRun::program(), {QStringLiteral("-quiet")});
    program.write(fasta);
    program.closeWriteChannel();
    ASSERT_TRUE(program.waitForFinished(120'000));
    const Tree theirs = std::get<Tree>(readNewick(program.readAllStandardOutput().toStdString()));
    EXPECT_EQ(splitsOf(ours, "s0"), splitsOf(theirs, "s0"));
    EXPECT_GT(splitsOf(ours, "s0").size(), 40u);
    double ourLength = 0;
    double theirLength = 0;
    for (const TreeNode &node : ours.nodes)
        ourLength += node.length.value_or(0);
    for (const TreeNode &node : theirs.nodes)
        theirLength += node.length.value_or(0);
    EXPECT_NEAR(ourLength, theirLength, 1e-6);
}

TEST_F(TreeByFastTree, IsMadeOfMoreRowsThanCanBeJoined)
{
    // Most are equal to others, which takes the program less time.
    Texts rows = evolved(40, 30);
    while (rows.size() <= TreeJob::kMostJoined)
        rows.push_back(rows[rows.size() % 40]);
    look(alignment(rows));
    dock().toggle();
    EXPECT_FALSE(dock().isComputing()) << "it may take long, so it waits to be asked";
    dock().compute();
    settle();
    ASSERT_EQ(takeComplaint(), "");
    EXPECT_EQ(shown().rows().size(), rows.size());
    EXPECT_EQ(state().substr(0, 20), "fasttree, 2,001 rows");
}

TEST_F(TreeByFastTree, OfRowsWithEqualNamesOddLettersAndNothingIsMade)
{
    look(alignment({"ACDEFGHIKL", "acde--BZUX", "----------", "WYTSRQPNM*", "WYTSRQPNMO"}, "odd",
                   {"same", "same", ">odd (name):'", "same", " "}));
    dock().compute(TreeMethod::FastTree);
    settle();
    EXPECT_EQ(takeComplaint(), "");
    EXPECT_EQ(shown().rows().size(), 5u);
}

TEST_F(TreeByFastTree, ThatIsNotInstalledSaysSo)
{
    qputenv("PATH", m_Folder.path().toLocal8Bit());
    look(alignment(Texts(2001, "AC")));
    dock().compute();
    EXPECT_FALSE(dock().isComputing());
    EXPECT_EQ(takeComplaint(),
              "The alignment has 2,001 rows; neighbor joining is for 2,000 at most. Of more rows "
              "the program fasttree makes a tree, and it is not installed. On Debian it is in the "
              "package fasttree.");
    dock().compute(TreeMethod::FastTree);
    settle();
    EXPECT_EQ(takeComplaint(),
              "The program fasttree is not installed. On Debian it is in the package fasttree.");
    EXPECT_FALSE(dock().hasTree());
}

TEST_F(TreeByFastTree, ThatFailsOrPrintsSomethingElseSaysSoAndWhatThereWasStays)
{
    lookAtTree(kRows);
    replaceBy("echo 'Out of luck' >&2\nexit 3\n");
    dock().compute(TreeMethod::FastTree);
    settle();
    EXPECT_EQ(takeComplaint(), "fasttree has failed: Out of luck");
    replaceBy("echo '(r0,r1);'\n");
    dock().compute(TreeMethod::FastTree);
    settle();
    EXPECT_EQ(takeComplaint(), "What fasttree has printed is no tree of the rows.");
    replaceBy("echo '(r0,r1,r2,r3,r4,r4);'\n");
    dock().compute(TreeMethod::FastTree);
    settle();
    EXPECT_EQ(takeComplaint(), "What fasttree has printed is no tree of the rows.");
    replaceBy("echo nothing\n");
    dock().compute(TreeMethod::FastTree);
    settle();
    EXPECT_EQ(takeComplaint(), "What fasttree has printed is no tree of the rows.");
    replaceBy("kill -9 $$\n");
    dock().compute(TreeMethod::FastTree);
    settle();
    EXPECT_EQ(takeComplaint(), "fasttree was ended before its tree was complete.");
    EXPECT_EQ(state().substr(0, 16), "Neighbor joining");
    EXPECT_EQ(shown().rows().size(), 6u);
}

TEST_F(TreeByFastTree, EndsWithItsProgramWhenItIsCancelled)
{
    look(alignment(kRows));
    replaceBy(writesNumberAndWaits());
    dock().compute(TreeMethod::FastTree);
    const pid_t program = waitForNumber();
    ASSERT_GT(program, 0);
    EXPECT_TRUE(runs(program));
    dock().cancel();
    EXPECT_FALSE(runs(program));
    EXPECT_FALSE(dock().isComputing());
    EXPECT_EQ(takeComplaint(), "");
}

TEST_F(TreeByFastTree, ThatIsEndedInTheListOfRunningJobsIsGivenUpWithoutAWord)
{
    look(alignment(kRows));
    replaceBy(writesNumberAndWaits());
    dock().compute(TreeMethod::FastTree);
    const pid_t program = waitForNumber();
    ASSERT_GT(program, 0);
    ASSERT_TRUE(QTest::qWaitFor([] { return jobs().jobs().size() == 1; }, 60'000));
    EXPECT_TRUE(jobs().jobs().front().endsWithWorkbench);
    jobs().cancel(jobs().jobs().front().number);
    settle();
    EXPECT_FALSE(runs(program));
    EXPECT_FALSE(dock().hasTree());
    EXPECT_EQ(takeComplaint(), "");
    EXPECT_TRUE(jobs().jobs().empty());
}

TEST_F(TreeByFastTree, EndsWithItsProgramWhenTheWindowIsClosedOrShowsSomethingElse)
{
    look(alignment(kRows));
    replaceBy(writesNumberAndWaits());
    dock().compute(TreeMethod::FastTree);
    pid_t program = waitForNumber();
    ASSERT_GT(program, 0);
    m_Window->Populate(&alignment({"ACD"}, "other"));
    EXPECT_FALSE(runs(program));
    QFile::remove(number());
    dock().compute(TreeMethod::FastTree);
    program = waitForNumber();
    ASSERT_GT(program, 0);
    m_Companion.reset();
    EXPECT_FALSE(runs(program));
}

TEST_F(TreeByFastTree, RunsWhileOneEditsAndItsTreeIsThenOfAnEarlierState)
{
    look(alignment(kRows));
    replaceBy(writesNumberAndWaits().replace("exec sleep 1000",
                                             "while [ -e '" + number().toLocal8Bit() +
                                                 "' ]; do sleep 0.1; done\n"
                                                 "echo '((r0,r2,r4):1,(r1,r3,r5):1);'"));
    dock().compute(TreeMethod::FastTree);
    ASSERT_GT(waitForNumber(), 0);
    {
        const DataPoint<TAMBO::Alignment> guard(nullptr, m_Rows);
        m_Rows->insertGap(0, 3);
    }
    QFile::remove(number());
    settle();
    ASSERT_TRUE(dock().hasTree());
    EXPECT_EQ(state().substr(0, 37), "Of an earlier state of the alignment ");
}

} // namespace FastTreeTest
