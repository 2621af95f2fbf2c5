// SPDX-License-Identifier: GPL-3.0-or-later
// Structure View: the structures that are loaded, in three dimensions, with the selection and the
// colors of the alignment.
#include "StructureWindow.h"
#include "ViewsPart.h"

#include "Export.h"

namespace {

structures::ViewsPart s_Views;

} // namespace

extern "C" {

TAMBO_API void Execute0()
{
    structures::StructureWindow::open();
}

TAMBO_API bool IsDone()
{
    return structures::StructureWindow::opened().isEmpty();
}

TAMBO_API void Cleanup()
{
    while (!structures::StructureWindow::opened().isEmpty())
        structures::StructureWindow::opened().front()->close(false);
}

} // extern "C"
