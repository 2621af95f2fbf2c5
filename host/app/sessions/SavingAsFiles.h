// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SessionFolder.h"

class QWidget;

namespace TAMBO {
class History;
class ObjectSpace;
} // namespace TAMBO

namespace TAMBO::app {

// Asks for a folder, saves the session's objects in a new one below it, and tells what has come of
// it. In an empty workbench.
void askAndSaveAsFiles(const LeftSession &session, ObjectSpace &space, History &history,
                       QWidget *parent);

} // namespace TAMBO::app
