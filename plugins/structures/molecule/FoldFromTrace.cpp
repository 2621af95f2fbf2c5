// SPDX-License-Identifier: GPL-3.0-or-later
#include "FoldFromTrace.h"

#include "TraceRuns.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace structures {

namespace {

struct Window
{
    float centre;
    float width;

    [[nodiscard]] bool contains(float value) const noexcept
    {
        return std::abs(value - centre) <= width;
    }
};

// Angstrom and degrees, from table 1 of the paper.
constexpr Window kHelixD3{5.3F, 0.5F};
constexpr Window kHelixD4{6.4F, 0.6F};
constexpr Window kHelixAngle{89, 12};
constexpr Window kHelixTorsion{50, 20};
constexpr Window kStrandD2{6.7F, 0.6F};
constexpr Window kStrandD3{9.9F, 0.9F};
constexpr Window kStrandD4{12.4F, 1.1F};
constexpr Window kStrandAngle{124, 14};
constexpr Window kStrandTorsion{-170, 45};
// Between CA atoms of neighbouring strands.
constexpr Window kStrandContact{4.9F, 0.7F};
constexpr std::size_t kShortestHelix = 5;
constexpr std::size_t kShortestStrand = 5;
constexpr std::size_t kShortestPairedStrand = 3;

constexpr float kDegrees = 180 / std::numbers::pi_v<float>;

float angleAt(Vec3 a, Vec3 b, Vec3 c) noexcept
{
    const float cosine = dot(normalized(a - b), normalized(c - b));
    return std::acos(std::clamp(cosine, -1.0F, 1.0F)) * kDegrees;
}

float torsion(Vec3 a, Vec3 b, Vec3 c, Vec3 d) noexcept
{
    const Vec3 axis = normalized(c - b);
    const Vec3 first = cross(b - a, c - b);
    const Vec3 second = cross(c - b, d - c);
    return std::atan2(dot(cross(first, second), axis), dot(first, second)) * kDegrees;
}

bool isAround(const Window &window, float degrees) noexcept
{
    float away = std::fmod(std::abs(degrees - window.centre), 360.0F);
    away = std::min(away, 360 - away);
    return away <= window.width;
}

// For each place whether it is within a stretch of true ones that is long enough.
std::vector<bool> longStretches(const std::vector<bool> &marks, std::size_t shortest)
{
    std::vector<bool> result(marks.size());
    for (std::size_t begin = 0; begin < marks.size();) {
        std::size_t end = begin;
        while (end < marks.size() && marks[end])
            ++end;
        if (end - begin >= shortest)
            std::fill(result.begin() + std::ptrdiff_t(begin), result.begin() + std::ptrdiff_t(end),
                      true);
        begin = std::max(end, begin + 1);
    }
    return result;
}

class RunFolds
{
public:
    RunFolds(const Molecule &molecule, const TraceRun &run)
    {
        for (const std::uint32_t residue : run.residues)
            m_Points.push_back(molecule.atoms[molecule.residues[residue].tracePoint].position);
        look();
    }

    [[nodiscard]] const std::vector<Vec3> &points() const noexcept { return m_Points; }
    [[nodiscard]] const std::vector<bool> &helical() const noexcept { return m_Helical; }
    [[nodiscard]] const std::vector<bool> &extended() const noexcept { return m_Extended; }

private:
    // The residue that a distance or angle begins at is the first of those that it is about, as in
    // the paper; those that it reaches belong to the stretch as well.
    void look()
    {
        const std::size_t count = m_Points.size();
        m_Helical.assign(count, false);
        m_Extended.assign(count, false);
        for (std::size_t i = 0; i + 3 < count; ++i) {
            const Vec3 *p = &m_Points[i];
            const float d2 = distance(p[0], p[2]);
            const float d3 = distance(p[0], p[3]);
            const float tau = angleAt(p[0], p[1], p[2]);
            const float alpha = torsion(p[0], p[1], p[2], p[3]);
            const bool hasFifth = i + 4 < count;
            const float d4 = hasFifth ? distance(p[0], p[4]) : 0;
            const bool isHelix = (hasFifth && kHelixD3.contains(d3) && kHelixD4.contains(d4)) ||
                                 (isAround(kHelixAngle, tau) && isAround(kHelixTorsion, alpha));
            const bool isStrand = (kStrandD2.contains(d2) && kStrandD3.contains(d3) &&
                                   (!hasFifth || kStrandD4.contains(d4))) ||
                                  (isAround(kStrandAngle, tau) && isAround(kStrandTorsion, alpha));
            // The middle two of four stand for the place.
            if (isHelix)
                m_Helical[i + 1] = m_Helical[i + 2] = true;
            else if (isStrand)
                m_Extended[i + 1] = m_Extended[i + 2] = true;
        }
    }

