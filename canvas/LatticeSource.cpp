// SPDX-License-Identifier: GPL-3.0-or-later
#include "LatticeSource.h"

#include <algorithm>

LatticeSource::~LatticeSource() = default;

bool LatticeSource::hasLetters() const
{
    return true;
}

void LatticeSource::readBackgrounds(unsigned long row, unsigned long begin, unsigned long end,
                                    QRgb *out) const
{
    std::vector<CellLook> looks;
    readCells(row, begin, end, looks);
    std::ranges::transform(looks, out, &CellLook::background);
}
