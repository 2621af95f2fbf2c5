// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo convert` as scripts call it.
#include "ProgramFixture.h"

#include <QDir>

#include <filesystem>

namespace ConvertProgramTest {

class ConvertProgram : public ProgramFixture
{
protected:
    QString path(const char *name) const { return m_Folder.filePath(QString::fromLatin1(name)); }
};

TEST_F(ConvertProgram, TheEndingOfTheNewFileTellsItsFormat)
{
    const Finished convert =
        run({"convert", write("x.fasta", ">a\nAC-D\n>b\nACCD\n"), path("x.ali")});
    EXPECT_EQ(convert.status, 0);
    EXPECT_EQ(convert.output, "");
    EXPECT_EQ(convert.errors, "");
    EXPECT_EQ(read(path("x.ali")), ">P1;a\nsequence:a::::::::\nAC-D*\n\n"
                                   ">P1;b\nsequence:b::::::::\nACCD*\n\n");
}

TEST_F(ConvertProgram, TheCallMayNameTheFormat)
{
    const QString file = write("x.ali", ">P1;a\nsequence:a::::::::\nACD*\n");
    const Finished other = run({"convert", file, path("x.ali"), "--to", "fasta"});
    EXPECT_EQ(other.status, 0);
    EXPECT_EQ(other.errors, "x.ali: is a FASTA file, and ends like a PIR file\n");
    EXPECT_EQ(read(path("x.ali")), ">a\nACD\n");
    EXPECT_EQ(run({"convert", "--to", "a2m", "--", file, path("-x")}).status, 0);
    EXPECT_EQ(read(path("-x")), ">a\nACD\n");
}

TEST_F(ConvertProgram, ANameThatEndsInGzIsCompressed)
{
    const QString file = write("x.fasta", ">a\nACD\n");
    EXPECT_EQ(run({"convert", file, path("y.fasta.gz")}).status, 0);
    EXPECT_TRUE(read(path("y.fasta.gz")).startsWith("\x1f\x8b"));
    EXPECT_EQ(run({"convert", path("y.fasta.gz"), path("z.fasta")}).status, 0);
    EXPECT_EQ(read(path("z.fasta")), ">a\nACD\n");
}

TEST_F(ConvertProgram, TheStandardOutputIsAFileToo)
{
    const Finished convert =
        run({"convert", write("x.fasta", ">a\nACD\n"), "/dev/stdout", "--to", "a2m"});
    EXPECT_EQ(convert.status, 0) << convert.errors.toStdString();
    EXPECT_EQ(convert.output, ">a\nACD\n");
}

TEST_F(ConvertProgram, WhatIsLostIsSaidALineEach)
{
    const QString file = write("x.ali", ">P1;a\nstructureX:1abc:1:A:3:A::::\nA/CD*\n");
    const Finished convert = run({"convert", file, path("y.fasta")});
    EXPECT_EQ(convert.status, 0);
    EXPECT_EQ(convert.errorLines(),
              (QList<QByteArray>{
                  "y.fasta: 1 row is not tied to the structure any more when the file is opened.",
                  "y.fasta: The breaks between chains (\"/\") in 1 row are written as gaps."}));
}

TEST_F(ConvertProgram, AFileThatIsWrittenInPlaceIsSaid)
{
    const QString file = write("x.fasta", ">a\nACD\n");
    const QString target = write("y.fasta", "old");
    std::filesystem::create_hard_link(target.toStdString(), path("second").toStdString());
    const Finished convert = run({"convert", file, target});
    EXPECT_EQ(convert.status, 0);
    EXPECT_EQ(convert.errorLines(),
              QList<QByteArray>{"y.fasta: was written in place, because it has several links"});
    EXPECT_EQ(read(path("second")), ">a\nACD\n");
}

TEST_F(ConvertProgram, StructuresGoBetweenTheirFormats)
{
    const Finished convert =
        run({"convert", data("structures/ubiquitin_1ubi.pdb"), path("1ubi.cif")});
    EXPECT_EQ(convert.status, 0) << convert.errors.toStdString();
    EXPECT_TRUE(convert.errors.startsWith("1ubi.cif: There are no waters, "));
    EXPECT_EQ(run({"convert", path("1ubi.cif"), path("1ubi.pdb")}).status, 0);
    const Finished before = run({"info", data("structures/ubiquitin_1ubi.pdb")});
    const Finished after = run({"info", path("1ubi.pdb")});
    const auto chains = [](const QByteArray &json) { return json.mid(json.indexOf("\"chains\"")); };
    EXPECT_EQ(chains(after.output), chains(before.output));
}

TEST_F(ConvertProgram, AFileOfTheOtherKindIsRefused)
{
    const Finished structure =
        run({"convert", data("structures/ubiquitin_1ubi.pdb"), path("x.sto")});
    EXPECT_EQ(structure.status, 1);
    EXPECT_EQ(structure.errors, "tambo: ubiquitin_1ubi.pdb: holds no alignment, which is what a "
                                "Stockholm file is for\n");
    const Finished alignment = run({"convert", write("x.fasta", ">a\nACD\n"), path("x.pdb")});
    EXPECT_EQ(alignment.status, 1);
    EXPECT_EQ(alignment.errors,
              "tambo: x.fasta: holds no structure, which is what a PDB file is for\n");
    EXPECT_EQ(QDir(m_Folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList("x.fasta"));
}

TEST_F(ConvertProgram, WhatTheFormatCannotHoldIsRefused)
{
    const Finished convert =
        run({"convert", write("x.fasta", ">a\nACD\n>b\nACDEF\n"), path("x.a3m")});
    EXPECT_EQ(convert.status, 1);
    EXPECT_EQ(convert.errors, "tambo: x.a3m: The sequences are not aligned, and an A3M file holds "
                              "alignments only.\n");
}

TEST_F(ConvertProgram, ABadFileLeavesTheOldOneAlone)
{
    const QString old = write("old.fasta", "old");
    const Finished convert = run({"convert", write("bad.ali", ">P1;a\n\nAC#D*\n"), old});
    EXPECT_EQ(convert.status, 1);
    EXPECT_TRUE(convert.errors.startsWith("tambo: bad.ali:3: ")) << convert.errors.toStdString();
    EXPECT_EQ(convert.errors.count('\n'), 1);
    EXPECT_EQ(read(old), "old");
}

TEST_F(ConvertProgram, AFileThatCannotBeWrittenIsNamed)
{
    const QString file = write("x.fasta", ">a\nACD\n");
    const Finished convert = run({"convert", file, path("none/x.ali")});
    EXPECT_EQ(convert.status, 1);
    EXPECT_EQ(convert.errors, "tambo: x.ali: cannot be written: No such file or directory\n");
    const Finished full = run({"convert", file, "/dev/full", "--to", "pir"});
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.errors, "tambo: full: cannot be written: No space left on device\n");
}

TEST_F(ConvertProgram, AWrongCallSaysWhyAndWritesNothing)
{
    const QString file = write("x.fasta", ">a\nACD\n");
    for (const QStringList &arguments :
         {QStringList{"convert"}, QStringList{"convert", file},
          QStringList{"convert", file, "a.ali", "b.ali"}, QStringList{"convert", file, "x.unknown"},
          QStringList{"convert", file, "x"}, QStringList{"convert", file, "x.ali", "--to"},
          QStringList{"convert", file, "x.ali", "--to", "mega"},
          QStringList{"convert", file, "x.ali", "--nonsense"}, QStringList{"convert", file, ""}}) {
        const Finished call = run(arguments);
        EXPECT_EQ(call.status, 2) << arguments.join(u' ').toStdString();
        EXPECT_EQ(call.output, "");
        EXPECT_EQ(call.errors.count('\n'), 1) << call.errors.toStdString();
        EXPECT_TRUE(call.errors.startsWith("tambo: "));
    }
    EXPECT_TRUE(run({"convert", file, "x.unknown"})
                    .errors.startsWith("tambo: the name x.unknown does not tell the format; say "
                                       "--to and one of pir fasta a2m a3m clustal stockholm msf "
                                       "phylip "));
}

TEST_F(ConvertProgram, HelpNamesCommandAndFormats)
{
    const Finished help = run({"convert", "--help"});
    EXPECT_EQ(help.status, 0);
    for (const char *word : {"tambo convert IN OUT [--to FORMAT]", "tambo identity IN",
                             "phylip-relaxed-sequential", "mmcif"})
        EXPECT_TRUE(help.output.contains(word)) << word;
}

} // namespace ConvertProgramTest
