// SPDX-License-Identifier: GPL-3.0-or-later
#include "LayoutChanges.h"

#include "Alignment.h"
#include "AlignmentTable.h"

namespace TAMBO {

std::uint64_t LayoutChanges::revision(const Alignment &alignment) noexcept
{
    return alignment.table().layoutLog().revision();
}

std::optional<std::vector<LayoutChange>> LayoutChanges::since(const Alignment &alignment,
                                                              std::uint64_t revision)
{
    return alignment.table().layoutLog().since(revision);
}

} // namespace TAMBO
