// SPDX-License-Identifier: GPL-3.0-or-later
#include "Measures.h"

#include "MeasureGeometry.h"

#include <algorithm>
#include <cmath>

namespace structures {

namespace {

constexpr QChar kMinus(0x2212);
constexpr QChar kDegree(0xb0);
constexpr QChar kAngstrom(0xc5);

bool isToBeSeen(const ViewedStructure &structure, std::uint32_t atom)
{
    const MoleculeAtom &own = structure.molecule().atoms[atom];
    const std::uint32_t residue = own.residue;
    return structure.isVisible() && own.isPlaced &&
           !structure.isLeftOut(structure.molecule().residues[residue].chain) &&
           structure.styles()[residue].style != Style::Hidden &&
           (structure.hidden().empty() || !structure.hidden()[residue]);
}

} // namespace

QString measureText(const std::vector<Vec3> &places)
{
    const std::optional<double> value = measured(places);
    if (!value)
        return QStringLiteral("undefined");
    if (places.size() == 2)
        return QString::number(*value, 'f', 2) + ' ' + kAngstrom;
    // What is rounded to -180 is the same as 180, and there is no -0.
    double rounded = std::round(*value * 10) / 10;
    if (rounded <= -180)
        rounded += 360;
    QString text = QString::number(std::abs(rounded), 'f', 1) + kDegree;
    if (rounded < 0)
        text.prepend(kMinus);
    return text;
}

bool Measures::add(Measure measure)
{
    const std::size_t size = measure.atoms.size();
    if (size < Measure::kLeast || size > Measure::kMost || m_All.size() >= kMostMeasures)
        return false;
    Measure reversed = measure;
    std::reverse(reversed.atoms.begin(), reversed.atoms.end());
    for (const Measure &known : m_All)
        if (known == measure || known == reversed)
            return false;
    m_All.push_back(std::move(measure));
    m_Places.emplace_back();
    return true;
}

void Measures::remove(std::size_t index)
{
    if (index >= m_All.size())
        return;
    m_All.erase(m_All.begin() + std::ptrdiff_t(index));
    m_Places.erase(m_Places.begin() + std::ptrdiff_t(index));
}

void Measures::clear()
{
    m_All.clear();
    m_Places.clear();
}

std::optional<Vec3> Measures::placeOf(const StructureScene &scene, const AtomAddress &address)
{
    for (const auto &structure : scene.structures()) {
        const std::uint32_t water = waterAt(*structure, address);
        if (water != kNone) {
            if (!structure->isWaterInPicture(water))
                return std::nullopt;
            const Molecule &molecule = structure->molecule();
            return molecule.waters[water] + (molecule.centre - scene.origin());
        }
        const std::uint32_t atom = atomAt(*structure, address);
        if (atom == kNone)
            continue;
        if (!isToBeSeen(*structure, atom))
            return std::nullopt;
        const Molecule &molecule = structure->molecule();
        return molecule.atoms[atom].position + (molecule.centre - scene.origin());
    }
    return std::nullopt;
}

void Measures::follow(const StructureScene &scene)
{
    for (std::size_t i = 0; i < m_All.size(); ++i) {
        std::vector<Vec3> &places = m_Places[i];
        places.clear();
        for (const AtomAddress &address : m_All[i].atoms) {
            const std::optional<Vec3> place = placeOf(scene, address);
            if (!place) {
                places.clear();
                break;
            }
            places.push_back(*place);
        }
    }
}

} // namespace structures
