// SPDX-License-Identifier: GPL-3.0-or-later
// The container of the workbench's top-level objects, and the root of the object tree.
#pragma once

#include "Compound.h"

#include <vector>

namespace TAMBO {

class TAMBO_API Space : public Compound
{
public:
    using iterator = std::vector<Compound *>::iterator;

    static Space *instance();

    // Over the top-level objects in their order. Adding or deleting an object ends the validity.
    virtual iterator begin() = 0;
    virtual iterator end() = 0;

    ~Space() override;
};

} // namespace TAMBO
