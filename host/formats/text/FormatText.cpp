// SPDX-License-Identifier: GPL-3.0-or-later
#include "FormatText.h"

#include "FormatTable.h"

#include <algorithm>
#include <array>
#include <utility>

namespace TAMBO::formats {

std::string at(const std::string &file, std::uint64_t line, const std::string &cause)
{
    return file + ':' + std::to_string(line) + ": " + cause;
}

Failure failureAt(const std::string &file, std::uint64_t line, const std::string &cause)
{
    return Failure{FailureKind::BadInput, cause, {file, line}};
}

Failure failureOf(const std::string &file, const std::string &cause)
{
    return Failure{FailureKind::BadInput, cause, {file}};
}

Failure unwritable(std::string cause)
{
    return Failure{FailureKind::Refused, std::move(cause)};
}

Failure different(std::string cause)
{
    return Failure{FailureKind::System, std::move(cause)};
}

std::string describeUneven(const std::string &file, std::uint64_t shortest, std::uint64_t longest)
{
    return file + ": the rows have from " + std::to_string(shortest) + " to " +
           std::to_string(longest) +
           " columns, so they were read as sequences, not as an alignment";
}

std::string shown(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    if (byte > 0x20 && byte < 0x7f)
        return std::string("\"") + character + '"';
    constexpr std::array<char, 17> digits{"0123456789abcdef"};
    return std::string("byte 0x") + digits[byte >> 4U] + digits[byte & 0xfU];
}

std::string shown(std::string_view text)
{
    constexpr std::size_t longest = 40;
    const std::string clean = cleanText(trimmed(text.substr(0, text.find('\n'))));
    const std::string_view start = shortened(clean, longest);
    return '"' + std::string(start) + (start.size() < clean.size() ? "...\"" : "\"");
}

void padTo(std::string &text, std::size_t characters)
{
    const std::size_t count = characterCount(text);
    if (count < characters)
        text.append(characters - count, ' ');
}

std::string cleanText(std::string_view text)
{
    if (isPlainText(text))
        return std::string(text);
    std::string clean;
    clean.reserve(text.size());
    const bool latin1 = !isUtf8(text);
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (isControl(character)) {
            clean += ' ';
        } else if (latin1 && byte >= 0x80) {
            clean += static_cast<char>(0xc0U | (byte >> 6U));
            clean += static_cast<char>(0x80U | (byte & 0x3fU));
        } else {
            clean += character;
        }
    }
    return clean;
}

std::string shellWord(std::string_view text)
{
    // A tilde means a home folder only where the word begins.
    constexpr std::string_view kPlain = "/._-+=:,@%~";
    const auto isPlain = [&](unsigned char byte) {
        return byte >= 0x80 || isLetter(char(byte)) || isDigit(char(byte)) ||
               kPlain.find(char(byte)) != std::string_view::npos;
    };
    if (!text.empty() && text.front() != '~' && std::ranges::all_of(text, isPlain))
        return std::string(text);
    std::string quoted = "'";
    for (const char character : text) {
        if (character == '\'')
            quoted += "'\\''";
        else
            quoted += character;
    }
    return quoted + '\'';
}

std::string baseName(const std::string &file)
{
    std::string name = file;
    if (name.size() > kCompressedEnding.size() && endsWithoutCase(name, kCompressedEnding))
        name.resize(name.size() - kCompressedEnding.size());
    const std::size_t dot = name.rfind('.');
    if (dot != std::string::npos && dot > 0)
        name.resize(dot);
    return name;
}

} // namespace TAMBO::formats
