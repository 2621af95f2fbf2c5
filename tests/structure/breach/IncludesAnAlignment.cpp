// SPDX-License-Identifier: GPL-3.0-or-later
// Must not compile as a part of the model below the alignments; compiles above them.
#include "AlignmentTable.h"
