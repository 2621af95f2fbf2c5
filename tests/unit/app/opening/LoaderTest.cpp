// SPDX-License-Identifier: GPL-3.0-or-later
// Opening files: in the background, in one step of undo, or not at all.
#include "Loader.h"

#include "AppFixture.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "Hooks.h"
#include "LoadProgress.h"
#include "LogBook.h"
#include "LongWork.h"
#include "ObjectCommands.h"
#include "ObjectSources.h"
#include "Subscriber.h"
#include "TestTexts.h"
#include "WritableObject.h"
#include "support/Outcome.h"
#include "support/WaitUntil.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <sys/stat.h>

#include <fcntl.h>
#include <unistd.h>

namespace LoaderTest {

using namespace TAMBO;
using TAMBO::app::Loader;
using TAMBO::app::LoadReport;
using Texts = std::vector<std::string>;

class LoaderTest : public RecordedFixture
{
protected:
    LoaderTest()
    {
        QObject::connect(&m_Loader, &Loader::finished, &m_Loader,
                         [this](const LoadReport &report) { m_Reports.push_back(report); });
    }

    // Until all that was asked for has been dealt with.
    void open(const std::vector<QString> &files)
    {
        std::vector<std::filesystem::path> paths;
        for (const QString &file : files)
            paths.emplace_back(file.toStdString());
        m_Loader.open(paths);
        EXPECT_TRUE(m_Loader.isBusy());
        waitUntil([this] { return !m_Loader.isBusy(); });
    }
    const LoadReport &report() const { return m_Reports.back(); }
    static QByteArray manyRows(std::size_t count)
    {
        return QByteArray(">a\nA-C\n").repeated(static_cast<qsizetype>(count));
    }
    static QStringList log()
    {
        QStringList texts;
        for (const services::LogEntry &entry : services::LogBook::instance().entries())
            texts << entry.text;
        return texts;
    }
    // A file that goes on for as long as nobody has written its end.
    QString makePipe(const QString &name)
    {
        const QString path = m_Folder.filePath(name);
        EXPECT_EQ(mkfifo(path.toUtf8().constData(), 0600), 0);
        return path;
    }

