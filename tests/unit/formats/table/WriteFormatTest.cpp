// SPDX-License-Identifier: GPL-3.0-or-later
// Formats by their names and by the endings of file names.
#include "WriteFormat.h"

#include "TestFiles.h"

#include <gtest/gtest.h>

namespace TAMBO {
namespace WriteFormatTest {

TEST(WriteFormat, EveryNameStandsForOptionsOfItsOwn)
{
    std::vector<WriteOptions> known;
    for (const std::string_view name : writeFormatNames()) {
        const std::optional<WriteOptions> options = writeOptionsNamed(name);
        ASSERT_TRUE(options.has_value()) << name;
        EXPECT_EQ(std::count(known.begin(), known.end(), *options), 0) << name;
        known.push_back(*options);
    }
    EXPECT_EQ(known.size(), 13U);
    EXPECT_EQ(writeOptionsNamed("nexus"), std::nullopt);
    EXPECT_EQ(writeOptionsNamed(""), std::nullopt);
}

TEST(WriteFormat, PhylipHasFourKinds)
{
    EXPECT_EQ(writeOptionsNamed("phylip"), (WriteOptions{WriteFormat::Phylip, 0, false, false}));
    EXPECT_EQ(writeOptionsNamed("phylip-relaxed"),
              (WriteOptions{WriteFormat::Phylip, 0, true, false}));
    EXPECT_EQ(writeOptionsNamed("phylip-sequential"),
              (WriteOptions{WriteFormat::Phylip, 0, false, true}));
    EXPECT_EQ(writeOptionsNamed("phylip-relaxed-sequential"),
              (WriteOptions{WriteFormat::Phylip, 0, true, true}));
}

TEST(WriteFormat, EveryEndingOfAFormatFindsIt)
{
    for (const std::string_view name : writeFormatNames()) {
        const WriteFormat format = writeOptionsNamed(name)->format;
        for (const std::string_view ending : fileEndings(format)) {
            const std::string file = "x.y" + std::string(ending);
            EXPECT_EQ(writeOptionsFor(file), WriteOptions{format}) << file;
            EXPECT_EQ(writeOptionsFor(file + ".gz"), WriteOptions{format}) << file;
        }
    }
}

TEST(WriteFormat, EndingsMayBeInCapitals)
{
    EXPECT_EQ(writeOptionsFor("/a/X.STO.GZ"), WriteOptions{WriteFormat::Stockholm});
}

TEST(WriteFormat, OtherEndingsSayNothing)
{
    for (const char *file : {"x", "x.txt", "x.gz", ".ali", "", "ali", "x.ali/y"})
        EXPECT_EQ(writeOptionsFor(file), std::nullopt) << file;
}

TEST(WriteFormat, PeopleReadTitlesWithTheirArticle)
{
    EXPECT_EQ(formatTitle(WriteFormat::Mmcif), "mmCIF");
    EXPECT_EQ(fileOf(WriteFormat::Pir), "a PIR file");
    EXPECT_EQ(fileOf(WriteFormat::Msf), "an MSF file");
}

TEST(WriteFormat, ThePageAboutFormatsHasEveryNameAndEnding)
{
    const std::string page =
        formats::bytesOf(std::filesystem::path(SOURCE_DIR) / "docs/formats.md");
    const auto expectWritten = [&](std::string_view word) {
        EXPECT_NE(page.find('`' + std::string(word) + '`', page.find("\n## Writing\n")),
                  std::string::npos)
            << word;
    };
    for (const std::string_view name : writeFormatNames()) {
        expectWritten(name);
        for (const std::string_view ending : fileEndings(writeOptionsNamed(name)->format))
            expectWritten(ending);
    }
}

} // namespace WriteFormatTest
} // namespace TAMBO
