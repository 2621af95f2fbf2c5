// SPDX-License-Identifier: GPL-3.0-or-later
// Names for lists that objects are chosen from.
#pragma once

#include "Export.h"

#include <string>
#include <vector>

namespace TAMBO {

class Compound;

class TAMBO_API ObjectNames
{
public:
    // The names of the objects, in their order. Behind those that several of them have stands in
    // brackets what tells these apart: "1abc (old.pdb)". That is their files; where it is not
    // enough their full names and lengths; and at last their order. In lists of more than 20,000
    // nothing is added. Null has no name.
    [[nodiscard]] static std::vector<std::string>
    toldApart(const std::vector<const Compound *> &objects);
};

} // namespace TAMBO
