// SPDX-License-Identifier: GPL-3.0-or-later
// The residue handles of one sequence, made in blocks when first asked for and never moved.
#pragma once

#include <cstddef>
#include <memory>

namespace TAMBO {

class ResidueHandle;
class ResidueOwner;

class ResidueHandles
{
public:
    explicit ResidueHandles(ResidueOwner &owner) noexcept;
    ~ResidueHandles();
    ResidueHandles(const ResidueHandles &) = delete;
    ResidueHandles &operator=(const ResidueHandles &) = delete;

    // Handles change their residues, so they know an owner that can be changed.
    [[nodiscard]] ResidueOwner &owner() const noexcept { return *m_Owner; }
    [[nodiscard]] ResidueHandle &at(std::size_t index);
    // On the heap.
    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    using Block = std::unique_ptr<ResidueHandle[]>;

    static constexpr std::size_t kBlock = 32;

    [[nodiscard]] std::size_t blockCount() const noexcept;
    void fill(Block &block, std::size_t first);

    ResidueOwner *m_Owner;
    std::unique_ptr<Block[]> m_Blocks;
};

} // namespace TAMBO
