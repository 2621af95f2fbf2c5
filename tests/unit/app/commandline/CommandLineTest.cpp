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
    const CommandLine line = parseCommandLine({});
    EXPECT_EQ(line.mode, Mode::Workbench);
    EXPECT_TRUE(line.files.empty());
}

TEST(CommandLine, FilesAreOpenedInTheirOrder)
{
    const CommandLine line = parseCommandLine({"b.ali", "a.pdb"});
    EXPECT_EQ(line.mode, Mode::Workbench);
    EXPECT_EQ(line.files, (Files{"b.ali", "a.pdb"}));
}

TEST(CommandLine, InfoTakesTheFilesBehindIt)
{
    const CommandLine line = parseCommandLine({"info", "a.ali", "info"});
    EXPECT_EQ(line.mode, Mode::Info);
    EXPECT_EQ(line.files, (Files{"a.ali", "info"}));
}

TEST(CommandLine, InfoBehindAFileIsAFile)
{
    const CommandLine line = parseCommandLine({"a.ali", "info"});
    EXPECT_EQ(line.mode, Mode::Workbench);
    EXPECT_EQ(line.files, (Files{"a.ali", "info"}));
}

TEST(CommandLine, AfterTwoDashesEverythingIsAFile)
{
    const CommandLine line = parseCommandLine({"--", "info", "--help"});
    EXPECT_EQ(line.mode, Mode::Workbench);
    EXPECT_EQ(line.files, (Files{"info", "--help"}));
}

TEST(CommandLine, InfoWithoutAFileIsWrong)
{
    const CommandLine line = parseCommandLine({"info"});
    EXPECT_EQ(line.mode, Mode::Wrong);
    EXPECT_EQ(line.error, "info needs at least one file");
}

TEST(CommandLine, PictureNamesTheImageFirst)
{
    const CommandLine line = parseCommandLine({"--picture", "out.png", "a.ali"});
    EXPECT_EQ(line.mode, Mode::Picture);
    EXPECT_EQ(line.picture, "out.png");
    EXPECT_EQ(line.files, Files{"a.ali"});
}

TEST(CommandLine, PictureWithoutANameIsWrong)
{
    const CommandLine line = parseCommandLine({"--picture"});
    EXPECT_EQ(line.mode, Mode::Wrong);
    EXPECT_EQ(line.error, "--picture needs the name of the image to write");
}

TEST(CommandLine, PictureWithoutAFileIsWrong)
{
    const CommandLine line = parseCommandLine({"--picture", "out.png"});
    EXPECT_EQ(line.mode, Mode::Wrong);
    EXPECT_EQ(line.error, "--picture needs at least one file");
}

TEST(CommandLine, InfoMakesNoPicture)
{
    EXPECT_EQ(parseCommandLine({"info", "--picture", "out.png", "a.ali"}).mode, Mode::Wrong);
}

TEST(CommandLine, PrintHasOptionsOfItsOwn)
{
    const CommandLine line =
        parseCommandLine({"print", "a.ali", "--style", "bw", "--output", "o.ps"});
    EXPECT_EQ(line.mode, Mode::Print);
    EXPECT_EQ(line.print.file, "a.ali");
    EXPECT_TRUE(line.files.empty());
}

TEST(CommandLine, PrintBehindAFileIsAFile)
{
    const CommandLine line = parseCommandLine({"a.ali", "print"});
    EXPECT_EQ(line.mode, Mode::Workbench);
    EXPECT_EQ(line.files, (Files{"a.ali", "print"}));
}

TEST(CommandLine, AWrongPrintSaysWhatIsWrong)
{
    const CommandLine line = parseCommandLine({"print", "a.ali", "--output", "o.ps"});
    EXPECT_EQ(line.mode, Mode::Wrong);
    EXPECT_EQ(line.error, "print needs --style fat, slim or bw");
}

TEST(CommandLine, HelpIsGivenForPrintToo)
{
    EXPECT_EQ(parseCommandLine({"print", "--help"}).mode, Mode::Help);
}

TEST(CommandLine, AnUnknownOptionIsNamed)
{
    const CommandLine line = parseCommandLine({"--frobnicate", "a.ali"});
    EXPECT_EQ(line.mode, Mode::Wrong);
    EXPECT_EQ(line.error, "unknown option --frobnicate");
}

TEST(CommandLine, AnEmptyFileNameIsWrong)
{
    EXPECT_EQ(parseCommandLine({""}).mode, Mode::Wrong);
}

TEST(CommandLine, OptionsOfTheToolkitArePassedOver)
{
    const CommandLine line =
        parseCommandLine({"-platform", "offscreen", "--style", "fusion", "-reverse", "a.ali"});
    EXPECT_EQ(line.mode, Mode::Workbench);
    EXPECT_EQ(line.files, Files{"a.ali"});
}

TEST(CommandLine, HelpAndVersionNeedNothingElse)
{
    EXPECT_EQ(parseCommandLine({"--help"}).mode, Mode::Help);
    EXPECT_EQ(parseCommandLine({"-h"}).mode, Mode::Help);
    EXPECT_EQ(parseCommandLine({"--version"}).mode, Mode::Version);
}

} // namespace CommandLineTest
