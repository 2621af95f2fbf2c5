// SPDX-License-Identifier: GPL-3.0-or-later
// What a structure keeps of its file besides chains. Places in it are those of the file; the motion
// has brought the structure from there to where it is now.
#pragma once

#include "BondKind.h"
#include "RigidMotion.h"
#include "Waters.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TAMBO {

class ObjectReader;
class ObjectWriter;

struct KeptBond
{
    // What is gone is found nowhere, and the bond is as if it were not there.
    struct End
    {
        // The number of a chain or a group.
        std::uint32_t owner = 0;
        // Of a group 0.
        std::uint32_t residue = 0;
        std::uint32_t atom = 0;
    };

    End first;
    End second;
    BondKind kind = BondKind::Covalent;
};

struct StructureExtras
{
    RigidMotion motion;
    Waters waters;
    std::vector<KeptBond> bonds;

    // On the heap, itself included.
    [[nodiscard]] std::size_t bytes() const noexcept;

    // In parts that take little time each; the first is there always.
    [[nodiscard]] std::size_t partCount() const noexcept;
    void writePart(std::size_t part, ObjectWriter &out) const;
    // Adds what one of them has left.
    void readPart(ObjectReader &in);

private:
    [[nodiscard]] std::size_t waterParts() const noexcept;
};

} // namespace TAMBO
