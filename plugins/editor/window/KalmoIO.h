// SPDX-License-Identifier: GPL-3.0-or-later
// What the editor hands to the workbench when it saves an alignment.
#pragma once

#include <QString>

namespace TAMBO {
class Alignment;
}

namespace ZEP {

// Read by the receiver in this order; lives for the one call.
struct SaveRequest
{
    QString path;
    TAMBO::Alignment *alignment;
};

} // namespace ZEP
