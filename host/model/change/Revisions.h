// SPDX-License-Identifier: GPL-3.0-or-later
// Counters by which views learn cheaply that something they show may have changed anywhere.
#pragma once

#include <cstdint>

namespace TAMBO {

// Each grows with every change of its kind and never goes back.
[[nodiscard]] std::uint64_t selectionRevision() noexcept;
// Residue numbers and secondary-structure elements.
[[nodiscard]] std::uint64_t numberingRevision() noexcept;
// The display colours of residues, the mark of selection aside.
[[nodiscard]] std::uint64_t colorRevision() noexcept;
// What structures are made of, and where it is. Not among all of those below.
[[nodiscard]] std::uint64_t structureRevision() noexcept;

// For the model's own operations.
void growSelectionRevision() noexcept;
void growNumberingRevision() noexcept;
void growColorRevision() noexcept;
void growStructureRevision() noexcept;
void growAllRevisions() noexcept;

} // namespace TAMBO
