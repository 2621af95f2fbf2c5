// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureFits.h"

#include "Alignment.h"
#include "PluginValues.h"
#include "Structure.h"
#include "SuperposePlan.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace TAMBO {

namespace {

struct PlannedFit
{
    StructureFit fit;
    // Where the structure would go; nothing when there is a problem.
    std::vector<StructureMotion> motion;
    double rmsdAfter = 0;
};

StructureFit problemOf(unsigned long row, std::string problem)
{
    StructureFit fit;
    fit.row = row;
    fit.problem = std::move(problem);
    return fit;
}

PlannedFit planFit(const Alignment &alignment, unsigned long fixed, unsigned long row,
                   const FitChoice &choice)
{
    PlannedFit planned{problemOf(row, {}), {}, 0};
    const Result<SuperposePlan> plan = planSuperposition(alignment, {fixed, row}, choice);
    if (!plan) {
        planned.fit.problem = plan.error().message();
        return planned;
    }
    const PlannedMove &move = plan.value().moves.front();
    planned.fit.pairs = plan.value().columns;
    planned.fit.rmsd = move.rmsdBefore;
    planned.fit.corePairs = move.corePairs;
    planned.fit.coreRmsd = move.rmsdCore;
    planned.fit.coreRmsdNow = move.rmsdCoreBefore;
    planned.motion.push_back(move.motion);
    planned.rmsdAfter = move.rmsdAfter;
    return planned;
}

bool isNear(const Vertex &a, const Vertex &b)
{
    return std::hypot(double(a.x()) - b.x(), double(a.y()) - b.y(), double(a.z()) - b.z()) <
           StructureFits::kNear;
}

bool staysNear(const Alignment &alignment, unsigned long row, const Superposition &motion)
{
    std::vector<Vertex> places;
    alignment.readPositions(row, 0, alignment.width(), places);
    return std::ranges::all_of(places, [&motion](const Vertex &place) {
        return !place.isDefined() || isNear(place, motion(place));
    });
}

constexpr char kChoiceOf[] = "tambo";
constexpr char kChoiceKey[] = "superposed-by";
constexpr char kInRange[] = " range";

// "2", or "0 range"; empty for what there is without a value.
std::string textOf(const FitChoice &choice)
{
    if (choice == FitChoice())
        return {};
    char number[32];
    const auto [end, error] = std::to_chars(number, number + sizeof number, choice.cutoff);
    return std::string(number, end) + (choice.isOfAll() ? "" : kInRange);
}

} // namespace

std::vector<StructureRow> StructureFits::rows(const Alignment &alignment)
{
    std::vector<StructureRow> found;
    for (const SuperposableRow &row : superposableRows(alignment)) {
        if (std::ranges::find(found, row.structure, &StructureRow::structure) == found.end())
            found.push_back({row.row, row.structure});
    }
    return found;
}

Compound *StructureFits::structureOf(const Alignment &alignment, unsigned long row)
{
    const auto found = superposableRow(alignment, row);
    return found ? found->structure : nullptr;
}

StructureFit StructureFits::measure(const Alignment &alignment, unsigned long fixed,
                                    unsigned long row, const FitChoice &choice)
{
    return planFit(alignment, fixed, row, choice).fit;
}

std::vector<StructureFit> StructureFits::superpose(const Alignment &alignment, unsigned long fixed,
                                                   const std::vector<unsigned long> &rows,
                                                   const FitChoice &choice)
{
    std::vector<StructureFit> fits;
    std::vector<StructureMotion> motions;
    for (const unsigned long row : rows) {
        PlannedFit planned = planFit(alignment, fixed, row, choice);
        for (const StructureMotion &motion : planned.motion) {
            if (std::ranges::find(motions, motion.structure, &StructureMotion::structure) !=
                motions.end()) {
                planned.fit = problemOf(row, motion.structure->Name() +
                                                 " belongs to another one of the rows, too.");
            } else if (!staysNear(alignment, row, motion.motion)) {
                planned.fit.rmsd = planned.rmsdAfter;
                planned.fit.coreRmsdNow = planned.fit.coreRmsd;
                planned.fit.hasMoved = true;
                motions.push_back(motion);
            }
        }
        fits.push_back(std::move(planned.fit));
    }
    if (!moveStructures(motions)) {
        for (StructureFit &fit : fits)
            if (fit.hasMoved)
                fit = problemOf(fit.row, "The structures cannot be changed now.");
    }
    return fits;
}

FitChoice StructureFits::lastChoice(const Alignment &alignment)
{
    FitChoice choice;
    const std::optional<std::string> text = PluginValues::Get(&alignment, kChoiceOf, kChoiceKey);
    if (!text)
        return choice;
    // Sessions are files, and anybody may write them.
    double cutoff = 0;
    const char *const end = text->data() + text->size();
    const auto [behind, error] = std::from_chars(text->data(), end, cutoff);
    if (error != std::errc() || !std::isfinite(cutoff) || cutoff < 0)
        return choice;
    choice.cutoff = cutoff;
    const Alignment::Range &range = alignment.range();
    if (std::string_view(behind, std::size_t(end - behind)) == kInRange &&
        range.first < range.second && (range.first > 0 || range.second < alignment.width())) {
        choice.begin = range.first;
        choice.end = range.second;
    }
    return choice;
}

void StructureFits::keepChoice(Alignment &alignment, const FitChoice &choice)
{
    if (alignment.IsLocked())
        return;
    if (const std::string text = textOf(choice); text.empty())
        PluginValues::Remove(&alignment, kChoiceOf, kChoiceKey);
    else
        PluginValues::Set(&alignment, kChoiceOf, kChoiceKey, text);
}

} // namespace TAMBO
