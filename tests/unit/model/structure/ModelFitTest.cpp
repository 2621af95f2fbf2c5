// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModelFit.h"

#include <gtest/gtest.h>

#include <cmath>

namespace ModelFitTest {

using TAMBO::fitModel;
using TAMBO::ModelFit;
using TAMBO::modelLetters;
using TAMBO::ModelRows;
using TAMBO::modelRuns;
using TAMBO::StructureRecord;
using TAMBO::Vertex;

// A curve that turns, so that it fits itself in one way only.
Vertex place(std::size_t index)
{
    const auto t = float(index);
    return {3 * std::cos(t), 3 * std::sin(t), 1.5F * t};
}

// Residues with these letters at the places of letters first, first + 1 …, shifted.
StructureRecord model(const std::string &letters, std::size_t first, float shift = 0)
{
    StructureRecord record;
    record.chains.emplace_back();
    for (std::size_t i = 0; i < letters.size(); ++i) {
        TAMBO::ResidueRecord residue;
        residue.letter = letters[i];
        residue.isAminoAcid = true;
        const Vertex there = place(first + i);
        residue.atoms.emplace_back();
        residue.atoms.back().name = "CA";
        residue.atoms.back().position = Vertex(there.x() + shift, there.y(), there.z());
        record.chains.back().residues.push_back(residue);
    }
    return record;
}

ModelRows job(const std::string &templateRow, const std::string &targetRow)
{
    ModelRows job{templateRow, targetRow, {}};
    for (std::size_t col = 0; col < templateRow.size(); ++col)
        if (templateRow[col] != '-')
            job.templatePlaces.push_back(place(col));
    return job;
}

std::optional<ModelFit> fitted(const ModelRows &job, const StructureRecord &built)
{
    std::string target = job.targetRow;
    std::erase(target, '-');
    return fitModel(job, built, modelRuns(target, modelLetters(built)));
}

TEST(ModelFit, RunsEndWhereLettersDiffer)
{
    const auto runs = modelRuns("ACDEFGHIKL", "DEFWHIK");
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(runs[0].target, 2U);
    EXPECT_EQ(runs[0].model, 0U);
    EXPECT_EQ(runs[0].count, 3U);
    EXPECT_EQ(runs[1].target, 6U);
    EXPECT_EQ(runs[1].model, 4U);
    EXPECT_EQ(runs[1].count, 3U);
}

TEST(ModelFit, ModelsOfAnotherSequenceHaveNoRuns)
{
    EXPECT_TRUE(modelRuns("ACDEFGHIKL", "WWWWWWWWWW").empty());
    EXPECT_TRUE(modelRuns("ACDEFGHIKL", "").empty());
}

TEST(ModelFit, AModelInItsPlaceIsMeasuredAsItLies)
{
    const auto fit = fitted(job("ACDEFGHI", "ACDEFGHI"), model("ACDEFGHI", 0, 0.25F));
    ASSERT_TRUE(fit);
    EXPECT_NEAR(fit->distance, 0.25, 1e-5);
    EXPECT_EQ(fit->count, 8U);
    EXPECT_FALSE(fit->motion);
}

TEST(ModelFit, AModelElsewhereIsMeasuredWhereItBelongs)
{
    const StructureRecord built = model("ACDEFGHI", 0, 50);
    const auto fit = fitted(job("ACDEFGHI", "ACDEFGHI"), built);
    ASSERT_TRUE(fit && fit->motion);
    EXPECT_NEAR(fit->distance, 0, 1e-3);
    const Vertex moved = (*fit->motion)(built.chains[0].residues[3].atoms[0].position);
    EXPECT_NEAR(moved.x(), place(3).x(), 1e-3);
}

TEST(ModelFit, OnlyColumnsThatBothFillCount)
{
    // Letters of the target are its columns here: those without a template lie anywhere.
    const auto fit = fitted(job("ACD--GHIKL", "ACDEFGHI--"), model("ACDEFGHI", 0));
    ASSERT_TRUE(fit);
    EXPECT_EQ(fit->count, 6U);
    EXPECT_NEAR(fit->distance, 0, 1e-5);
}

TEST(ModelFit, AtomsThatAreMissingCountOnNeitherSide)
{
    StructureRecord built = model("DEFGHI", 2);
    built.chains[0].residues[0].atoms.clear();
    ModelRows asked = job("ACDEFGHI", "ACDEFGHI");
    asked.templatePlaces[7] = Vertex();
    const auto fit = fitted(asked, built);
    ASSERT_TRUE(fit);
    EXPECT_EQ(fit->count, 4U);
    asked.templatePlaces.resize(4);
    EXPECT_FALSE(fitted(asked, built)) << "one pair says nothing";
}

TEST(ModelFit, AModelWithoutAChainHasNothingToMeasure)
{
    EXPECT_EQ(modelLetters(StructureRecord()), "");
    EXPECT_FALSE(fitModel(job("ACD", "ACD"), StructureRecord(), {}));
}

} // namespace ModelFitTest
