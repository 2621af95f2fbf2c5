// SPDX-License-Identifier: GPL-3.0-or-later
// What a sequence of an alignment file mostly does without: handles, numbers, colours, selection,
// ties, atoms. Made when the first of them is needed, and there from then on: steps of undo refer
// to what it holds.
#pragma once

#include "ResidueHandles.h"
#include "ResidueTies.h"
#include "SequenceColors.h"

#include <cstdint>
#include <memory>

namespace TAMBO {

class ResidueOwner;
class ResidueSelection;
class StructureContents;
struct NumberSlot;

struct PeptideExtras
{
    explicit PeptideExtras(ResidueOwner &owner) noexcept;
    ~PeptideExtras();
    PeptideExtras(const PeptideExtras &) = delete;
    PeptideExtras &operator=(const PeptideExtras &) = delete;

    // On the heap, itself included.
    [[nodiscard]] std::size_t bytes() const noexcept;

    ResidueHandles handles;
    SequenceColors colors;
    // Null while there is nothing to be said.
    std::unique_ptr<NumberSlot> numbers;
    std::unique_ptr<ResidueSelection> selection;
    // What was selected before everything was deselected, and at which of these times.
    std::unique_ptr<ResidueSelection> deselected;
    std::uint32_t deselectedAt = 0;
    std::unique_ptr<ResidueTies> ties;
    std::unique_ptr<StructureContents> contents;
};

} // namespace TAMBO
