// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo models` as scripts call it, with a program in the place of the adapter.
#include "ProgramFixture.h"

#include <QRegularExpression>

#include <gmock/gmock.h>

#include <csignal>
#include <unistd.h>

namespace ModelsProgramTest {

using testing::HasSubstr;

constexpr const char *kAdapter = "#!/bin/sh\n"
                                 "echo \"building $3\" >&2\n"
                                 "cat \"$4\" \"$5\" > \"$3\"\n";

class ModelsProgram : public ProgramFixture
{
protected:
    ModelsProgram()
    {
        // The copy of the program has nothing beside it but this.
        QDir(m_Folder.path()).mkpath("bin");
        install("kestram", kAdapter);
        install("promod", "#!/bin/sh\n");
        m_Environment.insert("PATH", path("bin") + ":/usr/bin:/bin");
        write("1tst.pdb", pdb("ACDEFGHIKL"));
        write("2tst.pdb", pdb("WWDEFGHIKM"));
        write("globins.ali", ">P1;one\nstructureX:1tst.pdb:1:A:10:A::::\nACDEFGHIKL*\n"
                             ">P1;two\nstructureX:2tst.pdb:1:A:10:A::::\nWWDEFGHIKM*\n"
                             ">P1;a\nsequence:a::::::::\nACDEF-HIKM*\n"
                             ">P1;b,1/2\nsequence:b::::::::\nWWDEF-HIKM*\n");
    }

