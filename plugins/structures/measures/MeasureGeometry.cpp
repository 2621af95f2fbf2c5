// SPDX-License-Identifier: GPL-3.0-or-later
#include "MeasureGeometry.h"

#include <cmath>
#include <numbers>

namespace structures {

namespace {

constexpr double kDegrees = 180 / std::numbers::pi;
// Of what is one, relative to the lengths that it is computed from: places are floats.
constexpr double kNothing = 1e-6;

// In doubles, so that the digits that are shown are those of the places.
struct Way
{
    double x;
    double y;
    double z;

    Way(double along, double up, double out) noexcept : x(along), y(up), z(out) { }
    Way(Vec3 from, Vec3 to) noexcept
        : x(double(to.x) - double(from.x)),
          y(double(to.y) - double(from.y)),
          z(double(to.z) - double(from.z))
    { }

    [[nodiscard]] double dot(const Way &other) const noexcept
    {
        return x * other.x + y * other.y + z * other.z;
    }
    [[nodiscard]] Way cross(const Way &other) const noexcept
    {
        return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
    }
    [[nodiscard]] double length() const noexcept { return std::sqrt(dot(*this)); }
};

} // namespace

std::optional<double> angleAt(Vec3 vertex, Vec3 a, Vec3 b) noexcept
{
    const Way first(vertex, a);
    const Way second(vertex, b);
    if (!(first.length() > 0) || !(second.length() > 0))
        return std::nullopt;
    return kDegrees * std::atan2(first.cross(second).length(), first.dot(second));
}

std::optional<double> torsion(Vec3 a, Vec3 b, Vec3 c, Vec3 d) noexcept
{
    const Way first(a, b);
    const Way middle(b, c);
    const Way last(c, d);
    const Way front = first.cross(middle);
    const Way behind = middle.cross(last);
    if (!(front.length() > kNothing * first.length() * middle.length()) ||
        !(behind.length() > kNothing * middle.length() * last.length()))
        return std::nullopt;
    const double degrees =
        kDegrees * std::atan2(middle.length() * first.dot(behind), front.dot(behind));
    return degrees <= -180 ? degrees + 360 : degrees;
}

std::optional<double> measured(std::span<const Vec3> points) noexcept
{
    switch (points.size()) {
    case 2:
        return Way(points[0], points[1]).length();
    case 3:
        return angleAt(points[1], points[0], points[2]);
    case 4:
        return torsion(points[0], points[1], points[2], points[3]);
    default:
        return std::nullopt;
    }
}

} // namespace structures
