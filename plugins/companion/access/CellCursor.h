// SPDX-License-Identifier: GPL-3.0-or-later
// A cursor in the cells, for reading and selecting them by keys alone.
#pragma once

#include "AlignmentViewObserver.h"
#include "CellEventFilter.h"
#include "CellOverlay.h"

#include <functional>
#include <optional>

class QKeyEvent;

namespace companion {

// Off until it is asked for; then arrow keys, Home, End and the pages move it and the window shows
// the cell where it is, Space selects its residue or deselects it, and Escape switches it off.
class CellCursor : public TAMBO::AlignmentViewObserver,
                   public TAMBO::CellOverlay,
                   public TAMBO::CellEventFilter
{
public:
    using Place = std::optional<TAMBO::CellIndex>;

    // moved is called with each new place, and with none when it is switched off.
    CellCursor(TAMBO::AlignmentWindow &window, std::function<void(const Place &)> moved);
    ~CellCursor() override;

    // On at the first cell in sight, which gets the keyboard; or off.
    void toggle();
    [[nodiscard]] const Place &place() const noexcept { return m_Place; }

    void alignmentShown() override;
    void layoutRebuilt() override;
    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override;
    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    [[nodiscard]] TAMBO::AlignmentWindow &shown() const;
    // Nothing for a key that does not move it.
    [[nodiscard]] Place target(const QKeyEvent &key) const;
    void set(const Place &place);
    void toggleSelected() const;

    std::function<void(const Place &)> m_Moved;
    Place m_Place;
};

} // namespace companion
