// SPDX-License-Identifier: GPL-3.0-or-later
// Models read back from a modelling job, through the command that the editor uses.
#include "ModelReader.h"

#include "AlignmentTable.h"
#include "AppFixture.h"
#include "Config.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "Element.h"
#include "LogBook.h"
#include "ModelScores.h"
#include "ObjectOperations.h"
#include "PluginManager.h"
#include "PluginValues.h"
#include "Subscriber.h"
#include "UndoCommands.h"
#include "Workbench.h"
#include "WritableObject.h"
#include "support/Outcome.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

#include <utility>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

namespace ModelReaderTest {

using namespace TAMBO;
using app::Workbench;

// Three letters of each of these.
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

class ModelReaderTest : public AppFixture
{
protected:
    ModelReaderTest()
    {
        logTheModel();
        m_Workbench = std::make_unique<Workbench>(Workbench::Attendance::Nobody, withoutPlugins());
    }
    ~ModelReaderTest() override
    {
        history().clear();
        m_Workbench.reset();
        for (const char *name : {"seq.ali", "str.pdb", "model.pdb"})
            QFile::remove(path(name));
    }

    History &history() { return m_Workbench->undo().history(); }
    static QString path(const QString &name)
    {
        return QString::fromStdString(Config::GetPersonalTmpDir()) + '/' + name;
    }
    static void put(const QString &name, const QByteArray &text)
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    using Place = Vertex (*)(const Vertex &);
    // Residues first to first + letters - 1, the i-th at the index-th place of the curve.
    static QByteArray pdb(
        const std::string &letters, int first, int index,
        Place where = [](const Vertex &point) { return point; })
    {
        QByteArray text;
        for (std::size_t i = 0; i < letters.size(); ++i) {
            const Vertex at = where(place(index + int(i)));
            text += QString::asprintf("ATOM  %5d  CA  %3s A%4d    %8.3f%8.3f%8.3f\n", int(i) + 1,
                                      kTypes.at(letters[i]), first + int(i), double(at.x()),
                                      double(at.y()), double(at.z()))
                        .toLatin1();
        }
        return text;
    }
    // A job on the template "known" and the target "wanted"; the model lacks the target's ends.
    void job(Place where = [](const Vertex &point) { return point; })
    {
        put("seq.ali", ">P1;known\nstructureX:::::::::\n--ACDEFGH--*\n"
                       ">P1;wanted\nsequence:::::::::\nMKACDE-GHLL*\n");
        put("str.pdb", pdb("ACDEFGH", 1, 0));
        put("model.pdb", pdb("ACDE", 3, 0, where) + pdb("GH", 7, 5, where));
    }
    static Alignment &family(const std::vector<std::string> &rows,
                             const std::vector<std::string> &names)
    {
        AlignmentRecord record;
        record.name = "family";
        for (std::size_t i = 0; i < rows.size(); ++i) {
            RowRecord &made = record.rows.emplace_back();
            made.name = names[i];
            made.sequence.append(rows[i]);
        }
        const DataAdder<Space> guard(nullptr, Space::instance());
        return *ObjectFactory::adopt(std::move(record));
    }
    static Alignment &family()
    {
        return family({"--ACDEFGH--", "MKACDE-GHLL"}, {"known", "wanted"});
    }
    static bool read()
    {
        const QByteArray name = path("model.pdb").toLatin1();
        return PluginManager::Command("Parse", "PDB", "KALMO", "Read PDB stream", "ReadPDB",
                                      static_cast<const void *>(name.constData())) ==
               PluginManager::Outcome::Done;
    }
    static Structure *newest()
    {
        return dynamic_cast<Structure *>(space().object(space().objectCount() - 1));
    }
    static std::string log()
    {
        std::string text;
        for (const auto &entry : services::LogBook::instance().entries())
            text += entry.text.toStdString() + '\n';
        return text;
    }