    app::ObjectSources m_Sources;
    Loader m_Loader{m_Sources};
    std::vector<LoadReport> m_Reports;
};

TEST_F(LoaderTest, SeveralFilesAreOneStepOfUndo)
{
    const QString structure = write("1abc.pdb", pdbText("AG"));
    const QString rows = write("family.fasta", ">a\nAC-D\n>b\nACCD\n");
    open({structure, rows});
    EXPECT_EQ(topLevelNames(), (Texts{"1abc", "a", "b", "family"}));
    EXPECT_EQ(m_History.size(), 1U);
    EXPECT_EQ(report().structures.size(), 1U);
    ASSERT_EQ(report().alignments.size(), 1U);
    EXPECT_EQ(rowsOf(*report().alignments.front()), (Texts{"AC-D", "ACCD"}));
    EXPECT_EQ(report().asked.size(), 2U);
    EXPECT_EQ(report().read.size(), 2U);
    m_History.undo();
    EXPECT_TRUE(topLevelNames().empty());
}

TEST_F(LoaderTest, RowsAreTiedToTheStructuresBesideTheirFile)
{
    write("1abc.pdb", pdbText("AG"));
    const QString rows = write("family.ali", pirNaming({"1abc.pdb"}));
    open({rows});
    EXPECT_EQ(topLevelNames(), (Texts{"1abc", "row1", "family"}));
    const Alignment &family = *report().alignments.front();
    EXPECT_EQ(family.GetSeq(0), report().structures.front()->chain(0));
}

TEST_F(LoaderTest, RowsAreTiedHoweverTheyCallTheStructuresFile)
{
    write("pdb1abc.ent", pdbText("AG"));
    for (const char *name : {"1abc", "1ABC", "1abc_A", "1ABC_A", "pdb1abc.ent"}) {
        const QByteArray text = ">P1;row\nstructureX:" + QByteArray(name) + ":1::2:::::\nAG*\n";
        open({write("family.ali", text)});
        ASSERT_EQ(report().alignments.size(), 1U);
        ASSERT_EQ(report().structures.size(), 1U) << name;
        const Alignment &family = *report().alignments.front();
        EXPECT_EQ(family.GetSeq(0), report().structures.front()->chain(0)) << name;
        m_History.undo();
    }
}

TEST_F(LoaderTest, StructuresThatAreNotFoundAreRemarkedOnOnce)
{
    services::LogBook::instance().clear();
    write("1abc.pdb", pdbText("AG"));
    open({write("family.ali", pirNaming({"1abc", "2abc", "3abc_A", "2abc"}))});
    EXPECT_EQ(log().filter("found no structure"),
              QStringList{"family.ali: found no structure for rows that name 2abc, 3abc_A: none is "
                          "loaded, and no such file stands beside family.ali. These rows have no "
                          "coordinates."});
    services::LogBook::instance().clear();
    open({write("other.ali", pirNaming({"1abc"}))});
    EXPECT_TRUE(log().filter("found no structure").isEmpty());
    std::vector<std::string> many;
    for (int i = 10; i < 27; ++i)
        many.push_back("7x" + std::to_string(i));
    open({write("many.ali", pirNaming(many))});
    EXPECT_EQ(log().filter("7x18, 7x19 and 7 more:").size(), 1);
}

// The label in the tree is the user's; files go on naming the file.
TEST_F(LoaderTest, AnAlignmentOfARenamedStructureFindsItsFileAgain)
{
    write("1abc.pdb", pdbText("AG"));
    open({m_Folder.filePath("1abc.pdb")});
    Structure &loaded = *report().structures.front();
    app::ObjectCommands::rename(loaded, "Ferredoxin, native");
    QString file = m_Folder.filePath("family.ali");
    {
        const DataAdder<Space> guard(nullptr, Space::instance());
        const Alignment &made = *DataMaker::makeAlignment("family", {loaded.chain(0)});
        ASSERT_EQ(complaintOf(app::WritableObject(made).write(file, {})), "");
    }
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), ">P1;Ferredoxin, native_A\nstructureX:1abc:1:A:2:A::::\nAG*\n\n");

    open({file});
    EXPECT_TRUE(report().structures.empty()) << "it is loaded already, whatever it is called";
    ASSERT_EQ(report().alignments.size(), 1U);
    EXPECT_EQ(report().alignments.front()->GetSeq(0), loaded.chain(0));
    EXPECT_EQ(report().alignments.front()->GetSeqName(0), "Ferredoxin, native_A");

    m_History.clear();
    space().reset();
    open({file});
    ASSERT_EQ(report().structures.size(), 1U);
    Compounds atoms;
    GetAtoms(report().alignments.front()->GetSeq(0), atoms, true);
    EXPECT_EQ(atoms.size(), 2U) << "modelling needs them";
}

TEST_F(LoaderTest, SequencesOfAnUnalignedFileStandAlone)
{
    open({write("some.fasta", ">a\nACD\n>b\nACDEF\n")});
    EXPECT_EQ(topLevelNames(), (Texts{"a", "b"}));
    EXPECT_TRUE(report().alignments.empty());
    EXPECT_TRUE(report().failures.empty());
}

TEST_F(LoaderTest, ABadFileLeavesNothingAndHasALineInTheLog)
{
    services::LogBook::instance().clear();
    open({write("bad.ali", ">P1;a\n\nAC#D*\n")});
    EXPECT_TRUE(topLevelNames().empty());
    EXPECT_EQ(m_History.size(), 0U);
    ASSERT_EQ(report().failures.size(), 1U);
    EXPECT_TRUE(report().read.empty());
    EXPECT_EQ(log().count(QString::fromStdString(report().failures[0].failure.message())), 1);
}

