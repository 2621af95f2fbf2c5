// SPDX-License-Identifier: GPL-3.0-or-later
// The residue property scales of the workbench (hydropathy, volume, ...).
#pragma once

#include "Export.h"

#include <string>
#include <vector>

class TAMBO_API ResidueTypes
{
public:
    // Appends the names of the scales in their order.
    static void Properties(std::vector<std::string> &names);
    // False, and value untouched, when the scale is unknown or has no value for the letter.
    static bool GetValue(const std::string &property, char residue, float &value);
};
