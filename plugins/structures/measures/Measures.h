// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "AtomAddress.h"
#include "StructureScene.h"

#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

namespace structures {

// The distance of two atoms, the angle of three at the second, or the torsion of four.
struct Measure
{
    static constexpr std::size_t kLeast = 2;
    static constexpr std::size_t kMost = 4;

    std::vector<AtomAddress> atoms;

    friend bool operator==(const Measure &, const Measure &) = default;
};

// "3.42 Å", "109.5°", "−63.2°"; "undefined" where atoms lie so that there is no such angle.
[[nodiscard]] QString measureText(const std::vector<Vec3> &places);

// What has been measured in a view, in the order of measuring. A measure whose atoms are not there
// waits for them.
class Measures
{
public:
    // Beyond this none is taken.
    static constexpr std::size_t kMostMeasures = 1000;

    [[nodiscard]] const std::vector<Measure> &all() const noexcept { return m_All; }
    // False for one that is there, from whichever end, and for what is none. Its places are known
    // after follow().
    bool add(Measure measure);
    void remove(std::size_t index);
    void clear();

    // Looks at where the atoms are. To be called whenever the scene shows other things than before.
    void follow(const StructureScene &scene);
    // Of its atoms, relative to the scene's origin; empty when not all are there and to be seen.
    [[nodiscard]] const std::vector<Vec3> &placesOf(std::size_t index) const
    {
        return m_Places[index];
    }

    // Nothing for an atom that is not there or not to be seen.
    [[nodiscard]] static std::optional<Vec3> placeOf(const StructureScene &scene,
                                                     const AtomAddress &address);

private:
    std::vector<Measure> m_All;
    // One for each.
    std::vector<std::vector<Vec3>> m_Places;
};

} // namespace structures
