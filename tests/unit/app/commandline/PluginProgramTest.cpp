// SPDX-License-Identifier: GPL-3.0-or-later
// Sub-commands of plug-ins, as scripts call them.
#include "ProgramFixture.h"

namespace PluginProgramTest {

class PluginProgram : public ProgramFixture
{
protected:
    PluginProgram()
    {
        EXPECT_TRUE(QDir(m_Folder.path()).mkpath("data/plugins"));
        EXPECT_TRUE(QFile::copy(COMMAND_PLUGIN, m_Folder.filePath("data/plugins/letters.so")));
        write("data/plugins/letters.plugin",
              "[Plugin]\nKit = 1.0\nCommands = letters\n[Commands]\nletters = Counts letters\n");
    }
};

TEST_F(PluginProgram, ACommandGetsItsArgumentsAndGivesTheExitStatus)
{
    const QString file = write("x.fasta", ">one\nACD\n>two\nA-D\n");
    const Finished call = run({"letters", file, "--frobnicate"});
    EXPECT_EQ(call.output, "5 letters, --frobnicate\n");
    EXPECT_EQ(call.errors, "");
    EXPECT_EQ(call.status, 0);
    const Finished wrong = run({"letters"});
    EXPECT_EQ(wrong.output, "");
    EXPECT_EQ(wrong.errors, "letters needs a file\n");
    EXPECT_EQ(wrong.status, 2);
}

TEST_F(PluginProgram, TheHelpListsIt)
{
    const Finished call = run({"--help"});
    EXPECT_EQ(call.status, 0);
    EXPECT_TRUE(call.lines().contains("       tambo letters                 Counts letters"))
        << call.output.toStdString();
}

TEST_F(PluginProgram, AWordThatIsNeitherCommandNorFileIsAWrongCall)
{
    const Finished call = run({"nonsense", "x.ali"});
    EXPECT_EQ(call.status, 2);
    EXPECT_EQ(call.output, "");
    EXPECT_EQ(call.errors, "tambo: there is no file nonsense, and no plug-in has a command of this "
                           "name; see tambo --help\n");
}

TEST_F(PluginProgram, AFileOfThatNameIsOpened)
{
    const QString before = QDir::currentPath();
    write("nonsense", ">one\nACD\n>two\nA-D\n");
    QDir::setCurrent(m_Folder.path());
    qputenv("TAMBO_EXIT_WHEN_PAINTED", "1");
    const Finished call = run({"nonsense", "-platform", "offscreen"});
    qunsetenv("TAMBO_EXIT_WHEN_PAINTED");
    QDir::setCurrent(before);
    EXPECT_EQ(call.status, 0);
    EXPECT_FALSE(call.errors.contains("tambo: ")) << call.errors.toStdString();
}

} // namespace PluginProgramTest
