// SPDX-License-Identifier: GPL-3.0-or-later
// A structure with all that a file may say: chain A, a helix of 12 residues of which 2 and 6 are
// bonded cysteines, and 10 and a zinc ion hold each other; two waters of chain A, 301 and 302B, and
// one, 5, of no chain; three models, each 10 Angstrom farther along x, of which the third lacks
// residue 4.
#pragma once

#include "MadeMolecules.h"

#include "ObjectFactory.h"
#include "Records.h"
#include "Structure.h"

#include <limits>
#include <string>
#include <vector>

namespace MadeExtras {

inline constexpr std::uint32_t kFirstCysteine = 2;
inline constexpr std::uint32_t kSecondCysteine = 6;
inline constexpr std::uint32_t kHolder = 10;
inline constexpr std::uint32_t kIon = 12;
inline constexpr std::uint32_t kLacking = 4;

inline TAMBO::Compound *make(const std::string &name)
{
    using Point = TAMBO::Vector<float, 3>;
    TAMBO::StructureRecord record;
    record.name = name;
    record.models = 3;
    TAMBO::ChainRecord &chain = record.chains.emplace_back();
    chain.name = "A";
    std::vector<Point> second;
    std::vector<Point> third;
    const auto add = [&](TAMBO::ResidueRecord &residue, const char *atom, const char *element,
                         structures::Vec3 place, bool isLacking) {
        residue.atoms.push_back({atom, element, TAMBO::Vertex(place.x, place.y, place.z)});
        const float nowhere = std::numeric_limits<float>::quiet_NaN();
        second.push_back(Point(place.x + 10, place.y, place.z));
        third.push_back(isLacking ? Point(nowhere, nowhere, nowhere)
                                  : Point(place.x + 20, place.y, place.z));
    };
    const std::vector<structures::Vec3> points = MadeMolecules::helix(12);
    for (std::uint32_t i = 0; i < points.size(); ++i) {
        TAMBO::ResidueRecord residue;
        residue.typeName = "CYS";
        residue.letter = 'C';
        residue.number = TAMBO::SequenceNumber(std::to_string(i + 1));
        add(residue, "CA", "C", points[i], i == kLacking);
        structures::Vec3 sulfur = points[i] * 1.6F;
        sulfur.z = points[i].z;
        // By no distance they would be bonded.
        if (i == kFirstCysteine)
            sulfur = {9, 0, 5};
        else if (i == kSecondCysteine)
            sulfur = {9, 0, 8};
        else if (i == kHolder)
            sulfur = {9, 0, 15};
        add(residue, "SG", "S", sulfur, i == kLacking);
        chain.residues.push_back(residue);
    }
    TAMBO::ResidueRecord ion;
    ion.typeName = "ZN";
    ion.letter = 'X';
    ion.number = TAMBO::SequenceNumber("99");
    ion.isAminoAcid = false;
    add(ion, "ZN", "ZN", {9, 0, 17.3F}, false);
    chain.residues.push_back(ion);
    record.furtherModels = {second, third};
    record.bonds = {{{0, kFirstCysteine, 1}, {0, kSecondCysteine, 1}, TAMBO::BondKind::Disulfide},
                    {{0, kHolder, 1}, {0, kIon, 0}, TAMBO::BondKind::Metal},
                    // To another copy in the crystal.
                    {{0, 0, 1}, {0, 11, 1}, TAMBO::BondKind::Covalent}};
    record.waters.add("A", {Point(14, 0, 2), 10, 301});
    record.waters.add("A", {Point(14, 0, 6), 10, 302, 0, 'B'});
    record.waters.add("W", {Point(14, 0, 10), 10, 5});
    return TAMBO::ObjectFactory::adopt(std::move(record));
}

} // namespace MadeExtras
