// SPDX-License-Identifier: GPL-3.0-or-later
// A residue number with an optional insertion code, as structure files write it: "12", "-3", "60A".
#pragma once

#include "Export.h"

#include <string>

namespace TAMBO {

class TAMBO_API SequenceNumber
{
public:
    SequenceNumber() = default;
    // From a text as typed: an optional sign, digits, at most one letter, blanks around it ignored.
    // Any other text gives an invalid number that keeps the text.
    explicit SequenceNumber(const std::string &text);
    explicit SequenceNumber(int number, char insertionCode = ' ');

    // The text as shown to the user.
    [[nodiscard]] std::string getValue() const;
    [[nodiscard]] bool isValid() const noexcept { return m_Invalid.empty(); }
    [[nodiscard]] int number() const noexcept { return m_Number; }
    // A blank when there is none.
    [[nodiscard]] char insertionCode() const noexcept { return m_InsertionCode; }

    // The next integer, without an insertion code. An invalid number stays as it is.
    SequenceNumber &operator++();

    friend bool operator==(const SequenceNumber &, const SequenceNumber &) = default;

private:
    int m_Number = 0;
    char m_InsertionCode = ' ';
    std::string m_Invalid;
};

} // namespace TAMBO
