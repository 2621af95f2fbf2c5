// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowNumbers.h"

#include "Alignment.h"

namespace companion {

QString lastNumber(const TAMBO::Alignment &alignment, unsigned long row, unsigned long begin,
                   unsigned long end)
{
    const unsigned long residues = alignment.residueCount(row, end);
    if (residues == 0)
        return {};
    const unsigned long col = alignment.columnOfResidue(row, residues - 1);
    if (col < begin || col >= end)
        return {};
    const auto *const residue = dynamic_cast<TAMBO::Group *>(alignment.getItem(row, col));
    return residue == nullptr ? QString() : QString::fromStdString(residue->GetSeqId().getValue());
}

} // namespace companion
