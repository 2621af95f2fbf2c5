// SPDX-License-Identifier: GPL-3.0-or-later
// Formats by their names and by the endings of file names.
#include "WriteOptions.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include <algorithm>

namespace TAMBO {
namespace WriteOptionsTest {

TEST(WriteOptions, EveryNameStandsForOptionsOfItsOwn)
{
    std::vector<WriteOptions> known;
    for (const std::string_view name : writeFormatNames()) {
        const std::optional<WriteOptions> options = writeOptionsNamed(name);
        ASSERT_TRUE(options.has_value()) << name;
        EXPECT_EQ(std::count(known.begin(), known.end(), *options), 0) << name;
        known.push_back(*options);
    }
    EXPECT_EQ(known.size(), 14U);
    EXPECT_EQ(writeOptionsNamed("mega"), std::nullopt);
    EXPECT_EQ(writeOptionsNamed(""), std::nullopt);
}

TEST(WriteOptions, PhylipHasFourKinds)
{
    EXPECT_EQ(writeOptionsNamed("phylip"), (WriteOptions{FileFormat::Phylip, 0, false, false}));
    EXPECT_EQ(writeOptionsNamed("phylip-relaxed"),
              (WriteOptions{FileFormat::Phylip, 0, true, false}));
    EXPECT_EQ(writeOptionsNamed("phylip-sequential"),
              (WriteOptions{FileFormat::Phylip, 0, false, true}));
    EXPECT_EQ(writeOptionsNamed("phylip-relaxed-sequential"),
              (WriteOptions{FileFormat::Phylip, 0, true, true}));
}

TEST(WriteOptions, EveryEndingOfAFormatFindsIt)
{
    for (const std::string_view name : writeFormatNames()) {
        const FileFormat format = writeOptionsNamed(name)->format;
        for (const std::string_view ending : fileEndings(format)) {
            const std::string file = "x.y" + std::string(ending);
            EXPECT_EQ(writeOptionsFor(file), WriteOptions{format}) << file;
            EXPECT_EQ(writeOptionsFor(file + ".gz"), WriteOptions{format}) << file;
        }
    }
}

TEST(WriteOptions, EndingsMayBeInCapitals)
{
    EXPECT_EQ(writeOptionsFor("/a/X.STO.GZ"), WriteOptions{FileFormat::Stockholm});
}

TEST(WriteOptions, OtherEndingsSayNothing)
{
    for (const char *file : {"x", "x.txt", "x.gz", ".ali", "", "ali", "x.ali/y"})
        EXPECT_EQ(writeOptionsFor(file), std::nullopt) << file;
}

} // namespace WriteOptionsTest
TEST(WriteOptions, ANameGetsTheFormatsEndingUnlessItHasOne)
{
    for (const auto &[name, expected] :
         std::vector<std::pair<std::string, std::string>>{{"x", "x.fasta"},
                                                          {"x.fasta", "x.fasta"},
                                                          {"x.FA", "x.FA"},
                                                          {"x.fas.gz", "x.fas.gz"},
                                                          {"x.ali", "x.fasta"},
                                                          {"x.ali.GZ", "x.fasta.GZ"},
                                                          {"x.gz", "x.fasta.gz"},
                                                          {"x.v2", "x.v2.fasta"},
                                                          {"/a.ali/x", "/a.ali/x.fasta"},
                                                          {".fasta", ".fasta.fasta"},
                                                          {"x.", "x..fasta"}}) {
        EXPECT_EQ(withEndingOf(name, FileFormat::Fasta), expected);
        EXPECT_EQ(writeOptionsFor(withEndingOf(name, FileFormat::Fasta)),
                  WriteOptions{FileFormat::Fasta})
            << name;
    }
}

} // namespace TAMBO
