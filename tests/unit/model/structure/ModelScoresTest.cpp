// SPDX-License-Identifier: GPL-3.0-or-later
// Scores of a model's residues, in its file and with its structure.
#include "ModelScores.h"

#include "unit/model/SuperposeFixture.h"

#include "PluginValues.h"

using namespace TAMBO;

namespace ModelScoresTest {

using ModelScoresTest = SuperposeFixture;

std::optional<std::string> kept(const Structure &model)
{
    return PluginValues::Get(&model, kScoresOf, kScoresKey);
}

TEST_F(ModelScoresTest, RemarksGiveBackWhatTheyWereMadeOf)
{
    const ModelScores scores = {{3, -1.25}, {4, 0}, {12, 10.0625}};
    const std::string remarks = scoreRemarks(scores);
    EXPECT_EQ(remarks, "REMARK   6 KESTRAM SCORE OF LETTER 3 -1.2500\n"
                       "REMARK   6 KESTRAM SCORE OF LETTER 4 0.0000\n"
                       "REMARK   6 KESTRAM SCORE OF LETTER 12 10.0625\n");
    EXPECT_EQ(scoresInRemarks(remarks + "ATOM      1  CA  ALA A   1\n"), scores);
    EXPECT_EQ(scoreRemarks({}), "");
}

TEST_F(ModelScoresTest, OtherLinesAndDamagedOnesArePassedOver)
{
    EXPECT_EQ(scoresInRemarks("REMARK   1 of others\r\n"
                              "REMARK   6 KESTRAM SCORE OF LETTER 5 0.5000   \r\n"
                              "REMARK   6 KESTRAM SCORE OF LETTER x 0.5\n"
                              "REMARK   6 KESTRAM SCORE OF LETTER 6\n"
                              "REMARK   6 KESTRAM SCORE OF LETTER 7 nan\n"
                              "REMARK   6 KESTRAM SCORE OF LETTER 8 1.5x\n"
                              "ATOM      1  CA\n"
                              "REMARK   6 KESTRAM SCORE OF LETTER 9 1\n"),
              (ModelScores{{5, 0.5}}));
    EXPECT_EQ(scoresInRemarks(""), ModelScores());
}

TEST_F(ModelScoresTest, TheStructureKeepsTheScoresOfItsOwnResidues)
{
    Structure &model = structureAt("model", randomFold(5, 1));
    // Two letters of the target are not in the model, one has no score.
    keepScores(model, {{2, 9}, {3, -1}, {4, 0.5}, {8, 2}}, {{2, 0, 3}, {6, 3, 2}});
    EXPECT_EQ(kept(model), "-1.0000 0.5000 - - 2.0000");
}

TEST_F(ModelScoresTest, WithoutScoresNothingIsKept)
{
    Structure &model = structureAt("model", randomFold(5, 1));
    keepScores(model, {}, {{0, 0, 5}});
    keepScores(model, {{9, 1}}, {{0, 0, 5}});
    keepScores(model, {{1, 1}}, {});
    EXPECT_EQ(kept(model), std::nullopt);
}

} // namespace ModelScoresTest
