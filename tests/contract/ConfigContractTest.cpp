// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins rely on of Config, Setting and Logger.
#include "Config.h"
#include "ConfigStore.h"
#include "Logger.h"

#include "support/LogLines.h"
#include "support/ScopedSettings.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

#include <sys/stat.h>

namespace ConfigContractTest {

TEST(ConfigContract, AMissingKeyGivesAnEmptySetting)
{
    const ScopedSettings settings("[KALMO2]\nFont = x\n");
    const Setting missing = Config::GetSetting("KALMO2", "nope");
    EXPECT_EQ(missing.ToString(), "");
    bool ok = true;
    EXPECT_EQ(missing.ToString(&ok), "");
    EXPECT_FALSE(ok);
    ok = true;
    EXPECT_FALSE(missing.ToBool(&ok));
    EXPECT_FALSE(ok);
    ok = true;
    EXPECT_EQ(missing.ToFloat(&ok), 0.0F);
    EXPECT_FALSE(ok);
    ok = true;
    EXPECT_EQ(missing.ToFont(&ok), QFont());
    EXPECT_FALSE(ok);
    EXPECT_EQ(Config::GetSetting("no such section", "Font").ToString(), "");
}

TEST(ConfigContract, ASettingIsFoundBySectionAndKey)
{
    const ScopedSettings settings("[KALMO2]\nIcon = a.svg\n[KM2_Colormaps]\n"
                                  "KM2_Charge at pH 7 = b.cm\n");
    EXPECT_EQ(Config::GetSetting("KALMO2", "Icon").ToString(), "a.svg");
    EXPECT_EQ(Config::GetSetting("KM2_Colormaps", "KM2_Charge at pH 7").ToString(), "b.cm");
}

TEST(ConfigContract, ASettingThatIsSetHoldsAtOnceAndInLaterRuns)
{
    const ScopedSettings settings("[counter]\nText = %1\n");
    EXPECT_TRUE(Config::SetSetting("counter", "Text", "%1 residues; \"all\" of them"));
    EXPECT_EQ(Config::GetSetting("counter", "Text").ToString(), "%1 residues; \"all\" of them");
    EXPECT_FALSE(TAMBO::services::ConfigStore::instance().hasUnsavedChanges());
    const TAMBO::services::ConfigStore later(QString(),
                                             TAMBO::services::ConfigStore::instance().userFile());
    EXPECT_EQ(later.value("counter", "Text"), "%1 residues; \"all\" of them");
}

TEST(ConfigContract, ANameThatNoFileCanHoldIsRefusedWithOneLine)
{
    const ScopedSettings settings("");
    for (const std::string name : {"", "a=b", "a\nb", "[a]", " a", "#a"}) {
        const LogLines log;
        EXPECT_FALSE(Config::SetSetting(name, "key", "1")) << name;
        EXPECT_FALSE(Config::SetSetting("section", name, "1")) << name;
        EXPECT_EQ(log.count(), 2) << name;
    }
    EXPECT_FALSE(TAMBO::services::ConfigStore::instance().hasUnsavedChanges());
}

TEST(ConfigContract, ANumberKeepsTheDigitsOfADouble)
{
    const ScopedSettings settings("[a]\nx = 0.6\ny = 1e300\nz = a\n");
    EXPECT_EQ(Config::GetSetting("a", "x").ToDouble(), 0.6);
    bool ok = false;
    EXPECT_EQ(Config::GetSetting("a", "y").ToDouble(&ok), 1e300);
    EXPECT_TRUE(ok);
    EXPECT_EQ(Config::GetSetting("a", "z").ToDouble(&ok), 0);
    EXPECT_FALSE(ok);
}

TEST(ConfigContract, TheIconDirectoryExistsAndEndsWithoutASlash)
{
    const std::string directory = Config::GetIconDir();
    ASSERT_FALSE(directory.empty());
    EXPECT_NE(directory.back(), '/');
    EXPECT_TRUE(QFileInfo(QString::fromStdString(directory + "/editor.svg")).isFile());
}

TEST(ConfigContract, ThePersonalTemporaryDirectoryIsForTheUserOnly)
{
    const std::string directory = Config::GetPersonalTmpDir();
    ASSERT_FALSE(directory.empty());
    EXPECT_NE(directory.back(), '/');
    struct stat facts
    {
    };
    ASSERT_EQ(::stat(directory.c_str(), &facts), 0);
    EXPECT_TRUE(S_ISDIR(facts.st_mode));
    EXPECT_EQ(facts.st_mode & 07777U, 0700U);
    EXPECT_EQ(Config::GetPersonalTmpDir(), directory);
}

TEST(SettingContract, ToBoolReadsTheUsualWords)
{
    for (const char *word : {"true", "YES", "On", "1", " true "}) {
        bool ok = false;
        EXPECT_TRUE(Setting(word).ToBool(&ok)) << word;
        EXPECT_TRUE(ok) << word;
        EXPECT_TRUE(Setting(word).ToBool()) << word;
    }
    for (const char *word : {"false", "No", "OFF", "0"}) {
        bool ok = false;
        EXPECT_FALSE(Setting(word).ToBool(&ok)) << word;
        EXPECT_TRUE(ok) << word;
    }
    for (const char *word : {"", "maybe", "2", "truely"}) {
        bool ok = true;
        EXPECT_FALSE(Setting(word).ToBool(&ok)) << word;
        EXPECT_FALSE(ok) << word;
    }
}

TEST(SettingContract, ToFloatReadsNumbersOnly)
{
    const std::pair<const char *, float> good[] = {
        {"6", 6.0F}, {"-0.25", -0.25F}, {" 1e3 ", 1000.0F}, {"0", 0.0F}};
    for (const auto &[text, value] : good) {
        bool ok = false;
        EXPECT_EQ(Setting(text).ToFloat(&ok), value) << text;
        EXPECT_TRUE(ok) << text;
    }
    for (const char *text : {"", "six", "6 A", "1,5", "nan", "inf", "1e99", "0x10"}) {
        bool ok = true;
        EXPECT_EQ(Setting(text).ToFloat(&ok), 0.0F) << text;
        EXPECT_FALSE(ok) << text;
    }
    EXPECT_EQ(Setting("six").ToFloat(), 0.0F);
}

TEST(SettingContract, ToFontReadsFamilyAndSizeAndTheToolkitsOwnDescription)
{
    bool ok = false;
    const QFont font = Setting("DejaVu Sans Mono, 13").ToFont(&ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(font.family(), "DejaVu Sans Mono");
    EXPECT_EQ(font.pointSize(), 13);

    ok = false;
    EXPECT_EQ(Setting("DejaVu Serif").ToFont(&ok).family(), "DejaVu Serif");
    EXPECT_TRUE(ok);

    QFont full("DejaVu Sans", 17, QFont::Bold, true);
    ok = false;
    EXPECT_EQ(Setting(full.toString().toStdString()).ToFont(&ok), full);
    EXPECT_TRUE(ok);
}

TEST(SettingContract, ToFontRefusesWhatIsNoFont)
{
    for (const char *text : {"", "  ", "12", ", 12", "DejaVu Sans, big", "DejaVu Sans, -3",
                             "DejaVu Sans, 0", "DejaVu Sans,", "DejaVu Sans, 12, bold"}) {
        bool ok = true;
        EXPECT_EQ(Setting(text).ToFont(&ok), QFont()) << text;
        EXPECT_FALSE(ok) << text;
    }
}

TEST(SettingContract, ToStringGivesTheTextAsItStands)
{
    bool ok = false;
    EXPECT_EQ(Setting("a b").ToString(&ok), "a b");
    EXPECT_TRUE(ok);
    ok = false;
    EXPECT_EQ(Setting("").ToString(&ok), "");
    EXPECT_TRUE(ok) << "an empty text is not a missing one";
}

TEST(LoggerContract, EveryWriteIsALineInTheLog)
{
    const LogLines log;
    Logger::Write("plain text");
    Logger::Write(QStringLiteral("Größe"));
    EXPECT_EQ(log.texts(), QStringList({"plain text", "Größe"}));
}

TEST(LoggerContract, BytesAreReadAsUtf8OrElseAsLatin1)
{
    const LogLines log;
    Logger::Write("Gr\xc3\xb6\xc3\x9f"
                  "e");
    Logger::Write("Gr\xf6\xdf"
                  "e");
    EXPECT_EQ(log.texts(), QStringList({"Größe", "Größe"}));
}

TEST(LoggerContract, NothingWrittenIsNoLine)
{
    const LogLines log;
    Logger::Write(static_cast<const char *>(nullptr));
    Logger::Write("");
    Logger::Write(QString());
    EXPECT_EQ(log.count(), 0);
}

} // namespace ConfigContractTest
