// SPDX-License-Identifier: GPL-3.0-or-later
// A point or a direction in space, in Angstrom where it is a length.
#pragma once

#include <cmath>

namespace structures {

struct Vec3
{
    float x = 0;
    float y = 0;
    float z = 0;

    friend constexpr bool operator==(const Vec3 &, const Vec3 &) = default;
    friend constexpr Vec3 operator+(Vec3 a, Vec3 b) noexcept
    {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    friend constexpr Vec3 operator-(Vec3 a, Vec3 b) noexcept
    {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    friend constexpr Vec3 operator-(Vec3 a) noexcept { return {-a.x, -a.y, -a.z}; }
    friend constexpr Vec3 operator*(Vec3 a, float f) noexcept
    {
        return {a.x * f, a.y * f, a.z * f};
    }
    friend constexpr Vec3 operator*(float f, Vec3 a) noexcept { return a * f; }
};

[[nodiscard]] constexpr float dot(Vec3 a, Vec3 b) noexcept
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

[[nodiscard]] constexpr Vec3 cross(Vec3 a, Vec3 b) noexcept
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

[[nodiscard]] inline float length(Vec3 a) noexcept
{
    return std::sqrt(dot(a, a));
}

[[nodiscard]] inline float distance(Vec3 a, Vec3 b) noexcept
{
    return length(a - b);
}

// The zero vector stays what it is.
[[nodiscard]] inline Vec3 normalized(Vec3 a) noexcept
{
    const float size = length(a);
    return size > 0 ? a * (1 / size) : a;
}

[[nodiscard]] inline bool isFinite(Vec3 a) noexcept
{
    return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z);
}

// Some unit vector at right angles to a unit vector.
[[nodiscard]] inline Vec3 anyPerpendicular(Vec3 a) noexcept
{
    const Vec3 other = std::abs(a.x) < 0.6F ? Vec3{1, 0, 0} : Vec3{0, 1, 0};
    return normalized(cross(a, other));
}

} // namespace structures
