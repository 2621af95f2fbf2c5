// SPDX-License-Identifier: GPL-3.0-or-later
#include "Footprint.h"

#include "Alignment.h"
#include "Peptide.h"
#include "ResidueGroup.h"
#include "Structure.h"

namespace TAMBO {

namespace {

// A row of an alignment besides its occupancy, an element, anything small.
constexpr std::size_t kSmallObject = 256;

} // namespace

std::size_t footprint(const Compound &object)
{
    if (const auto *const peptide = dynamic_cast<const Peptide *>(&object))
        return peptide->bytes();
    if (const auto *const group = dynamic_cast<const ResidueGroup *>(&object))
        return group->bytes();
    if (const auto *const structure = dynamic_cast<const Structure *>(&object)) {
        std::size_t bytes = sizeof(Structure);
        for (std::size_t i = 0; i < structure->objectCount(); ++i)
            bytes += structure->chain(i)->bytes();
        return bytes;
    }
    // A bit a cell, and the ranks.
    if (const auto *const alignment = dynamic_cast<const Alignment *>(&object))
        return kSmallObject + alignment->height() * (kSmallObject + alignment->width() / 4);
    return kSmallObject;
}

} // namespace TAMBO
