// SPDX-License-Identifier: GPL-3.0-or-later
// What the words of a call mean.
#include "CommandLine.h"

#include <gtest/gtest.h>

namespace CommandLineTest {

using TAMBO::app::CommandLine;
using TAMBO::app::parseCommandLine;
using Mode = CommandLine::Mode;
using Files = std::vector<std::string>;

TEST(CommandLine, NoWordsOpenAnEmptyWorkbench)
{
    const CommandLine line = parseCommandLine({}).value();
    EXPECT_EQ(line.mode, Mode::Workbench);
    EXPECT_TRUE(line.files.empty());
}

TEST(CommandLine, FilesAreOpenedInTheirOrder)
{
    const CommandLine line = parseCommandLine({"b.ali", "a.pdb"}).value();
    EXPECT_EQ(line.mode, Mode::Workbench);
    EXPECT_EQ(line.files, (Files{"b.ali", "a.pdb"}));
}

TEST(CommandLine, ANewWorkbenchIsOpenedOnlyWhenItIsAskedFor)
{
    EXPECT_FALSE(parseCommandLine({"a.ali"}).value().inNewWorkbench);
    const CommandLine line = parseCommandLine({"--new", "a.ali"}).value();
    EXPECT_TRUE(line.inNewWorkbench);
    EXPECT_EQ(line.files, Files{"a.ali"});
}

TEST(CommandLine, OptionsOfTheToolkitAskForANewWorkbenchSinceTheOtherLooksOtherwise)
{
    EXPECT_TRUE(parseCommandLine({"-style", "fusion", "a.ali"}).value().inNewWorkbench);
    EXPECT_TRUE(parseCommandLine({"-reverse", "a.ali"}).value().inNewWorkbench);
}

TEST(CommandLine, TheExampleNeedsNoFile)
{
    EXPECT_TRUE(parseCommandLine({"--example"}).value().withExample);
    EXPECT_TRUE(parseCommandLine({"--picture", "out.png", "--example"}).value().withExample);
    EXPECT_FALSE(parseCommandLine({"info", "--example"}));
    EXPECT_FALSE(parseCommandLine({"info", "a.ali", "--new"}));
}

TEST(CommandLine, InfoTakesTheFilesBehindIt)
{
    const CommandLine line = parseCommandLine({"info", "a.ali", "info"}).value();
    EXPECT_EQ(line.mode, Mode::Info);
    EXPECT_EQ(line.files, (Files{"a.ali", "info"}));
}

TEST(CommandLine, InfoBehindAFileIsAFile)
{
    const CommandLine line = parseCommandLine({"a.ali", "info"}).value();
    EXPECT_EQ(line.mode, Mode::Workbench);
    EXPECT_EQ(line.files, (Files{"a.ali", "info"}));
}

TEST(CommandLine, AfterTwoDashesEverythingIsAFile)
{
    const CommandLine line = parseCommandLine({"--", "info", "--help"}).value();
    EXPECT_EQ(line.mode, Mode::Workbench);
    EXPECT_EQ(line.files, (Files{"info", "--help"}));
}

TEST(CommandLine, InfoWithoutAFileIsWrong)
{
    const auto line = parseCommandLine({"info"});
    ASSERT_FALSE(line);
    EXPECT_EQ(line.error().message(), "info needs at least one file");
}

TEST(CommandLine, PictureNamesTheImageFirst)
{
    const CommandLine line = parseCommandLine({"--picture", "out.png", "a.ali"}).value();
    EXPECT_EQ(line.mode, Mode::Picture);
    EXPECT_EQ(line.picture, "out.png");
    EXPECT_EQ(line.files, Files{"a.ali"});
}

TEST(CommandLine, PictureWithoutANameIsWrong)
{
    const auto line = parseCommandLine({"--picture"});
    ASSERT_FALSE(line);
    EXPECT_EQ(line.error().message(), "--picture needs the name of the image to write");
}

TEST(CommandLine, PictureWithoutAFileIsWrong)
{
    const auto line = parseCommandLine({"--picture", "out.png"});
    ASSERT_FALSE(line);
    EXPECT_EQ(line.error().message(), "--picture needs at least one file");
}

TEST(CommandLine, InfoMakesNoPicture)
{
    EXPECT_FALSE(parseCommandLine({"info", "--picture", "out.png", "a.ali"}));
}

TEST(CommandLine, ToolsAreOpenedInTheirOrderWithFilesAndInPictures)
{
    const CommandLine line =
        parseCommandLine({"--tool", "Structure View", "a.ali", "--tool", "Other"}).value();
    EXPECT_EQ(line.mode, Mode::Workbench);
    EXPECT_EQ(line.tools, (std::vector<std::string>{"Structure View", "Other"}));
    EXPECT_EQ(line.files, Files{"a.ali"});
    const CommandLine picture =
        parseCommandLine({"--picture", "out.png", "--tool", "Other", "a.ali"}).value();
    EXPECT_EQ(picture.mode, Mode::Picture);
    EXPECT_EQ(picture.tools, std::vector<std::string>{"Other"});
}

TEST(CommandLine, ToolWithoutATitleIsWrong)
{
    for (const auto &words : {std::vector<std::string>{"--tool"}, {"a.ali", "--tool", ""}}) {
        const auto line = parseCommandLine(words);
        ASSERT_FALSE(line);
        EXPECT_EQ(line.error().message(),
                  "--tool needs the title of a tool, as the menu Tools has it");
    }
}

TEST(CommandLine, InfoOpensNoTool)
{
    const auto line = parseCommandLine({"info", "--tool", "Structure View", "a.ali"});
    ASSERT_FALSE(line);
    EXPECT_EQ(line.error().message(), "info opens no tool");
}

TEST(CommandLine, PrintHasOptionsOfItsOwn)
{
    const CommandLine line =
        parseCommandLine({"print", "a.ali", "--style", "bw", "--output", "o.ps"}).value();
    EXPECT_EQ(line.mode, Mode::Print);
    EXPECT_EQ(line.print.file, "a.ali");
    EXPECT_TRUE(line.files.empty());
}

TEST(CommandLine, PrintBehindAFileIsAFile)
{
    const CommandLine line = parseCommandLine({"a.ali", "print"}).value();
    EXPECT_EQ(line.mode, Mode::Workbench);
    EXPECT_EQ(line.files, (Files{"a.ali", "print"}));
}

TEST(CommandLine, AWrongPrintSaysWhatIsWrong)
{
    const auto line = parseCommandLine({"print", "a.ali", "--output", "o.ps"});
    ASSERT_FALSE(line);
    EXPECT_EQ(line.error().message(), "print needs --style fat, slim or bw");
}

TEST(CommandLine, HelpIsGivenForPrintToo)
{
    EXPECT_EQ(parseCommandLine({"print", "--help"}).value().mode, Mode::Help);
}

TEST(CommandLine, AnUnknownOptionIsNamed)
{
    const auto line = parseCommandLine({"--frobnicate", "a.ali"});
    ASSERT_FALSE(line);
    EXPECT_EQ(line.error().message(), "unknown option --frobnicate");
}

TEST(CommandLine, AnEmptyFileNameIsWrong)
{
    EXPECT_FALSE(parseCommandLine({""}));
}

TEST(CommandLine, OptionsOfTheToolkitArePassedOver)
{
    const CommandLine line =
        parseCommandLine({"-platform", "offscreen", "--style", "fusion", "-reverse", "a.ali"})
            .value();
    EXPECT_EQ(line.mode, Mode::Workbench);
    EXPECT_EQ(line.files, Files{"a.ali"});
}

TEST(CommandLine, HelpAndVersionNeedNothingElse)
{
    EXPECT_EQ(parseCommandLine({"--help"}).value().mode, Mode::Help);
    EXPECT_EQ(parseCommandLine({"-h"}).value().mode, Mode::Help);
    EXPECT_EQ(parseCommandLine({"--version"}).value().mode, Mode::Version);
}

} // namespace CommandLineTest
