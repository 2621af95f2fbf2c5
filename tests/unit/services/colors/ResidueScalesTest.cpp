// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueScales.h"

#include "Directories.h"
#include "ResidueTypes.h"
#include "support/LogLines.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace TAMBO::services;

namespace ResidueScalesTest {

const std::string kAcids = "ARNDCQEGHILKMFPSTWYV";

std::string failureOf(std::string_view text)
{
    const auto scale = ResidueScales::parse(text, "x.scale");
    return scale ? "no failure" : scale.error().message();
}

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

TEST(ResidueScales, ReadsNameAndValues)
{
    const auto scale = ResidueScales::parse(
        "# Somebody (1999)\nname  My scale \nA 1.5 # small\n\nW\t-2e1\r\n", "x.scale");
    ASSERT_TRUE(scale.has_value()) << scale.error().message();
    EXPECT_EQ(scale.value().name, "My scale");
    EXPECT_EQ(scale.value().values, (std::map<char, float>{{'A', 1.5F}, {'W', -20.0F}}));
}

TEST(ResidueScales, NumbersMayBeSpelledAsStreamsReadThem)
{
    const auto scale = ResidueScales::parse("name N\nA +.5\nC 1.\nD\t-0.1\nE 2e0\n", "x.scale");
    ASSERT_TRUE(scale.has_value()) << scale.error().message();
    EXPECT_EQ(scale.value().values,
              (std::map<char, float>{{'A', 0.5F}, {'C', 1.0F}, {'D', -0.1F}, {'E', 2.0F}}));
}

TEST(ResidueScales, ReadsUnitAndSourceWhichMayGoOn)
{
    const auto scale =
        ResidueScales::parse("\xef\xbb\xbfunit cubic Angstrom\nname N\nsource One A\n"
                             "source (1999) # seen\nsource\tof it.\nA 1\n",
                             "x.scale");
    ASSERT_TRUE(scale.has_value()) << scale.error().message();
    EXPECT_EQ(scale.value().unit, "cubic Angstrom");
    EXPECT_EQ(scale.value().source, "One A (1999) of it.");
}

TEST(ResidueScales, MalformedTextIsNamedByFileLineAndCause)
{
    const std::string value = "expected a letter from A to Z and a number";
    EXPECT_EQ(failureOf("name N\nA\n"), "x.scale:2: " + value);
    EXPECT_EQ(failureOf("name N\nAB 1\n"), "x.scale:2: " + value);
    EXPECT_EQ(failureOf("name N\na 1\n"), "x.scale:2: " + value);
    EXPECT_EQ(failureOf("name N\nA 1 2\n"), "x.scale:2: " + value);
    EXPECT_EQ(failureOf("name N\nA one\n"), "x.scale:2: " + value);
    EXPECT_EQ(failureOf("name N\nA 1\nA 2\n"), "x.scale:3: the letter A has a value already");
    EXPECT_EQ(failureOf("names N\nA 1\n"), "x.scale:1: " + value);
    EXPECT_EQ(failureOf("name N\nA nan\n"), "x.scale:2: " + value);
    EXPECT_EQ(failureOf("name N\nA 1e99\n"), "x.scale:2: " + value);
    EXPECT_EQ(failureOf("name N\nname M\n"), "x.scale:2: the scale has a name already");
    EXPECT_EQ(failureOf("name N\nunit a\nunit b\n"), "x.scale:3: the scale has a unit already");
    EXPECT_EQ(failureOf("name \nA 1\n"), "x.scale:1: expected a name after \"name\"");
    EXPECT_EQ(failureOf("A 1\n"), "x.scale: expected a line \"name\" with the name of the scale");
}

TEST(ResidueScales, StandInTheOrderOfTheirFilesAndOwnOnesReplaceInstalledOnes)
{
    const QTemporaryDir first;
    const QTemporaryDir second;
    write(first.filePath("1.scale"), "name Zeta\nA 1\n");
    write(first.filePath("2.scale"), "name Alpha\nA 2\n");
    write(first.filePath("readme.txt"), "no scale");
    write(second.filePath("a.scale"), "name Alpha\nA 22\n");
    write(second.filePath("b.scale"), "name Mine\nA 3\n");
    const ResidueScales scales({first.path(), second.path()});
    ASSERT_EQ(scales.scales().size(), 3U);
    EXPECT_EQ(scales.scales()[0].name, "Zeta");
    EXPECT_EQ(scales.scales()[1].name, "Alpha");
    EXPECT_EQ(scales.scales()[1].values.at('A'), 22.0F);
    EXPECT_EQ(scales.scales()[2].name, "Mine");
}

TEST(ResidueScales, AnOwnFileReplacesTheInstalledOneOfItsFileName)
{
    const QTemporaryDir first;
    const QTemporaryDir second;
    write(first.filePath("1.scale"), "name Zeta\nA 1\n");
    write(first.filePath("2.scale"), "name Alpha\nA 2\n");
    write(first.filePath("3.scale"), "name Beta\nA 3\n");
    write(second.filePath("2.scale"), "name My alpha\nA 22\n");
    const ResidueScales scales({first.path(), second.path()});
    ASSERT_EQ(scales.scales().size(), 3U);
    EXPECT_EQ(scales.scales()[1].name, "My alpha");
    EXPECT_EQ(scales.find("Alpha"), nullptr);
}

TEST(ResidueScales, OwnFilesAreFoundInTheConfigurationDirectory)
{
    const QString directory = Directories::config() + "/scales";
    ASSERT_TRUE(QDir().mkpath(directory));
    write(directory + "/mine.scale", "name Mine\nA 7\n");
    ResidueScales::setInstance(nullptr);
    float value = 0;
    EXPECT_TRUE(ResidueTypes::GetValue("Mine", 'A', value));
    EXPECT_EQ(value, 7.0F);
    EXPECT_TRUE(ResidueTypes::GetValue("Hydropathy", 'A', value));
    std::vector<std::string> names;
    ResidueTypes::Properties(names);
    EXPECT_EQ(names.size(), 17U);
    EXPECT_EQ(names.back(), "Mine");
    QFile::remove(directory + "/mine.scale");
    ResidueScales::setInstance(nullptr);
}

TEST(ResidueScales, ABadOwnFileReplacesNothing)
{
    const QTemporaryDir first;
    const QTemporaryDir second;
    write(first.filePath("1.scale"), "name Alpha\nA 1\n");
    write(second.filePath("1.scale"), "name Alpha\nA one\n");
    const LogLines log;
    const ResidueScales scales({first.path(), second.path()});
    ASSERT_NE(scales.find("Alpha"), nullptr);
    EXPECT_EQ(scales.find("Alpha")->values.at('A'), 1.0F);
    EXPECT_EQ(log.count(), 1);
}

TEST(ResidueScales, ABadFileIsLeftOutWithOneLogLine)
{
    const QTemporaryDir directory;
    write(directory.filePath("1.scale"), "rubbish\nrubbish\n");
    write(directory.filePath("2.scale"), "name Good\nA 1\n");
    const LogLines log;
    const ResidueScales scales({directory.path(), "/no/such/directory"});
    EXPECT_EQ(scales.scales().size(), 1U);
    EXPECT_EQ(log.texts(),
              QStringList("A residue scale is left out: " + directory.filePath("1.scale") +
                          ":1: expected a letter from A to Z and a number"));
}

TEST(ResidueScales, EveryInstalledScaleHasAllTwentyAcidsAndNothingElse)
{
    const LogLines log;
    const ResidueScales scales({Directories::shared() + "/scales"});
    EXPECT_EQ(scales.scales().size(), 16U);
    for (const ResidueScale &scale : scales.scales()) {
        EXPECT_EQ(scale.values.size(), kAcids.size()) << scale.name;
        for (const char letter : kAcids)
            EXPECT_TRUE(scale.values.contains(letter)) << scale.name << " " << letter;
    }
    EXPECT_EQ(log.count(), 0);
}

} // namespace ResidueScalesTest
