// SPDX-License-Identifier: GPL-3.0-or-later
// The rotation and shift that bring one set of points closest to another, pair by pair.
#pragma once

#include "Vertex.h"

#include <array>
#include <cstddef>
#include <vector>

namespace TAMBO {

struct PointPair
{
    Vertex moving;
    Vertex fixed;
};

// In Angstrom; 0 without pairs.
[[nodiscard]] double rootMeanSquareDistance(const std::vector<PointPair> &pairs);

class Superposition
{
public:
    // The best one in the sense of least squares, never a mirror image. Without pairs nothing
    // moves.
    explicit Superposition(const std::vector<PointPair> &pairs);

    // An undefined point stays as it is.
    [[nodiscard]] Vertex operator()(const Vertex &point) const;

    using Point = std::array<double, 3>;
    // What it does: it turns about the one centre and puts that where the other one is.
    [[nodiscard]] const std::array<Point, 3> &rotation() const noexcept { return m_Rotation; }
    [[nodiscard]] const Point &from() const noexcept { return m_From; }
    [[nodiscard]] const Point &to() const noexcept { return m_To; }

private:
    std::array<Point, 3> m_Rotation;
    // The centres of the moving and the fixed points.
    Point m_From{};
    Point m_To{};
};

} // namespace TAMBO
