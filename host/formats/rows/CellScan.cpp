// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellScan.h"

namespace TAMBO::formats {

CellMasks scanCellsOneByOne(const char *text) noexcept
{
    CellMasks masks;
    for (unsigned place = 0; place < kScanWidth; ++place) {
        const char cell = text[place];
        const bool lowerCase = cell >= 'a' && cell <= 'z';
        const bool letter = lowerCase || (cell >= 'A' && cell <= 'Z');
        masks.letters |= std::uint64_t{letter} << place;
        masks.lowerCase |= std::uint64_t{lowerCase} << place;
        masks.dashes |= std::uint64_t{cell == '-'} << place;
        masks.otherGaps |= std::uint64_t{cell == '.' || cell == '~'} << place;
    }
    return masks;
}

} // namespace TAMBO::formats
