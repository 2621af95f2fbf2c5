// SPDX-License-Identifier: GPL-3.0-or-later
// Many models that come into the workbench together.
#include "ModelsReader.h"

#include "AlignmentTable.h"
#include "AppFixture.h"
#include "DataPoint.h"
#include "LoadProgress.h"
#include "ObjectSources.h"
#include "PluginValues.h"
#include "PositionEdit.h"
#include "support/LogLines.h"
#include "support/WaitUntil.h"

#include <QDialogButtonBox>
#include <QPushButton>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <map>

namespace ModelsReaderTest {

using namespace TAMBO;
using app::LoadReport;
using app::ModelsReader;
using TAMBO::ModelFiles;
using testing::ElementsAre;
using testing::HasSubstr;

const std::map<char, const char *> kTypes = {{'A', "ALA"}, {'C', "CYS"}, {'D', "ASP"}, {'E', "GLU"},
                                             {'F', "PHE"}, {'G', "GLY"}, {'H', "HIS"}, {'K', "LYS"},
                                             {'L', "LEU"}, {'M', "MET"}};

// CA atoms on a curve that fits itself only in one way.
Vertex place(int index)
{
    return {float(4 * index), float((index * index) % 7), float((index % 3) * 2)};
}
Vertex turned(const Vertex &point)
{
    return {point.y() + 50, -point.x(), point.z()};
}
Vertex kept(const Vertex &point)
{
    return point;
}

// The motion that turned() is.
Superposition turn()
{
    std::vector<PointPair> pairs;
    for (int i = 0; i < 7; ++i)
        pairs.push_back({place(i), turned(place(i))});
    return Superposition(pairs);
}

class ModelsReaderTest : public RecordedFixture
{
protected:
    ModelsReaderTest()
    {
        logTheModel();
        QObject::connect(&m_Reader, &ModelsReader::finished, &m_Reader,
                         [this](const LoadReport &report) { m_Report = report; });
    }

    using Place = Vertex (*)(const Vertex &);
    static QByteArray pdb(const std::string &letters, Place where = kept)
    {
        QByteArray text;
        for (std::size_t i = 0; i < letters.size(); ++i) {
            const Vertex at = where(place(int(i)));
            text += QString::asprintf("ATOM  %5d  CA  %3s A%4d    %8.3f%8.3f%8.3f\n", int(i) + 1,
                                      kTypes.at(letters[i]), int(i) + 1, double(at.x()),
                                      double(at.y()), double(at.z()))
                        .toLatin1();
        }
        return text;
    }
    // On the template "known", in its place.
    ModelFiles model(const QString &target, Place where = kept)
    {
        const auto path = [](const QString &file) { return file.toStdString(); };
        return {
            path(write(target + ".pdb", pdb("ACDEFGH", where))),
            path(write(target + ".ali", ">P1;known\nstructureX:::::::::\nACDEFGH*\n>P1;" +
                                            target.toUtf8() + "\nsequence:::::::::\nACDEFGH*\n")),
            path(write("known.pdb", pdb("ACDEFGH")))};
    }
    Structure &known()
    {
        const DataAdder<Space> guard(nullptr, Space::instance());
        Loader loader(m_Sources);
        return *loader.openNow(write("known.pdb", pdb("ACDEFGH")).toStdString()).structures.front();
    }
    using Loader = app::Loader;
    static Alignment &family(const std::vector<std::string> &names)
    {
        AlignmentRecord record;
        record.name = "family";
        for (const std::string &name : names) {
            RowRecord &made = record.rows.emplace_back();
            made.name = name;
            made.sequence.append("ACDEFGH");
        }
        const DataAdder<Space> guard(nullptr, Space::instance());
        return *ObjectFactory::adopt(std::move(record));
    }
    void open(std::vector<ModelFiles> models)
    {
        EXPECT_TRUE(m_Reader.open(std::move(models)));
        waitUntil([this] { return !m_Reader.isBusy(); });
    }
    static Vertex placeIn(const Alignment &shown, std::size_t row, std::size_t letter)
    {
        return shown.table().row(row).sequence().position(letter);
    }
    static void expectNear(const Vertex &found, const Vertex &wanted)
    {
        EXPECT_NEAR(found.x(), wanted.x(), 0.01);
        EXPECT_NEAR(found.y(), wanted.y(), 0.01);
        EXPECT_NEAR(found.z(), wanted.z(), 0.01);
    }

