// SPDX-License-Identifier: GPL-3.0-or-later
// What a chain with coordinates, or a sequence with secondary structure, has besides its letters.
#pragma once

#include "Atom.h"
#include "ModelPlaces.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO {

class Compound;
class Element;

class StructureContents
{
public:
    // The atoms of residue i are those from start[i] to start[i + 1]; empty without coordinates.
    std::vector<std::uint32_t> atomStarts;
    std::unique_ptr<Atom[]> atoms;
    ModelPlaces models;
    // The place of each residue's CA once more, undefined without one: the atoms lie far apart for
    // passes over many residues.
    std::vector<Vertex> positions;
    // Of the residues whose name does not follow from their letter, by index.
    std::vector<std::pair<std::uint32_t, std::string>> typeNames;
    // Groups and elements, which are stored objects.
    std::vector<std::unique_ptr<Compound>> objects;
    // Those of the objects that are elements, in their order.
    std::vector<Element *> elements;

    [[nodiscard]] std::size_t bytes() const noexcept;
};

} // namespace TAMBO
