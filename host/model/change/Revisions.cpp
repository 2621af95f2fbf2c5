// SPDX-License-Identifier: GPL-3.0-or-later
#include "Revisions.h"

namespace TAMBO {

namespace {

std::uint64_t s_Selection = 0;
std::uint64_t s_Numbering = 0;
std::uint64_t s_Color = 0;
std::uint64_t s_Structure = 0;

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

std::uint64_t structureRevision() noexcept
{
    return s_Structure;
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

void growStructureRevision() noexcept
{
    ++s_Structure;
}

void growAllRevisions() noexcept
{
    growSelectionRevision();
    growNumberingRevision();
    growColorRevision();
}

} // namespace TAMBO
