// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Records.h"

// The same one every time. Runs of 1 to 5 gaps between runs of 1 to 13 residues: 30 of 100 cells.
[[nodiscard]] TAMBO::AlignmentRecord madeAlignment(unsigned long rows, unsigned long columns);
