// SPDX-License-Identifier: GPL-3.0-or-later
// Which atom something is said of, as plain values.
#pragma once

#include "ViewedStructure.h"

#include <cstdint>
#include <string>

namespace structures {

// The same for an atom that was deleted and has come back, and in another run of the program.
struct AtomAddress
{
    // SessionPart::NumberOf() of its chain.
    std::uint32_t chain = 0;
    // Which child of the chain its residue is.
    std::uint32_t child = 0;
    std::string atom;
    // Which of those of the residue that have this name.
    std::uint32_t nth = 0;

    // Of a water, which is no object, nothing but these: SessionPart::NumberOf() of its structure,
    // and which of the structure's waters it is.
    std::uint32_t structure = 0;
    std::uint32_t water = kNone;

    [[nodiscard]] bool isWater() const noexcept { return water != kNone; }
    friend bool operator==(const AtomAddress &, const AtomAddress &) = default;
};

// Of an atom of the structure's molecule.
[[nodiscard]] AtomAddress addressOf(const ViewedStructure &structure, std::uint32_t atom);
[[nodiscard]] AtomAddress addressOfWater(const ViewedStructure &structure, std::uint32_t water);
// Where the atom is in the structure's molecule; kNone when it is not there.
[[nodiscard]] std::uint32_t atomAt(const ViewedStructure &structure, const AtomAddress &address);
// The same for an address of a water.
[[nodiscard]] std::uint32_t waterAt(const ViewedStructure &structure, const AtomAddress &address);

} // namespace structures
