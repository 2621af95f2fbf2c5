// SPDX-License-Identifier: GPL-3.0-or-later
// A bond that a file of a structure names, between two of its atoms.
#pragma once

#include "BondKind.h"

#include <cstdint>
#include <tuple>

namespace TAMBO {

struct BondRecord
{
    // Which chain, which residue of it, and which atom of that.
    struct End
    {
        std::uint32_t chain = 0;
        std::uint32_t residue = 0;
        std::uint32_t atom = 0;

        friend bool operator==(const End &, const End &) = default;
        friend bool operator<(const End &one, const End &other) noexcept
        {
            return std::tie(one.chain, one.residue, one.atom) <
                   std::tie(other.chain, other.residue, other.atom);
        }
    };

    End first;
    End second;
    BondKind kind = BondKind::Covalent;

    friend bool operator==(const BondRecord &, const BondRecord &) = default;
};

} // namespace TAMBO