TEST_F(LoaderTest, ARemarkAboutAFileNamesItOnce)
{
    open({write("odd.fasta", "text\n>a\nAC-D\n>b\nACCD\n")});
    EXPECT_TRUE(log().contains("odd.fasta:1: text before the first \">\" was left out"));
}

TEST_F(LoaderTest, ABadFileAmongGoodOnesIsLeftOut)
{
    open({write("bad.ali", ">P1;a\n\nAC#D*\n"), write("good.fasta", ">a\nAC-D\n>b\nACCD\n")});
    EXPECT_EQ(topLevelNames(), (Texts{"a", "b", "good"}));
    EXPECT_EQ(report().failures.size(), 1U);
}

TEST_F(LoaderTest, ObjectsKnowTheirFile)
{
    const QString file = write("1abc.pdb", pdbText("AG"));
    open({file});
    const Structure &structure = *report().structures.front();
    EXPECT_EQ(m_Sources.fileOf(*structure.chain(0)), file.toStdString());
    EXPECT_TRUE(m_Sources.fileOf(sequence("own", "ACD")).empty());
}

TEST_F(LoaderTest, CommandsAreCarriedOutOneAfterTheOther)
{
    const QString first = write("first.fasta", ">a\nACD\n>b\nACDE\n");
    const QString second = write("second.fasta", ">c\nACD\n>d\nACDE\n");
    m_Loader.open({first.toStdString()});
    open({second});
    EXPECT_EQ(m_Reports.size(), 2U);
    EXPECT_EQ(topLevelNames(), (Texts{"a", "b", "c", "d"}));
    EXPECT_EQ(m_History.size(), 2U);
}

TEST_F(LoaderTest, NothingToOpenIsNoCommand)
{
    m_Loader.open({});
    EXPECT_FALSE(m_Loader.isBusy());
    EXPECT_TRUE(m_Reports.empty());
}

TEST_F(LoaderTest, OpeningNowReturnsWithTheObjects)
{
    const LoadReport report = m_Loader.openNow(write("1abc.pdb", pdbText("AG")).toStdString());
    ASSERT_EQ(report.structures.size(), 1U);
    EXPECT_EQ(topLevelNames(), Texts{"1abc"});
}

TEST_F(LoaderTest, InsideAPublicationNothingCanBeAdded)
{
    struct Opener : Subscriber
    {
        Opener(Loader &loader, std::string file) : m_Loader(loader), m_File(std::move(file)) { }
        void commUpdate() override { m_Report = m_Loader.openNow(m_File); }
        void commAdd() override { }
        void commDelete() override { }
        Loader &m_Loader;
        std::string m_File;
        LoadReport m_Report;
    } opener(m_Loader, write("1abc.pdb", pdbText("AG")).toStdString());
    {
        const DataPoint<Space> guard(nullptr, Space::instance());
    }
    EXPECT_EQ(opener.m_Report.failures.size(), 1U);
    EXPECT_TRUE(topLevelNames().empty());
}

TEST_F(LoaderTest, AFileThatArrivesWhileACommandWaitsIsAStepOfItsOwn)
{
    Peptide &renumbered = sequence("x", "ACD");
    m_History.clear();
    struct Listener : Subscriber
    {
        void commUpdate() override { }
        void commAdd() override { ++m_Added; }
        void commDelete() override { }
        int m_Added = 0;
    } listener;
    {
        const DataPoint<Peptide> guard(nullptr, &renumbered);
        renumbered.setNumber(0, SequenceNumber(100));
        open({write("1abc.pdb", pdbText("AG"))});
        EXPECT_EQ(listener.m_Added, 1) << "published at once";
        renumbered.setNumber(1, SequenceNumber(200));
    }
    EXPECT_EQ(topLevelNames(), (Texts{"x", "1abc"}));
    ASSERT_EQ(m_History.size(), 2U);
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(renumbered.number(0).getValue(), "1");
    EXPECT_EQ(renumbered.number(1).getValue(), "2");
    EXPECT_EQ(topLevelNames(), (Texts{"x", "1abc"}));
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(topLevelNames(), (Texts{"x"}));
}

