// SPDX-License-Identifier: GPL-3.0-or-later
// The residue numbers of a peptide as runs of consecutive ones.
#pragma once

#include "SequenceNumber.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TAMBO {

class ValueReader;
class ValueWriter;

// Without a run, residues count from 1.
class ResidueNumbers
{
public:
    [[nodiscard]] SequenceNumber at(std::size_t index) const;
    // Numbers that follow the one before need no run.
    void append(std::size_t index, const SequenceNumber &number);
    // Of count residues in all; the others keep theirs.
    void set(std::size_t index, const SequenceNumber &number, std::size_t count);
    [[nodiscard]] bool isDefault() const noexcept;
    [[nodiscard]] std::size_t bytes() const noexcept;

    void write(ValueWriter &out) const;
    // Of so many residues.
    [[nodiscard]] static ResidueNumbers read(ValueReader &in, std::size_t count);

private:
    // From residue first on: number, with the insertion code for the first one only.
    struct Run
    {
        std::uint32_t first;
        std::int32_t number;
        char code;
    };

    [[nodiscard]] std::size_t runOf(std::size_t index) const noexcept;
    [[nodiscard]] bool follows(std::size_t run, std::size_t index,
                               const SequenceNumber &number) const;

    std::vector<Run> m_Runs;
};

} // namespace TAMBO
