// SPDX-License-Identifier: GPL-3.0-or-later
// Where writers put their text, piece by piece.
#pragma once

#include <string>
#include <string_view>

namespace TAMBO::formats {

class TextSink
{
public:
    TextSink() = default;
    virtual ~TextSink() = default;
    TextSink(const TextSink &) = delete;
    TextSink &operator=(const TextSink &) = delete;

    // After a failure the text goes nowhere.
    virtual void write(std::string_view text) = 0;
    // False when text goes nowhere from now on; then nobody need make it.
    [[nodiscard]] virtual bool isOpen() const { return true; }
};

class StringSink final : public TextSink
{
public:
    void write(std::string_view text) override { m_Text += text; }
    [[nodiscard]] const std::string &text() const noexcept { return m_Text; }

private:
    std::string m_Text;
};

} // namespace TAMBO::formats
