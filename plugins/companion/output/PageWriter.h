// SPDX-License-Identifier: GPL-3.0-or-later
// Base of what writes pages into a file.
#pragma once

#include "PageSink.h"

#include <chrono>

namespace companion {

// One that goes before it has finished leaves off. The device knows best what it did not take.
class PageWriter : public PageSink
{
public:
    // What is to be done behind the last page, for about that time; to be called until it is true.
    [[nodiscard]] virtual bool finish(std::chrono::microseconds most) = 0;
    // Something other than the device has failed.
    [[nodiscard]] virtual bool hasFailed() const { return false; }
};

} // namespace companion
