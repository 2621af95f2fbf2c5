// SPDX-License-Identifier: GPL-3.0-or-later
#include "ResidueHandles.h"

#include "ResidueHandle.h"
#include "ResidueOwner.h"

#include <algorithm>

namespace TAMBO {

ResidueHandles::ResidueHandles(ResidueOwner &owner) noexcept : m_Owner(&owner) { }

ResidueHandles::~ResidueHandles() = default;

ResidueHandle &ResidueHandles::at(std::size_t index)
{
    if (m_Blocks == nullptr)
        m_Blocks = std::make_unique<Block[]>(blockCount());
    Block &block = m_Blocks[index / kBlock];
    if (block == nullptr)
        fill(block, index / kBlock * kBlock);
    return block[index % kBlock];
}

std::size_t ResidueHandles::blockCount() const noexcept
{
    return (m_Owner->residueCount() + kBlock - 1) / kBlock;
}

void ResidueHandles::fill(Block &block, std::size_t first)
{
    const std::size_t count = std::min(kBlock, m_Owner->residueCount() - first);
    block = std::make_unique<ResidueHandle[]>(count);
    for (std::size_t i = 0; i < count; ++i)
        block[i].fill(*m_Owner, static_cast<std::uint32_t>(first + i));
}

std::size_t ResidueHandles::bytes() const noexcept
{
    if (m_Blocks == nullptr)
        return 0;
    const auto made = std::count_if(m_Blocks.get(), m_Blocks.get() + blockCount(),
                                    [](const Block &block) { return block != nullptr; });
    return blockCount() * sizeof(Block) +
           static_cast<std::size_t>(made) * kBlock * sizeof(ResidueHandle);
}

} // namespace TAMBO
