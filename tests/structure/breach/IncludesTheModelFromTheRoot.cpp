// SPDX-License-Identifier: GPL-3.0-or-later
// Must not compile as a part of the editor.
#include "host/model/alignment/AlignmentTable.h"
