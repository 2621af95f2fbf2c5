// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace companion {

// Long work asks it again and again, with the share that is done, from 0 to 1; false gives the work
// up. Without one the work is done to its end.
using GoOn = std::function<bool(double done)>;

// Distances of n rows from each other. Both halves are kept, so that a row lies in one piece: 32 MB
// for 2,000 rows.
class DistanceMatrix
{
public:
    // All distances are 0.
    explicit DistanceMatrix(std::size_t rows = 0) : m_Rows(rows), m_Distances(rows * rows) { }

    [[nodiscard]] std::size_t rows() const noexcept { return m_Rows; }
    [[nodiscard]] double at(std::size_t a, std::size_t b) const noexcept
    {
        return m_Distances[a * m_Rows + b];
    }
    // From either to the other; a and b differ.
    void set(std::size_t a, std::size_t b, double distance) noexcept
    {
        m_Distances[a * m_Rows + b] = distance;
        m_Distances[b * m_Rows + a] = distance;
    }
    [[nodiscard]] std::span<const double> from(std::size_t row) const noexcept
    {
        return {m_Distances.data() + row * m_Rows, m_Rows};
    }

private:
    std::size_t m_Rows;
    std::vector<double> m_Distances;
};

} // namespace companion
