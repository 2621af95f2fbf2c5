// SPDX-License-Identifier: GPL-3.0-or-later
// How far apart the residues of a column lie in space: the mean distance of their CA atoms, over
// all pairs.
#pragma once

#include "Vertex.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <vector>

namespace companion {

struct ColumnSpread
{
    // How many rows have a residue with a position in the column.
    std::size_t positions = 0;
    // In Angstrom; nothing of fewer than two.
    std::optional<double> distance;

    friend bool operator==(const ColumnSpread &, const ColumnSpread &) = default;
};

// In parts: a column of ten thousand positions has fifty million pairs. The same as the editor's By
// Distance finds, to the last bit: differences and squares in single precision, roots and their sum
// in double precision, pair after pair in the order of the rows.
class SpreadSum
{
public:
    void add(const TAMBO::Vertex &position);
    // Goes on until all pairs are there, or it is that late; a position's at least. False when
    // there is nothing more to do.
    bool goOn(std::chrono::steady_clock::time_point end);
    // When all is done.
    [[nodiscard]] ColumnSpread value() const noexcept;

private:
    std::vector<float> m_X;
    std::vector<float> m_Y;
    std::vector<float> m_Z;
    std::vector<double> m_Distances;
    std::size_t m_Next = 0;
    double m_Sum = 0;
};

} // namespace companion
