// SPDX-License-Identifier: GPL-3.0-or-later
#include "RibbonPath.h"

#include <algorithm>
#include <cmath>

namespace structures {

namespace {

struct Profile
{
    float width;
    float thickness;
};

// Half axes, in Angstrom.
constexpr Profile kCoil{0.30F, 0.30F};
constexpr Profile kHelix{1.35F, 0.24F};
constexpr Profile kStrand{1.15F, 0.26F};
constexpr Profile kTrace{0.35F, 0.35F};
constexpr Profile kNucleic{0.85F, 0.85F};
constexpr float kArrowWidth = 1.95F;
constexpr float kArrowTip = 0.20F;
// Of a residue, on either side of a border between two kinds of fold.
constexpr float kBlend = 0.3F;

Profile mix(const Profile &a, const Profile &b, float t) noexcept
{
    return {a.width + (b.width - a.width) * t, a.thickness + (b.thickness - a.thickness) * t};
}

float smooth(float t) noexcept
{
    t = std::clamp(t, 0.0F, 1.0F);
    return t * t * (3 - 2 * t);
}

class Path
{
public:
    Path(const Molecule &molecule, const TraceRun &run, const std::vector<ResidueStyle> &styles)
        : m_Molecule(molecule), m_Run(run), m_Styles(styles)
    {
        for (const std::uint32_t index : run.residues)
            m_Points.push_back(molecule.atoms[molecule.residues[index].tracePoint].position);
        findSides();
        smoothStrands();
    }

    [[nodiscard]] std::vector<RibbonRing> rings(int steps) const;

private:
    [[nodiscard]] std::size_t count() const noexcept { return m_Points.size(); }
    [[nodiscard]] const MoleculeResidue &residue(std::size_t place) const
    {
        return m_Molecule.residues[m_Run.residues[place]];
    }
    [[nodiscard]] bool isStrand(std::size_t place) const
    {
        return residue(place).fold == Fold::Strand && style(place) == Style::Cartoon;
    }
    [[nodiscard]] Style style(std::size_t place) const
    {
        return m_Styles[m_Run.residues[place]].style;
    }
    [[nodiscard]] bool endsStrand(std::size_t place) const
    {
        return isStrand(place) && (place + 1 == count() || !isStrand(place + 1));
    }
    [[nodiscard]] Profile profile(std::size_t place) const;
    // fromStart: within the residue's stretch, from 0 to 1.
    [[nodiscard]] Profile profileAt(std::size_t place, float fromStart) const;
    [[nodiscard]] Vec3 bend(std::size_t place) const;
    void findSides();
    void smoothStrands();

