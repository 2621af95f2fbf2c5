// SPDX-License-Identifier: GPL-3.0-or-later
// What a modelling engine has built, held against what it was asked for: which letters of the
// target the model has, and how it lies on the template.
#pragma once

#include "Records.h"
#include "Superposition.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO {

// Residues [model, model + count) of a model are letters [target, target + count).
struct ModelRun
{
    std::size_t target = 0;
    std::size_t model = 0;
    std::size_t count = 0;
};

// The amino acids of a model, which has one chain.
template <typename Model> auto modelResidues(Model &model)
{
    std::vector<decltype(&model.chains.front().residues.front())> residues;
    if (model.chains.empty())
        return residues;
    for (auto &residue : model.chains.front().residues) {
        if (residue.isAminoAcid)
            residues.push_back(&residue);
    }
    return residues;
}

[[nodiscard]] std::string modelLetters(const StructureRecord &model);

// Where target and model have the same letter; nothing when they are not of one sequence.
[[nodiscard]] std::vector<ModelRun> modelRuns(const std::string &target, const std::string &model);

// Of the CA atom; undefined without one.
[[nodiscard]] Vertex alphaPlace(const ResidueRecord &residue);

struct ModelRows
{
    // The rows, with '-' for gaps.
    std::string templateRow;
    std::string targetRow;
    // The CA atoms of the template's letters, as far as there are any.
    std::vector<Vertex> templatePlaces;
};

struct ModelFit
{
    // Root mean square distance of the CA atoms in columns that both fill, in Angstrom, and their
    // count.
    double distance = 0;
    std::size_t count = 0;
    // Engines build in the place of the template. For one that does not: what brings the model
    // there, where it has that distance.
    std::optional<Superposition> motion;
};

// The runs are those of the target's letters. Nothing with fewer atoms than it takes to lay one on
// the other.
[[nodiscard]] std::optional<ModelFit> fitModel(const ModelRows &rows, const StructureRecord &model,
                                               const std::vector<ModelRun> &runs);

} // namespace TAMBO
