// SPDX-License-Identifier: GPL-3.0-or-later
// Reading the files of one open command, with the structures beside them.
#include "ReadJob.h"

#include "AppFixture.h"
#include "TestTexts.h"

namespace ReadJobTest {

using namespace TAMBO;
using TAMBO::ReadJob;
using TAMBO::ReadOutcome;
using Texts = std::vector<std::string>;

class ReadJobTest : public AppFixture
{
protected:
    static ReadOutcome read(const std::vector<std::string> &files,
                            const std::set<std::string> &loaded = {})
    {
        return ReadJob({files.begin(), files.end()}, loaded)
            .run([](const std::string &, double) { return true; })
            .value();
    }
    static Texts namesOf(const ReadOutcome &outcome)
    {
        Texts names;
        for (const ReadFile &file : outcome.files)
            names.push_back(file.file.filename().string());
        return names;
    }
    std::string put(const QString &name, const QByteArray &text)
    {
        return write(name, text).toStdString();
    }
};

TEST_F(ReadJobTest, StructuresComeBeforeTheAlignmentsThatNameThem)
{
    const std::string rows = put("x.ali", pirNaming({"1abc.pdb", "2abc"}));
    put("1abc.pdb", pdbText("AG"));
    put("2abc.pdb", pdbText("AG"));
    const std::string other = put("other.fasta", ">a\nAC-D\n>b\nACCD\n");
    EXPECT_EQ(namesOf(read({rows, other})),
              (Texts{"1abc.pdb", "2abc.pdb", "x.ali", "other.fasta"}));
}

TEST_F(ReadJobTest, AStructureThatIsLoadedIsNotReadAgain)
{
    const std::string rows = put("x.ali", pirNaming({"1abc.pdb", "2abc"}));
    put("1abc.pdb", pdbText("AG"));
    put("2abc.pdb", pdbText("AG"));
    EXPECT_EQ(namesOf(read({rows}, {"1abc"})), (Texts{"2abc.pdb", "x.ali"}));
}

TEST_F(ReadJobTest, AStructureThatIsLoadedMayBeCalledOtherwise)
{
    const std::string rows = put("x.ali", pirNaming({"1ABC_A", "2abc"}));
    put("pdb1abc.ent", pdbText("AG"));
    put("2abc.pdb", pdbText("AG"));
    EXPECT_EQ(namesOf(read({rows}, {"1Abc"})), (Texts{"2abc.pdb", "x.ali"}));
    EXPECT_EQ(namesOf(read({rows})), (Texts{"pdb1abc.ent", "2abc.pdb", "x.ali"}));
}

TEST_F(ReadJobTest, AFileGivenTwiceIsReadOnce)
{
    const std::string rows = put("x.ali", pirNaming({"1abc.pdb"}));
    const std::string structure = put("1abc.pdb", pdbText("AG"));
    EXPECT_EQ(namesOf(read({rows, structure, rows})), (Texts{"1abc.pdb", "x.ali"}));
}

TEST_F(ReadJobTest, AFileNamedByARowIsNotOpenedWhenItIsNoStructure)
{
    const std::string rows = put("x.ali", pirNaming({"notes"}));
    put("notes", ">a\nACD\n");
    const ReadOutcome outcome = read({rows});
    EXPECT_EQ(namesOf(outcome), Texts{"x.ali"});
    EXPECT_TRUE(outcome.failures.empty());
}

TEST_F(ReadJobTest, ABadFileIsNamedAndTheOthersAreRead)
{
    const std::string bad = put("bad.ali", ">P1;a\n\nAC#D*\n");
    const std::string good = put("good.fasta", ">a\nAC-D\n>b\nACCD\n");
    const ReadOutcome outcome = read({bad, good, m_Folder.filePath("none.ali").toStdString()});
    EXPECT_EQ(namesOf(outcome), Texts{"good.fasta"});
    ASSERT_EQ(outcome.failures.size(), 2U);
    EXPECT_TRUE(outcome.failures[0].failure.message().starts_with("bad.ali:3: "))
        << outcome.failures[0].failure.message();
    EXPECT_NE(outcome.failures[1].failure.message().find("none.ali"), std::string::npos);
}

TEST_F(ReadJobTest, ABadStructureBesideAnAlignmentIsNamed)
{
    const std::string rows = put("x.ali", pirNaming({"1abc.pdb"}));
    put("1abc.pdb", "ATOM  not a structure at all\n");
    const ReadOutcome outcome = read({rows});
    EXPECT_EQ(namesOf(outcome), Texts{"x.ali"});
    ASSERT_EQ(outcome.failures.size(), 1U);
    EXPECT_TRUE(outcome.failures[0].failure.message().starts_with("1abc.pdb"));
}

TEST_F(ReadJobTest, CancellingLeavesNothing)
{
    const std::string rows = put("x.ali", pirNaming({}));
    const std::string other = put("other.fasta", ">a\nACD\n");
    int calls = 0;
    const auto outcome = ReadJob({rows, other}, {}).run([&](const std::string &name, double) {
        ++calls;
        return name != "other.fasta";
    });
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, FailureKind::Cancelled);
    EXPECT_GE(calls, 2);
}

TEST_F(ReadJobTest, ProgressGrowsFromFileToFile)
{
    const std::string a = put("a.fasta", ">a\nACD\n");
    const std::string b = put("b.fasta", ">a\nACD\n");
    std::vector<double> fractions;
    const auto outcome = ReadJob({a, b}, {}).run([&](const std::string &, double fraction) {
        fractions.push_back(fraction);
        return true;
    });
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome.value().files.size(), 2U);
    EXPECT_TRUE(std::ranges::is_sorted(fractions));
    EXPECT_GE(fractions.front(), 0.0);
    EXPECT_LE(fractions.back(), 1.0);
    EXPECT_GE(fractions.back(), 0.5);
}

} // namespace ReadJobTest