    app::ObjectSources m_Sources;
    Loader m_Loader{m_Sources};
    ModelsReader m_Reader{m_Loader};
    LoadReport m_Report;
};

TEST_F(ModelsReaderTest, KeepWhatTheEngineSaidOfTheirResiduesThroughUndo)
{
    family({"known", "a"});
    ModelFiles scored = model("a");
    scored.scores = [] { return ModelScores{{1, -0.5}, {3, 2}}; };
    open({scored, model("b")});
    ASSERT_EQ(m_Report.structures.size(), 2U);
    const auto scoresOf = [](const Structure *structure) {
        return PluginValues::Get(structure, kScoresOf, kScoresKey);
    };
    const Structure *const made = m_Report.structures[0];
    EXPECT_EQ(scoresOf(made), "-0.5000 - 2.0000 - - - -");
    EXPECT_EQ(scoresOf(m_Report.structures[1]), std::nullopt);
    EXPECT_TRUE(m_History.undo());
    EXPECT_TRUE(m_History.redo());
    EXPECT_EQ(scoresOf(made), "-0.5000 - 2.0000 - - - -");
}

TEST_F(ModelsReaderTest, ComeInOneStepOfUndoWithOneName)
{
    const Alignment &shown = family({"known", "a", "b", "c"});
    m_History.clear();
    open({model("a"), model("b"), model("c")});
    EXPECT_EQ(m_Report.structures.size(), 3U);
    EXPECT_THAT(topLevelNames(), ElementsAre("known", "a", "b", "c", "family", "a on known",
                                             "b on known", "c on known"));
    for (const std::size_t row : {1U, 2U, 3U})
        expectNear(placeIn(shown, row, 3), place(3));
    ASSERT_EQ(m_History.size(), 1U);
    EXPECT_EQ(m_History.label(0), "Open 3 models, the last one c on known");
    ASSERT_TRUE(m_History.undo());
    EXPECT_EQ(topLevelNames().size(), 5U);
    EXPECT_FALSE(placeIn(shown, 2, 3).isDefined());
    ASSERT_TRUE(m_History.redo());
    expectNear(placeIn(shown, 2, 3), place(3));
}

TEST_F(ModelsReaderTest, OneIsCalledByItsName)
{
    open({model("a")});
    ASSERT_EQ(m_History.size(), 1U);
    EXPECT_EQ(m_History.label(0), "Open model a on known");
    EXPECT_TRUE(m_Report.structures.front()->isModel());
}

TEST_F(ModelsReaderTest, EachHasANameOfItsOwn)
{
    open({model("a"), model("a")});
    EXPECT_THAT(topLevelNames(), ElementsAre("a on known", "a on known (2)"));
}

TEST_F(ModelsReaderTest, LieWhereTheTemplateLiesNow)
{
    Structure &moved = known();
    const Alignment &shown = family({"known", "a"});
    {
        const DataPoint<Space> guard(nullptr, Space::instance());
        ASSERT_TRUE(moveStructures({{&moved, turn()}}));
    }
    expectNear(placeIn(shown, 0, 2), turned(place(2)));
    const LogLines log;
    open({model("a")});
    for (const std::size_t letter : {0U, 3U, 6U})
        expectNear(placeIn(shown, 1, letter), turned(place(int(letter))));
    EXPECT_TRUE(
        log.texts().contains("a on known lies 0.00 Å from known (root mean square of 7 CA atoms)"))
        << log.texts().join('\n').toStdString();
}

TEST_F(ModelsReaderTest, KeepTheirDistanceToTheTemplateWhenItHasMoved)
{
    const auto nearby = [](const Vertex &point) {
        return Vertex(point.x() + 0.3F, point.y(), point.z());
    };
    Structure &moved = known();
    const Alignment &shown = family({"known", "a"});
    {
        const DataPoint<Space> guard(nullptr, Space::instance());
        ASSERT_TRUE(moveStructures({{&moved, turn()}}));
    }
    open({model("a", nearby)});
    expectNear(placeIn(shown, 1, 3), turned(nearby(place(3))));
}

TEST_F(ModelsReaderTest, LieAsTheFileHasItWhenTheTemplateIsNotLoaded)
{
    const Alignment &shown = family({"known", "a", "b"});
    open({model("a"), model("b", turned)});
    expectNear(placeIn(shown, 1, 3), place(3));
    // Of an engine that has put it elsewhere.
    expectNear(placeIn(shown, 2, 3), place(3));
}

TEST_F(ModelsReaderTest, OfATemplateThatIsNotBesideTheTargetLieAsTheFileHasIt)
{
    Structure &moved = known();
    const Alignment &shown = family({"a"});
    family({"known", "z"});
    {
        const DataPoint<Space> guard(nullptr, Space::instance());
        ASSERT_TRUE(moveStructures({{&moved, turn()}}));
    }
    open({model("a")});
    expectNear(placeIn(shown, 0, 3), place(3));
}

TEST_F(ModelsReaderTest, NewerOnesTakeThePlaceOfOlderOnesAndMeasuredCoordinatesStay)
{
    Structure &measured = structure("a", "A", "ACDEFGH");
    const Alignment &shown = family({"known", "a", "b"});
    open({model("a"), model("b")});
    open({model("a"), model("b")});
    EXPECT_EQ(shown.table().row(1).sequence().resolve(2).peptide, measured.chain(0));
    ASSERT_EQ(m_Report.structures.size(), 2U);
    EXPECT_EQ(m_Report.structures[1]->Name(), "b on known (2)");
    EXPECT_EQ(shown.table().row(2).sequence().resolve(2).peptide, m_Report.structures[1]->chain(0));
}

TEST_F(ModelsReaderTest, ThatCannotBeReadAreLeftOutAndTold)
{
    const ModelFiles broken = model("broken");
    write("broken.pdb", "");
    ModelFiles alone = model("alone");
    alone.alignment = path("none.ali").toStdString();
    ModelFiles lost = model("lost");
    lost.structure = path("none.pdb").toStdString();
    const LogLines log;
    open({broken, model("good"), alone, lost});
    EXPECT_THAT(topLevelNames(), ElementsAre("good on known"));
    ASSERT_EQ(m_Report.failures.size(), 3U);
    EXPECT_EQ(m_Report.failures[0].file, broken.model);
    EXPECT_THAT(m_Report.failures[0].failure.message(), HasSubstr("broken.pdb"));
    EXPECT_THAT(m_Report.failures[1].failure.message(), HasSubstr("none.ali"));
    EXPECT_THAT(m_Report.failures[2].failure.message(), HasSubstr("none.pdb"));
    for (const FileFailure &failure : m_Report.failures)
        EXPECT_EQ(log.texts().count(QString::fromStdString(failure.failure.message())), 1);
}

TEST_F(ModelsReaderTest, WithoutAGoodOneNothingChanges)
{
    const ModelFiles broken = model("broken");
    write("broken.pdb", "");
    open({broken});
    EXPECT_EQ(m_History.size(), 0U);
    EXPECT_EQ(m_Report.failures.size(), 1U);
}

TEST_F(ModelsReaderTest, AreGivenUpWithoutATrace)
{
    const ModelFiles first = model("a");
    ModelFiles second = model("b");
    // It goes on for as long as nobody has written its end.
    const QString pipe = path("slow.pdb");
    ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
    second.model = pipe.toStdString();
    app::LoadProgress dialog(m_Reader, nullptr);
    ASSERT_TRUE(m_Reader.open({first, second}));
    EXPECT_FALSE(m_Reader.open({first})) << "it is busy";
    waitUntil([&dialog] { return dialog.isVisible(); });
    dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel)->click();
    // The reader may have left the pipe by now.
    const auto ignored = std::signal(SIGPIPE, SIG_IGN);
    int end = -1;
    waitUntil([&] {
        end = ::open(pipe.toUtf8().constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        return end >= 0 || !m_Reader.isBusy();
    });
    if (end >= 0) {
        const QByteArray text = pdb("ACDEFGH");
        const ssize_t written = ::write(end, text.constData(), std::size_t(text.size()));
        EXPECT_TRUE(written == text.size() || errno == EPIPE) << errno;
        ::close(end);
    }
    std::signal(SIGPIPE, ignored);
    waitUntil([this] { return !m_Reader.isBusy(); });
    EXPECT_TRUE(m_Report.isCancelled);
    EXPECT_TRUE(topLevelNames().empty());
    EXPECT_EQ(m_History.size(), 0U);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(ModelsReaderTest, KnowTheirFiles)
{
    const ModelFiles files = model("a");
    open({files});
    EXPECT_EQ(m_Sources.fileOf(*m_Report.structures.front()), files.model);
}

} // namespace ModelsReaderTest
