// SPDX-License-Identifier: GPL-3.0-or-later
// Writes one JSON object on one line, members in the order in which they are given.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace TAMBO::app {

// The caller keeps keys and values in step; begin and end calls nest.
class JsonText
{
public:
    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    void key(std::string_view name);
    // Bytes that are no UTF-8 become the replacement character.
    void value(std::string_view text);
    void value(std::uint64_t number);

    [[nodiscard]] const std::string &text() const noexcept { return m_Text; }

private:
    void separate();

    std::string m_Text;
    bool m_NeedsComma = false;
};

} // namespace TAMBO::app
