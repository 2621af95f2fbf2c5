// SPDX-License-Identifier: GPL-3.0-or-later
// Sub-commands of plug-ins. The answers are the test's own; that the library is opened for it is
// seen by its state.
#include "PluginCommands.h"

#include "AppFixture.h"
#include "CommandLine.h"
#include "PluginAnswer.h"
#include "Plugins.h"
#include "ProgramCommand.h"
#include "Space.h"
#include "support/LogLines.h"

#include <QBuffer>
#include <QFile>

#include <stdexcept>

namespace PluginCommandsTest {

using namespace TAMBO;
using app::PluginCommands;
using app::Plugins;
using services::PluginState;

class PluginCommandsTest : public AppFixture
{
protected:
    PluginCommandsTest()
    {
        m_Output.open(QIODevice::WriteOnly);
        m_Errors.open(QIODevice::WriteOnly);
    }

    void install(const QString &name, const QByteArray &commands, const QByteArray &kit = "1.0")
    {
        EXPECT_TRUE(QFile::copy(QStringLiteral(PLUGIN_DIR "/NoWindowPlugin.so"),
                                m_Folder.filePath(name + ".so")));
        write(name + ".plugin", "[Plugin]\nKit = " + kit + "\nCommands = " + commands);
    }
    PluginCommands find()
    {
        m_Plugins.find();
        return PluginCommands(m_Plugins);
    }
    int run(PluginCommands &commands, const QString &word, const QStringList &arguments = {})
    {
        return commands.run(word, arguments, m_Output, m_Errors);
    }
    static PluginAnswer answer(const std::string &word, std::function<bool(ProgramCommand &)> what)
    {
        return PluginAnswer(ProgramCommand::kGroup, ProgramCommand::kService, word,
                            [what = std::move(what)](const PluginCall &call) {
                                return what(*static_cast<ProgramCommand *>(call.data));
                            });
    }
    PluginState state(const QString &name) { return m_Plugins.loader().find(name + ".so")->state; }

