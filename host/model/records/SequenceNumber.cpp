// SPDX-License-Identifier: GPL-3.0-or-later
#include "SequenceNumber.h"

#include "Text.h"

#include <limits>
#include <string_view>

namespace TAMBO {

namespace {

// Stands for an empty text, which is as invalid as any other that is no number.
const std::string kEmptyText(1, '\0');

} // namespace

SequenceNumber::SequenceNumber(const std::string &text)
{
    m_Invalid = text.empty() ? kEmptyText : text;

    std::string_view rest = trimmed(text);
    if (rest.empty())
        return;

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
    const std::optional<int> number = numberIn<int>(rest);
    if (!number)
        return;
    m_Number = *number;
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
