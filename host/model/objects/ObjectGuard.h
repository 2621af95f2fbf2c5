// SPDX-License-Identifier: GPL-3.0-or-later
// The kit's guards without what their checks take of the toolkit.
#pragma once

#include "DataPointBase.h"

namespace TAMBO {

class [[nodiscard]] ObjectGuard : public DataPointBase
{
public:
    ObjectGuard(Publisher::ActionType action, const Compound &object)
        : DataPointBase(nullptr, action, &object)
    { }
};

} // namespace TAMBO
