// SPDX-License-Identifier: GPL-3.0-or-later
#include "RigidMotion.h"

#include "Superposition.h"
#include "ValueBytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using TAMBO::RigidMotion;
using TAMBO::Superposition;
using TAMBO::Vertex;

namespace RigidMotionTest {

using Point = TAMBO::Vector<float, 3>;

// x to y, y to z, z to x; then a shift.
Superposition turn()
{
    return Superposition({{{3, 0, 0}, {10, -17, 30}},
                          {{0, 5, 0}, {10, -20, 35}},
                          {{1, 2, 7}, {17, -19, 32}},
                          {{-4, 1, 2}, {12, -24, 31}}});
}

void expectAt(const Vertex &place, float x, float y, float z)
{
    EXPECT_NEAR(place.x(), x, 1e-4);
    EXPECT_NEAR(place.y(), y, 1e-4);
    EXPECT_NEAR(place.z(), z, 1e-4);
}

TEST(RigidMotion, NoneLeavesThePlaceToTheBit)
{
    const Vertex place = RigidMotion()(Point(0.1F, -0.0F, 123.456F));
    EXPECT_EQ(place.coordinates(), Point(0.1F, -0.0F, 123.456F));
    EXPECT_TRUE(std::signbit(place.y()));
}

TEST(RigidMotion, DoesWhatTheSuperpositionDoes)
{
    const RigidMotion motion = RigidMotion().followedBy(turn());
    expectAt(motion(Point(1, 2, 3)), 13, -19, 32);
    expectAt(turn()({1, 2, 3}), 13, -19, 32);
}

TEST(RigidMotion, SeveralFollowEachOther)
{
    RigidMotion motion;
    Vertex place(1.5F, -2, 3);
    for (int i = 0; i < 100; ++i) {
        motion = motion.followedBy(turn());
        place = turn()(place);
    }
    const Vertex moved = motion(Point(1.5F, -2, 3));
    EXPECT_NEAR(moved.x(), place.x(), 0.01);
    EXPECT_NEAR(moved.y(), place.y(), 0.01);
    EXPECT_NEAR(moved.z(), place.z(), 0.01);
}

TEST(RigidMotion, ComesBackOfItsBytes)
{
    const RigidMotion motion = RigidMotion().followedBy(turn());
    TAMBO::ValueWriter out;
    motion.write(out);
    TAMBO::ValueReader in(out.bytes());
    EXPECT_EQ(RigidMotion::read(in), motion);
    EXPECT_TRUE(in.atEnd());
    EXPECT_FALSE(in.failed());
}

TEST(RigidMotion, ToNowhereIsRefused)
{
    TAMBO::ValueWriter out;
    for (int i = 0; i < 12; ++i)
        out.real(i == 7 ? std::numeric_limits<double>::infinity() : 1.0);
    TAMBO::ValueReader in(out.bytes());
    static_cast<void>(RigidMotion::read(in));
    EXPECT_EQ(in.cause(), "a structure was moved to nowhere");
}

} // namespace RigidMotionTest
