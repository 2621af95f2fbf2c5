// SPDX-License-Identifier: GPL-3.0-or-later
#include "FormatTable.h"

#include <gtest/gtest.h>

#include <set>

namespace FormatTableTest {

using namespace TAMBO;

TEST(FormatTable, EachFormatIsFoundAtItsPlace)
{
    std::set<std::string_view> names;
    std::set<std::string_view> titles;
    for (std::size_t i = 0; i < kFormats.size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(kFormats[i].format), i) << kFormats[i].name;
        EXPECT_EQ(&entryOf(kFormats[i].format), &kFormats[i]);
        names.insert(kFormats[i].name);
        titles.insert(kFormats[i].title);
    }
    EXPECT_EQ(names.size(), kFormats.size());
    EXPECT_EQ(titles.size(), kFormats.size());
    EXPECT_EQ(kFormats.back().format, FileFormat::Mmcif);
}

TEST(FormatTable, AnEndingIsThatOfOneFormat)
{
    std::set<std::string_view> known;
    for (const FormatEntry &entry : kFormats) {
        EXPECT_FALSE(entry.endings().empty()) << entry.name;
        for (const std::string_view ending : entry.endings()) {
            EXPECT_TRUE(ending.starts_with('.')) << ending;
            EXPECT_NE(ending, kCompressedEnding);
            EXPECT_TRUE(known.insert(ending).second) << ending;
        }
    }
    EXPECT_EQ(fileEndings(FileFormat::Fasta).size(), 6U);
    EXPECT_EQ(fileEndings(FileFormat::Msf).size(), 1U);
    EXPECT_EQ(endingsOf(FormatKind::Structures),
              (std::vector<std::string_view>{".pdb", ".ent", ".cif", ".mmcif"}));
    EXPECT_EQ(endingsOf(FormatKind::Alignments).size() + 4, known.size());
}

TEST(FormatTable, WhatAFormatHoldsGoesWithItsKind)
{
    unsigned all = 0;
    for (const ContentEntry &content : kContents) {
        EXPECT_EQ(all & static_cast<unsigned>(content.content), 0U) << content.title;
        all |= static_cast<unsigned>(content.content);
        std::size_t holders = 0;
        for (const FormatEntry &entry : kFormats) {
            holders += entry.holds(content.content) ? 1 : 0;
            if (entry.kind != content.kind) {
                EXPECT_FALSE(entry.holds(content.content)) << entry.name << content.title;
            }
        }
        // What all or none can hold tells nobody anything.
        EXPECT_GT(holders, 0U) << content.title;
    }
    for (const FormatEntry &entry : kFormats)
        EXPECT_EQ(entry.contents & ~all, 0U) << entry.name;
}

TEST(FormatTable, WhatIsNotToldFromAnotherIsReadAsOneThatIs)
{
    for (const FormatEntry &entry : kFormats) {
        EXPECT_TRUE(entryOf(entry.readAs).isRecognised()) << entry.name;
        EXPECT_EQ(entryOf(entry.readAs).kind, entry.kind) << entry.name;
    }
    EXPECT_FALSE(entryOf(FileFormat::A2m).isRecognised());
}

TEST(FormatTable, PeopleReadTitlesWithTheirArticle)
{
    EXPECT_EQ(formatTitle(FileFormat::Mmcif), "mmCIF");
    EXPECT_EQ(formatName(FileFormat::Mmcif), "mmcif");
    EXPECT_EQ(fileOf(FileFormat::Pir), "a PIR file");
    EXPECT_EQ(fileOf(FileFormat::Msf), "an MSF file");
    const auto areSeveral = [](const FormatEntry &entry) { return entry.holds(Content::Several); };
    EXPECT_EQ(formatTitles(areSeveral, " or "), "Stockholm or PHYLIP");
}

} // namespace FormatTableTest
