// SPDX-License-Identifier: GPL-3.0-or-later
// Distances, angles and torsions of points in space.
#pragma once

#include "Vec3.h"

#include <optional>
#include <span>

namespace structures {

// In degrees, from 0 to 180, between the ways from vertex to a and to b. Nothing where two of them
// are one point.
[[nodiscard]] std::optional<double> angleAt(Vec3 vertex, Vec3 a, Vec3 b) noexcept;

// In degrees, more than -180 and up to 180, by the convention of the IUPAC-IUB Commission on
// Biochemical Nomenclature, Biochemistry 9, 3471 (1970): 0 where a and d are on the same side
// (cis), positive when, looking from b to c, the bond in front has to be turned clockwise to cover
// the one behind. Nothing where three that follow each other are on a line.
[[nodiscard]] std::optional<double> torsion(Vec3 a, Vec3 b, Vec3 c, Vec3 d) noexcept;

// The distance of two points in Angstrom, the angle of three at the second, the torsion of four.
[[nodiscard]] std::optional<double> measured(std::span<const Vec3> points) noexcept;

} // namespace structures
