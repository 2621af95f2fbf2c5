// SPDX-License-Identifier: GPL-3.0-or-later
// What goes along the rows of a raster, on all processors.
#pragma once

#include "Camera.h"
#include "Parallel.h"
#include "Samples.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

namespace structures {

inline constexpr int kRowsAtOnce = 16;

template <typename Work> void byRows(int rows, const Work &work)
{
    inParallel(std::size_t((rows + kRowsAtOnce - 1) / kRowsAtOnce), [&](std::size_t piece) {
        const int end = std::min(rows, int(piece + 1) * kRowsAtOnce);
        for (int y = int(piece) * kRowsAtOnce; y < end; ++y)
            work(y);
    });
}

// Calls work with what the loops over samples are compiled for.
template <typename Work> void withKind(int perAxis, const Projection &projection, const Work &work)
{
    const auto withAxis = [&](auto axis) {
        if (projection.isPerspective())
            work(axis, std::true_type());
        else
            work(axis, std::false_type());
    };
    if (perAxis == 1)
        withAxis(std::integral_constant<int, 1>());
    else
        withAxis(std::integral_constant<int, 2>());
}

// As Projection has it, without a question for each sample.
template <bool kIsPerspective> [[nodiscard]] float depthOf(float key, float eyeDistance) noexcept
{
    if constexpr (kIsPerspective)
        return eyeDistance - 1 / key;
    else
        return key;
}

// Where in a row of pixels any of its samples is.
[[nodiscard]] inline Samples::Stretch pixelStretch(const Samples &samples, int perAxis, int y)
{
    Samples::Stretch all = samples.stretches[std::size_t(y) * std::size_t(perAxis)];
    for (int sy = y * perAxis + 1; sy < (y + 1) * perAxis; ++sy) {
        const Samples::Stretch &own = samples.stretches[std::size_t(sy)];
        if (all.begin >= all.end)
            all = own;
        else if (own.begin < own.end)
            all = {std::min(all.begin, own.begin), std::max(all.end, own.end)};
    }
    return {all.begin / perAxis, (all.end + perAxis - 1) / perAxis};
}

// Memory for a row that each thread keeps from row to row.
struct RowMemory
{
    std::vector<float> floats[3];
    std::vector<std::uint32_t> pixels[2];
    std::vector<std::uint8_t> bytes[2];
};

[[nodiscard]] inline RowMemory &rowMemory(std::size_t samples)
{
    thread_local RowMemory memory;
    for (auto &own : memory.floats)
        own.resize(std::max(own.size(), samples));
    for (auto &own : memory.pixels)
        own.resize(std::max(own.size(), samples));
    for (auto &own : memory.bytes)
        own.resize(std::max(own.size(), samples));
    return memory;
}

} // namespace structures
