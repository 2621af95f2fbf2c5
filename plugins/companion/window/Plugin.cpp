// SPDX-License-Identifier: GPL-3.0-or-later
// The three functions that the workbench calls.
#include "Companions.h"
#include "Export.h"

namespace {

// Hears of windows as soon as the library is loaded.
companion::Companions s_Companions;

} // namespace

extern "C" {

TAMBO_API void Execute0() { }

TAMBO_API bool IsDone()
{
    return true;
}

TAMBO_API void Cleanup()
{
    s_Companions.clear();
}

} // extern "C"
