// SPDX-License-Identifier: GPL-3.0-or-later
// Base of everything that follows which alignment windows there are.
#pragma once

#include "Export.h"

namespace TAMBO {

class AlignmentWindow;

// Registered while it exists; of windows that are open already AlignmentWindow::All() tells.
// Observers may come and go during a notification. What one throws is logged, and it is called no
// more. Only for the GUI thread.
class TAMBO_API AlignmentWindowObserver
{
public:
    virtual ~AlignmentWindowObserver();

    AlignmentWindowObserver(const AlignmentWindowObserver &) = delete;
    AlignmentWindowObserver &operator=(const AlignmentWindowObserver &) = delete;

    // It is complete and empty, and not shown yet.
    virtual void windowOpened(AlignmentWindow &window);
    // It still answers everything, and is not to be called afterwards. It is in All() no more.
    virtual void windowGoing(AlignmentWindow &window);
    // The user turned to it.
    virtual void windowActivated(AlignmentWindow &window);

protected:
    AlignmentWindowObserver();
};

} // namespace TAMBO
