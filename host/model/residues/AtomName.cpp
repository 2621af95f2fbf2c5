// SPDX-License-Identifier: GPL-3.0-or-later
#include "AtomName.h"

#include "TextBytes.h"

#include <algorithm>

namespace TAMBO {

AtomName::~AtomName()
{
    clear();
}

void AtomName::clear() noexcept
{
    if (m_Size == kIsLong)
        delete m_Long;
    m_Letters = {};
    m_Size = 0;
}

void AtomName::set(std::string_view name)
{
    if (name.size() > kMostLetters) {
        auto *const kept = new std::string(name);
        clear();
        m_Long = kept;
        m_Size = kIsLong;
        return;
    }
    clear();
    std::ranges::copy(name, m_Letters.begin());
    m_Size = static_cast<std::uint8_t>(name.size());
}

std::size_t AtomName::bytes() const noexcept
{
    return m_Size == kIsLong ? sizeof(std::string) + textBytes(*m_Long) : 0;
}

} // namespace TAMBO
