// SPDX-License-Identifier: GPL-3.0-or-later
// Alignments as PIR files: complete, readable again, and never half written.
#include "PirFile.h"

#include "AppFixture.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "FileReader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

using namespace TAMBO;
using app::pirText;
using app::writePirFile;
using Texts = std::vector<std::string>;

class PirFileTest : public AppFixture
{
protected:
    Alignment &open(const QByteArray &text)
    {
        const QString file = write("x.ali", text);
        Result<FileContents> contents = readFile(file.toStdString());
        EXPECT_TRUE(contents.has_value());
        const DataAdder<Space> guard(nullptr, Space::instance());
        return *ObjectFactory::adopt(std::move(contents->alignments.front()));
    }
    static QByteArray read(const QString &file)
    {
        QFile opened(file);
        EXPECT_TRUE(opened.open(QIODevice::ReadOnly));
        return opened.readAll();
    }
};

TEST_F(PirFileTest, ARowWithoutAStructureIsASequence)
{
    EXPECT_EQ(pirText(alignment("x", {"AC-D", "ACCD"})), ">P1;x1\n"
                                                         "sequence:x1::::::::\n"
                                                         "AC-D*\n\n"
                                                         ">P1;x2\n"
                                                         "sequence:x2::::::::\n"
                                                         "ACCD*\n\n");
}

TEST_F(PirFileTest, ARowOfAChainNamesStructureChainAndRange)
{
    Structure &structure = this->structure("1abc", "A", "ACD");
    const Alignment *made = nullptr;
    {
        const DataAdder<Space> guard(nullptr, Space::instance());
        made = DataMaker::makeAlignment("SeqAli", {structure.chain(0)});
    }
    EXPECT_EQ(pirText(*made), ">P1;1abc_A\n"
                              "structureX:1abc:1:A:3:A::::\n"
                              "ACD*\n\n");
}

TEST_F(PirFileTest, WhatTheFileSaidOfARowIsKept)
{
    const QByteArray text = ">P1;1abc\n"
                            "structureX:1abc.pdb:1 :A:3 :A:ferredoxin:Some bug: 1.90: 0.19\n"
                            "AC-D*\n\n"
                            ">P1;target\n"
                            "a title of no known form, 5 % of it\n"
                            "A-CD*\n\n";
    EXPECT_EQ(pirText(open(text)), text.toStdString());
}

TEST_F(PirFileTest, TheRangeFollowsWhatTheRowHoldsNow)
{
    structure("1abc", "A", "ACDE");
    Alignment &family = open(">P1;1abc\n"
                             "structureX:1abc.pdb:1:A:4:A:ferredoxin:::\n"
                             "ACDE*\n\n");
    {
        const DataPoint<Alignment> guard(nullptr, &family);
        guard->remove(0);
    }
    EXPECT_EQ(pirText(family), ">P1;1abc\n"
                               "structureX:1abc.pdb:2:A:4:A:ferredoxin:::\n"
                               "CDE*\n\n");
}

TEST_F(PirFileTest, BreaksBetweenChainsAreKept)
{
    const QByteArray text = ">P1;two\n"
                            "sequence:two::::::::\n"
                            "AC/D-E*\n\n"
                            ">P1;one\n"
                            "sequence:one::::::::\n"
                            "ACCD-E*\n\n";
    EXPECT_EQ(pirText(open(text)), text.toStdString());
}

TEST_F(PirFileTest, LongRowsAreBroken)
{
    const std::string text =
        pirText(alignment("x", {std::string(160, 'A'), std::string(160, '-')}));
    EXPECT_NE(text.find('\n' + std::string(75, 'A') + '\n' + std::string(75, 'A') + '\n' +
                        std::string(10, 'A') + "*\n"),
              std::string::npos);
}

TEST_F(PirFileTest, AFullLastLineIsEndedOnALineOfItsOwn)
{
    EXPECT_NE(pirText(alignment("x", {std::string(75, 'A')})).find(std::string(75, 'A') + "\n*\n"),
              std::string::npos);
}

TEST_F(PirFileTest, NamesCannotBreakTheFile)
{
    Alignment &family = alignment("a:b\nc", {"AC-D"});
    const std::string text = pirText(family);
    EXPECT_TRUE(text.starts_with(">P1;a:b c1\nsequence:a b c1:")) << text;
}

TEST_F(PirFileTest, AWrittenFileReadsBackTheSame)
{
    Alignment &family = alignment("x", {"AC-DEF", "--CDEF", "ACXD--"});
    const QString file = m_Folder.filePath("x.ali");
    EXPECT_EQ(writePirFile(file, family), QString());
    const Result<FileContents> contents = readFile(file.toStdString());
    ASSERT_TRUE(contents.has_value());
    ASSERT_EQ(contents.value().alignments.size(), 1U);
    Texts rows;
    for (const RowRecord &row : contents.value().alignments[0].rows)
        rows.push_back(row.sequence.text());
    EXPECT_EQ(rows, rowsOf(family));
}

TEST_F(PirFileTest, RealFilesSurviveSaving)
{
    for (const char *name :
         {"alignments/pir/antibody_two_chains.ali", "families/g6pd/g6pd_templates_and_target.ali",
          "families/serine_proteases/serine_proteases.ali"}) {
        const auto path = std::filesystem::path(TEST_DATA_DIR) / name;
        Result<FileContents> before = readFile(path);
        ASSERT_TRUE(before.has_value()) << name;
        std::vector<std::pair<std::string, std::string>> rows;
        for (const RowRecord &row : before->alignments.front().rows)
            rows.emplace_back(row.name, row.sequence.text());
        const DataAdder<Space> guard(nullptr, Space::instance());
        const Alignment *family = ObjectFactory::adopt(std::move(before->alignments.front()));
        const QString file = m_Folder.filePath("saved.ali");
        ASSERT_EQ(writePirFile(file, *family), QString());
        Result<FileContents> after = readFile(file.toStdString());
        ASSERT_TRUE(after.has_value()) << name;
        std::vector<std::pair<std::string, std::string>> saved;
        for (const RowRecord &row : after->alignments.front().rows)
            saved.emplace_back(row.name, row.sequence.text());
        EXPECT_EQ(saved, rows) << name;
    }
}

TEST_F(PirFileTest, AFileThatCannotBeWrittenIsNamedAndTheOldOneStays)
{
    EXPECT_EQ(writePirFile(m_Folder.filePath("none/x.ali"), alignment("x", {"AC-D"})),
              "x.ali could not be written: No such file or directory");
    const QString folder = m_Folder.filePath("x.ali");
    ASSERT_TRUE(QDir().mkdir(folder));
    EXPECT_FALSE(writePirFile(folder, alignment("x", {"AC-D"})).isEmpty());
    EXPECT_TRUE(QFileInfo(folder).isDir());
}

TEST_F(PirFileTest, AnOldFileIsReplaced)
{
    const QString file = write("x.ali", "something else");
    EXPECT_EQ(writePirFile(file, alignment("x", {"AC-D"})), QString());
    EXPECT_TRUE(read(file).startsWith(">P1;x1\n"));
}

} // namespace