    const Molecule &m_Molecule;
    const TraceRun &m_Run;
    const std::vector<ResidueStyle> &m_Styles;
    std::vector<Vec3> m_Points;
    std::vector<Vec3> m_Sides;
};

Profile Path::profile(std::size_t place) const
{
    if (m_Run.role == Role::Nucleotide)
        return kNucleic;
    if (style(place) != Style::Cartoon)
        return kTrace;
    switch (residue(place).fold) {
    case Fold::Helix:
        return kHelix;
    case Fold::Strand:
        return kStrand;
    case Fold::Coil:
        break;
    }
    return kCoil;
}

Profile Path::profileAt(std::size_t place, float fromStart) const
{
    const Profile own = profile(place);
    if (endsStrand(place)) {
        const float width = kArrowWidth + (kArrowTip - kArrowWidth) * fromStart;
        return {width, own.thickness};
    }
    // The tip of an arrow has become thin already.
    if (fromStart < kBlend && place > 0) {
        if (endsStrand(place - 1))
            return mix({kArrowTip, own.thickness}, own, smooth(fromStart / kBlend));
        return mix(mix(profile(place - 1), own, 0.5F), own, smooth(fromStart / kBlend));
    }
    if (fromStart > 1 - kBlend && place + 1 < count())
        return mix(own, mix(own, profile(place + 1), 0.5F),
                   smooth((fromStart - 1 + kBlend) / kBlend));
    return own;
}

// At right angles to the plane of three points; zero where they lie on a line or at the ends.
Vec3 Path::bend(std::size_t place) const
{
    if (place == 0 || place + 1 >= count())
        return {};
    return cross(m_Points[place] - m_Points[place - 1], m_Points[place + 1] - m_Points[place]);
}

void Path::findSides()
{
    m_Sides.assign(count(), {});
    for (std::size_t i = 0; i < count(); ++i) {
        const std::size_t next = i + 1 < count() ? i + 1 : i;
        const std::size_t before = i > 0 ? i - 1 : i;
        const Vec3 along = normalized(m_Points[next] - m_Points[before]);
        Vec3 side;
        if (const std::uint32_t oxygen = residue(i).carbonylOxygen; oxygen != kNone)
            side = m_Molecule.atoms[oxygen].position - m_Points[i];
        else
            side = bend(i);
        side = normalized(side - along * dot(side, along));
        if (length(side) < 0.5F)
            side = i > 0 ? m_Sides[i - 1]
                         : anyPerpendicular(length(along) > 0 ? along : Vec3{1, 0, 0});
        if (i > 0 && dot(side, m_Sides[i - 1]) < 0)
            side = -side;
        m_Sides[i] = side;
    }
    // The ribbon turns less from residue to residue.
    std::vector<Vec3> averaged(m_Sides);
    for (std::size_t i = 1; i + 1 < count(); ++i) {
        const Vec3 sum = m_Sides[i - 1] + m_Sides[i] * 2 + m_Sides[i + 1];
        if (length(sum) > 0.5F)
            averaged[i] = normalized(sum);
    }
    m_Sides = std::move(averaged);
}

void Path::smoothStrands()
{
    std::vector<Vec3> smoothed(m_Points);
    for (std::size_t i = 1; i + 1 < count(); ++i)
        if (isStrand(i) && (isStrand(i - 1) || isStrand(i + 1)))
            smoothed[i] = m_Points[i] * 0.5F + (m_Points[i - 1] + m_Points[i + 1]) * 0.25F;
    m_Points = std::move(smoothed);
}

std::vector<RibbonRing> Path::rings(int steps) const
{
    std::vector<RibbonRing> rings;
    const auto tangent = [this](std::size_t i) {
        const std::size_t next = std::min(i + 1, count() - 1);
        const std::size_t before = i > 0 ? i - 1 : 0;
        return (m_Points[next] - m_Points[before]) * (next - before == 2 ? 0.5F : 1.0F);
    };
    // at: along the run, in residues; owner: whose stretch it is.
    const auto add = [&](float at, std::size_t owner) {
        const std::size_t i = std::min(std::size_t(std::max(at, 0.0F)), count() - 2);
        const float t = std::clamp(at - float(i), 0.0F, 1.0F);
        const Vec3 a = m_Points[i];
        const Vec3 b = m_Points[i + 1];
        const Vec3 ta = tangent(i);
        const Vec3 tb = tangent(i + 1);
        const float t2 = t * t;
        const float t3 = t2 * t;
        RibbonRing ring;
        ring.centre = a * (2 * t3 - 3 * t2 + 1) + ta * (t3 - 2 * t2 + t) + b * (3 * t2 - 2 * t3) +
                      tb * (t3 - t2);
        Vec3 along = a * (6 * t2 - 6 * t) + ta * (3 * t2 - 4 * t + 1) + b * (6 * t - 6 * t2) +
                     tb * (3 * t2 - 2 * t);
        along = normalized(length(along) > 1e-6F ? along : b - a);
        // Points that lie on each other lead nowhere.
        if (length(along) < 0.5F)
            along = anyPerpendicular(m_Sides[i]);
        Vec3 side = m_Sides[i] * (1 - t) + m_Sides[i + 1] * t;
        side = normalized(side - along * dot(side, along));
        if (length(side) < 0.5F)
            side = anyPerpendicular(along);
        ring.side = side;
        ring.up = normalized(cross(along, side));
        const float start = owner == 0 ? 0 : float(owner) - 0.5F;
        const float end = owner + 1 == count() ? float(owner) : float(owner) + 0.5F;
        const Profile profile = profileAt(
            owner, end > start ? (std::clamp(at, start, end) - start) / (end - start) : 0);
        ring.width = profile.width;
        ring.thickness = profile.thickness;
        const Style drawn = style(owner);
        ring.residue =
            drawn == Style::Cartoon || drawn == Style::Trace ? m_Run.residues[owner] : kNone;
        rings.push_back(ring);
    };
    for (std::size_t i = 0; i < count(); ++i) {
        const float start = i == 0 ? 0 : float(i) - 0.5F;
        const float end = i + 1 == count() ? float(i) : float(i) + 0.5F;
        const bool isHalf = i == 0 || i + 1 == count();
        const int own = isHalf ? std::max(1, steps / 2) : steps;
        for (int s = 0; s < own; ++s)
            add(start + (end - start) * float(s) / float(own), i);
        // Where an arrow begins and where the run ends, the border has two widths.
        if (i + 1 == count() || endsStrand(i + 1) || endsStrand(i))
            add(end, i);
    }
    return rings;
}

} // namespace

std::vector<RibbonRing> ribbonPath(const Molecule &molecule, const TraceRun &run,
                                   const std::vector<ResidueStyle> &styles, int steps)
{
    if (run.residues.size() < 2)
        return {};
    return Path(molecule, run, styles).rings(std::max(steps, 1));
}

} // namespace structures
