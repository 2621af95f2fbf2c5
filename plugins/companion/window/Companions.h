// SPDX-License-Identifier: GPL-3.0-or-later
// What this plug-in adds to each alignment window, as they come and go, and the menu for the one
// that was used last.
#pragma once

#include "AlignmentWindowObserver.h"
#include "Companion.h"
#include "Refit.h"
#include "WindowCommands.h"
#include "WorkbenchMenu.h"

#include <map>
#include <memory>

namespace companion {

class Companions : public TAMBO::AlignmentWindowObserver
{
public:
    Companions();
    ~Companions() override;

    // Null when no window is open.
    [[nodiscard]] Companion *lastUsed() const;

    void windowOpened(TAMBO::AlignmentWindow &window) override;
    void windowGoing(TAMBO::AlignmentWindow &window) override;

private:
    struct OfWindow
    {
        explicit OfWindow(TAMBO::AlignmentWindow &window)
            : companion(window), commands(window, companion)
        { }

        Companion companion;
        WindowCommands commands;
    };

    Refit m_Refit;
    std::map<TAMBO::AlignmentWindow *, std::unique_ptr<OfWindow>> m_Companions;
    WorkbenchMenu m_Menu;
};

} // namespace companion
