// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColumnSpread.h"

#include "Check.h"

#include <cmath>
#include <cstddef>

namespace ZEP {

// A column of n positions has n(n - 1) / 2 pairs. The distances of one position to all later ones
// are found several at a time, which needs the coordinates apart and the sum in a loop of its own.
double meanDistance(const std::vector<TAMBO::Vertex> &positions)
{
    const std::size_t count = positions.size();
    std::vector<float> x(count);
    std::vector<float> y(count);
    std::vector<float> z(count);
    for (std::size_t i = 0; i < count; ++i) {
        x[i] = positions[i].x();
        y[i] = positions[i].y();
        z[i] = positions[i].z();
    }

    std::vector<double> distances(count);
    double sum = 0;
    std::size_t pairs = 0;
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t k = i + 1; k < count; ++k) {
            const float dx = x[i] - x[k];
            const float dy = y[i] - y[k];
            const float dz = z[i] - z[k];
            const float square = dx * dx + dy * dy + dz * dz;
            distances[k] = std::sqrt(static_cast<double>(square));
        }
        for (std::size_t k = i + 1; k < count; ++k)
            sum += distances[k];
        pairs += count - i - 1;
    }
    TAMBO::checkCondition(0 < pairs, "0 < Count", "KALMO2", 993);
    return sum / static_cast<double>(pairs);
}

} // namespace ZEP
