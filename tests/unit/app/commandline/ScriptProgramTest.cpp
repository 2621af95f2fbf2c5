// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo script`, and that no other call runs a script.
#include "ProgramFixture.h"

#include <csignal>

namespace ScriptProgramTest {

using ScriptProgram = ProgramFixture;

TEST_F(ScriptProgram, AScriptRunsWithThePackageAndItsArguments)
{
    const QString file =
        write("x.py", "import sys, tambo\n"
                      "print(sys.argv[1:], tambo.open(sys.argv[1]).alignment.shape)\n");
    const QString fasta = write("x.fasta", ">a\nACD\n>b\nAED\n");
    const Finished call = run({"script", file, fasta, "--help", "--", "-x", "ü"});
    EXPECT_EQ(call.status, 0) << call.errors.toStdString();
    EXPECT_EQ(call.output, "['" + fasta.toUtf8() + "', '--help', '--', '-x', 'ü'] (2, 3)\n");
    EXPECT_EQ(call.errors, "");
}

TEST_F(ScriptProgram, TheExitStatusIsThatOfTheScript)
{
    EXPECT_EQ(run({"script", write("x.py", "import sys; sys.exit(7)")}).status, 7);
    const Finished failed = run({"script", write("y.py", "1 / 0")});
    EXPECT_EQ(failed.status, 1);
    EXPECT_TRUE(failed.errors.contains("ZeroDivisionError")) << failed.errors.toStdString();
}

TEST_F(ScriptProgram, InterruptingEndsTheScriptAsPythonDoes)
{
    QProcess process;
    process.start(BUILD_DIR "/bin/tambo",
                  {"script", write("x.py", "print('runs', flush=True)\nwhile True: pass\n")});
    ASSERT_TRUE(process.waitForReadyRead(kPatienceMilliseconds));
    ASSERT_EQ(::kill(pid_t(process.processId()), SIGINT), 0);
    ASSERT_TRUE(process.waitForFinished(kPatienceMilliseconds));
    EXPECT_TRUE(process.readAllStandardError().contains("KeyboardInterrupt"));
}

TEST_F(ScriptProgram, ModulesOfTheUserComeWithIt)
{
    QDir(m_Folder.path()).mkpath("modules");
    write("modules/mine.py", "value = 5");
    m_Environment.insert("PYTHONPATH", m_Folder.filePath("modules"));
    EXPECT_EQ(run({"script", write("x.py", "import mine, tambo; print(mine.value)")}).output,
              "5\n");
}

TEST_F(ScriptProgram, AWrongCallIsTold)
{
    EXPECT_EQ(run({"script"}).errors, "tambo: script needs a file; see tambo --help\n");
    EXPECT_EQ(run({"script", "-c", "1"}).errors,
              "tambo: script knows no option -c; see tambo --help\n");
    const Finished missing = run({"script", "/none.py"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.errors, "tambo: /none.py: No such file or directory\n");
    for (const QStringList &words : {QStringList{"script", "--help"}, QStringList{"--help"}}) {
        const Finished help = run(words);
        EXPECT_EQ(help.status, 0);
        EXPECT_TRUE(help.output.contains("tambo script FILE [ARGUMENT...]"));
    }
}

TEST_F(ScriptProgram, WithoutThePackageItIsNamed)
{
    const Finished call = runAlone({"script", write("x.py", "print(1)")});
    EXPECT_EQ(call.status, 2);
    EXPECT_EQ(call.output, "");
    EXPECT_EQ(call.errors, "tambo: scripts need the package python3-tambo\n");
}

// Each kind of file, with what Python would run in all the places that hold text.
TEST_F(ScriptProgram, WhatStandsInFilesIsNeverRun)
{
    const QString ran = m_Folder.filePath("ran");
    const QByteArray code = "__import__('os').mkdir('" + ran.toUtf8() + "')";
    m_Environment.insert("LD_DEBUG", "libs");
    m_Environment.insert("LD_DEBUG_OUTPUT", m_Folder.filePath("linker"));
    m_Environment.insert("QT_QPA_PLATFORM", "offscreen");
    m_Environment.insert("TAMBO_EXIT_WHEN_PAINTED", "1");
    const QString session = m_Folder.filePath("x.tambo");
    ASSERT_EQ(run({"script",
                   write("make.py", "import sys, tambo\n"
                                    "tambo.new_alignment(sys.argv[1], [(sys.argv[1], 'ACD')])\n"
                                    "with tambo.step(sys.argv[1]):\n"
                                    "    tambo.alignments()[0].insert_gaps(0, 0)\n"
                                    "tambo.save_session(sys.argv[2])\n"),
                   QString::fromUtf8(code), session})
                  .status,
              0);
    const QByteArray name = QByteArray(code).replace(' ', '_');
    const QString here = m_Folder.path();
    for (const char *module : {"sitecustomize.py", "usercustomize.py", "tambo.py", "x.py"})
        write(module, code);
    const QStringList files = {
        session,
        write("x.fasta", ">" + code + "\nACD\n>b " + code + "\nAED\n"),
        write("x.ali", ">P1;" + name + "\nsequence:" + code + ":::::::0.00:0.00\nACD*\n"),
        write("x.aln", "CLUSTAL W " + code + "\n\n" + name + " ACD\n"),
        write("x.sto", "# STOCKHOLM 1.0\n#=GF CC " + code + "\n" + name + " ACD\n//\n"),
        write("x.pdb", "TITLE     " + code.left(60) + "\nREMARK   1 " + code.left(60) +
                           "\nATOM      1  CA  ALA A   1      11.104   6.134  -6.504  1.00  0.00"
                           "           C\nEND\n"),
        write("x.nex", "#NEXUS\n[" + code +
                           "]\nBEGIN DATA;\nDIMENSIONS NTAX=1 NCHAR=3;\nFORMAT "
                           "DATATYPE=PROTEIN;\nMATRIX\na ACD\n;\nEND;\n")};
    for (const QString &linker : QDir(here).entryList({"linker.*"}, QDir::Files))
        QFile::remove(here + "/" + linker);
    for (const QString &file : files) {
        EXPECT_EQ(run({"--new", file}).status, 0) << file.toStdString();
        EXPECT_EQ(run({"info", file}).status, 0) << file.toStdString();
    }
    EXPECT_FALSE(QFile::exists(ran));
    const QStringList linkers = QDir(here).entryList({"linker.*"}, QDir::Files);
    EXPECT_GE(linkers.size(), 2 * files.size());
    for (const QString &linker : linkers) {
        const QByteArray opened = read(here + "/" + linker);
        EXPECT_FALSE(opened.contains("tambo-scripting"));
        EXPECT_FALSE(opened.contains("libpython"));
    }
}

} // namespace ScriptProgramTest
