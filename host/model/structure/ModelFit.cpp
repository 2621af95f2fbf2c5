// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModelFit.h"

#include "SequenceMatch.h"
#include "Text.h"

#include <algorithm>

namespace TAMBO {

namespace {

// Fewer equal letters, in percent of the model's, mean that it was built for another sequence.
constexpr std::size_t kLeastIdentity = 70;
// In Angstrom; only a model that does not lie on its template leaves this much to be gained by
// moving it.
constexpr double kWorthMoving = 0.5;
// Fewer points can be laid on each other in more than one way.
constexpr std::size_t kLeastPairs = 3;

bool areSameLetter(char a, char b)
{
    return smallLetter(a) == smallLetter(b);
}

std::vector<PointPair> pairsOf(const ModelRows &rows, const std::vector<Vertex> &targetPlaces)
{
    std::vector<PointPair> pairs;
    std::size_t letter = 0;
    std::size_t target = 0;
    for (std::size_t col = 0; col < std::min(rows.templateRow.size(), rows.targetRow.size());
         ++col) {
        const bool isTemplate = rows.templateRow[col] != '-';
        const bool isTarget = rows.targetRow[col] != '-';
        if (isTemplate && isTarget && letter < rows.templatePlaces.size() &&
            target < targetPlaces.size()) {
            const PointPair pair{targetPlaces[target], rows.templatePlaces[letter]};
            if (pair.moving.isDefined() && pair.fixed.isDefined())
                pairs.push_back(pair);
        }
        letter += isTemplate ? 1 : 0;
        target += isTarget ? 1 : 0;
    }
    return pairs;
}

} // namespace

std::string modelLetters(const StructureRecord &model)
{
    std::string letters;
    for (const ResidueRecord *const residue : modelResidues(model))
        letters += residue->letter;
    return letters;
}

std::vector<ModelRun> modelRuns(const std::string &target, const std::string &model)
{
    std::vector<ModelRun> runs;
    std::size_t equal = 0;
    for (const MatchRun &match : matchSequences(target, model, {}).runs) {
        for (std::size_t i = 0; i < match.count; ++i) {
            if (!areSameLetter(target[match.first + i], model[match.second + i]))
                continue;
            ++equal;
            const bool goesOn = !runs.empty() &&
                                runs.back().target + runs.back().count == match.first + i &&
                                runs.back().model + runs.back().count == match.second + i;
            if (goesOn)
                ++runs.back().count;
            else
                runs.push_back({match.first + i, match.second + i, 1});
        }
    }
    return equal * 100 < model.size() * kLeastIdentity ? std::vector<ModelRun>() : runs;
}

Vertex alphaPlace(const ResidueRecord &residue)
{
    const auto atom = std::ranges::find(residue.atoms, "CA", &AtomRecord::name);
    return atom == residue.atoms.end() ? Vertex() : atom->position;
}

std::optional<ModelFit> fitModel(const ModelRows &rows, const StructureRecord &model,
                                 const std::vector<ModelRun> &runs)
{
    const std::vector<const ResidueRecord *> built = modelResidues(model);
    std::vector<Vertex> places(
        std::size_t(std::ranges::count_if(rows.targetRow, [](char cell) { return cell != '-'; })));
    for (const ModelRun &run : runs) {
        for (std::size_t i = 0; i < run.count && run.target + i < places.size(); ++i)
            places[run.target + i] = alphaPlace(*built[run.model + i]);
    }
    std::vector<PointPair> pairs = pairsOf(rows, places);
    if (pairs.size() < kLeastPairs)
        return std::nullopt;
    ModelFit fit{rootMeanSquareDistance(pairs), pairs.size(), {}};
    const Superposition superposition(pairs);
    for (PointPair &pair : pairs)
        pair.moving = superposition(pair.moving);
    const double after = rootMeanSquareDistance(pairs);
    if (fit.distance - after > kWorthMoving && after < fit.distance / 2) {
        fit.distance = after;
        fit.motion = superposition;
    }
    return fit;
}

} // namespace TAMBO
