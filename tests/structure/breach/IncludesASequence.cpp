// SPDX-License-Identifier: GPL-3.0-or-later
// Must not compile as a part of what sequences are made of; compiles above them.
#include "Peptide.h"
