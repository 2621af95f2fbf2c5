// SPDX-License-Identifier: GPL-3.0-or-later
#include "SequenceNumber.h"

#include <charconv>
#include <limits>
#include <string_view>

namespace TAMBO {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";

constexpr bool isLetter(char c) noexcept
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

constexpr bool isDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

// Stands for an empty text, which is as invalid as any other that is no number.
const std::string kEmptyText(1, '\0');

} // namespace

SequenceNumber::SequenceNumber(const std::string &text)
{
    m_Invalid = text.empty() ? kEmptyText : text;

    std::string_view rest = text;
    const std::size_t begin = rest.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos)
        return;
    rest = rest.substr(begin, rest.find_last_not_of(kBlanks) - begin + 1);

    char code = ' ';
    if (isLetter(rest.back())) {
        code = rest.back();
        rest.remove_suffix(1);
    }
    if (!rest.empty() && rest.front() == '+') {
        rest.remove_prefix(1);
        if (!rest.empty() && !isDigit(rest.front()))
            return;
    }
    int number = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (rest.empty() || error != std::errc() || end != rest.data() + rest.size())
        return;
    m_Number = number;
    m_InsertionCode = code;
    m_Invalid.clear();
}

SequenceNumber::SequenceNumber(int number, char insertionCode)
    : m_Number(number), m_InsertionCode(insertionCode == '\0' ? ' ' : insertionCode)
{ }

std::string SequenceNumber::getValue() const
{
    if (!isValid())
        return m_Invalid == kEmptyText ? std::string() : m_Invalid;
    std::string text = std::to_string(m_Number);
    if (m_InsertionCode != ' ')
        text += m_InsertionCode;
    return text;
}

SequenceNumber &SequenceNumber::operator++()
{
    if (isValid()) {
        if (m_Number < std::numeric_limits<int>::max())
            ++m_Number;
        m_InsertionCode = ' ';
    }
    return *this;
}

} // namespace TAMBO
