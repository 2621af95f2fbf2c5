// SPDX-License-Identifier: GPL-3.0-or-later
#include "FittingCore.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <map>
#include <numeric>
#include <utility>

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

// Of the distances that a motion leaves: looked at some hundred times for each pair, so that it is
// made for that.
class Squares
{
public:
    explicit Squares(const Superposition &motion) : m_Rotation(motion.rotation())
    {
        for (std::size_t i = 0; i < m_Shift.size(); ++i) {
            m_Shift[i] = motion.to()[i];
            for (std::size_t k = 0; k < m_Shift.size(); ++k)
                m_Shift[i] -= m_Rotation[i][k] * motion.from()[k];
        }
    }
    double operator()(const PointPair &pair) const noexcept
    {
        const Vertex &a = pair.moving;
        const Vertex &b = pair.fixed;
        const auto apart = [&](const Superposition::Point &turn, double shift, double fixed) {
            return turn[0] * a.x() + turn[1] * a.y() + turn[2] * a.z() + shift - fixed;
        };
        const double x = apart(m_Rotation[0], m_Shift[0], b.x());
        const double y = apart(m_Rotation[1], m_Shift[1], b.y());
        const double z = apart(m_Rotation[2], m_Shift[2], b.z());
        return x * x + y * y + z * z;
    }

private:
    std::array<Superposition::Point, 3> m_Rotation;
    Superposition::Point m_Shift{};
};

// Without the farthest of them; all, when none is beyond the cutoff.
Places prunedOnce(const std::vector<PointPair> &pairs, const Places &places,
                  const Superposition &motion, double cutoff)
{
    struct Apart
    {
        double square;
        std::size_t place;
    };
    std::vector<Apart> apart;
    apart.reserve(places.size());
    const Squares squareOf(motion);
    for (const std::size_t place : places)
        apart.push_back({squareOf(pairs[place]), place});
    const auto beyond = std::size_t(std::ranges::count_if(
        apart, [cutoff](const Apart &pair) { return pair.square > cutoff * cutoff; }));
    if (beyond == 0)
        return places;
    const std::size_t dropped =
        std::max<std::size_t>(1, std::min(apart.size() / kTenth, beyond / 2));
    // Equally far ones by their places, so that the same pairs have the same core.
    const auto isFarther = [](const Apart &a, const Apart &b) {
        return a.square != b.square ? a.square > b.square : a.place > b.place;
    };
    std::vector<Apart> farthest = apart;
    const auto nearestDropped = farthest.begin() + std::ptrdiff_t(dropped - 1);
    std::ranges::nth_element(farthest, nearestDropped, isFarther);
    Places left;
    left.reserve(apart.size() - dropped);
    for (const Apart &pair : apart)
        if (isFarther(*nearestDropped, pair))
            left.push_back(pair.place);
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

// From different starts one soon comes to the same places.
class Growing
{
public:
    Growing(const std::vector<PointPair> &pairs, double cutoff) : m_Pairs(pairs), m_Cutoff(cutoff)
    { }

    Core operator()(Core core)
    {
        while (!core.places.empty()) {
            Places near;
            const Squares squareOf(core.motion);
            for (std::size_t place = 0; place < m_Pairs.size(); ++place)
                if (squareOf(m_Pairs[place]) <= m_Cutoff * m_Cutoff)
                    near.push_back(place);
            const Core &larger = prunedNear(std::move(near));
            if (larger.places.size() <= core.places.size())
                break;
            core = larger;
        }
        return core;
    }

private:
    const Core &prunedNear(Places near)
    {
        auto known = m_Known.find(near);
        if (known == m_Known.end()) {
            Core core = pruned(m_Pairs, near, m_Cutoff);
            known = m_Known.emplace(std::move(near), std::move(core)).first;
        }
        return known->second;
    }

    const std::vector<PointPair> &m_Pairs;
    double m_Cutoff;
    std::map<Places, Core> m_Known;
};

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
    Growing grown(pairs, cutoff);
    const auto take = [&](Core core) {
        if (core.places.size() > best.places.size() &&
            rmsdOf(pairs, core.places, core.motion) <= rmsdOfAll)
            best = std::move(core);
    };
    take(grown(best));
    if (best.places.size() < pairs.size()) {
        const std::size_t stretch = std::max(kFewestPairs, pairs.size() / kFourth);
        const std::size_t step = std::max<std::size_t>(1, stretch / 2);
        for (std::size_t begin = 0; begin + stretch <= pairs.size(); begin += step) {
            const auto first = all.begin() + std::ptrdiff_t(begin);
            const Places start(first, first + std::ptrdiff_t(stretch));
            take(grown(pruned(pairs, start, cutoff)));
        }
    }
    if (best.places.size() < kFewestPairs || leavesTurnOpen(chosenPairs(pairs, best.places)))
        return {ofAll, {}, 0};
    const double rmsd = rmsdOf(pairs, best.places, best.motion);
    return {best.motion, std::move(best.places), rmsd};
}

} // namespace TAMBO
