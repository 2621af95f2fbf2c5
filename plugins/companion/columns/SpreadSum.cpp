// SPDX-License-Identifier: GPL-3.0-or-later
#include "SpreadSum.h"

#include <cmath>

namespace companion {

void SpreadSum::add(const TAMBO::Vertex &position)
{
    m_X.push_back(position.x());
    m_Y.push_back(position.y());
    m_Z.push_back(position.z());
}

// Several distances are found at a time, which needs the coordinates apart and the sum in a loop of
// its own.
bool SpreadSum::goOn(std::chrono::steady_clock::time_point end)
{
    const std::size_t count = m_X.size();
    m_Distances.resize(count);
    while (m_Next + 1 < count) {
        const std::size_t i = m_Next++;
        for (std::size_t k = i + 1; k < count; ++k) {
            const float dx = m_X[i] - m_X[k];
            const float dy = m_Y[i] - m_Y[k];
            const float dz = m_Z[i] - m_Z[k];
            const float square = dx * dx + dy * dy + dz * dz;
            m_Distances[k] = std::sqrt(static_cast<double>(square));
        }
        for (std::size_t k = i + 1; k < count; ++k)
            m_Sum += m_Distances[k];
        if (std::chrono::steady_clock::now() >= end)
            break;
    }
    return m_Next + 1 < count;
}

ColumnSpread SpreadSum::value() const noexcept
{
    const double count = double(m_X.size());
    if (m_X.size() < 2)
        return {m_X.size(), std::nullopt};
    return {m_X.size(), m_Sum / (count * (count - 1) / 2)};
}

} // namespace companion
