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

// Places that distances are found to: differences and squares in single precision, roots and their
// sum in double precision, in the order in which they came.
class SpreadPlaces
{
public:
    void add(const TAMBO::Vertex &position);
    void clear() noexcept;
    [[nodiscard]] std::size_t size() const noexcept { return m_X.size(); }
    // The sum, and behind it the distances of a position to those from first on.
    [[nodiscard]] double addDistances(const TAMBO::Vertex &position, std::size_t first,
                                      double sum) const noexcept;
    // The same of one of them to those behind it.
    [[nodiscard]] double addDistancesBehind(std::size_t place, double sum) const noexcept;

private:
    std::vector<float> m_X;
    std::vector<float> m_Y;
    std::vector<float> m_Z;
};

// In parts: a column of ten thousand positions has fifty million pairs. The same as the editor's By
// Distance finds, to the last bit: pair after pair in the order of the rows.
class SpreadSum
{
public:
    void add(const TAMBO::Vertex &position) { m_Places.add(position); }
    // Goes on until all pairs are there, or it is that late; a position's at least. False when
    // there is nothing more to do.
    bool goOn(std::chrono::steady_clock::time_point end);
    // When all is done.
    [[nodiscard]] ColumnSpread value() const noexcept;
    [[nodiscard]] std::size_t positions() const noexcept { return m_Places.size(); }
    // Over all pairs, in Angstrom.
    [[nodiscard]] double sum() const noexcept { return m_Sum; }

private:
    SpreadPlaces m_Places;
    std::size_t m_Next = 0;
    double m_Sum = 0;
};

} // namespace companion
