// SPDX-License-Identifier: GPL-3.0-or-later
// Which residues of a sequence share their data with residues of loaded chains.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TAMBO {

class Peptide;

class ResidueTies
{
public:
    // Residues first to first + count - 1 are those of chain from chainFirst on.
    struct Run
    {
        std::uint32_t first;
        std::uint32_t count;
        std::uint32_t chainFirst;
        Peptide *chain;
    };

    // Runs come in ascending order without overlap.
    void append(const Run &run);
    // Null for a residue that is not tied.
    [[nodiscard]] const Run *find(std::size_t index) const noexcept;
    [[nodiscard]] const std::vector<Run> &runs() const noexcept { return m_Runs; }
    [[nodiscard]] bool holds(const Peptide &chain) const noexcept;
    void erase(const Peptide &chain);
    [[nodiscard]] std::size_t bytes() const noexcept
    {
        return sizeof(*this) + m_Runs.capacity() * sizeof(Run);
    }

private:
    std::vector<Run> m_Runs;
};

} // namespace TAMBO
