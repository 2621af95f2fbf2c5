// SPDX-License-Identifier: GPL-3.0-or-later
// The kinds of change that the workbench publishes.
#pragma once

#include "Export.h"

class TAMBO_API Publisher
{
public:
    enum ActionType { Update = 0, Add = 1, Delete = 2 };

    // True while subscribers are being notified; a guard made now is refused.
    [[nodiscard]] static bool isPublishing() noexcept;
};
