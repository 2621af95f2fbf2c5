// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Shapes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace structures {

// Without what was in it, and without a byte to spare when it grows.
template <typename Value> void resizeExactly(std::vector<Value> &values, std::size_t size)
{
    if (size > values.capacity())
        std::vector<Value>().swap(values);
    values.resize(size);
}

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
        resizeExactly(keys, size);
        resizeExactly(picks, size);
        resizeExactly(shades, size);
        resizeExactly(stretches, std::size_t(height));
    }
    void clearRows(int begin, int end)
    {
        const std::size_t from = std::size_t(begin) * std::size_t(m_Width);
        const std::size_t to = std::size_t(end) * std::size_t(m_Width);
        std::fill(keys.begin() + std::ptrdiff_t(from), keys.begin() + std::ptrdiff_t(to), kNothing);
        std::fill(picks.begin() + std::ptrdiff_t(from), picks.begin() + std::ptrdiff_t(to), 0U);
    }
    // Once all is found that is to be found in the rows.
    void findStretches(int begin, int end)
    {
        for (int y = begin; y < end; ++y) {
            const float *const row = &keys[at(0, y)];
            Stretch stretch{0, m_Width};
            while (stretch.begin < m_Width && row[stretch.begin] == kNothing)
                ++stretch.begin;
            while (stretch.end > stretch.begin && row[stretch.end - 1] == kNothing)
                --stretch.end;
            stretches[std::size_t(y)] = stretch;
        }
    }

    [[nodiscard]] std::size_t bytes() const noexcept
    {
        return keys.capacity() * sizeof(float) + picks.capacity() * sizeof(Pick) +
               shades.capacity() * sizeof(std::uint16_t) + stretches.capacity() * sizeof(Stretch);
    }

    [[nodiscard]] int width() const noexcept { return m_Width; }
    [[nodiscard]] int height() const noexcept { return m_Height; }
    [[nodiscard]] std::size_t at(int x, int y) const noexcept
    {
        return std::size_t(y) * std::size_t(m_Width) + std::size_t(x);
    }

    // Half-open; empty where nothing is.
    struct Stretch
    {
        int begin = 0;
        int end = 0;
    };

    // As Projection says.
    std::vector<float> keys;
    std::vector<Pick> picks;
    // Diffuse light in the lower eight bits, the light that is mirrored above.
    std::vector<std::uint16_t> shades;
    // Of each row: nothing is outside of it.
    std::vector<Stretch> stretches;

private:
    int m_Width = 0;
    int m_Height = 0;
};

} // namespace structures
