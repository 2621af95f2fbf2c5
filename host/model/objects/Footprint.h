// SPDX-License-Identifier: GPL-3.0-or-later
// How much memory an object occupies, for the limit of the history.
#pragma once

#include <cstddef>

namespace TAMBO {

class Compound;

// An estimate, everything below the object included.
[[nodiscard]] std::size_t footprint(const Compound &object);

} // namespace TAMBO
