// SPDX-License-Identifier: GPL-3.0-or-later
#include "RigidMotion.h"

#include "Superposition.h"
#include "ValueBytes.h"

#include <cmath>

namespace TAMBO {

RigidMotion RigidMotion::read(ValueReader &in)
{
    RigidMotion motion;
    for (Row &row : motion.m_Rows) {
        for (double &value : row) {
            value = in.real64();
            if (!std::isfinite(value))
                in.fail("a structure was moved to nowhere");
        }
    }
    return motion;
}

void RigidMotion::write(ValueWriter &out) const
{
    for (const Row &row : m_Rows) {
        for (const double value : row)
            out.real(value);
    }
}

RigidMotion RigidMotion::followedBy(const Superposition &next) const
{
    RigidMotion result;
    for (std::size_t i = 0; i < 3; ++i) {
        Row &row = result.m_Rows[i];
        const std::array<double, 3> &turned = next.rotation()[i];
        row = {0, 0, 0, next.to()[i]};
        for (std::size_t k = 0; k < 3; ++k) {
            for (std::size_t axis = 0; axis < 3; ++axis)
                row[axis] += turned[k] * m_Rows[k][axis];
            row[3] += turned[k] * (m_Rows[k][3] - next.from()[k]);
        }
    }
    return result;
}

Vertex RigidMotion::operator()(const Vector<float, 3> &point) const
{
    // To the bit what the file says.
    if (*this == RigidMotion())
        return {point[0], point[1], point[2]};
    std::array<double, 3> to{};
    for (std::size_t i = 0; i < 3; ++i) {
        const Row &row = m_Rows[i];
        to[i] = row[0] * point[0] + row[1] * point[1] + row[2] * point[2] + row[3];
    }
    return {float(to[0]), float(to[1]), float(to[2])};
}

} // namespace TAMBO
