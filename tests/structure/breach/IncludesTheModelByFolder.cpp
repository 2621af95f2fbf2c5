// SPDX-License-Identifier: GPL-3.0-or-later
// Must not compile as a part of the editor.
#include "model/alignment/AlignmentTable.h"
