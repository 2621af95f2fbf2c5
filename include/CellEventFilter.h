// SPDX-License-Identifier: GPL-3.0-or-later
// Base of what gets the events of an alignment window's areas before the window itself does.
#pragma once

#include "CellPlaces.h"
#include "Export.h"

class QEvent;

namespace TAMBO {

class AlignmentWindow;

// Registered from its construction until it or the window goes. Of several the one with the lower
// order is asked first; of equal ones, the one made last. Only for the GUI thread.
class TAMBO_API CellEventFilter
{
public:
    CellEventFilter(AlignmentWindow &window, WindowAreas areas, int order = 0);
    virtual ~CellEventFilter();

    CellEventFilter(const CellEventFilter &) = delete;
    CellEventFilter &operator=(const CellEventFilter &) = delete;

    // Null when it has gone.
    [[nodiscard]] AlignmentWindow *window() const noexcept { return m_Window; }
    [[nodiscard]] WindowAreas areas() const noexcept { return m_Areas; }
    [[nodiscard]] int order() const noexcept { return m_Order; }

    // True takes the event: neither the filters behind nor the window get it. Positions are the
    // area's. What is offered:
    // - MouseButtonPress, MouseButtonDblClick, MouseButtonRelease, MouseMove, with and without a
    //   button. Who takes a press gets everything of the mouse until no button is held, alone. Of a
    //   press that the window got, it gets the release as well, taken or not: call endDrag() of the
    //   window first when it shall mean nothing.
    // - Wheel, ToolTip (a QHelpEvent), ContextMenu.
    // - KeyPress and KeyRelease, for Cells, whichever of cells, names and header has the focus.
    // - Enter and Leave, which cannot be taken.
    // The window may be closed meanwhile. A filter that throws has not taken the event, is logged
    // and asked no more.
    virtual bool handle(AlignmentWindow &window, WindowArea area, QEvent &event) = 0;

private:
    friend class ServedAlignmentWindow;

    AlignmentWindow *m_Window;
    WindowAreas m_Areas;
    int m_Order;
};

} // namespace TAMBO
