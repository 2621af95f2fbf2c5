// SPDX-License-Identifier: GPL-3.0-or-later
#include "SpreadSum.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace companion {

void SpreadPlaces::add(const TAMBO::Vertex &position)
{
    m_X.push_back(position.x());
    m_Y.push_back(position.y());
    m_Z.push_back(position.z());
}

void SpreadPlaces::clear() noexcept
{
    m_X.clear();
    m_Y.clear();
    m_Z.clear();
}

// Several distances are found at a time, which needs the coordinates apart and the sum in a loop of
// its own.
double SpreadPlaces::addDistances(const TAMBO::Vertex &position, std::size_t first,
                                  double sum) const noexcept
{
    constexpr std::size_t kAtOnce = 256;
    std::array<double, kAtOnce> distances;
    const std::size_t count = m_X.size();
    const float x = position.x();
    const float y = position.y();
    const float z = position.z();
    for (std::size_t begin = first; begin < count; begin += kAtOnce) {
        const std::size_t size = std::min(kAtOnce, count - begin);
        for (std::size_t i = 0; i < size; ++i) {
            const float dx = x - m_X[begin + i];
            const float dy = y - m_Y[begin + i];
            const float dz = z - m_Z[begin + i];
            const float square = dx * dx + dy * dy + dz * dz;
            distances[i] = std::sqrt(static_cast<double>(square));
        }
        for (std::size_t i = 0; i < size; ++i)
            sum += distances[i];
    }
    return sum;
}

double SpreadPlaces::addDistancesBehind(std::size_t place, double sum) const noexcept
{
    return addDistances({m_X[place], m_Y[place], m_Z[place]}, place + 1, sum);
}

bool SpreadSum::goOn(std::chrono::steady_clock::time_point end)
{
    const std::size_t count = m_Places.size();
    while (m_Next + 1 < count) {
        m_Sum = m_Places.addDistancesBehind(m_Next++, m_Sum);
        if (std::chrono::steady_clock::now() >= end)
            break;
    }
    return m_Next + 1 < count;
}

ColumnSpread SpreadSum::value() const noexcept
{
    const double count = double(m_Places.size());
    if (m_Places.size() < 2)
        return {m_Places.size(), std::nullopt};
    return {m_Places.size(), m_Sum / (count * (count - 1) / 2)};
}

} // namespace companion
