// SPDX-License-Identifier: GPL-3.0-or-later
// Contents are told apart by a number.
#include "ContentHash.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace TAMBO {
namespace ContentHashTest {

std::uint64_t hashOf(std::string_view bytes)
{
    ContentHash hash;
    hash.add(bytes);
    return hash.value();
}

TEST(ContentHash, DoesNotDependOnThePiecesInWhichTheContentComes)
{
    const std::string text = ">a\nACDEFGHIKLMNPQRSTVWY-ACDEFGHIKLMNPQRSTVWY\n";
    for (std::size_t piece = 1; piece <= text.size(); ++piece) {
        ContentHash hash;
        for (std::size_t at = 0; at < text.size(); at += piece)
            hash.add(std::string_view(text).substr(at, piece));
        EXPECT_EQ(hash.value(), hashOf(text)) << piece;
    }
}

TEST(ContentHash, TellsApartWhatDiffersInOneCharacterOrInLength)
{
    const std::string text(40, 'A');
    std::set<std::uint64_t> known{hashOf(text)};
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::string other = text;
        other[at] = 'C';
        EXPECT_TRUE(known.insert(hashOf(other)).second) << at;
        EXPECT_TRUE(known.insert(hashOf(text.substr(0, at))).second) << at;
    }
    // Zeros stand where there is nothing more.
    EXPECT_NE(hashOf("ACD"), hashOf(std::string_view("ACD\0", 4)));
}

TEST(ContentHash, CanBeAskedInTheMiddle)
{
    ContentHash hash;
    hash.add("ACD");
    EXPECT_EQ(hash.value(), hashOf("ACD"));
    hash.add("EFGHIKLM");
    EXPECT_EQ(hash.value(), hashOf("ACDEFGHIKLM"));
}

} // namespace ContentHashTest
} // namespace TAMBO
