// SPDX-License-Identifier: GPL-3.0-or-later
// What is left of pairs of points when those that do not fit are left out.
#include "FittingCore.h"

#include "unit/model/SuperposeFixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <numeric>
#include <random>

using namespace TAMBO;
using testing::IsEmpty;

namespace FittingCoreTest {

class FittingCoreTest : public SuperposeFixture
{
protected:
    using Pairs = std::vector<PointPair>;

    static Pairs paired(const Points &moving, const Points &fixed)
    {
        Pairs pairs;
        for (std::size_t i = 0; i < moving.size(); ++i)
            pairs.push_back({moving[i], fixed[i]});
        return pairs;
    }
    static Points part(const Points &points, std::size_t begin, std::size_t end)
    {
        return {points.begin() + std::ptrdiff_t(begin), points.begin() + std::ptrdiff_t(end)};
    }
    // Each up to so far from where it was, along each axis.
    static Points shaken(Points points, double most, unsigned seed)
    {
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> by(-most, most);
        for (Vertex &point : points)
            point = Vertex(float(point.x() + by(random)), float(point.y() + by(random)),
                           float(point.z() + by(random)));
        return points;
    }
    static double rmsdMoved(const Pairs &pairs, const Superposition &motion)
    {
        Pairs moved = pairs;
        for (PointPair &pair : moved)
            pair.moving = motion(pair.moving);
        return rootMeanSquareDistance(moved);
    }
    static double rmsdOfAll(const Pairs &pairs) { return rmsdMoved(pairs, Superposition(pairs)); }
    static std::vector<std::size_t> upTo(std::size_t count)
    {
        std::vector<std::size_t> places(count);
        std::iota(places.begin(), places.end(), std::size_t(0));
        return places;
    }
};

TEST_F(FittingCoreTest, PairsThatAllFitAreTheCore)
{
    const Points fold = randomFold(40, 1);
    const Pairs pairs = paired(shaken(turned(fold, 2), 0.3, 3), fold);
    const FittingCore core = fittingCore(pairs, 2);
    EXPECT_EQ(core.pairs, upTo(40));
    EXPECT_DOUBLE_EQ(core.rmsd, rmsdOfAll(pairs));
}

TEST_F(FittingCoreTest, APlantedCoreIsFoundAmongDomainsThatHaveMoved)
{
    for (unsigned seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE(seed);
        // A hundred of 146 as they were, and two domains elsewhere.
        const Points fold = randomFold(146, seed);
        Points moving = turned(shaken(part(fold, 0, 100), 0.3, seed), seed + 1000);
        for (const Points &domain :
             {turned(part(fold, 100, 125), seed + 2000), turned(part(fold, 125, 146), seed + 3000)})
            moving.insert(moving.end(), domain.begin(), domain.end());
        const Pairs pairs = paired(moving, fold);
        const FittingCore core = fittingCore(pairs, 2);
        EXPECT_GT(rmsdOfAll(pairs), 10);
        EXPECT_LT(core.rmsd, 0.4);
        // Chance may put one of the others near.
        EXPECT_LE(core.pairs.size(), 103U);
        EXPECT_TRUE(std::ranges::includes(core.pairs, upTo(100)));
    }
}

TEST_F(FittingCoreTest, TheCoreIsNeverFartherApartThanTheWholeAndNoneOfItBeyondTheCutoff)
{
    std::size_t found = 0;
    for (unsigned seed = 1; seed <= 600; ++seed) {
        SCOPED_TRACE(seed);
        // From copies that are shaken to folds that have nothing to do with each other.
        const std::size_t length = 3 + seed % 60;
        const Points fold = randomFold(length, seed);
        const Points other = seed % 3 == 0 ? randomFold(length, seed + 5000)
                                           : shaken(turned(fold, seed), seed % 7, seed + 1);
        const Pairs pairs = paired(other, fold);
        const double cutoff = 0.5 + seed % 5;
        const FittingCore core = fittingCore(pairs, cutoff);
        if (core.pairs.empty()) {
            EXPECT_DOUBLE_EQ(rmsdMoved(pairs, core.motion), rmsdOfAll(pairs));
            continue;
        }
        ++found;
        EXPECT_GE(core.pairs.size(), kFewestPairs);
        EXPECT_TRUE(std::ranges::is_sorted(core.pairs));
        EXPECT_LE(core.rmsd, rmsdOfAll(pairs) + 1e-5);
        Pairs ofCore;
        for (const std::size_t place : core.pairs)
            ofCore.push_back(pairs.at(place));
        EXPECT_NEAR(core.rmsd, rmsdOfAll(ofCore), 1e-6);
        for (const PointPair &pair : ofCore)
            EXPECT_LE(rmsdMoved({pair}, core.motion), cutoff);
    }
    EXPECT_GT(found, 400U);
}

TEST_F(FittingCoreTest, WhereTheMovingOnesAreDoesNotMatter)
{
    const Points fold = randomFold(80, 7);
    const Points other = shaken(fold, 4, 8);
    const FittingCore first = fittingCore(paired(other, fold), 2);
    const FittingCore again = fittingCore(paired(turned(other, 9), fold), 2);
    EXPECT_LT(first.pairs.size(), 80U);
    EXPECT_EQ(first.pairs, again.pairs);
    EXPECT_NEAR(first.rmsd, again.rmsd, 1e-4);
}

TEST_F(FittingCoreTest, TooFewOrOnesInALineAreNoCore)
{
    const Points fold = randomFold(20, 1);
    EXPECT_THAT(fittingCore({}, 2).pairs, IsEmpty());
    EXPECT_THAT(fittingCore(paired(part(fold, 0, 2), part(fold, 0, 2)), 2).pairs, IsEmpty());
    // Triangles of other sizes.
    const Points small = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    const Points large = {{0, 0, 0}, {50, 0, 0}, {0, 50, 0}};
    const FittingCore none = fittingCore(paired(small, large), 2);
    EXPECT_THAT(none.pairs, IsEmpty());
    EXPECT_DOUBLE_EQ(rmsdMoved(paired(small, large), none.motion), rmsdOfAll(paired(small, large)));
    // What fits is a line, and what would say how to turn it does not.
    const Points line = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}, {2, 9, 0}};
    const Points flipped = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}, {2, 99, 0}};
    EXPECT_THAT(fittingCore(paired(line, flipped), 2).pairs, IsEmpty());
}

} // namespace FittingCoreTest
