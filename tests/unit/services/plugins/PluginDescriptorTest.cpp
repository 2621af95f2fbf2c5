// SPDX-License-Identifier: GPL-3.0-or-later
#include "PluginDescriptor.h"

#include "Directories.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace TAMBO::services;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace PluginDescriptorTest {

class PluginDescriptorTest : public ::testing::Test
{
protected:
    QString write(const QString &name, const QByteArray &text)
    {
        QFile file(m_Folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }
    PluginDescriptor read(const QByteArray &text)
    {
        const auto read = PluginDescriptor::read(write("libX.plugin", text), m_Kit);
        EXPECT_TRUE(read.has_value()) << (read ? "" : read.error().message());
        return read ? read.value() : PluginDescriptor();
    }

    const KitNumber m_Kit{1, 4};
    QTemporaryDir m_Folder;
};

TEST_F(PluginDescriptorTest, EveryKeyIsRead)
{
    const QString icon = write("x.svg", "");
    const QString page = write("x.html", "");
    const PluginDescriptor made = read("[Plugin]\nKit = 1.3\nName = Counts\nTitle =  Letter  "
                                       "Counts\nRole = alignments\nIcon = x.svg\nHelp = x.html\n"
                                       "Commands = statistics, picture\n"
                                       "[Commands]\nstatistics = Letters of columns\n"
                                       "[Counts]\nFont = Mono, 9\n[KALMO2]\nFont = Mono, 10\n");
    EXPECT_EQ(made.kit.text(), "1.3");
    EXPECT_EQ(made.name, "Counts");
    EXPECT_EQ(made.title, "Letter Counts");
    EXPECT_EQ(made.role, PluginRole::Alignments);
    EXPECT_EQ(made.icon, icon);
    EXPECT_EQ(made.help, page);
    EXPECT_EQ(made.helpName, "x.html");
    ASSERT_EQ(made.commands.size(), 2U);
    EXPECT_EQ(made.commands[0].word, "statistics");
    EXPECT_EQ(made.commands[0].summary, "Letters of columns");
    EXPECT_EQ(made.commands[1].word, "picture");
    EXPECT_EQ(made.commands[1].summary, "");
    EXPECT_THAT(made.settings.sections(), ElementsAre("Counts", "KALMO2"));
    EXPECT_EQ(made.settings.value("Counts", "Font"), "Mono, 9");
    EXPECT_TRUE(made.remarks.empty());
}

TEST_F(PluginDescriptorTest, WhatIsNotSaidIsThatOfAPlainTool)
{
    const PluginDescriptor made = read("[Plugin]\nKit = 1.4\n");
    EXPECT_EQ(made.name, "X");
    EXPECT_EQ(made.title, "");
    EXPECT_EQ(made.role, PluginRole::Tool);
    EXPECT_EQ(made.icon, "");
    EXPECT_EQ(made.help, "");
    EXPECT_TRUE(made.commands.empty());
    EXPECT_THAT(made.settings.sections(), IsEmpty());
    EXPECT_EQ(read("[Plugin]\nKit = 1.4\nRole = tool\n").role, PluginRole::Tool);
    EXPECT_EQ(read("[Plugin]\nKit = 1.4\nRole = background\n").role, PluginRole::Background);
}

TEST_F(PluginDescriptorTest, AnIconMayBeOneOfTheWorkbench)
{
    const QString installed = Directories::shared() + "/icons/editor.svg";
    EXPECT_EQ(read("[Plugin]\nKit = 1.0\nIcon = editor.svg\n").icon, installed);
    EXPECT_EQ(read("[Plugin]\nKit = 1.0\nIcon = editor\n").icon, installed);
    write("editor.svg", "");
    EXPECT_EQ(read("[Plugin]\nKit = 1.0\nIcon = editor.svg\n").icon,
              m_Folder.filePath("editor.svg"));
}

TEST_F(PluginDescriptorTest, AnIconOrAPageThatIsMissingIsARemark)
{
    const PluginDescriptor made = read("[Plugin]\nKit = 1.0\nIcon = no.svg\nHelp = no.html\n");
    EXPECT_EQ(made.icon, "");
    EXPECT_EQ(made.help, "");
    EXPECT_EQ(made.helpName, "");
    ASSERT_EQ(made.remarks.size(), 2U);
    const std::string file = m_Folder.filePath("libX.plugin").toStdString();
    EXPECT_EQ(made.remarks[0].message(),
              file + ":3: there is no icon no.svg, neither beside this file nor among those of the "
                     "workbench");
    EXPECT_EQ(made.remarks[1].message(), file + ":4: there is no help page no.html beside this "
                                                "file");
}

struct Broken
{
    const char *name;
    const char *text;
    // Behind the name of the file.
    const char *message;
};

class BrokenDescriptor : public PluginDescriptorTest, public ::testing::WithParamInterface<Broken>
{
};

TEST_P(BrokenDescriptor, IsToldWithItsLineAndTheCause)
{
    const QString file = write("libX.plugin", GetParam().text);
    const auto read = PluginDescriptor::read(file, m_Kit);
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().message(), file.toStdString() + GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    All, BrokenDescriptor,
    ::testing::Values(
        Broken{"NothingInIt", "",
               ": expected Kit = 1.0 in section [Plugin], the version of the kit that the plug-in "
               "was built against"},
        Broken{"NoLineOfTheForm", "[Plugin]\nKit = 1.0\nrubbish\n",
               ":3: expected [section] or key = value"},
        Broken{"AVersionThatIsNone", "# x\n[Plugin]\nKit = one\n",
               ":3: expected Kit = 1.0 in section [Plugin], the version of the kit that the "
               "plug-in was built against"},
        Broken{"AnUnknownRole", "[Plugin]\nKit = 1.0\nRole = viewer\n",
               ":3: expected Role = tool, Role = alignments or Role = background"},
        Broken{"AMisspelledKey", "[Plugin]\nKit = 1.0\nTitel = X\n",
               ":3: [Plugin] has no key "
               "Titel"},
        Broken{"ACommandThatCannotBeTyped", "[Plugin]\nKit = 1.0\nCommands = a, -b\n",
               ":3: \"-b\" cannot be a command: expected letters, digits, \"-\" and \"_\" behind a "
               "letter"},
        Broken{"ALineForNoCommand", "[Plugin]\nKit = 1.0\nCommands = a\n[Commands]\nb = B\n",
               ":5: b is not among the Commands of section [Plugin]"}),
    [](const auto &row) { return row.param.name; });

TEST_F(PluginDescriptorTest, AFileThatCannotBeReadIsAFailure)
{
    const auto read = PluginDescriptor::read(m_Folder.path(), m_Kit);
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().place.file, m_Folder.path().toStdString());
}

