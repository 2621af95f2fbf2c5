// SPDX-License-Identifier: GPL-3.0-or-later
#include "FittingCore.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <numeric>

namespace TAMBO {

namespace {

// Angstrom. Points nearer to a line than this are on it.
constexpr double kLineWidth = 0.01;
constexpr std::size_t kTenth = 10;
constexpr std::size_t kFourth = 4;

using Places = std::vector<std::size_t>;

std::vector<PointPair> chosenPairs(const std::vector<PointPair> &pairs, const Places &places)
{
    std::vector<PointPair> chosen;
    chosen.reserve(places.size());
    std::ranges::transform(places, std::back_inserter(chosen),
                           [&pairs](std::size_t place) { return pairs[place]; });
    return chosen;
}

double distanceOf(const Superposition &motion, const PointPair &pair)
{
    const Vertex moved = motion(pair.moving);
    return std::hypot(double(moved.x()) - pair.fixed.x(), double(moved.y()) - pair.fixed.y(),
                      double(moved.z()) - pair.fixed.z());
}

// Without the farthest of them; all, when none is beyond the cutoff.
Places prunedOnce(const std::vector<PointPair> &pairs, const Places &places,
                  const Superposition &motion, double cutoff)
{
    struct Apart
    {
        double distance;
        std::size_t place;
    };
    std::vector<Apart> apart;
    apart.reserve(places.size());
    for (const std::size_t place : places)
        apart.push_back({distanceOf(motion, pairs[place]), place});
    const auto beyond = std::size_t(std::ranges::count_if(
        apart, [cutoff](const Apart &pair) { return pair.distance > cutoff; }));
    if (beyond == 0)
        return places;
    const std::size_t dropped =
        std::max<std::size_t>(1, std::min(apart.size() / kTenth, beyond / 2));
    // Equally far ones by their places, so that the same pairs have the same core.
    std::ranges::sort(apart, [](const Apart &a, const Apart &b) {
        return a.distance != b.distance ? a.distance > b.distance : a.place > b.place;
    });
    Places left;
    std::transform(apart.begin() + std::ptrdiff_t(dropped), apart.end(), std::back_inserter(left),
                   [](const Apart &pair) { return pair.place; });
    std::ranges::sort(left);
    return left;
}

bool leavesTurnOpen(const std::vector<PointPair> &pairs)
{
    std::vector<Vertex> moving;
    std::vector<Vertex> fixed;
    for (const PointPair &pair : pairs) {
        moving.push_back(pair.moving);
        fixed.push_back(pair.fixed);
    }
    return areOnLine(moving) || areOnLine(fixed);
}

// None of its pairs is beyond the cutoff.
struct Core
{
    Superposition motion;
    Places places;
};

Core pruned(const std::vector<PointPair> &pairs, Places places, double cutoff)
{
    for (;;) {
        const Superposition motion(chosenPairs(pairs, places));
        Places left = prunedOnce(pairs, places, motion, cutoff);
        if (left.size() == places.size() || left.size() < kFewestPairs)
            return {motion, left.size() < kFewestPairs ? Places() : places};
        places = std::move(left);
    }
}

Core grown(const std::vector<PointPair> &pairs, Core core, double cutoff)
{
    while (!core.places.empty()) {
        Places near;
        for (std::size_t place = 0; place < pairs.size(); ++place)
            if (distanceOf(core.motion, pairs[place]) <= cutoff)
                near.push_back(place);
        Core larger = pruned(pairs, std::move(near), cutoff);
        if (larger.places.size() <= core.places.size())
            break;
        core = std::move(larger);
    }
    return core;
}

double rmsdOf(const std::vector<PointPair> &pairs, const Places &places,
              const Superposition &motion)
{
    std::vector<PointPair> moved = chosenPairs(pairs, places);
    for (PointPair &pair : moved)
        pair.moving = motion(pair.moving);
    return rootMeanSquareDistance(moved);
}

} // namespace

bool areOnLine(const std::vector<Vertex> &points)
{
    using Point = std::array<double, 3>;
    const auto fromFirst = [&](const Vertex &point) {
        const Vertex &first = points.front();
        return Point{double(point.x()) - first.x(), double(point.y()) - first.y(),
                     double(point.z()) - first.z()};
    };
    const auto length = [](const Point &p) { return std::hypot(p[0], p[1], p[2]); };
    const Vertex &farthest = *std::ranges::max_element(
        points, {}, [&](const Vertex &point) { return length(fromFirst(point)); });
    const Point along = fromFirst(farthest);
    const double extent = length(along);
    return extent < kLineWidth || std::ranges::all_of(points, [&](const Vertex &point) {
               const Point p = fromFirst(point);
               const Point cross = {along[1] * p[2] - along[2] * p[1],
                                    along[2] * p[0] - along[0] * p[2],
                                    along[0] * p[1] - along[1] * p[0]};
               return length(cross) / extent < kLineWidth;
           });
}

FittingCore fittingCore(const std::vector<PointPair> &pairs, double cutoff)
{
    Places all(pairs.size());
    std::iota(all.begin(), all.end(), std::size_t(0));
    const Superposition ofAll(pairs);
    const double rmsdOfAll = rmsdOf(pairs, all, ofAll);
    Core best = pruned(pairs, all, cutoff);
    const auto take = [&](Core core) {
        if (core.places.size() > best.places.size() &&
            rmsdOf(pairs, core.places, core.motion) <= rmsdOfAll)
            best = std::move(core);
    };
    take(grown(pairs, best, cutoff));
    if (best.places.size() < pairs.size()) {
        const std::size_t stretch = std::max(kFewestPairs, pairs.size() / kFourth);
        const std::size_t step = std::max<std::size_t>(1, stretch / 2);
        for (std::size_t begin = 0; begin + stretch <= pairs.size(); begin += step) {
            const auto first = all.begin() + std::ptrdiff_t(begin);
            const Places start(first, first + std::ptrdiff_t(stretch));
            take(grown(pairs, pruned(pairs, start, cutoff), cutoff));
        }
    }
    if (best.places.size() < kFewestPairs || leavesTurnOpen(chosenPairs(pairs, best.places)))
        return {ofAll, {}, 0};
    const double rmsd = rmsdOf(pairs, best.places, best.motion);
    return {best.motion, std::move(best.places), rmsd};
}

} // namespace TAMBO
