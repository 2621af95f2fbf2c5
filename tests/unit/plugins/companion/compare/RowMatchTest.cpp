// SPDX-License-Identifier: GPL-3.0-or-later
// Which rows of two alignments are the same.
#include "RowMatch.h"

#include "unit/model/AlignmentFixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

using testing::ElementsAre;

namespace RowMatchTest {

using companion::RowMatch;
using Places = std::vector<std::uint32_t>;

constexpr std::uint32_t kNone = companion::ComparedColumns::kNone;

class MatchedRows : public AlignmentFixture
{
protected:
    struct Row
    {
        std::string name;
        std::string text;
    };

    // Sequences of their own.
    TAMBO::Alignment &made(const std::vector<Row> &rows)
    {
        std::vector<std::pair<TAMBO::Peptide *, std::string>> all;
        for (const Row &row : rows) {
            std::string letters = row.text;
            std::erase(letters, '-');
            auto sequence = std::make_unique<TAMBO::Peptide>(row.name, letters);
            all.emplace_back(sequence.get(), row.text);
            TAMBO::ObjectSpace::get().add(std::move(sequence));
        }
        return alignmentOf(all, "made");
    }
    // Of each row here the row there.
    static Places matched(const TAMBO::Alignment &here, const TAMBO::Alignment &there)
    {
        RowMatch match(here, &there);
        while (match.goOn({})) {
        }
        Places places;
        for (const std::uint32_t place : match.placesHere()) {
            const auto found = std::ranges::find(match.placesThere(), place);
            places.push_back(place == kNone ? kNone
                                            : std::uint32_t(found - match.placesThere().begin()));
        }
        return places;
    }
};

TEST_F(MatchedRows, OfOneNameThoseWithTheSameResiduesInTheOrderTheyStandIn)
{
    const TAMBO::Alignment &here =
        made({{"a", "AC-D"}, {"a", "ACD-"}, {"a", "CCC-"}, {"b", "ACD-"}, {"a", "GGGG"}});
    const TAMBO::Alignment &there =
        made({{"a", "ccc-"}, {"b", "-ACD"}, {"a", "-acd"}, {"c", "GGGG"}, {"a", "A-CD"}});
    EXPECT_THAT(matched(here, there), ElementsAre(2, 4, 0, 1, kNone));
}

TEST_F(MatchedRows, OneOfTheSameSequenceComesBeforeOneOfTheSameName)
{
    TAMBO::Alignment &here = made({{"a", "ACD"}, {"a", "ACD"}});
    const TAMBO::Alignment &there = alignmentOf(
        {{&sequence(made({{"a", "ACD"}}), 0), "ACD"}, {&sequence(here, 0), "ACD"}}, "there");
    EXPECT_THAT(matched(here, there), ElementsAre(1, 0));
}

TEST_F(MatchedRows, ThousandsOfOneNameFindTheirOwnResidues)
{
    constexpr std::size_t kRows = 3000;
    const std::string letters = "ACDEFGHIKLMNPQRSTVWY";
    std::vector<Row> rows;
    for (std::size_t i = 0; i < kRows; ++i)
        // Each third one is as the one before it.
        rows.push_back({"one",
                        {letters[i / 3 % 20], letters[i / 60 % 20], letters[i / 1200 % 20],
                         letters[i % 3 == 2 ? 1 : 0]}});
    const TAMBO::Alignment &here = made(rows);
    std::mt19937 random(5);
    std::ranges::shuffle(rows, random);
    const TAMBO::Alignment &there = made(rows);
    Places places = matched(here, there);
    for (std::size_t row = 0; row < kRows; ++row) {
        ASSERT_NE(places[row], kNone);
        ASSERT_EQ(here.GetSequence(row, true), there.GetSequence(places[row], true));
    }
    std::ranges::sort(places);
    EXPECT_EQ(std::ranges::adjacent_find(places), places.end()) << "each has one of its own";
}

} // namespace RowMatchTest
