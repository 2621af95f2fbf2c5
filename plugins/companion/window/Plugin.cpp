// SPDX-License-Identifier: GPL-3.0-or-later
// The three functions that the workbench calls.
#include "Companions.h"
#include "Export.h"

namespace {

// Hears of windows as soon as the library is loaded. Never destroyed: when the program ends with
// windows open, their widgets are not to be touched after the toolkit has gone.
[[maybe_unused]] const companion::Companions &s_Companions = *new companion::Companions;

} // namespace

extern "C" {

TAMBO_API void Execute0() { }

TAMBO_API bool IsDone()
{
    return true;
}

TAMBO_API void Cleanup() { }

} // extern "C"
