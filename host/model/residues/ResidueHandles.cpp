// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueHandles.h"

#include "Peptide.h"

#include <algorithm>

namespace TAMBO {

void ResidueHandles::fill(std::unique_ptr<ResidueHandle[]> &block, Peptide &peptide,
                          std::size_t first)
{
    const std::size_t count = std::min(kBlock, peptide.residueCount() - first);
    block = std::make_unique<ResidueHandle[]>(count);
    for (std::size_t i = 0; i < count; ++i)
        block[i].fill(peptide, static_cast<std::uint32_t>(first + i));
}

std::size_t ResidueHandles::bytes() const noexcept
{
    const auto made = std::ranges::count_if(m_Blocks, [](const auto &block) { return !!block; });
    return sizeof(*this) + m_Blocks.capacity() * sizeof(m_Blocks[0]) +
           static_cast<std::size_t>(made) * kBlock * sizeof(ResidueHandle);
}

} // namespace TAMBO
