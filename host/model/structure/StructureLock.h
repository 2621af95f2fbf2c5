// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace TAMBO {

class Compound;
class Structure;

// The structure or the first chain of it that forbids moving it; null when it is free.
[[nodiscard]] const Compound *lockWithin(const Structure &structure);

} // namespace TAMBO
