// SPDX-License-Identifier: GPL-3.0-or-later
#include "JsonText.h"

#include <array>
#include <cstdio>

namespace TAMBO::app {

namespace {

// The length of the well-formed UTF-8 sequence at the start of bytes, 0 when there is none.
std::size_t sequenceLength(std::string_view bytes)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xc2 && lead < 0xe0   ? 2
                               : lead >= 0xe0 && lead < 0xf0 ? 3
                               : lead >= 0xf0 && lead < 0xf5 ? 4
                                                             : 0;
    if (length == 0 || bytes.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xc0) != 0x80)
            return 0;
    }
    // Overlong forms, surrogates and code points above the last plane.
    const bool bad = (lead == 0xe0 && byte(1) < 0xa0) || (lead == 0xed && byte(1) > 0x9f) ||
                     (lead == 0xf0 && byte(1) < 0x90) || (lead == 0xf4 && byte(1) > 0x8f);
    return bad ? 0 : length;
}

void appendEscaped(std::string &out, char character)
{
    switch (character) {
    case '"':
        out += "\\\"";
        return;
    case '\\':
        out += "\\\\";
        return;
    case '\n':
        out += "\\n";
        return;
    case '\t':
        out += "\\t";
        return;
    default:
        break;
    }
    if (static_cast<unsigned char>(character) >= 0x20 && character != 0x7f) {
        out += character;
        return;
    }
    std::array<char, 8> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "\\u%04x", static_cast<unsigned>(character));
    out += buffer.data();
}

} // namespace

void JsonText::separate()
{
    if (m_NeedsComma)
        m_Text += ", ";
    m_NeedsComma = false;
}

void JsonText::beginObject()
{
    separate();
    m_Text += '{';
}

void JsonText::endObject()
{
    m_Text += '}';
    m_NeedsComma = true;
}

void JsonText::beginArray()
{
    separate();
    m_Text += '[';
}

void JsonText::endArray()
{
    m_Text += ']';
    m_NeedsComma = true;
}

void JsonText::key(std::string_view name)
{
    value(name);
    m_Text += ": ";
    m_NeedsComma = false;
}

void JsonText::value(std::string_view text)
{
    separate();
    m_Text += '"';
    while (!text.empty()) {
        const std::size_t length = sequenceLength(text);
        if (length == 1)
            appendEscaped(m_Text, text.front());
        else if (length == 0)
            m_Text += "\xef\xbf\xbd";
        else
            m_Text += text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    m_Text += '"';
    m_NeedsComma = true;
}

void JsonText::value(std::uint64_t number)
{
    separate();
    m_Text += std::to_string(number);
    m_NeedsComma = true;
}

} // namespace TAMBO::app
