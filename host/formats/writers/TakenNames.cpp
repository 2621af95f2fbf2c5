// SPDX-License-Identifier: GPL-3.0-or-later
#include "TakenNames.h"

#include <bit>
#include <functional>

namespace TAMBO::formats {

// At most half of the slots are in use, so that a search is short and ends.
TakenNames::TakenNames(std::size_t names)
    : m_Slots(std::bit_ceil(2 * names + 1)), m_Mask(m_Slots.size() - 1)
{ }

std::uint64_t TakenNames::hashOf(std::string_view name) noexcept
{
    return std::hash<std::string_view>()(name);
}

} // namespace TAMBO::formats
