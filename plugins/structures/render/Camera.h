// SPDX-License-Identifier: GPL-3.0-or-later
// Where the picture is taken from, and the arithmetic of projecting.
#pragma once

#include "Rotation.h"

#include <algorithm>
#include <limits>

namespace structures {

struct Camera
{
    Rotation rotation;
    // What is in the middle of the picture, in Angstrom.
    Vec3 target;
    // How much of space is seen at the target, from the picture's bottom to its top.
    float height = 50;
    bool isPerspective = false;
    // Nothing is seen that is nearer to the viewer, or farther away, than the target by so much.
    float slabFront = std::numeric_limits<float>::infinity();
    float slabBack = std::numeric_limits<float>::infinity();

    friend bool operator==(const Camera &, const Camera &) = default;
};

// A camera and a picture of a certain size. View coordinates: x to the right, y upwards, z to the
// viewer, in Angstrom, 0 at the target. Picture coordinates: pixels from the upper left corner, and
// a key that is the larger, the nearer a point is, and linear between points that are on a line of
// the picture.
class Projection
{
public:
    // The full angle between bottom and top of a picture in perspective.
    static constexpr float kFieldOfView = 0.52F;

    Projection(const Camera &camera, float widthPixels, float heightPixels) noexcept
        : m_Matrix(camera.rotation.matrix()),
          m_Target(camera.target),
          m_MiddleX(widthPixels / 2),
          m_MiddleY(heightPixels / 2),
          m_Scale(heightPixels / camera.height),
          m_IsPerspective(camera.isPerspective),
          m_EyeDistance(camera.height / (2 * std::tan(kFieldOfView / 2))),
          m_Front(camera.slabFront),
          m_Back(-camera.slabBack)
    {
        // In front of the eye with something to spare.
        if (m_IsPerspective)
            m_Front = std::min(m_Front, 0.95F * m_EyeDistance);
    }

    // The same for what is moved by offset.
    [[nodiscard]] Projection moved(Vec3 offset) const noexcept
    {
        Projection other(*this);
        other.m_Target = m_Target - offset;
        return other;
    }

    [[nodiscard]] const Matrix3 &matrix() const noexcept { return m_Matrix; }
    // Pixels an Angstrom, at the target.
    [[nodiscard]] float scale() const noexcept { return m_Scale; }
    [[nodiscard]] bool isPerspective() const noexcept { return m_IsPerspective; }
    [[nodiscard]] float eyeDistance() const noexcept { return m_EyeDistance; }
    // Of z: what is seen is between them.
    [[nodiscard]] float front() const noexcept { return m_Front; }
    [[nodiscard]] float back() const noexcept { return m_Back; }

    [[nodiscard]] Vec3 toView(Vec3 point) const noexcept { return m_Matrix * (point - m_Target); }
    [[nodiscard]] Vec3 fromView(Vec3 point) const noexcept
    {
        return m_Matrix[0] * point.x + m_Matrix[1] * point.y + m_Matrix[2] * point.z + m_Target;
    }
    // x and y in pixels, the key as z. Of a point that is not behind the eye.
    [[nodiscard]] Vec3 toPicture(Vec3 view) const noexcept
    {
        if (!m_IsPerspective)
            return {m_MiddleX + view.x * m_Scale, m_MiddleY - view.y * m_Scale, view.z};
        const float inverse = 1 / (m_EyeDistance - view.z);
        const float scale = m_Scale * m_EyeDistance * inverse;
        return {m_MiddleX + view.x * scale, m_MiddleY - view.y * scale, inverse};
    }
    [[nodiscard]] float keyOf(float z) const noexcept
    {
        return m_IsPerspective ? 1 / (m_EyeDistance - z) : z;
    }
    [[nodiscard]] float depthOf(float key) const noexcept
    {
        return m_IsPerspective ? m_EyeDistance - 1 / key : key;
    }
    // The point at z of which a place of the picture is the projection.
    [[nodiscard]] Vec3 toViewAt(float x, float y, float z) const noexcept
    {
        const float shrink = m_IsPerspective ? (m_EyeDistance - z) / m_EyeDistance : 1;
        return {(x - m_MiddleX) / m_Scale * shrink, (m_MiddleY - y) / m_Scale * shrink, z};
    }

private:
    Matrix3 m_Matrix;
    Vec3 m_Target;
    float m_MiddleX;
    float m_MiddleY;
    float m_Scale;
    bool m_IsPerspective;
    float m_EyeDistance;
    float m_Front;
    float m_Back;
};

} // namespace structures
