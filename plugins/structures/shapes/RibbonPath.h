// SPDX-License-Identifier: GPL-3.0-or-later
// The curve along which a cartoon is drawn, and how wide and thick it is there.
#pragma once

#include "Style.h"
#include "TraceRuns.h"

#include <vector>

namespace structures {

// A cross-section: an ellipse around centre, with the half axes width along side and thickness
// along up.
struct RibbonRing
{
    Vec3 centre;
    Vec3 side;
    Vec3 up;
    float width;
    float thickness;
    // The residue that what lies between this ring and the next one belongs to; kNone where nothing
    // is drawn.
    std::uint32_t residue;
};

// Rings along a run of at least two residues, steps of them a residue. The curve is a cubic Hermite
// spline through the trace points with the tangents of E. Catmull and R. Rom (1974), so that it
// passes through CA; within strands the points are averaged with their neighbours first. The ribbon
// turns with the peptide planes, after M. Carson and C. E. Bugg, J. Mol. Graph. 4, 121 (1986), or
// with the bends of the trace where there is no oxygen.
[[nodiscard]] std::vector<RibbonRing> ribbonPath(const Molecule &molecule, const TraceRun &run,
                                                 const std::vector<ResidueStyle> &styles,
                                                 int steps);

} // namespace structures
