// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo identity` as scripts call it.
#include "ProgramFixture.h"
#include "support/WaitUntil.h"

namespace IdentityProgramTest {

class IdentityProgram : public ProgramFixture
{
};

TEST_F(IdentityProgram, EachPairOfRowsHasALine)
{
    const Finished table = run({"identity", write("x.fasta", ">a\nACDE\n>b\nAC-E\n>c\n----\n")});
    EXPECT_EQ(table.status, 0);
    EXPECT_EQ(table.errors, "");
    EXPECT_EQ(table.output,
              "alignment\tfirst\tsecond\tidentical\tdifferent\tlength_first\tlength_second\t"
              "overlap\twith_hangs\tpercent_of_first\tpercent_of_second\tpercent_of_overlap\t"
              "percent_with_hangs\n"
              "x\ta\tb\t3\t0\t4\t3\t4\t4\t75.00\t100.00\t75.00\t75.00\n"
              "x\ta\tc\t0\t0\t4\t0\t1\t4\t0.00\tNA\t0.00\t0.00\n"
              "x\tb\tc\t0\t0\t3\t0\t1\t3\t0.00\tNA\t0.00\t0.00\n");
}

TEST_F(IdentityProgram, OneRowHasNoPairs)
{
    const Finished table = run({"identity", write("x.fasta", ">a\nACDE\n")});
    EXPECT_EQ(table.status, 0);
    EXPECT_EQ(table.lines().size(), 1);
}

TEST_F(IdentityProgram, RealRowsHaveTheirKnownLengths)
{
    const Finished table = run({"identity", data("families/g6pd/g6pd_templates.ali")});
    ASSERT_EQ(table.status, 0);
    ASSERT_EQ(table.lines().size(), 1 + 4 * 3 / 2);
    const QList<QByteArray> first = table.lines()[1].split('\t');
    EXPECT_EQ(first.mid(0, 3), (QList<QByteArray>{"g6pd_templates", "6e07B", "6e08L"}));
    EXPECT_EQ(first[5], "485");
    EXPECT_EQ(first[6], "486");
}

TEST_F(IdentityProgram, ABadFileIsNamed)
{
    const QString uneven = write("uneven.fasta", ">a\nACD\n>b\nACDEF\n");
    const QString bad = write("bad.ali", ">P1;a\n\nAC#D*\n");
    EXPECT_EQ(run({"identity", uneven}).errors,
              "tambo: uneven.fasta: the sequences are not aligned\n");
    EXPECT_EQ(run({"identity", data("structures/lysozyme_1aki.pdb")}).errors,
              "tambo: lysozyme_1aki.pdb: holds no alignment\n");
    const Finished unreadable = run({"identity", bad});
    EXPECT_EQ(unreadable.status, 1);
    EXPECT_EQ(unreadable.output, "");
    EXPECT_TRUE(unreadable.errors.startsWith("tambo: bad.ali:3: "));
    EXPECT_EQ(unreadable.errors.count('\n'), 1);
}

TEST_F(IdentityProgram, AWrongCallSaysWhy)
{
    for (const QStringList &arguments :
         {QStringList{"identity"}, QStringList{"identity", "a", "b"},
          QStringList{"identity", "--nonsense", "a"}, QStringList{"identity", ""}}) {
        const Finished call = run(arguments);
        EXPECT_EQ(call.status, 2) << arguments.join(u' ').toStdString();
        EXPECT_EQ(call.output, "");
        EXPECT_EQ(call.errors.count('\n'), 1) << call.errors.toStdString();
    }
    EXPECT_EQ(run({"identity", "--help"}).status, 0);
}

TEST_F(IdentityProgram, OutputThatCannotBeWrittenIsAnError)
{
    QProcess process;
    process.setStandardOutputFile("/dev/full");
    process.start(BUILD_DIR "/bin/tambo", {"identity", write("x.fasta", ">a\nACD\n>b\nACD\n")});
    ASSERT_TRUE(process.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(process.readAllStandardError(), "tambo: cannot write to the standard output\n");
}

} // namespace IdentityProgramTest
