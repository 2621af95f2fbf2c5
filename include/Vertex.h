// SPDX-License-Identifier: GPL-3.0-or-later
// Coordinates: a fixed-length vector and a point that may be undefined.
#pragma once

#include <array>
#include <cstddef>

namespace TAMBO {

template <typename T, std::size_t N> class Vector
{
public:
    constexpr Vector() = default;
    template <typename... Values>
        requires(sizeof...(Values) == N)
    constexpr explicit Vector(Values... values) noexcept : m_Values{static_cast<T>(values)...} { }

    [[nodiscard]] constexpr T &operator[](std::size_t i) noexcept { return m_Values[i]; }
    [[nodiscard]] constexpr const T &operator[](std::size_t i) const noexcept
    {
        return m_Values[i];
    }
    [[nodiscard]] static constexpr std::size_t size() noexcept { return N; }

    friend constexpr bool operator==(const Vector &, const Vector &) = default;

private:
    std::array<T, N> m_Values{};
};

// A point in Angstrom. A default-constructed one is undefined: its coordinates are 0 and mean
// nothing.
class Vertex
{
public:
    constexpr Vertex() = default;
    constexpr Vertex(float x, float y, float z) noexcept : m_Coordinates(x, y, z), m_Defined(true)
    { }

    [[nodiscard]] constexpr float x() const noexcept { return m_Coordinates[0]; }
    [[nodiscard]] constexpr float y() const noexcept { return m_Coordinates[1]; }
    [[nodiscard]] constexpr float z() const noexcept { return m_Coordinates[2]; }
    [[nodiscard]] constexpr const Vector<float, 3> &coordinates() const noexcept
    {
        return m_Coordinates;
    }
    [[nodiscard]] constexpr bool isDefined() const noexcept { return m_Defined; }

private:
    Vector<float, 3> m_Coordinates;
    bool m_Defined = false;
};

} // namespace TAMBO
