// SPDX-License-Identifier: GPL-3.0-or-later
#include "SequenceText.h"

#include <algorithm>
#include <new>

namespace TAMBO {

SequenceText::SequenceText(std::string_view name, std::string_view letters)
{
    if (name.empty() && letters.empty())
        return;
    m_Head = ::new (::operator new(sizeof(Head) + letters.size() + name.size()))
        Head{static_cast<std::uint32_t>(letters.size()), static_cast<std::uint32_t>(name.size())};
    std::ranges::copy(name, std::ranges::copy(letters, text()).out);
}

SequenceText::~SequenceText()
{
    if (m_Head != &s_Empty)
        ::operator delete(m_Head);
}

void SequenceText::setName(std::string_view name)
{
    *this = SequenceText(name, letters());
}

std::size_t SequenceText::bytes() const noexcept
{
    return m_Head == &s_Empty ? 0 : sizeof(Head) + m_Head->letters + m_Head->name;
}

} // namespace TAMBO
