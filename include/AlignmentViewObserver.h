// SPDX-License-Identifier: GPL-3.0-or-later
// Base of everything that follows what one alignment window shows, and where.
#pragma once

#include "CellPlaces.h"
#include "Export.h"

#include <Qt>

#include <optional>

namespace TAMBO {

class AlignmentWindow;

// What the user drags in the grid with a button held, by the window's own rules.
struct GapDrag
{
    // Where the button was pressed.
    CellIndex from;
    Qt::MouseButton button = Qt::NoButton;
    // The column under the pointer; nothing when it is in another row or out of sight.
    std::optional<unsigned long> column;
};

// Registered from its construction until it or the window goes. Observers may come and go during a
// notification. What one throws is logged, and it is called no more. Only for the GUI thread.
class TAMBO_API AlignmentViewObserver
{
public:
    explicit AlignmentViewObserver(AlignmentWindow &window);
    virtual ~AlignmentViewObserver();

    AlignmentViewObserver(const AlignmentViewObserver &) = delete;
    AlignmentViewObserver &operator=(const AlignmentViewObserver &) = delete;

    // Null when it has gone.
    [[nodiscard]] AlignmentWindow *window() const noexcept { return m_Window; }

    // At once: the window shows another alignment, or none. The one before may be about to be
    // freed.
    virtual void alignmentShown();

    // From the event loop and before anything is painted; each once, however often it happened, and
    // in this order.

    // Rows, columns, their order, or the places of gaps may be others.
    virtual void layoutRebuilt();
    virtual void cellSizeChanged();
    // Of the area in which cells are shown.
    virtual void visibleSizeChanged();
    virtual void scrolled();

    // At once: the user holds a gap. The window is not changed yet when it ends: with the column to
    // which it will now be moved, or without one when nothing will be.
    virtual void gapDragBegan(const GapDrag &drag);
    virtual void gapDragMoved(const GapDrag &drag);
    virtual void gapDragEnded(const GapDrag &drag);

private:
    friend class ServedAlignmentWindow;

    AlignmentWindow *m_Window;
};

} // namespace TAMBO
