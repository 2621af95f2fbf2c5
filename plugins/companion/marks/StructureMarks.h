// SPDX-License-Identifier: GPL-3.0-or-later
// Marks on the cells of an alignment window that do not fit the structure of their row: letters
// that differ from the chain's, and residues without coordinates.
#pragma once

#include "CellEventFilter.h"
#include "CellOverlay.h"

#include <cstddef>

namespace companion {

// On until it is switched off, which is kept for the windows that are opened later. The reason is
// added to what the window says of a cell in its tool tip.
class StructureMarks : public TAMBO::CellOverlay, public TAMBO::CellEventFilter
{
public:
    // In smaller cells nobody could tell the marks.
    static constexpr int kLeastWidth = 6;
    static constexpr int kLeastHeight = 8;

    explicit StructureMarks(TAMBO::AlignmentWindow &window);
    ~StructureMarks() override;

    [[nodiscard]] bool isOn() const noexcept { return m_IsOn; }
    void toggle();
    // How many rows have been looked at.
    [[nodiscard]] std::size_t rowsRead() const noexcept { return m_RowsRead; }

    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override;
    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    bool m_IsOn = true;
    bool m_IsAsking = false;
    std::size_t m_RowsRead = 0;
};

} // namespace companion
