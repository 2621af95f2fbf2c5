// SPDX-License-Identifier: GPL-3.0-or-later
// Compiles as a part of the editor does: the control of its neighbours, which must not.
#include "Alignment.h"
#include "QCanvas.h"

#include <QMainWindow>