    [[nodiscard]] QString path(const QString &name) const { return m_Folder.filePath(name); }
    void install(const QString &name, const QByteArray &script)
    {
        write("bin/" + name, script);
        QFile::setPermissions(path("bin/" + name),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    static QByteArray pdb(const std::string &letters)
    {
        static const std::map<char, const char *> types = {
            {'A', "ALA"}, {'C', "CYS"}, {'D', "ASP"}, {'E', "GLU"}, {'F', "PHE"}, {'G', "GLY"},
            {'H', "HIS"}, {'I', "ILE"}, {'K', "LYS"}, {'L', "LEU"}, {'M', "MET"}, {'W', "TRP"}};
        QByteArray text;
        int serial = 0;
        for (std::size_t i = 0; i < letters.size(); ++i) {
            double shift = 0;
            for (const char *atom : {"N", "CA", "C"}) {
                text += QString::asprintf("ATOM  %5d  %-3s %3s A%4d    %8.3f%8.3f%8.3f\n", ++serial,
                                          atom, types.at(letters[i]), int(i) + 1,
                                          double(i) * 3.8 + shift, 1.0, -2.5)
                            .toLatin1();
                shift += 1.2;
            }
        }
        return text;
    }
    Finished models(const QStringList &words) { return runAlone(QStringList{"models"} + words); }
    Finished family(const QStringList &words = {})
    {
        return models(QStringList{path("globins.ali"), "--out", path("out")} + words);
    }
    // Without the seconds.
    static std::string said(const Finished &run)
    {
        static const QRegularExpression seconds(", [0-9.]+ s\n");
        return QString::fromUtf8(run.output).replace(seconds, "\n").toStdString();
    }
    [[nodiscard]] std::string table() const { return path("out/results.tsv").toStdString(); }
    [[nodiscard]] bool isThere(const QString &name) const { return QFile::exists(path(name)); }
};

TEST_F(ModelsProgram, EachTargetIsToldWithItsTemplateAndItsEndAndTheTableIsThere)
{
    const Finished run = family({"--pool", "--jobs", "1"});
    EXPECT_EQ(run.status, 0) << run.errors.toStdString();
    EXPECT_EQ(said(run), "a on one, 88.9 % identical\nb,1/2 on two, 100.0 % identical\n"
                         "[1/2] a on one: ok\n[2/2] b,1/2 on two: ok\n" +
                             table() + ": 2 ok\n");
    EXPECT_EQ(run.errors, "tambo: \"b,1/2\" has the files b_1_2\n");
    EXPECT_EQ(read(path("out/models/a.pdb")),
              read(path("out/inputs/a.ali")) + read(path("out/templates/one.pdb")));
    EXPECT_EQ(read(path("out/runs/b_1_2.log")), "building models/b_1_2.pdb\n");
    EXPECT_THAT(read(path("out/results.tsv")).toStdString(),
                HasSubstr("a\tone\tok\t9\tNA\t88.9\tNA\t"));
    for (const char *name : {"Snakefile", "array.sbatch", "slurm/config.yaml", "config.json"})
        EXPECT_TRUE(isThere(QString("out/") + name)) << name;
}

TEST_F(ModelsProgram, AgainBuildsOnlyWhatIsMissing)
{
    ASSERT_EQ(family({"--pool"}).status, 0);
    QFile::remove(path("out/models/a.pdb"));
    const Finished again = family({"--pool", "--template", "best"});
    EXPECT_EQ(again.status, 0);
    EXPECT_THAT(said(again), HasSubstr("[1/1] a on one: ok\n"));
    EXPECT_EQ(again.errors, "");
    const Finished nothing = models({"--continue", path("out")});
    EXPECT_EQ(nothing.status, 0);
    EXPECT_EQ(nothing.output, path("out/results.tsv").toUtf8() + ": 2 ok\n");
}

TEST_F(ModelsProgram, TargetsAndATemplateMayBeNamed)
{
    const Finished run = family({"--pool", "--targets", "b,1/2", "--template", "one"});
    EXPECT_EQ(run.status, 0) << run.errors.toStdString();
    EXPECT_EQ(said(run), "[1/1] b,1/2 on one: ok\n" + table() + ": 1 ok\n");
    const Finished two = family({"--pool", "--targets", "a,two", "--template", "one"});
    EXPECT_EQ(two.status, 0) << two.errors.toStdString();
    EXPECT_TRUE(isThere("out/models/two.pdb"));
}

TEST_F(ModelsProgram, ChangedRowsAreToldAndBuiltAnew)
{
    ASSERT_EQ(family({"--pool"}).status, 0);
    write("globins.ali", read(path("globins.ali")).replace("ACDEF-HIKM", "ACDE-FHIKM"));
    const Finished run = family({"--pool", "--template", "one", "--targets", "a"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "tambo: \"a\" has changed, or its template; its model is gone\n");
    EXPECT_THAT(said(run), HasSubstr("[1/1] a on one: ok\n"));
}

TEST_F(ModelsProgram, AFolderIsPreparedHereAndGoneOnWithElsewhere)
{
    // Another computer has the engine.
    QFile::remove(path("bin/promod"));
    m_Environment.insert("PATH", path("bin"));
    const Finished prepared = family({"--prepare"});
    EXPECT_EQ(prepared.status, 0) << prepared.errors.toStdString();
    EXPECT_THAT(prepared.output.toStdString(), HasSubstr("2 targets prepared"));
    EXPECT_FALSE(isThere("out/models/a.pdb"));
    EXPECT_THAT(read(path("out/results.tsv")).toStdString(), HasSubstr("a\tone\tnot run\t"));
    QDir(m_Folder.path()).rename("out", "moved");
    install("promod", "#!/bin/sh\n");
    m_Environment.insert("PATH", path("bin") + ":/usr/bin:/bin");
    const Finished built = models({"--continue", path("moved"), "--pool"});
    EXPECT_EQ(built.status, 0) << built.errors.toStdString();
    EXPECT_TRUE(isThere("moved/models/b_1_2.pdb"));
}

TEST_F(ModelsProgram, OneThatFailsMakesTheStatusAndIsInTheTable)
{
    install("kestram", "#!/bin/sh\ncase $3 in */a.pdb) echo 'no way' >&2; exit 4;; esac\n"
                       "cat \"$4\" > \"$3\"\n");
    const Finished run = family({"--pool", "--jobs", "1"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(said(run), HasSubstr("[1/2] a on one: failed, no way\n"));
    EXPECT_THAT(said(run), HasSubstr("results.tsv: 1 ok, 1 failed\n"));
    QFile::remove(path("out/results.tsv"));
    EXPECT_EQ(models({"--table", path("out")}).status, 0);
    EXPECT_THAT(read(path("out/results.tsv")).toStdString(), HasSubstr("a\tone\tfailed\t"));
}

TEST_F(ModelsProgram, WhatIsMissingIsSaidBeforeAnythingIsWritten)
{
    QFile::remove(path("bin/promod"));
    m_Environment.insert("PATH", path("bin"));
    Finished run = family();
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors.toStdString(), HasSubstr("install the package promod3"));
    EXPECT_EQ(run.errors.count('\n'), 1);
    QFile::remove(path("bin/kestram"));
    run = family({"--prepare"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.errors.toStdString(), HasSubstr("the program \"kestram\""));
    EXPECT_FALSE(isThere("out"));
}

TEST_F(ModelsProgram, BadInputIsOneMessageAndLeavesNothing)
{
    struct Case
    {
        QStringList words;
        const char *said;
    };
    write("text.txt", "nothing of use\n");
    write("plain.fasta", ">x\nAC-D\n>y\nACCD\n");
    write("two.sto",
          "# STOCKHOLM 1.0\n#=GF ID p\nx AC\ny AD\n//\n# STOCKHOLM 1.0\n#=GF ID q\nx AC\n//\n");
    const QString ali = path("globins.ali");
    for (const Case &bad : std::vector<Case>{
             {{path("none.ali")}, "none.ali: cannot be opened"},
             {{path("text.txt")}, "text.txt"},
             {{path("1tst.pdb")}, "holds no alignment"},
             {{path("plain.fasta")}, "has a structure that could be a template"},
             {{path("two.sto")}, "say which one with --object NAME"},
             {{path("two.sto"), "--object", "r"}, "holds no alignment called r"},
             {{ali, path("none.pdb")}, "none.pdb"},
             {{ali, "--template", "one", "--targets", "one"}, "is the template itself"},
             {{ali, "--template", "three"}, "no row called \"three\""},
             {{ali, "--targets", "a,c"}, "no row called \"c\""},
             {{ali, "--template", "a"}, "has no structure"}}) {
        const Finished run = models(bad.words + QStringList{"--out", path("out"), "--pool"});
        EXPECT_EQ(run.status, 1) << bad.said;
        EXPECT_THAT(run.errors.toStdString(), HasSubstr(bad.said));
        EXPECT_EQ(run.errors.count('\n'), 1) << run.errors.toStdString();
        EXPECT_FALSE(isThere("out")) << bad.said;
    }
    EXPECT_EQ(models({ali}).status, 2);
    EXPECT_EQ(models({"--continue", path("out")}).status, 1);
    const Finished help = models({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.output.toStdString(), HasSubstr("tambo models FAMILY"));
}

TEST_F(ModelsProgram, StructuresMayStandElsewhereAndBeGiven)
{
    QDir(m_Folder.path()).mkpath("far");
    for (const char *name : {"1tst.pdb", "2tst.pdb"})
        QFile::rename(path(name), path(QString("far/") + name));
    EXPECT_EQ(family({"--pool"}).status, 1);
    const Finished run = family({path("far/1tst.pdb"), path("far/2tst.pdb"), "--pool"});
    EXPECT_EQ(run.status, 0) << run.errors.toStdString();
    EXPECT_TRUE(isThere("out/models/a.pdb"));
}

TEST_F(ModelsProgram, AStopSaysHowToGoOnAndTheStatusTellsTheSignal)
{
    install("kestram", "#!/bin/sh\ncase $3 in */b*) kill -s INT $PPID; exec sleep 1000000;; esac\n"
                       "cat \"$4\" > \"$3\"\n");
    const Finished run = family({"--pool", "--jobs", "1"});
    EXPECT_EQ(run.status, 128 + SIGINT);
    EXPECT_THAT(run.errors.toStdString(),
                HasSubstr("stopped; tambo models --continue " + path("out").toStdString()));
    EXPECT_THAT(read(path("out/results.tsv")).toStdString(), HasSubstr("a\tone\tok\t"));
    EXPECT_THAT(read(path("out/results.tsv")).toStdString(), HasSubstr("b,1/2\ttwo\tkilled\t"));
    install("kestram", kAdapter);
    EXPECT_EQ(models({"--continue", path("out"), "--pool"}).status, 0);
    EXPECT_TRUE(isThere("out/models/b_1_2.pdb"));
}

TEST_F(ModelsProgram, TwoRunsInOneFolderAreRefusedAndAKilledOneIsFollowedByTheNext)
{
    // Says that it is there, and who has started it.
    install("kestram", "#!/bin/sh\necho $PPID > who.part; mv who.part who; exec sleep 1000000\n");
    ASSERT_EQ(family({"--prepare"}).status, 0);
    QProcess first;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH", path("bin") + ":/usr/bin:/bin");
    environment.insert("TAMBO_USER_DIR", m_Folder.path());
    first.setProcessEnvironment(environment);
    first.start(path("bin/tambo"), {"models", "--continue", path("out"), "--pool"});
    ASSERT_TRUE(waitUntil([this] { return isThere("out/who"); }));
    const Finished second = models({"--continue", path("out"), "--pool"});
    EXPECT_EQ(second.status, 1);
    EXPECT_THAT(second.errors.toStdString(), HasSubstr("another run is at work in this folder"));
    EXPECT_THAT(family({"--pool"}).errors.toStdString(), HasSubstr("another run is at work"));
    ::kill(pid_t(first.processId()), SIGKILL);
    ASSERT_TRUE(first.waitForFinished(kPatienceMilliseconds));
    // What it had started ends with it, and the folder is free.
    install("kestram", kAdapter);
    Finished next;
    ASSERT_TRUE(waitUntil([&] {
        next = models({"--continue", path("out"), "--pool"});
        return next.status == 0;
    }));
    EXPECT_THAT(next.output.toStdString(), HasSubstr("[2/2]"));
}

} // namespace ModelsProgramTest
