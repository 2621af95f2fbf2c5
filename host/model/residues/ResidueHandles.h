// SPDX-License-Identifier: GPL-3.0-or-later
// The residue handles of one peptide, made in blocks when first asked for and never moved.
#pragma once

#include "ResidueHandle.h"

#include <memory>
#include <vector>

namespace TAMBO {

class ResidueHandles
{
public:
    explicit ResidueHandles(std::size_t count) : m_Blocks((count + kBlock - 1) / kBlock) { }

    [[nodiscard]] ResidueHandle &at(Peptide &peptide, std::size_t index)
    {
        std::unique_ptr<ResidueHandle[]> &block = m_Blocks[index / kBlock];
        if (block == nullptr)
            fill(block, peptide, index / kBlock * kBlock);
        return block[index % kBlock];
    }
    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    static constexpr std::size_t kBlock = 32;

    void fill(std::unique_ptr<ResidueHandle[]> &block, Peptide &peptide, std::size_t first);

    std::vector<std::unique_ptr<ResidueHandle[]>> m_Blocks;
};

} // namespace TAMBO
