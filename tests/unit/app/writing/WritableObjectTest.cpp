// SPDX-License-Identifier: GPL-3.0-or-later
// Loaded objects as files: what the rows hold now, and what formats lose of it.
#include "WritableObject.h"

#include "AppFixture.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "FileReader.h"
#include "support/LogLines.h"
#include "support/Outcome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fstream>
#include <map>

namespace WritableObjectTest {

using namespace TAMBO;
using app::WritableObject;
using Texts = std::vector<std::string>;

class WritableObjectTest : public AppFixture
{
protected:
    Alignment &open(const QByteArray &text) { return openFile(write("opened.ali", text)); }
    static Alignment &openFile(const QString &file)
    {
        Result<FileContents> contents = readFile(file.toStdString());
        EXPECT_TRUE(contents.has_value());
        const DataAdder<Space> guard(nullptr, Space::instance());
        return *ObjectFactory::adopt(std::move(contents->alignments.front()));
    }
    static Structure &openStructure(const std::string &file)
    {
        Result<FileContents> contents = readFile(std::filesystem::path(TEST_DATA_DIR) / file);
        EXPECT_TRUE(contents.has_value());
        const DataAdder<Space> guard(nullptr, Space::instance());
        return *ObjectFactory::adopt(std::move(contents->structures.front()));
    }
    QByteArray written(const Compound &object, const WriteOptions &options = {})
    {
        const QString file = m_Folder.filePath("written");
        EXPECT_EQ(complaintOf(WritableObject(object).write(file, options)), "");
        return read(file);
    }
    static QByteArray read(const QString &file)
    {
        QFile opened(file);
        EXPECT_TRUE(opened.open(QIODevice::ReadOnly));
        return opened.readAll();
    }
};

TEST_F(WritableObjectTest, TheLogTellsOfAFileThatIsWrittenInPlace)
{
    const QString file = write("x.ali", "old");
    std::filesystem::create_hard_link(file.toStdString(), file.toStdString() + ".link");
    const LogLines log;
    EXPECT_EQ(complaintOf(WritableObject(alignment("x", {"AC", "AC"})).write(file, {})), "");
    EXPECT_EQ(log.texts(),
              QStringList{"x.ali: was written in place, because it has several links"});
    EXPECT_EQ(read(file), read(file + ".link"));
}

TEST_F(WritableObjectTest, ARowWithoutAStructureIsASequence)
{
    EXPECT_EQ(written(alignment("x", {"AC-D", "ACCD"})), ">P1;x1\n"
                                                         "sequence:x1::::::::\n"
                                                         "AC-D*\n\n"
                                                         ">P1;x2\n"
                                                         "sequence:x2::::::::\n"
                                                         "ACCD*\n\n");
}

TEST_F(WritableObjectTest, ARowOfAChainNamesStructureChainAndRange)
{
    Structure &structure = this->structure("1abc", "A", "ACD");
    const Alignment *made = nullptr;
    {
        const DataAdder<Space> guard(nullptr, Space::instance());
        made = DataMaker::makeAlignment("SeqAli", {structure.chain(0)});
    }
    EXPECT_EQ(written(*made), ">P1;1abc_A\n"
                              "structureX:1abc:1:A:3:A::::\n"
                              "ACD*\n\n");
}

// As others find the chains in the files: insertion codes, negative numbers, blank names.
TEST_F(WritableObjectTest, HeadersOfRealChainsNameTheirFirstAndLastResidues)
{
    std::ifstream table(std::filesystem::path(TEST_DATA_DIR) / "facts_structures.tsv");
    std::map<std::string, std::vector<QByteArrayList>> chains;
    std::string line;
    for (std::getline(table, line); std::getline(table, line);) {
        const QByteArrayList fields = QByteArray::fromStdString(line).split('\t');
        if (fields[0].startsWith("structures/"))
            chains[fields[0].toStdString()].push_back(fields);
    }
    ASSERT_GT(chains.size(), 10U);
    for (const auto &[file, facts] : chains) {
        SCOPED_TRACE(file);
        Structure &structure = openStructure(file);
        std::vector<Compound *> sequences;
        for (std::size_t i = 0; i < structure.objectCount(); ++i)
            if (structure.chain(i)->residueCount() > 0)
                sequences.push_back(structure.chain(i));
        ASSERT_EQ(sequences.size(), facts.size());
        const DataAdder<Space> guard(nullptr, Space::instance());
        const QByteArrayList lines = written(*DataMaker::makeAlignment("x", sequences)).split('\n');
        QByteArrayList headers;
        for (const QByteArray &text : lines)
            if (text.startsWith("structure"))
                headers.append(text);
        ASSERT_EQ(headers.size(), qsizetype(facts.size()));
        for (std::size_t i = 0; i < facts.size(); ++i) {
            const QByteArray chain = facts[i][2] == "(blank)" ? QByteArray() : facts[i][2];
            EXPECT_EQ(headers[qsizetype(i)],
                      "structureX:" + QByteArray::fromStdString(structure.Name()) + ':' +
                          facts[i][4] + ':' + chain + ':' + facts[i][5] + ':' + chain + "::::");
        }
    }
}

TEST_F(WritableObjectTest, WhatTheFileSaidOfARowIsKept)
{
    const QByteArray text = ">P1;1abc\n"
                            "structureX:1abc.pdb:1 :A:3 :A:ferredoxin:Some bug: 1.90: 0.19\n"
                            "AC-D*\n\n"
                            ">P1;target\n"
                            "a title of no known form, 5 % of it\n"
                            "A-CD*\n\n";
    EXPECT_EQ(written(open(text)), text);
}

TEST_F(WritableObjectTest, TheRangeFollowsWhatTheRowHoldsNow)
{
    structure("1abc", "A", "ACDE");
    Alignment &family = open(">P1;1abc\n"
                             "structureX:1abc.pdb:1:A:4:A:ferredoxin:::\n"
                             "ACDE*\n\n");
    {
        const DataPoint<Alignment> guard(nullptr, &family);
        guard->remove(0);
    }
    EXPECT_EQ(written(family), ">P1;1abc\n"
                               "structureX:1abc.pdb:2:A:4:A:ferredoxin:::\n"
                               "CDE*\n\n");
}

TEST_F(WritableObjectTest, NumbersAreKeptOfChainsOnly)
{
    Structure &structure = this->structure("1abc", "A", "ACD");
    Peptide &loose = sequence("loose", "ACD");
    const DataAdder<Space> guard(nullptr, Space::instance());
    const Alignment &family = *DataMaker::makeAlignment("x", {structure.chain(0), &loose});
    EXPECT_EQ(WritableObject(family).losses({}), QStringList());
    structure.chain(0)->setNumber(0, SequenceNumber("101"));
    EXPECT_EQ(WritableObject(family).losses({}), QStringList());
    EXPECT_TRUE(written(family).contains("structureX:1abc:101:A:3:A::::"));
    loose.setNumber(0, SequenceNumber("101"));
    EXPECT_EQ(WritableObject(family).losses({}).size(), 1);
    loose.setNumber(0, SequenceNumber("1"));
    EXPECT_EQ(WritableObject(family).losses({}), QStringList());
}

TEST_F(WritableObjectTest, BreaksBetweenChainsAreKept)
{
    const QByteArray text = ">P1;two\n"
                            "sequence:two::::::::\n"
                            "A--/DE*\n\n"
                            ">P1;one\n"
                            "sequence:one::::::::\n"
                            "ACCD-E*\n\n";
    EXPECT_EQ(written(open(text)), text);
}

TEST_F(WritableObjectTest, RealAlignmentsSurvive)
{
    for (const char *name :
         {"alignments/pir/antibody_two_chains.ali", "families/g6pd/g6pd_templates_and_target.ali",
          "families/serine_proteases/serine_proteases.ali"}) {
        const QString file = QStringLiteral(TEST_DATA_DIR "/") + QString::fromLatin1(name);
        Result<FileContents> before = readFile(file.toStdString());
        ASSERT_TRUE(before.has_value()) << name;
        ASSERT_EQ(
            complaintOf(WritableObject(openFile(file)).write(m_Folder.filePath("saved.ali"), {})),
            "");
        Result<FileContents> after = readFile(m_Folder.filePath("saved.ali").toStdString());
        ASSERT_TRUE(after.has_value()) << name;
        const std::vector<RowRecord> &rows = before->alignments.front().rows;
        const std::vector<RowRecord> &saved = after->alignments.front().rows;
        ASSERT_EQ(saved.size(), rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(saved[i].name, rows[i].name);
            EXPECT_EQ(saved[i].sequence.text(), rows[i].sequence.text()) << rows[i].name;
        }
    }
}

TEST_F(WritableObjectTest, RealStructuresSurvive)
{
    for (const char *name :
         {"structures/insertion_codes_1dix.pdb", "structures/dna_and_protein_1lcd.pdb",
          "structures/four_chains_haemoglobin_2hhb.pdb.gz",
          "structures/selenomethionine_1a8o.cif"}) {
        const WritableObject object(openStructure(name));
        for (const FileFormat format : object.formats())
            EXPECT_EQ(complaintOf(object.write(m_Folder.filePath("saved"), {format})), "") << name;
    }
}

// What is loaded again is what was loaded before.
TEST_F(WritableObjectTest, AStructureKeepsResiduesGroupsAtomsAndElements)
{
    const Structure &before = openStructure("structures/ubiquitin_1ubi.pdb");
    const QString file = m_Folder.filePath("1ubi.cif");
    ASSERT_EQ(complaintOf(WritableObject(before).write(file, {FileFormat::Mmcif})), "");
    Result<FileContents> contents = readFile(file.toStdString());
    ASSERT_TRUE(contents.has_value());
    const DataAdder<Space> guard(nullptr, Space::instance());
    const Structure &after = *ObjectFactory::adopt(std::move(contents->structures.front()));
    ASSERT_EQ(after.objectCount(), before.objectCount());
    const Peptide &chain = *before.chain(0);
    const Peptide &readBack = *after.chain(0);
    EXPECT_EQ(readBack.letters(), chain.letters());
    EXPECT_EQ(readBack.objectCount(), chain.objectCount());
    for (std::size_t i = 0; i < chain.residueCount(); ++i) {
        ASSERT_EQ(readBack.atomCount(i), chain.atomCount(i));
        EXPECT_EQ(readBack.number(i), chain.number(i));
        for (std::size_t axis = 0; axis < 3; ++axis)
            EXPECT_EQ(readBack.position(i).coordinates()[axis],
                      chain.position(i).coordinates()[axis]);
        EXPECT_EQ(readBack.elementAt(i) == nullptr, chain.elementAt(i) == nullptr) << i;
    }
}

TEST_F(WritableObjectTest, AlignmentsAndStructuresHaveFormatsOfTheirOwn)
{
    EXPECT_EQ(WritableObject(alignment("x", {"AC"})).formats().size(), 9U);
    EXPECT_EQ(WritableObject(alignment("x", {"AC"})).formats().front(), FileFormat::Pir);
    EXPECT_EQ(WritableObject(structure("1abc", "A", "AC")).formats(),
              (std::vector{FileFormat::Pdb, FileFormat::Mmcif}));
    EXPECT_FALSE(WritableObject::isWritable(sequence("x", "AC")));
}

TEST_F(WritableObjectTest, LossesAndObstaclesAreThoseOfTheFormat)
{
    const WritableObject object(alignment("a long name", {"AC", "AC"}));
    EXPECT_EQ(complaintOf(object.checkWritable({FileFormat::Phylip})), "");
    EXPECT_EQ(object.losses({}), QStringList());
    EXPECT_EQ(object.losses({FileFormat::Phylip}).size(), 2);
    EXPECT_EQ(complaintOf(object.checkWritable({FileFormat::Pdb})),
              "An alignment cannot be written as a PDB file.");
}

TEST_F(WritableObjectTest, AFileThatCannotBeWrittenIsNamedAndTheOldOneStays)
{
    const WritableObject object(alignment("x", {"AC-D"}));
    EXPECT_EQ(complaintOf(object.write(m_Folder.filePath("none/x.ali"), {})),
              "x.ali: cannot be written: No such file or directory");
    const QString folder = m_Folder.filePath("x.ali");
    ASSERT_TRUE(QDir().mkdir(folder));
    EXPECT_EQ(complaintOf(object.write(folder, {})), "x.ali: cannot be written: it is a folder");
    EXPECT_TRUE(QFileInfo(folder).isDir());
}

TEST_F(WritableObjectTest, NamesOfFilesMayHaveAnyLetters)
{
    const QString file = m_Folder.filePath(QStringLiteral("M\u00fcsterling \u03b1.ali"));
    EXPECT_EQ(complaintOf(WritableObject(alignment("x", {"AC-D"})).write(file, {})), "");
    EXPECT_TRUE(read(file).startsWith(">P1;x1\n"));
}

} // namespace WritableObjectTest
