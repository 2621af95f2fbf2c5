// SPDX-License-Identifier: GPL-3.0-or-later
// Names as formats can hold them.
#include "FittedNames.h"

#include "RecordBuilder.h"

#include <gtest/gtest.h>

namespace TAMBO::formats {
namespace FittedNamesTest {

using Texts = std::vector<std::string>;

AlignmentRecord named(const Texts &names)
{
    AlignmentRecord record;
    for (const std::string &name : names)
        record.rows.push_back(rowOf(name, "AC"));
    return record;
}

Texts namesIn(const std::string &format, const Texts &names)
{
    const AlignmentRecord record = named(names);
    const RecordSource source(record);
    const FittedNames fitted(source, optionsOf(format));
    Texts held;
    for (std::size_t row = 0; row < names.size(); ++row)
        held.emplace_back(fitted[row]);
    return held;
}

Texts changesIn(const std::string &format, const Texts &names)
{
    const AlignmentRecord record = named(names);
    return FittedNames(RecordSource(record), optionsOf(format)).changes();
}

TEST(FittedNames, PirHoldsEveryNameOfOneLine)
{
    const Texts names = {"a b", "", "#", "//", "a b", "P1;x", "M\xc3\xbcller"};
    EXPECT_EQ(namesIn("pir", names), names);
    EXPECT_TRUE(changesIn("pir", names).empty());
    EXPECT_EQ(namesIn("pir", {" a\tb\n"}), Texts{"a b"});
}

TEST(FittedNames, FastaHoldsRepeatedNames)
{
    EXPECT_EQ(namesIn("fasta", {"a", "a"}), (Texts{"a", "a"}));
    EXPECT_TRUE(changesIn("fasta", {"a", "a"}).empty());
}

TEST(FittedNames, BlanksAreReplacedWhereTheyEndTheName)
{
    for (const char *format : {"fasta", "a2m", "a3m", "clustal", "stockholm", "msf",
                               "phylip-relaxed", "phylip-relaxed-sequential"})
        EXPECT_EQ(namesIn(format, {"A BAD ID"}), Texts{"A_BAD_ID"}) << format;
    EXPECT_EQ(namesIn("phylip", {"A BAD ID"}), Texts{"A BAD ID"});
    EXPECT_EQ(changesIn("clustal", {"a", "A BAD ID"}),
              Texts{"1 of 2 names has characters that a Clustal file cannot hold there: \"A BAD "
                    "ID\" becomes \"A_BAD_ID\"."});
}

TEST(FittedNames, MarksOfAFormatAreReplaced)
{
    EXPECT_EQ(namesIn("stockholm", {"#=GF", "//", "a#b"}), (Texts{"_=GF", "_/", "a#b"}));
    EXPECT_EQ(namesIn("msf", {"//", "#"}), (Texts{"_/", "#"}));
    EXPECT_EQ(namesIn("fasta", {"P1;a", "sp;a"}), (Texts{"P1_a", "sp_a"}));
    EXPECT_EQ(namesIn("phylip", {"(a,b):1;", "[x]"}), (Texts{"_a_b__1_", "_x_"}));
    EXPECT_EQ(namesIn("phylip", {"M\xc3\xbcller"}), Texts{"M_ller"});
}

TEST(FittedNames, PhylipCutsNamesToTenCharacters)
{
    EXPECT_EQ(namesIn("phylip", {"0123456789", "01234567890x", "12345678 90"}),
              (Texts{"0123456789", "01234567_2", "12345678 9"}));
    EXPECT_EQ(changesIn("phylip", {"a", "receptor_protein", "receptor_x"}),
              Texts{"1 of 3 names is longer than 10 characters and is cut: \"receptor_protein\" "
                    "becomes \"receptor_p\"."});
}

TEST(FittedNames, NamesThatFallTogetherAreNumbered)
{
    EXPECT_EQ(namesIn("clustal", {"a", "a", "a_2", "a"}), (Texts{"a", "a_2", "a_2_2", "a_3"}));
    EXPECT_EQ(namesIn("phylip", {"B_subtilis_1", "B_subtilis_2", "B_subtilis_3"}),
              (Texts{"B_subtilis", "B_subtil_2", "B_subtil_3"}));
    EXPECT_EQ(changesIn("phylip", {"B_subtilis", "B_subtilis"}),
              Texts{"1 of 2 names would be the same as another one and gets a number: "
                    "\"B_subtilis\" becomes \"B_subtil_2\"."});
}

TEST(FittedNames, ManyNamesThatFallTogetherStayApart)
{
    const Texts names(1500, "a_very_long_name");
    Texts held = namesIn("phylip", names);
    std::sort(held.begin(), held.end());
    EXPECT_EQ(std::unique(held.begin(), held.end()), held.end());
    for (const std::string &name : held)
        EXPECT_LE(name.size(), 10U);
}

TEST(FittedNames, ARowWithoutANameGetsOne)
{
    EXPECT_EQ(namesIn("clustal", {"row_2", "", " "}), (Texts{"row_2", "row_2_2", "row_3"}));
    EXPECT_EQ(changesIn("fasta", {"a", ""}),
              Texts{"1 of 2 rows has no name and gets one: \"row_2\"."});
}

} // namespace FittedNamesTest
} // namespace TAMBO::formats