    Plugins m_Plugins{services::PluginFolders({{m_Folder.path(), true}})};
    QBuffer m_Output;
    QBuffer m_Errors;
    const LogLines m_Log;
};

TEST_F(PluginCommandsTest, TheOneThatOffersTheWordIsOpenedAndAnswers)
{
    install("a", "first");
    install("b", "second, third");
    PluginCommands commands = find();
    EXPECT_TRUE(commands.offers("third"));
    EXPECT_FALSE(commands.offers("fourth"));
    const PluginAnswer answers = answer("third", [](ProgramCommand &call) {
        call.output->write(call.arguments.join('|').toUtf8());
        call.errors->write("a remark\n");
        call.exitStatus = 7;
        return true;
    });
    EXPECT_EQ(run(commands, "third", {"--all", "x y"}), 7);
    EXPECT_EQ(m_Output.data(), "--all|x y");
    EXPECT_EQ(m_Errors.data(), "a remark\n");
    EXPECT_EQ(state("a"), PluginState::Found);
    EXPECT_EQ(state("b"), PluginState::Loaded);
    EXPECT_EQ(m_Log.count(), 0);
}

TEST_F(PluginCommandsTest, FilesAreOpenedForIt)
{
    install("a", "first");
    PluginCommands commands = find();
    const QString file = write("x.fasta", ">one\nAC-D\n>two\nACCD\n");
    std::vector<bool> opened;
    const PluginAnswer answers = answer("first", [&](ProgramCommand &call) {
        for (const QString &argument : call.arguments)
            opened.push_back(call.openFile(argument));
        return true;
    });
    EXPECT_EQ(run(commands, "first", {file, m_Folder.filePath("none.ali")}), 0);
    EXPECT_EQ(opened, (std::vector<bool>{true, false}));
    EXPECT_FALSE(topLevelNames().empty());
    EXPECT_TRUE(m_Errors.data().startsWith("tambo: ")) << m_Errors.data().toStdString();
    EXPECT_TRUE(m_Errors.data().contains("none.ali")) << m_Errors.data().toStdString();
    EXPECT_EQ(m_Errors.data().count('\n'), 1);
}

TEST_F(PluginCommandsTest, AFailureIsToldWithStatusOne)
{
    install("a", "first, second");
    PluginCommands commands = find();
    const PluginAnswer failing = answer("first", [](ProgramCommand &) { return false; });
    const PluginAnswer throwing =
        answer("second", [](ProgramCommand &) -> bool { throw std::runtime_error("no disk"); });
    EXPECT_EQ(run(commands, "first"), 1);
    EXPECT_EQ(run(commands, "second"), 1);
    EXPECT_EQ(m_Errors.data(), "tambo: first failed\ntambo: second failed\n");
    EXPECT_EQ(m_Log.texts(),
              QStringList("Program/Command/second failed: no disk (asked by tambo)"));
}

TEST_F(PluginCommandsTest, AnOfferThatNobodyAnswersIsTold)
{
    install("a", "first");
    PluginCommands commands = find();
    EXPECT_EQ(run(commands, "first"), 1);
    EXPECT_EQ(m_Errors.data(),
              "tambo: a.so does not answer the command first, which its descriptor promises\n");
}

TEST_F(PluginCommandsTest, WhyThePluginCannotBeUsedIsTold)
{
    install("a", "first", "9.0");
    PluginCommands commands = find();
    EXPECT_TRUE(commands.offers("first"));
    EXPECT_EQ(run(commands, "first"), 1);
    EXPECT_EQ(m_Errors.data(), "tambo: first cannot be used: " +
                                   m_Plugins.loader().records().front().reason.toUtf8() + "\n");
}

TEST_F(PluginCommandsTest, AWordOfTheProgramOrOfAnEarlierPluginIsNotTakenOver)
{
    install("a", "first, print");
    install("b", "first");
    const PluginCommands commands = find();
    EXPECT_TRUE(commands.offers("first"));
    EXPECT_FALSE(commands.offers("print"));
    EXPECT_EQ(
        m_Log.texts(),
        (QStringList{"The command print of a.so is not used, since the program itself has one "
                     "of this name",
                     "The command first of b.so is not used, since a.so has one of this "
                     "name"}));
}

TEST_F(PluginCommandsTest, APluginWhoseNameIsTakenOffersNothing)
{
    install("a", "first");
    const QTemporaryDir other;
    EXPECT_TRUE(QFile::copy(m_Folder.filePath("a.so"), other.filePath("a.so")));
    Plugins plugins{services::PluginFolders({{other.path(), true}, {m_Folder.path(), true}})};
    plugins.find();
    EXPECT_FALSE(PluginCommands(plugins).offers("first"));
    EXPECT_EQ(m_Log.count(), 1) << "the library is told, its commands are not";
}

TEST_F(PluginCommandsTest, TheUsageHasALineForEach)
{
    EXPECT_EQ(find().usageText(), "");
    install("a", "short, a-command-with-a-long-name, plain\n[Commands]\nshort = Says little\n"
                 "a-command-with-a-long-name = Says more\n");
    EXPECT_EQ(find().usageText(), "\nPlug-ins add these:\n"
                                  "       tambo short                   Says little\n"
                                  "       tambo a-command-with-a-long-name\n"
                                  "                                     Says more\n"
                                  "       tambo plain                   of a\n");
}

TEST(PluginWords, AreToldFromFilesAndFromCommandsOfTheProgram)
{
    using app::mayBePluginCommand;
    EXPECT_TRUE(mayBePluginCommand({"statistics", "x.ali"}));
    EXPECT_TRUE(mayBePluginCommand({"make-picture_2"}));
    EXPECT_FALSE(mayBePluginCommand({}));
    for (const char *word :
         {"info", "print", "convert", "identity", "script", "x.ali", "./x", "-h", "", "2"})
        EXPECT_FALSE(mayBePluginCommand({word})) << word;
}

} // namespace PluginCommandsTest