    std::unique_ptr<Workbench> m_Workbench;
};

// The path is handed over in Latin-1.
TEST_F(ModelReaderTest, TheModelIsFoundInAFolderWithLettersOfAnyLanguage)
{
    const QByteArray before = qgetenv("TAMBO_USER_DIR");
    const QString old = QString::fromStdString(Config::GetPersonalTmpDir());
    qputenv("TAMBO_USER_DIR", m_Folder.filePath("Σχέδια дом é").toUtf8());
    // It is chosen again when it has gone.
    ASSERT_TRUE(QDir(old).removeRecursively());
    ASSERT_TRUE(path("model.pdb").startsWith(m_Folder.path())) << path("").toStdString();
    family();
    job();
    EXPECT_TRUE(read());
    EXPECT_EQ(topLevelNames().back(), "wanted on known");
    EXPECT_TRUE(QDir(path("")).removeRecursively());
    qputenv("TAMBO_USER_DIR", before);
    EXPECT_EQ(QString::fromStdString(Config::GetPersonalTmpDir()), old);
}

TEST_F(ModelReaderTest, TheModelIsCalledByTargetAndTemplate)
{
    job();
    ASSERT_TRUE(read());
    ASSERT_NE(newest(), nullptr);
    EXPECT_EQ(newest()->Name(), "wanted on known");
    EXPECT_TRUE(newest()->isModel());
    ASSERT_TRUE(read());
    EXPECT_EQ(newest()->Name(), "wanted on known (2)");
}

TEST_F(ModelReaderTest, ScoresInTheFileStayWithTheModel)
{
    family();
    job();
    put("model.pdb", "REMARK   6 KESTRAM SCORE OF LETTER 3 -0.5000\n"
                     "REMARK   6 KESTRAM SCORE OF LETTER 8 1.2500\n" +
                         pdb("ACDE", 3, 0) + pdb("GH", 7, 5));
    ASSERT_TRUE(read());
    const Structure *const model = newest();
    const auto scores = [model] { return PluginValues::Get(model, kScoresOf, kScoresKey); };
    EXPECT_EQ(scores(), "-0.5000 - - - - 1.2500");
    history().undo();
    history().redo();
    EXPECT_EQ(scores(), "-0.5000 - - - - 1.2500");
}

TEST_F(ModelReaderTest, TheTargetsResiduesGetThePlacesOfTheModel)
{
    Alignment &shown = family();
    job();
    ASSERT_TRUE(read());
    EXPECT_FALSE(shown.getItem(1, 0)->Position().isDefined());
    for (const unsigned long col : {2UL, 3UL, 4UL, 5UL, 7UL, 8UL})
        EXPECT_EQ(shown.getItem(1, col)->Position().x(), place(int(col) - 2).x()) << col;
    EXPECT_FALSE(shown.getItem(1, 9)->Position().isDefined());
    EXPECT_FALSE(shown.getItem(0, 2)->Position().isDefined()) << "the template is another row";
    EXPECT_EQ(rowsOf(shown), (std::vector<std::string>{"--ACDEFGH--", "MKACDE-GHLL"}));
}

TEST_F(ModelReaderTest, EveryAlignmentWithTheTargetSeesTheModel)
{
    Alignment &shown = family();
    Alignment *copy = nullptr;
    {
        const DataAdder<Space> guard(nullptr, Space::instance());
        copy = shown.duplicate(2);
    }
    job();
    ASSERT_TRUE(read());
    EXPECT_TRUE(copy->getItem(1, 2)->Position().isDefined());
    EXPECT_TRUE(shown.getItem(1, 2)->Position().isDefined());
}

TEST_F(ModelReaderTest, AllOfItIsOneStepOfUndo)
{
    Alignment &shown = family();
    history().clear();
    job();
    ASSERT_TRUE(read());
    const std::size_t objects = space().objectCount();
    ASSERT_TRUE(history().canUndo());
    history().undo();
    EXPECT_FALSE(history().canUndo());
    EXPECT_EQ(space().objectCount(), objects - 1);
    EXPECT_FALSE(shown.getItem(1, 2)->Position().isDefined());
    history().redo();
    EXPECT_EQ(space().objectCount(), objects);
    EXPECT_TRUE(shown.getItem(1, 2)->Position().isDefined());
}

TEST_F(ModelReaderTest, AModelThatArrivesWhileACommandWaitsIsAStepOfItsOwn)
{
    Alignment &shown = family();
    history().clear();
    job();
    Peptide &target = *Peptide::from(shown.GetSeq(1));
    {
        const DataPoint<Alignment> guard(nullptr, &shown);
        target.setNumber(0, SequenceNumber(100));
        target.setNumber(3, SequenceNumber(300));
        ASSERT_TRUE(read());
        EXPECT_TRUE(shown.getItem(1, 2)->Position().isDefined());
        EXPECT_EQ(target.number(0).getValue(), "100");
        EXPECT_EQ(target.number(3).getValue(), "300") << "which is the model's now";
    }
    ASSERT_EQ(history().size(), 2U);
    ASSERT_TRUE(history().undo());
    EXPECT_EQ(target.number(0).getValue(), "1");
    EXPECT_EQ(target.number(3).getValue(), "4");
    EXPECT_TRUE(shown.getItem(1, 2)->Position().isDefined()) << "the model stays";
    ASSERT_TRUE(history().undo());
    EXPECT_FALSE(shown.getItem(1, 2)->Position().isDefined());
    ASSERT_TRUE(history().goTo(2));
    EXPECT_EQ(target.number(3).getValue(), "300");
}

TEST_F(ModelReaderTest, AModelThatArrivesWhileChangesArePublishedIsReadAfterwards)
{
    Alignment &shown = family();
    history().clear();
    job();
    struct Reader : Subscriber
    {
        void commUpdate() override
        {
            if (std::exchange(m_IsFirst, false)) {
                EXPECT_TRUE(read());
                // The next job's files.
                QFile::remove(path("model.pdb"));
                QFile::remove(path("seq.ali"));
            }
        }
        void commAdd() override { }
        void commDelete() override { }
        bool m_IsFirst = true;
    } reader;
    {
        const DataPoint<Space> guard(nullptr, Space::instance());
    }
    EXPECT_TRUE(shown.getItem(1, 2)->Position().isDefined());
    EXPECT_EQ(history().size(), 1U);
}

TEST_F(ModelReaderTest, DeletingTheModelLeavesThePlainSequence)
{
    Alignment &shown = family();
    job();
    ASSERT_TRUE(read());
    DataMaker::Destroy(newest());
    EXPECT_FALSE(shown.getItem(1, 2)->Position().isDefined());
    EXPECT_EQ(shown.getItem(1, 2)->TypeCode(), 'A');
}

TEST_F(ModelReaderTest, ANewerModelTakesThePlaceOfAnOlderOne)
{
    Alignment &shown = family();
    job();
    ASSERT_TRUE(read());
    const Structure *first = newest();
    ASSERT_TRUE(read());
    EXPECT_NE(newest(), first);
    const Peptide &target = shown.table().row(1).sequence();
    EXPECT_EQ(target.resolve(2).peptide, newest()->chain(0));
    history().undo();
    EXPECT_EQ(target.resolve(2).peptide, first->chain(0));
}

TEST_F(ModelReaderTest, MeasuredCoordinatesOfTheTargetStay)
{
    Structure &known = structure("wanted", "A", "MKACDEGHLL");
    Alignment &shown = family();
    ASSERT_EQ(shown.table().row(1).sequence().resolve(2).peptide, known.chain(0));
    job();
    ASSERT_TRUE(read());
    EXPECT_EQ(newest()->Name(), "wanted on known");
    EXPECT_EQ(shown.table().row(1).sequence().resolve(2).peptide, known.chain(0));
}

TEST_F(ModelReaderTest, NumbersColoursSelectionAndElementsOfTheTargetStay)
{
    Alignment &shown = family({"--ACDEFGH--", "MKACDEFGHLL"}, {"known", "wanted"});
    Peptide &target = shown.table().row(1).sequence();
    const Color red(0xFFFF0000U);
    {
        const DataPoint<Alignment> guard(nullptr, &shown);
        target.setNumber(0, SequenceNumber(101));
        for (std::size_t i = 1; i < target.residueCount(); ++i)
            target.setNumber(i, SequenceNumber(101 + int(i)));
        target.setColor(3, red);
        target.setSelected(4, true);
        DataMaker::makeSSE(&target, "mine",
                           {target.residue(4), target.residue(5), target.residue(6)}, 'H');
    }
    put("seq.ali", ">P1;known\nstructureX:::::::::\n--ACDEFGH--*\n"
                   ">P1;wanted\nsequence:::::::::\nMKACDEFGHLL*\n");
    put("str.pdb", pdb("ACDEFGH", 1, 0));
    put("model.pdb", pdb("ACDEFGH", 3, 0));
    ASSERT_TRUE(read());
    ASSERT_EQ(target.resolve(3).peptide, newest()->chain(0));
    for (std::size_t i = 0; i < target.residueCount(); ++i)
        EXPECT_EQ(target.number(i), SequenceNumber(101 + int(i))) << i;
    EXPECT_EQ(target.ownColor(3), red);
    EXPECT_TRUE(target.isSelected(4));
    EXPECT_FALSE(target.isSelected(3));
    for (const std::size_t i : {4U, 5U, 6U}) {
        ASSERT_NE(target.elementAt(i), nullptr) << i;
        EXPECT_EQ(target.elementAt(i)->Name(), "mine");
    }
    EXPECT_EQ(target.elementAt(3), nullptr);
    EXPECT_EQ(target.elementAt(7), nullptr);
}

TEST_F(ModelReaderTest, AModelInThePlaceOfItsTemplateIsNotMoved)
{
    job();
    ASSERT_TRUE(read());
    const Peptide &chain = *newest()->chain(0);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(chain.position(i).coordinates(), place(int(i)).coordinates());
    EXPECT_THAT(log(), HasSubstr("wanted on known lies 0.00 Å from known"));
}

TEST_F(ModelReaderTest, AModelElsewhereIsMovedOntoItsTemplate)
{
    job(turned);
    ASSERT_TRUE(read());
    const Peptide &chain = *newest()->chain(0);
    const std::vector<int> at = {0, 1, 2, 3, 5, 6};
    ASSERT_EQ(chain.residueCount(), at.size());
    for (std::size_t i = 0; i < at.size(); ++i) {
        EXPECT_NEAR(chain.position(i).x(), place(at[i]).x(), 0.01);
        EXPECT_NEAR(chain.position(i).y(), place(at[i]).y(), 0.01);
        EXPECT_NEAR(chain.position(i).z(), place(at[i]).z(), 0.01);
    }
    EXPECT_THAT(log(), HasSubstr("wanted on known was moved onto known"));
}

TEST_F(ModelReaderTest, AModelOfAnotherSequenceIsReadAsItIs)
{
    Alignment &shown = family();
    job();
    put("model.pdb", pdb("LLLLLLMMMM", 1, 0));
    ASSERT_TRUE(read());
    EXPECT_EQ(newest()->Name(), "model");
    EXPECT_FALSE(shown.getItem(1, 2)->Position().isDefined());
    EXPECT_THAT(log(),
                HasSubstr("model.pdb: the sequence is not that of the modelling job's target"));
}

TEST_F(ModelReaderTest, ALockedTargetStaysAsItIs)
{
    Alignment &shown = family();
    setObjectLocked(shown.table().row(1).sequence(), true);
    job();
    ASSERT_TRUE(read());
    EXPECT_EQ(newest()->Name(), "wanted on known");
    EXPECT_FALSE(shown.getItem(1, 2)->Position().isDefined());
    EXPECT_THAT(log(), HasSubstr("wanted is locked, so its residues do not get the coordinates"));
}

TEST_F(ModelReaderTest, WithoutTheJobsFilesAModelIsAStructureLikeAnyOther)
{
    put("model.pdb", pdb("ACDE", 1, 0));
    ASSERT_TRUE(read());
    EXPECT_EQ(newest()->Name(), "model");
    EXPECT_FALSE(newest()->isModel());
}

TEST_F(ModelReaderTest, AnEmptyModelIsOneLineInTheLogAndNoObject)
{
    Alignment &shown = family();
    const std::size_t objects = space().objectCount();
    history().clear();
    job();
    put("model.pdb", "");
    EXPECT_FALSE(read());
    EXPECT_EQ(space().objectCount(), objects);
    EXPECT_FALSE(history().canUndo());
    EXPECT_FALSE(shown.getItem(1, 2)->Position().isDefined());
}

TEST_F(ModelReaderTest, AFileOfTheAlignmentDoesNotNameTheModel)
{
    Alignment &shown = family();
    const auto written = [&] {
        QFile file(m_Folder.filePath("written.ali"));
        EXPECT_EQ(complaintOf(app::WritableObject(shown).write(file.fileName(), {})), "");
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    };
    const QByteArray before = written();
    job();
    ASSERT_TRUE(read());
    EXPECT_EQ(written(), before);
}

TEST_F(ModelReaderTest, WhatIsSavedForAJobIsNotSavedForTheUser)
{
    struct
    {
        QString path;
        Alignment *alignment;
    } request{path("seq.ali"), &family()};
    EXPECT_EQ(PluginManager::Command("Parse", "PIR", "KALMO", "Save PIR", "SaveALI",
                                     static_cast<void *>(&request)),
              PluginManager::Outcome::Done);
    EXPECT_TRUE(QFile::exists(request.path));
    EXPECT_TRUE(history().isModified(*request.alignment));
}

} // namespace ModelReaderTest