    std::vector<Vec3> m_Points;
    std::vector<bool> m_Helical;
    std::vector<bool> m_Extended;
};

} // namespace

void assignFold(Molecule &molecule)
{
    std::vector<TraceRun> runs;
    std::vector<RunFolds> folds;
    for (const MoleculeChain &chain : molecule.chains)
        for (TraceRun &run : traceRuns(molecule, chain))
            if (run.role == Role::AminoAcid) {
                folds.emplace_back(molecule, run);
                runs.push_back(std::move(run));
            }

    // Extended residues of all chains, to find those that lie beside each other.
    struct Extended
    {
        Vec3 point;
        std::size_t run;
        std::size_t place;
    };
    std::vector<Extended> extended;
    for (std::size_t r = 0; r < folds.size(); ++r)
        for (std::size_t i = 0; i < folds[r].points().size(); ++i)
            if (folds[r].extended()[i])
                extended.push_back({folds[r].points()[i], r, i});
    std::sort(extended.begin(), extended.end(),
              [](const Extended &a, const Extended &b) { return a.point.x < b.point.x; });
    std::vector<std::vector<bool>> paired;
    paired.reserve(folds.size());
    for (const RunFolds &fold : folds)
        paired.emplace_back(fold.points().size());
    const float reach = kStrandContact.centre + kStrandContact.width;
    // A neighbour may be one in a great many that lie on each other; none of them is looked at
    // more than so often.
    constexpr std::size_t kMostLooks = 512;
    for (std::size_t i = 0; i < extended.size(); ++i) {
        std::size_t looks = 0;
        for (std::size_t j = i + 1; j < extended.size() && looks < kMostLooks &&
                                    extended[j].point.x - extended[i].point.x <= reach;
             ++j, ++looks) {
            const Extended &a = extended[i];
            const Extended &b = extended[j];
            const std::size_t apart = a.place > b.place ? a.place - b.place : b.place - a.place;
            if (a.run == b.run && apart < 3)
                continue;
            if (kStrandContact.contains(distance(a.point, b.point)))
                paired[a.run][a.place] = paired[b.run][b.place] = true;
        }
    }

    for (std::size_t r = 0; r < runs.size(); ++r) {
        const std::vector<bool> helices = longStretches(folds[r].helical(), kShortestHelix);
        const std::vector<bool> strands = longStretches(folds[r].extended(), kShortestStrand);
        const std::vector<bool> shortStrands =
            longStretches(folds[r].extended(), kShortestPairedStrand);
        for (std::size_t i = 0; i < runs[r].residues.size(); ++i) {
            // A short stretch counts when one of its residues has a neighbour.
            bool isPaired = false;
            if (shortStrands[i] && !strands[i]) {
                std::size_t begin = i;
                while (begin > 0 && shortStrands[begin - 1])
                    --begin;
                for (std::size_t k = begin; k < shortStrands.size() && shortStrands[k]; ++k)
                    isPaired = isPaired || paired[r][k];
            }
            Fold &fold = molecule.residues[runs[r].residues[i]].fold;
            fold = helices[i] ? Fold::Helix : strands[i] || isPaired ? Fold::Strand : Fold::Coil;
        }
    }
}

} // namespace structures
