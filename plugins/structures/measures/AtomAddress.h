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

    friend bool operator==(const AtomAddress &, const AtomAddress &) = default;
};

// Of an atom of the structure's molecule.
[[nodiscard]] AtomAddress addressOf(const ViewedStructure &structure, std::uint32_t atom);
// Where the atom is in the structure's molecule; kNone when it is not there.
[[nodiscard]] std::uint32_t atomAt(const ViewedStructure &structure, const AtomAddress &address);

} // namespace structures
