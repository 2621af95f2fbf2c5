// SPDX-License-Identifier: GPL-3.0-or-later
#include "MeasureGeometry.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <random>

namespace MeasureGeometryTest {

using namespace structures;

constexpr double kRadians = std::numbers::pi / 180;

// Turned about an axis through the origin by the formula of Rodrigues, in doubles.
using Point = std::array<double, 3>;

Point turned(const Point &point, const Point &axis, double degrees)
{
    const double c = std::cos(degrees * kRadians);
    const double s = std::sin(degrees * kRadians);
    const double along = axis[0] * point[0] + axis[1] * point[1] + axis[2] * point[2];
    const Point across{axis[1] * point[2] - axis[2] * point[1],
                       axis[2] * point[0] - axis[0] * point[2],
                       axis[0] * point[1] - axis[1] * point[0]};
    Point result{};
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = point[i] * c + across[i] * s + axis[i] * along * (1 - c);
    return result;
}

Vec3 toVec(const Point &point)
{
    return {float(point[0]), float(point[1]), float(point[2])};
}

// Four points along a bond that lies on the x axis, looked at along it: the first up, the last
// turned clockwise by the torsion, as a clock's hand goes for whoever looks from the second point
// to the third. All of it turned and moved somewhere.
struct Chain
{
    double first, middle, last, firstAngle, lastAngle, torsion;
    Point axis;
    double turn;
    Point shift;

    [[nodiscard]] std::array<Vec3, 4> points() const
    {
        const Point a{-first * std::cos((180 - firstAngle) * kRadians),
                      first * std::sin((180 - firstAngle) * kRadians), 0};
        const Point up{last * std::cos((180 - lastAngle) * kRadians),
                       last * std::sin((180 - lastAngle) * kRadians), 0};
        // Looking along +x with y up, z is to the right: clockwise goes from y to z.
        Point d = turned(up, {1, 0, 0}, torsion);
        d[0] += middle;
        std::array<Point, 4> all{a, Point{0, 0, 0}, Point{middle, 0, 0}, d};
        std::array<Vec3, 4> result{};
        for (std::size_t i = 0; i < 4; ++i) {
            Point placed = turned(all[i], axis, turn);
            for (std::size_t k = 0; k < 3; ++k)
                placed[k] += shift[k];
            result[i] = toVec(placed);
        }
        return result;
    }
};

Chain randomChain(std::mt19937 &random)
{
    std::uniform_real_distribution<double> length(1, 4);
    std::uniform_real_distribution<double> angle(40, 140);
    std::uniform_real_distribution<double> turn(-179, 179);
    std::normal_distribution<double> part;
    Point axis{part(random), part(random), part(random)};
    const double size = std::hypot(axis[0], axis[1], axis[2]);
    for (double &coordinate : axis)
        coordinate /= size;
    return {
        length(random), length(random), length(random),
        angle(random),  angle(random),  turn(random),
        axis,           turn(random),   {10 * part(random), 10 * part(random), 10 * part(random)}};
}

TEST(MeasureGeometry, DistancesAndAnglesOfKnownPoints)
{
    const Vec3 points[] = {{1, 2, 3}, {4, 6, 3}};
    EXPECT_DOUBLE_EQ(*measured(points), 5);
    EXPECT_NEAR(*angleAt({0, 0, 0}, {2, 0, 0}, {0, 3, 0}), 90, 1e-9);
    EXPECT_NEAR(*angleAt({1, 1, 1}, {2, 1, 1}, {0, 1, 1}), 180, 1e-9);
    EXPECT_NEAR(*angleAt({0, 0, 0}, {1, 1, 1}, {1, -1, -1}), 109.4712206, 1e-5);
}

TEST(MeasureGeometry, CisIsZeroAndTransIsHalfATurn)
{
    EXPECT_NEAR(*torsion({-1, 1, 0}, {0, 0, 0}, {1, 0, 0}, {2, 1, 0}), 0, 1e-9);
    EXPECT_NEAR(*torsion({-1, 1, 0}, {0, 0, 0}, {1, 0, 0}, {2, -1, 0}), 180, 1e-9);
    // The mirror image of trans is trans, and not -180.
    EXPECT_NEAR(*torsion({-1, 1, 0}, {0, 0, 0}, {1, 0, 0}, {2, -1, -0.0F}), 180, 1e-9);
}

TEST(MeasureGeometry, ClockwiseLookingAlongTheBondIsPositive)
{
    EXPECT_NEAR(*torsion({-1, 1, 0}, {0, 0, 0}, {1, 0, 0}, {2, 0, 1}), 90, 1e-9);
    EXPECT_NEAR(*torsion({-1, 1, 0}, {0, 0, 0}, {1, 0, 0}, {2, 0, -1}), -90, 1e-9);
}

TEST(MeasureGeometry, MeasuresWhatAChainWasBuiltWith)
{
    std::mt19937 random(20261122);
    for (int i = 0; i < 2000; ++i) {
        const Chain chain = randomChain(random);
        const std::array<Vec3, 4> points = chain.points();
        SCOPED_TRACE(i);
        EXPECT_NEAR(*measured(std::span(points).first(2)), chain.first, 1e-4);
        EXPECT_NEAR(*measured(std::span(points).first(3)), chain.firstAngle, 1e-3);
        EXPECT_NEAR(*measured(points), chain.torsion, 1e-2);
    }
}

TEST(MeasureGeometry, TheOtherEndMeasuresTheSameAndAMirrorTheOpposite)
{
    std::mt19937 random(7);
    for (int i = 0; i < 500; ++i) {
        const std::array<Vec3, 4> p = randomChain(random).points();
        const double there = *torsion(p[0], p[1], p[2], p[3]);
        EXPECT_NEAR(*torsion(p[3], p[2], p[1], p[0]), there, 1e-6);
        const auto mirrored = [](Vec3 v) { return Vec3{-v.x, v.y, v.z}; };
        EXPECT_NEAR(*torsion(mirrored(p[0]), mirrored(p[1]), mirrored(p[2]), mirrored(p[3])),
                    -there, 1e-6);
        EXPECT_NEAR(*angleAt(p[1], p[2], p[0]), *angleAt(p[1], p[0], p[2]), 1e-9);
    }
}

TEST(MeasureGeometry, WhatHasNoAngleGivesNone)
{
    EXPECT_FALSE(angleAt({1, 1, 1}, {1, 1, 1}, {2, 2, 2}));
    EXPECT_FALSE(torsion({0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 1, 0}));
    EXPECT_FALSE(torsion({0, 1, 0}, {1, 0, 0}, {1, 0, 0}, {3, 1, 0}));
    const Vec3 one[] = {{1, 2, 3}};
    EXPECT_FALSE(measured(one));
}

} // namespace MeasureGeometryTest
