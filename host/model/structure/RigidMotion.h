// SPDX-License-Identifier: GPL-3.0-or-later
// A turn and a shift, and those that came one after the other as one.
#pragma once

#include "Vertex.h"

#include <array>

namespace TAMBO {

class Superposition;
class ValueReader;
class ValueWriter;

class RigidMotion
{
public:
    // Nothing moves.
    RigidMotion() = default;
    // Of what write() has left; fails when it leads anywhere but to places.
    [[nodiscard]] static RigidMotion read(ValueReader &in);
    void write(ValueWriter &out) const;

    // This one, and then the other.
    [[nodiscard]] RigidMotion followedBy(const Superposition &next) const;
    [[nodiscard]] Vertex operator()(const Vector<float, 3> &point) const;

    friend bool operator==(const RigidMotion &, const RigidMotion &) = default;

private:
    // Where the axes lead to, and the shift behind them: rows of three and one.
    using Row = std::array<double, 4>;

    std::array<Row, 3> m_Rows{Row{1, 0, 0, 0}, Row{0, 1, 0, 0}, Row{0, 0, 1, 0}};
};

} // namespace TAMBO
