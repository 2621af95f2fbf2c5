// SPDX-License-Identifier: GPL-3.0-or-later
// A rotation, as a unit quaternion.
#pragma once

#include "Vec3.h"

#include <array>
#include <cmath>

namespace structures {

// Rows of a matrix that turns a point.
using Matrix3 = std::array<Vec3, 3>;

[[nodiscard]] constexpr Vec3 operator*(const Matrix3 &m, Vec3 v) noexcept
{
    return {dot(m[0], v), dot(m[1], v), dot(m[2], v)};
}

class Rotation
{
public:
    Rotation() = default;

    // Counterclockwise as seen from where the axis, of any length but zero, points to. In radians.
    [[nodiscard]] static Rotation about(Vec3 axis, float angle) noexcept
    {
        const Vec3 unit = normalized(axis);
        const float sine = std::sin(angle / 2);
        return Rotation(std::cos(angle / 2), unit * sine);
    }
    // The real part first.
    [[nodiscard]] std::array<float, 4> numbers() const noexcept
    {
        return {m_Real, m_Axis.x, m_Axis.y, m_Axis.z};
    }

    // Of what numbers() gave, or of any others: of such as turn nothing, no rotation.
    [[nodiscard]] static Rotation ofNumbers(const std::array<float, 4> &numbers) noexcept
    {
        Rotation rotation(numbers[0], {numbers[1], numbers[2], numbers[3]});
        rotation.normalize();
        return rotation;
    }

    [[nodiscard]] Matrix3 matrix() const noexcept
    {
        const float w = m_Real;
        const auto [x, y, z] = m_Axis;
        return {Vec3{1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y)},
                Vec3{2 * (x * y + w * z), 1 - 2 * (x * x + z * z), 2 * (y * z - w * x)},
                Vec3{2 * (x * z - w * y), 2 * (y * z + w * x), 1 - 2 * (x * x + y * y)}};
    }

    // First b, then a.
    friend Rotation operator*(const Rotation &a, const Rotation &b) noexcept
    {
        Rotation product(a.m_Real * b.m_Real - dot(a.m_Axis, b.m_Axis),
                         a.m_Real * b.m_Axis + b.m_Real * a.m_Axis + cross(a.m_Axis, b.m_Axis));
        product.normalize();
        return product;
    }

    // The way from a to b by the shorter side, at t from 0 to 1.
    [[nodiscard]] static Rotation between(const Rotation &a, const Rotation &b, float t) noexcept
    {
        const float sign = a.m_Real * b.m_Real + dot(a.m_Axis, b.m_Axis) < 0 ? -1.0F : 1.0F;
        Rotation mixed(a.m_Real * (1 - t) + sign * b.m_Real * t,
                       a.m_Axis * (1 - t) + b.m_Axis * (sign * t));
        mixed.normalize();
        return mixed;
    }

    friend bool operator==(const Rotation &, const Rotation &) = default;

private:
    Rotation(float real, Vec3 axis) noexcept : m_Real(real), m_Axis(axis) { }

    void normalize() noexcept
    {
        const float size = std::sqrt(m_Real * m_Real + dot(m_Axis, m_Axis));
        if (!(size > 0) || !std::isfinite(size)) {
            *this = {};
            return;
        }
        m_Real /= size;
        m_Axis = m_Axis * (1 / size);
    }

    float m_Real = 1;
    Vec3 m_Axis;
};

} // namespace structures
