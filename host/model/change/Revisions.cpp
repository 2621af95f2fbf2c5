// SPDX-License-Identifier: GPL-3.0-or-later
#include "Revisions.h"

namespace TAMBO {

namespace {

std::uint64_t s_Selection = 0;
std::uint64_t s_Numbering = 0;
std::uint64_t s_Color = 0;

} // namespace

std::uint64_t selectionRevision() noexcept
{
    return s_Selection;
}

std::uint64_t numberingRevision() noexcept
{
    return s_Numbering;
}

std::uint64_t colorRevision() noexcept
{
    return s_Color;
}

void growSelectionRevision() noexcept
{
    ++s_Selection;
}

void growNumberingRevision() noexcept
{
    ++s_Numbering;
}

void growColorRevision() noexcept
{
    ++s_Color;
}

void growAllRevisions() noexcept
{
    growSelectionRevision();
    growNumberingRevision();
    growColorRevision();
}

} // namespace TAMBO
