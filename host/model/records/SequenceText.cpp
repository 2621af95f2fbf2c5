// SPDX-License-Identifier: GPL-3.0-or-later
#include "SequenceText.h"

#include <algorithm>
#include <new>

namespace TAMBO {

SequenceText::Head SequenceText::s_Empty{0, 0};

SequenceText::SequenceText(std::string_view name, std::string_view letters)
    : SequenceText(name, letters.size())
{
    // The copy for ranges goes letter by letter in some versions of the library.
    std::copy_n(letters.data(), letters.size(), text());
}

SequenceText::SequenceText(std::string_view name, std::size_t letters)
{
    if (name.empty() && letters == 0)
        return;
    m_Head = ::new (::operator new(sizeof(Head) + letters + name.size()))
        Head{static_cast<std::uint32_t>(letters), static_cast<std::uint32_t>(name.size())};
    std::copy_n(name.data(), name.size(), text() + letters);
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
