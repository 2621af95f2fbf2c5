// SPDX-License-Identifier: GPL-3.0-or-later
// The processes that come from this one, also those that have left their parents.
#pragma once

#include <chrono>
#include <sys/types.h>

namespace kestram {

// From now on those whose parent ends become children of this process, instead of the system's.
void adoptDescendants();

// Ends all that there are, and waits for them: they are asked to end, and are ended when they do
// not within the grace.
void endDescendants(std::chrono::milliseconds grace);

// To all of them; those that come into being meanwhile may be left out.
void signalDescendants(int signal);

} // namespace kestram
