// SPDX-License-Identifier: GPL-3.0-or-later
#include "Superposition.h"

#include <gtest/gtest.h>

#include <cmath>

using TAMBO::PointPair;
using TAMBO::rootMeanSquareDistance;
using TAMBO::Superposition;
using TAMBO::Vertex;

namespace SuperpositionTest {

const std::vector<Vertex> kPoints = {{0, 0, 0}, {3, 0, 0}, {0, 5, 0}, {1, 2, 7}, {-4, 1, 2}};

// A third of a turn about the diagonal: x to y, y to z, z to x; then a shift.
Vertex moved(const Vertex &point)
{
    return {point.z() + 10, point.x() - 20, point.y() + 30};
}

std::vector<PointPair> pairs(Vertex (*where)(const Vertex &))
{
    std::vector<PointPair> result;
    for (const Vertex &point : kPoints)
        result.push_back({point, where(point)});
    return result;
}

double distanceAfter(const std::vector<PointPair> &given)
{
    const Superposition superposition(given);
    std::vector<PointPair> result = given;
    for (PointPair &pair : result)
        pair.moving = superposition(pair.moving);
    return rootMeanSquareDistance(result);
}

TEST(Superposition, ATurnAndAShiftAreFound)
{
    const auto given = pairs(moved);
    EXPECT_GT(rootMeanSquareDistance(given), 30);
    EXPECT_NEAR(distanceAfter(given), 0, 1e-5);
    const Vertex other = Superposition(given)(Vertex(1, 2, 3));
    EXPECT_NEAR(other.x(), 13, 1e-4);
    EXPECT_NEAR(other.y(), -19, 1e-4);
    EXPECT_NEAR(other.z(), 32, 1e-4);
}

TEST(Superposition, PointsThatLieOnEachOtherStay)
{
    const auto given = pairs([](const Vertex &point) { return point; });
    EXPECT_EQ(rootMeanSquareDistance(given), 0);
    EXPECT_NEAR(distanceAfter(given), 0, 1e-6);
}

TEST(Superposition, AMirrorImageIsNotMadeToFit)
{
    const auto given =
        pairs([](const Vertex &point) { return Vertex(-point.x(), point.y(), point.z()); });
    const double left = distanceAfter(given);
    EXPECT_GT(left, 1);
    EXPECT_LE(left, rootMeanSquareDistance(given));
    const Superposition superposition(given);
    const auto at = [&](float x, float y, float z) { return superposition(Vertex(x, y, z)); };
    const Vertex origin = at(0, 0, 0);
    const auto side = [&](const Vertex &v) {
        return std::array<double, 3>{v.x() - origin.x(), v.y() - origin.y(), v.z() - origin.z()};
    };
    const auto a = side(at(1, 0, 0));
    const auto b = side(at(0, 1, 0));
    const auto c = side(at(0, 0, 1));
    const double volume = a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) +
                          a[2] * (b[0] * c[1] - b[1] * c[0]);
    EXPECT_NEAR(volume, 1, 1e-5);
}

TEST(Superposition, OnePairIsAShiftAndNoPairIsNothing)
{
    const Vertex shifted = Superposition({{Vertex(1, 1, 1), Vertex(2, 3, 4)}})(Vertex(5, 5, 5));
    EXPECT_NEAR(shifted.x(), 6, 1e-5);
    EXPECT_NEAR(shifted.y(), 7, 1e-5);
    EXPECT_NEAR(shifted.z(), 8, 1e-5);
    EXPECT_EQ(Superposition({})(Vertex(5, 6, 7)).coordinates(), Vertex(5, 6, 7).coordinates());
    EXPECT_EQ(rootMeanSquareDistance({}), 0);
}

TEST(Superposition, AnUndefinedPointStaysUndefined)
{
    EXPECT_FALSE(Superposition(pairs(moved))(Vertex()).isDefined());
}

} // namespace SuperpositionTest
