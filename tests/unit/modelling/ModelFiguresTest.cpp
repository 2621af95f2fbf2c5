// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModelFigures.h"

#include "ModellingFolder.h"

#include <gmock/gmock.h>

namespace ModelFiguresTest {

using kestram::figuresOf;
using kestram::rebuiltGaps;
using testing::HasSubstr;

struct Rows
{
    const char *name;
    const char *templateRow;
    const char *targetRow;
    std::size_t gaps;
};

class RebuiltGaps : public testing::TestWithParam<Rows>
{
};

TEST_P(RebuiltGaps, AreCounted)
{
    EXPECT_EQ(rebuiltGaps(GetParam().templateRow, GetParam().targetRow), GetParam().gaps);
}

INSTANTIATE_TEST_SUITE_P(Alignments, RebuiltGaps,
                         testing::Values(Rows{"NoneInFullRows", "ACDEF", "ACDEF", 0},
                                         Rows{"OneForAnInsertion", "AC--F", "ACDEF", 1},
                                         Rows{"OneForADeletion", "ACDEF", "A---F", 1},
                                         Rows{"OneForBothSideBySide", "AC--EF", "A-DE-F", 1},
                                         Rows{"TwoForTwo", "A-DEF-H", "ACD-FGH", 3},
                                         Rows{"NoneBeforeTheFirstCommonColumn", "--DEF", "ACDEF",
                                              0},
                                         Rows{"NoneForEndsOfTheTemplate", "ACDEF", "--D--", 0},
                                         Rows{"NoneBehindTheLastCommonColumn", "ACD--", "ACDEF", 0},
                                         Rows{"NoneForEndsOfBoth", "AC-DE--", "--FDEFG", 0},
                                         Rows{"NoneInEmptyRows", "", "", 0}),
                         [](const auto &made) { return std::string(made.param.name); });

class ModelFiguresTest : public ModellingFolder
{
protected:
    [[nodiscard]] kestram::ModellingInput input(const std::string &templateRow,
                                                const std::string &targetRow) const
    {
        std::string letters = templateRow;
        std::erase(letters, '-');
        return kestram::readInput(write("seq.ali", pir(templateRow, targetRow)),
                                  write("str.pdb", pdb(letters)))
            .value();
    }
};

TEST_F(ModelFiguresTest, TellHowMuchOfTheTargetIsBuiltAndHowFarFromTheTemplate)
{
    // The test's atoms stand in a line, 3.8 apart.
    const auto figures =
        figuresOf(input("ACDEFG--", "ACDEFGHK"), write("model.pdb", pdb("ACDEFG")));
    ASSERT_TRUE(figures) << figures.error().message();
    EXPECT_EQ(figures.value().modelled, 6U);
    ASSERT_TRUE(figures.value().fit);
    EXPECT_EQ(figures.value().fit->count, 6U);
    EXPECT_NEAR(figures.value().fit->distance, 0, 1e-3);
}

TEST_F(ModelFiguresTest, OfAnotherSequenceNothingIsModelled)
{
    const auto figures = figuresOf(input("ACDEFG", "ACDEFG"), write("model.pdb", pdb("WWWWWW")));
    ASSERT_TRUE(figures);
    EXPECT_EQ(figures.value().modelled, 0U);
    EXPECT_FALSE(figures.value().fit);
}

TEST_F(ModelFiguresTest, AModelThatIsNoStructureIsAFailureThatNamesIt)
{
    for (const char *text : {"", "ATOM  the model\nEND\n", "END\n"}) {
        const auto figures = figuresOf(input("ACDEFG", "ACDEFG"), write("model.pdb", text));
        ASSERT_FALSE(figures) << text;
        EXPECT_THAT(figures.error().message(), HasSubstr("model.pdb"));
    }
    EXPECT_FALSE(figuresOf(input("ACDEFG", "ACDEFG"), path() / "none.pdb"));
}

} // namespace ModelFiguresTest
