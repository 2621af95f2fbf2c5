// SPDX-License-Identifier: GPL-3.0-or-later
// A residue as Python holds it: a chain and a place in it, which never changes.
#pragma once

#include "Declarations.h"
#include "ProcessModel.h"

#include <cstddef>
#include <optional>

namespace TAMBO::script {

struct ResidueReference
{
    ChainReference chain;
    // Which the chain has.
    std::size_t index = 0;

    friend bool operator==(const ResidueReference &, const ResidueReference &) = default;
};

// A residue by its place or number, or a list of those of a slice.
[[nodiscard]] py::object residuesNamed(const ChainReference &chain, const py::object &named);
[[nodiscard]] bool holdsResidue(const ChainReference &chain, const py::object &what);
// The structure that a chain is of, or that a sequence is tied to first.
[[nodiscard]] std::optional<StructureReference> structureOf(const Peptide &chain);

} // namespace TAMBO::script
