// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Shapes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace structures {

// What has been found at each point of a raster: how near it is, what it belongs to, how much light
// it gets. Rows from top to bottom.
class Samples
{
public:
    static constexpr float kNothing = -std::numeric_limits<float>::infinity();
    static constexpr std::size_t kBytes = sizeof(float) + sizeof(Pick) + sizeof(std::uint16_t);

    void resize(int width, int height)
    {
        m_Width = width;
        m_Height = height;
        const std::size_t size = std::size_t(width) * std::size_t(height);
        keys.resize(size);
        picks.resize(size);
        shades.resize(size);
    }
    void clearRows(int begin, int end)
    {
        const std::size_t from = std::size_t(begin) * std::size_t(m_Width);
        const std::size_t to = std::size_t(end) * std::size_t(m_Width);
        std::fill(keys.begin() + std::ptrdiff_t(from), keys.begin() + std::ptrdiff_t(to), kNothing);
        std::fill(picks.begin() + std::ptrdiff_t(from), picks.begin() + std::ptrdiff_t(to), 0U);
    }

    [[nodiscard]] int width() const noexcept { return m_Width; }
    [[nodiscard]] int height() const noexcept { return m_Height; }
    [[nodiscard]] std::size_t at(int x, int y) const noexcept
    {
        return std::size_t(y) * std::size_t(m_Width) + std::size_t(x);
    }

    // As Projection says.
    std::vector<float> keys;
    std::vector<Pick> picks;
    // Diffuse light in the lower eight bits, the light that is mirrored above.
    std::vector<std::uint16_t> shades;

private:
    int m_Width = 0;
    int m_Height = 0;
};

} // namespace structures
