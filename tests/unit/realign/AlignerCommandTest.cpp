// SPDX-License-Identifier: GPL-3.0-or-later
// Command lines of aligners.
#include "AlignerCommand.h"

#include "IniFile.h"

#include <QFile>

#include <gtest/gtest.h>

namespace AlignerCommandTest {

using TAMBO::realign::parseAlignerCommand;

TEST(AlignerCommand, FilesTakeTheirPlaces)
{
    const auto command = parseAlignerCommand("kalign -i {input} --out={output}");
    ASSERT_TRUE(command);
    EXPECT_EQ(command.value().program, "kalign");
    EXPECT_FALSE(command.value().printsAnswer);
    EXPECT_EQ(command.value().argumentsFor("a.fa", "b.fa"),
              (QStringList{"-i", "a.fa", "--out=b.fa"}));
}

TEST(AlignerCommand, WithoutAnOutputFileTheProgramPrints)
{
    const auto command = parseAlignerCommand("mafft --auto {input}");
    ASSERT_TRUE(command);
    EXPECT_TRUE(command.value().printsAnswer);
}

TEST(AlignerCommand, QuotesHoldAWordTogether)
{
    const auto command = parseAlignerCommand("\"/my programs/align\" {input}");
    ASSERT_TRUE(command);
    EXPECT_EQ(command.value().program, "/my programs/align");
}

TEST(AlignerCommand, AnEmptyOneIsRefused)
{
    const auto command = parseAlignerCommand("  ");
    ASSERT_FALSE(command);
    EXPECT_EQ(command.error().message(), "the command of the aligner is empty");
}

TEST(AlignerCommand, OneWithoutInputIsRefused)
{
    const auto command = parseAlignerCommand("mafft --auto");
    ASSERT_FALSE(command);
    EXPECT_EQ(command.error().message(),
              "the command of the aligner, \"mafft --auto\", has no {input}");
}

} // namespace AlignerCommandTest
