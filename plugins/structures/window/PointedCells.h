// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "CellPlaces.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace TAMBO {
class Alignment;
class AlignmentWindow;
class CellOverlay;
class Compound;
} // namespace TAMBO

namespace structures {

// Frames around the cells of one residue, in all alignment windows that have it.
class PointedCells
{
public:
    PointedCells();
    ~PointedCells();
    PointedCells(const PointedCells &) = delete;
    PointedCells &operator=(const PointedCells &) = delete;

    // Of the child of a chain; in place of what was framed before.
    void show(const TAMBO::Compound *chain, std::uint32_t child);
    void clear();
    // Scrolls the windows that have none of the residue's cells in sight.
    void bringIntoSight(const TAMBO::Compound *chain, std::uint32_t child);
    // Rows, ties or objects may be others than before.
    void forget();

private:
    using Residue = std::pair<const TAMBO::Compound *, std::uint32_t>;
    // A row, and which of its residues.
    using Place = std::pair<unsigned long, unsigned long>;
    using Places = std::multimap<Residue, Place>;

    [[nodiscard]] const Places &placesIn(const TAMBO::Alignment &alignment);
    [[nodiscard]] std::vector<TAMBO::CellIndex> cellsIn(const TAMBO::AlignmentWindow &window,
                                                        const Residue &residue);

    struct Known
    {
        unsigned long revision;
        Places places;
    };
    // Found when somebody first points at something.
    std::map<const TAMBO::Alignment *, Known> m_Known;
    Residue m_Shown{nullptr, 0};
    std::vector<std::unique_ptr<TAMBO::CellOverlay>> m_Frames;
};

} // namespace structures
