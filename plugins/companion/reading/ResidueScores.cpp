// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueScores.h"

#include "Alignment.h"
#include "PluginValues.h"
#include "StructureDetails.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <string>
#include <utility>

namespace companion {

namespace {

// The workbench's.
constexpr char kScoresOf[] = "kestram";
constexpr char kScoresKey[] = "residue-scores";

using Scores = std::vector<std::optional<double>>;

// Of the first chain of its structure.
Scores scoresOfChain(const TAMBO::Compound &chain)
{
    const TAMBO::Compound *const structure = chain.Parent();
    if (structure == nullptr || structure->ChildCount() == 0 || structure->Child(0) != &chain)
        return {};
    return scoresIn(PluginValues::Get(structure, kScoresOf, kScoresKey).value_or(""));
}

} // namespace

ResidueScores::ResidueScores(std::vector<std::optional<double>> scores)
    : m_Scores(std::move(scores))
{
    for (const std::optional<double> &score : m_Scores)
        if (score)
            m_Order.push_back(*score);
    std::ranges::sort(m_Order);
}

std::optional<double> ResidueScores::of(std::size_t residue) const
{
    return residue < m_Scores.size() ? m_Scores[residue] : std::nullopt;
}

std::optional<std::size_t> ResidueScores::partOf(std::size_t residue, std::size_t parts) const
{
    const std::optional<double> score = of(residue);
    if (!score)
        return std::nullopt;
    const auto below = std::size_t(std::ranges::lower_bound(m_Order, *score) - m_Order.begin());
    return below * parts / m_Order.size();
}

std::vector<std::optional<double>> scoresIn(std::string_view value)
{
    Scores scores;
    while (!value.empty()) {
        const std::size_t end = std::min(value.find(' '), value.size());
        const std::string_view word = value.substr(0, end);
        value.remove_prefix(std::min(end + 1, value.size()));
        double number = 0;
        const auto [behind, error] =
            std::from_chars(word.data(), word.data() + word.size(), number);
        const bool isNumber =
            error == std::errc() && behind == word.data() + word.size() && std::isfinite(number);
        scores.push_back(isNumber ? std::optional(number) : std::nullopt);
    }
    return scores;
}

bool hasScores(const TAMBO::Compound &object)
{
    return object.Kind() == TAMBO::CompoundKind::Structure &&
           PluginValues::Get(&object, kScoresOf, kScoresKey).has_value();
}

std::optional<ResidueScores> residueScores(const TAMBO::Alignment &alignment, unsigned long row)
{
    if (!alignment.hasPositions(row))
        return std::nullopt;
    std::map<const TAMBO::Compound *, Scores> known;
    Scores scores;
    bool isAny = false;
    for (const TAMBO::ResidueSource &source :
         TAMBO::StructureDetails::sources(alignment.GetSeq(row))) {
        std::optional<double> score;
        if (source.chain != nullptr) {
            auto found = known.find(source.chain);
            if (found == known.end())
                found = known.emplace(source.chain, scoresOfChain(*source.chain)).first;
            if (source.child < found->second.size())
                score = found->second[source.child];
        }
        isAny = isAny || score;
        scores.push_back(score);
    }
    return isAny ? std::optional(ResidueScores(std::move(scores))) : std::nullopt;
}

} // namespace companion