// A view may show a dialog while it is told of a change.
TEST_F(LoaderTest, AFileThatHasBeenReadWhileChangesArePublishedIsNotLost)
{
    struct Waiter : Subscriber
    {
        Waiter(Loader &loader, std::filesystem::path file)
            : m_Loader(loader), m_File(std::move(file))
        { }
        static auto threads()
        {
            return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
        }
        void commUpdate() override
        {
            const auto before = threads();
            m_Loader.open({m_File});
            // Until the reading thread is gone, and its last event has come.
            waitUntil([before] { return threads() <= before; });
            QCoreApplication::processEvents();
            m_WasBusy = m_Loader.isBusy();
            m_Seen = topLevelNames();
        }
        void commAdd() override { }
        void commDelete() override { }
        Loader &m_Loader;
        std::filesystem::path m_File;
        bool m_WasBusy = false;
        Texts m_Seen;
    } waiter(m_Loader, write("1abc.pdb", pdbText("AG")).toStdString());
    {
        const DataPoint<Space> guard(nullptr, Space::instance());
    }
    EXPECT_TRUE(waiter.m_WasBusy);
    EXPECT_TRUE(waiter.m_Seen.empty());
    EXPECT_FALSE(m_Loader.isBusy());
    EXPECT_EQ(topLevelNames(), Texts{"1abc"});
    ASSERT_EQ(m_Reports.size(), 1U);
    EXPECT_TRUE(report().failures.empty());
    EXPECT_EQ(m_History.size(), 1U);
}

TEST_F(LoaderTest, ACancelledCommandLoadsNothing)
{
    const QString good = write("good.fasta", ">a\nACD\n");
    const QString endless = makePipe("endless.fasta");
    m_Loader.open({good.toStdString(), endless.toStdString()});
    // Opening for writing waits until the reader has come to the second file.
    const int pipe = ::open(endless.toUtf8().constData(), O_WRONLY);
    ASSERT_GE(pipe, 0);
    m_Loader.cancel();
    ::close(pipe);
    waitUntil([this] { return !m_Loader.isBusy(); });
    EXPECT_TRUE(report().isCancelled);
    EXPECT_TRUE(report().failures.empty());
    EXPECT_TRUE(topLevelNames().empty());
    EXPECT_EQ(m_History.size(), 0U);
}

TEST_F(LoaderTest, ALongReadingShowsItsProgressAndCanBeCancelled)
{
    app::LoadProgress progress(m_Loader, nullptr);
    const QString endless = makePipe("endless.fasta");
    m_Loader.open({endless.toStdString()});
    EXPECT_FALSE(progress.isVisible());
    const int pipe = ::open(endless.toUtf8().constData(), O_WRONLY);
    ASSERT_GE(pipe, 0);
    waitUntil([&progress] { return progress.isVisible(); });
    QTest::mouseClick(progress.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel),
                      Qt::LeftButton);
    ::close(pipe);
    waitUntil([this] { return !m_Loader.isBusy(); });
    EXPECT_TRUE(report().isCancelled);
    EXPECT_FALSE(progress.isVisible());
}

TEST_F(LoaderTest, ManyRowsAreMadeBetweenEventsAndComeToTheTreeTogether)
{
    const std::size_t rows = 3 * Loader::kRowsAtOnce + 1;
    std::vector<double> shares;
    std::size_t seen = 0;
    QObject::connect(&m_Loader, &Loader::making, &m_Loader, [&](double share) {
        shares.push_back(share);
        seen += topLevelNames().size();
    });
    open({write("many.fasta", manyRows(rows))});
    ASSERT_EQ(shares.size(), 4U);
    EXPECT_TRUE(std::ranges::is_sorted(shares));
    EXPECT_EQ(shares.back(), 1.0);
    EXPECT_EQ(seen, 0U);
    ASSERT_EQ(report().alignments.size(), 1U);
    EXPECT_EQ(report().alignments.front()->height(), rows);
    EXPECT_EQ(report().alignments.front()->GetSequence(rows - 1, false), "A-C");
    EXPECT_EQ(topLevelNames().size(), rows + 1);
    EXPECT_EQ(m_History.size(), 1U);
}

