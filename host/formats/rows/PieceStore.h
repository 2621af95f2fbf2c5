// SPDX-License-Identifier: GPL-3.0-or-later
// Gathers the pieces of all rows of an alignment in groups of rows. A group's rows are made in one
// go, so that its pieces go at once, and the rows of several groups can be made at a time.
#pragma once

#include "GappedView.h"
#include "PieceGroup.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace TAMBO::formats {

class PieceStore
{
public:
    // The rows of a group: so few that all of them are written to from a processor's cache.
    static constexpr std::size_t kGroup = 256;

    // Behind what the row has so far.
    void add(std::size_t row, const GappedView &piece);
    // The pieces of rows group * kGroup and on; the store has none of them from here on.
    [[nodiscard]] PieceGroup take(std::size_t group);

private:
    [[nodiscard]] bool isNext(std::size_t row, std::uint64_t width) const noexcept;
    void close();

    std::vector<PieceGroup> m_Groups;
    // To which pieces are being added; its cells stand in the room below.
    PieceGroup::Batch m_Open;
    std::size_t m_OpenGroup = 0;
    std::vector<std::uint64_t> m_Words;
    std::string m_Letters;
};

} // namespace TAMBO::formats
