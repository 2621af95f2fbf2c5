// SPDX-License-Identifier: GPL-3.0-or-later
// How far the reading of a file has come, and whether it is to go on.
#pragma once

#include <cstdint>
#include <functional>

namespace TAMBO {

// Called now and then with the bytes read so far and in all; false cancels the reading, which then
// gives a Failure with an empty message.
using ReadProgress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

} // namespace TAMBO
