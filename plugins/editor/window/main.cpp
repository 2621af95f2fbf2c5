// SPDX-License-Identifier: GPL-3.0-or-later
// What the workbench finds in the library by name, and the registry of open editor windows.
#include "Check.h"
#include "Export.h"
#include "KALMO2.h"

#include <QtDebug>

#include <algorithm>
#include <vector>

namespace {

// In order of opening. Only pointers: windows still open when the library goes are left alone.
std::vector<BaseWindow *> Dialogs;

} // namespace

// Deletes registered windows only: one that is not in the registry is gone already, or belongs to
// whoever made it.
void ZEP::KALMO2::Kill(BaseWindow *window)
{
    const auto found = std::find(Dialogs.begin(), Dialogs.end(), window);
    if (found == Dialogs.end()) {
        qDebug("ZEP::KALMO2::Kill() Undead");
        return;
    }
    Dialogs.erase(found);
    delete window;
}

extern "C" {

TAMBO_API void Execute0()
{
    auto *window = new ZEP::KALMO2;
    TAMBO_CHECK_PTR(window, "main", 41);
    Dialogs.push_back(window);
    window->show();
    window->raise();
}

TAMBO_API bool IsDone()
{
    return Dialogs.empty();
}

// Relies on the close path taking each window out of the registry, through Kill().
TAMBO_API void Cleanup()
{
    while (!Dialogs.empty())
        Dialogs.front()->close(false);
}

} // extern "C"
