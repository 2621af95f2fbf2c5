// SPDX-License-Identifier: GPL-3.0-or-later
// Waiting for what comes by itself: generously, but not for ever.
#pragma once

#include <functional>
#include <source_location>

// What another program or a loaded machine may take; a test as a whole has more.
constexpr int kPatienceMilliseconds = 120'000;

// Handles events until the condition holds. Fails, naming the place, when it does not come true
// within the patience there is; after a failure only little is left, so that the test ends.
bool waitUntil(const std::function<bool()> &condition,
               std::source_location place = std::source_location::current());

// The same for what takes longer in itself.
bool waitUntilWithin(int milliseconds, const std::function<bool()> &condition,
                     std::source_location place = std::source_location::current());
