// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureFits.h"

#include "Alignment.h"
#include "Structure.h"
#include "SuperposePlan.h"

#include <algorithm>
#include <cmath>
#include <string>
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

} // namespace TAMBO
