// SPDX-License-Identifier: GPL-3.0-or-later
// What plug-ins have registered with one alignment window.
#pragma once

#include "AlignmentViewObserver.h"
#include "CallList.h"
#include "CellEventFilter.h"
#include "CellOverlay.h"

#include <Qt>

#include <functional>

namespace TAMBO::services {

class WindowUsers
{
public:
    CallList<AlignmentViewObserver> observers{"An observer of an alignment window"};
    CallList<CellOverlay> overlays{"An overlay of an alignment window"};
    CallList<CellEventFilter> filters{"An event filter of an alignment window"};

    // Nobody may register any more.
    bool isClosed = false;
    // Told of overlays and filters.
    std::function<void()> changed;

    // The mouse belongs to a filter, which may have gone since.
    bool isHeld = false;
    CellEventFilter *holder = nullptr;
    // Those whose press the window got.
    Qt::MouseButtons windowButtons;

    void tellOfChange() const
    {
        if (changed)
            changed();
    }
};

} // namespace TAMBO::services
