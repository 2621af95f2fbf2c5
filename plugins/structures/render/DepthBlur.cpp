// SPDX-License-Identifier: GPL-3.0-or-later
#include "DepthBlur.h"

#include "Parallel.h"

#include <algorithm>
#include <cstddef>

namespace structures {

namespace {

constexpr int kBlurredColumns = 64;
constexpr int kBlurredRows = 32;

// In doubles, since a sum that goes along would drift.
void blurRow(const float *in, float *out, int count, int radius)
{
    const auto at = [&](int i) { return double(in[std::clamp(i, 0, count - 1)]); };
    const double share = 1 / double(2 * radius + 1);
    double sum = 0;
    for (int i = -radius; i <= radius; ++i)
        sum += at(i);
    for (int i = 0; i < count; ++i) {
        out[i] = float(sum * share);
        sum += at(i + radius + 1) - at(i - radius);
    }
}

} // namespace

void blurDepths(std::vector<float> &depths, int width, int height, int radius)
{
    if (width <= 0 || height <= 0)
        return;
    std::vector<float> blurred(depths.size());
    inParallel(std::size_t((height + kBlurredRows - 1) / kBlurredRows), [&](std::size_t piece) {
        std::vector<float> once(static_cast<std::size_t>(width));
        const int end = std::min(height, int(piece + 1) * kBlurredRows);
        for (int y = int(piece) * kBlurredRows; y < end; ++y) {
            const std::size_t row = std::size_t(y) * std::size_t(width);
            blurRow(&depths[row], once.data(), width, radius);
            blurRow(once.data(), &blurred[row], width, radius);
        }
    });
    // Columns side by side, since each of them by itself would jump through all of the memory.
    inParallel(
        std::size_t((width + kBlurredColumns - 1) / kBlurredColumns), [&](std::size_t piece) {
            const int left = int(piece) * kBlurredColumns;
            const auto columns = std::size_t(std::min(kBlurredColumns, width - left));
            const auto rowAt = [&](int y) {
                return &blurred[std::size_t(std::clamp(y, 0, height - 1)) * std::size_t(width) +
                                std::size_t(left)];
            };
            const double share = 1 / double(2 * radius + 1);
            std::vector<double> sums(columns, 0.0);
            for (int y = -radius; y <= radius; ++y)
                for (std::size_t x = 0; x < columns; ++x)
                    sums[x] += double(rowAt(y)[x]);
            for (int y = 0; y < height; ++y) {
                float *const out = &depths[std::size_t(y) * std::size_t(width) + std::size_t(left)];
                const float *const next = rowAt(y + radius + 1);
                const float *const last = rowAt(y - radius);
                for (std::size_t x = 0; x < columns; ++x) {
                    out[x] = float(sums[x] * share);
                    sums[x] += double(next[x]) - double(last[x]);
                }
            }
        });
}

} // namespace structures