TEST_F(LoaderTest, MakingIsGivenUpAtTheNextLook)
{
    int looks = 0;
    QObject::connect(&m_Loader, &Loader::making, &m_Loader, [&] {
        ++looks;
        EXPECT_TRUE(m_Loader.isBusy());
        m_Loader.cancel();
    });
    const QStringList before = log();
    open({write("many.fasta", manyRows(3 * Loader::kRowsAtOnce))});
    EXPECT_EQ(looks, 1);
    EXPECT_TRUE(report().isCancelled);
    EXPECT_TRUE(topLevelNames().empty());
    EXPECT_EQ(m_History.size(), 0U);
    EXPECT_EQ(log().size(), before.size() + 1) << "that it was cancelled";
    open({write("few.fasta", ">a\nACD\n")});
    EXPECT_FALSE(report().isCancelled);
}

TEST_F(LoaderTest, RowsThatMayShareResiduesAreMadeWithoutEventsBetweenThem)
{
    open({write("1abc.pdb", pdbText("AG"))});
    std::vector<double> shares;
    modelHooks().working = [&](const char *what, double share, bool canBeGivenUp) {
        EXPECT_STREQ(what, "Making sequences and alignments");
        EXPECT_TRUE(canBeGivenUp);
        shares.push_back(share);
        return true;
    };
    const QSignalSpy making(&m_Loader, &Loader::making);
    open({write("many.fasta", manyRows(2 * Loader::kRowsAtOnce))});
    modelHooks().working = nullptr;
    EXPECT_EQ(making.count(), 0);
    EXPECT_EQ(report().alignments.size(), 1U);
    ASSERT_EQ(shares.size(), 1 + 2 * Loader::kRowsAtOnce / LongWork::kStride);
    EXPECT_EQ(shares.front(), 0.0);
    EXPECT_TRUE(std::ranges::is_sorted(shares));
}

TEST_F(LoaderTest, MakingRowsThatMayShareResiduesIsGivenUpWithAllThatCameWithThem)
{
    const QString structure = write("1abc.pdb", pdbText("AG"));
    const QString family = write("many.fasta", manyRows(2 * Loader::kRowsAtOnce));
    int looks = 0;
    int last = 1;
    modelHooks().working = [&](const char *, double, bool) { return ++looks < last; };
    for (; last <= 3; ++last) {
        looks = 0;
        open({structure, family});
        EXPECT_EQ(looks, last);
        EXPECT_TRUE(report().isCancelled);
        EXPECT_TRUE(report().structures.empty());
        EXPECT_TRUE(topLevelNames().empty());
        EXPECT_EQ(m_History.size(), 0U);
    }
    modelHooks().working = nullptr;
    open({structure, family});
    EXPECT_FALSE(report().isCancelled);
    EXPECT_EQ(report().structures.size(), 1U);
    EXPECT_EQ(m_History.size(), 1U);
}

TEST_F(LoaderTest, AShortReadingShowsNoProgress)
{
    app::LoadProgress progress(m_Loader, nullptr);
    const QSignalSpy shown(&progress, &QWidget::windowTitleChanged);
    open({write("some.fasta", ">a\nACD\n")});
    EXPECT_FALSE(progress.isVisible());
    EXPECT_TRUE(progress.findChildren<QWidget *>().isEmpty()) << "nothing is made in vain";
}

TEST_F(LoaderTest, ALoaderThatGoesGivesUpItsReading)
{
    const QString endless = makePipe("endless.fasta");
    int pipe = -1;
    {
        Loader loader(m_Sources);
        loader.open({endless.toStdString()});
        pipe = ::open(endless.toUtf8().constData(), O_WRONLY);
        ::close(pipe);
    }
    EXPECT_GE(pipe, 0);
    EXPECT_TRUE(topLevelNames().empty());
}

} // namespace LoaderTest