TEST_F(PluginDescriptorTest, OneOfAnotherVersionIsReadAsFarAsItIsUnderstood)
{
    const PluginDescriptor made = read("[Plugin]\nKit = 2.0\nTitle = New\nColour = red\nRole = "
                                       "viewer\nCommands = one, 2\n");
    EXPECT_EQ(made.kit.text(), "2.0");
    EXPECT_EQ(made.title, "New");
    ASSERT_EQ(made.commands.size(), 1U);
    EXPECT_EQ(made.commands[0].word, "one");
}

TEST(KitNumber, TakesTheSameMajorVersionAndNoNewerMinorOne)
{
    const KitNumber kit{2, 3};
    EXPECT_TRUE(kit.takes({2, 3}));
    EXPECT_TRUE(kit.takes({2, 0}));
    EXPECT_FALSE(kit.takes({2, 4}));
    EXPECT_FALSE(kit.takes({1, 3}));
    EXPECT_FALSE(kit.takes({3, 0}));
}

TEST(PluginNames, AreThoseOfTheFileWithoutItsEndings)
{
    EXPECT_EQ(PluginDescriptor::fileOf("/a.so/libX.so"), "/a.so/libX.plugin");
    EXPECT_EQ(PluginDescriptor::fileOf("/a/libX.so.0"), "/a/libX.plugin");
    EXPECT_EQ(PluginDescriptor::fileOf("/a/libX.so.0.1.2"), "/a/libX.plugin");
    EXPECT_EQ(PluginDescriptor::fileOf("/a/my.sorter.so"), "/a/my.sorter.plugin");
    EXPECT_EQ(PluginDescriptor::nameOf("/a/libX.so.0"), "X");
    EXPECT_EQ(PluginDescriptor::nameOf("/a/my.sorter.so"), "my.sorter");
    EXPECT_EQ(PluginDescriptor::nameOf("/a/lib.so"), "lib");
}

} // namespace PluginDescriptorTest
