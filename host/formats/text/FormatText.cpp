// SPDX-License-Identifier: GPL-3.0-or-later
#include "FormatText.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace TAMBO::formats {

namespace {

bool isControl(char character) noexcept
{
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7f;
}

// The length of the UTF-8 sequence at the start of the text, 0 when there is none.
std::size_t sequenceLength(std::string_view text) noexcept
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned first = byte(0);
    if (first < 0x80)
        return 1;
    const std::size_t length = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
    if (first < 0xc2 || first > 0xf4 || text.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xc0) != 0x80)
            return 0;
    // Overlong forms, surrogates and what lies beyond the last code point.
    const unsigned second = byte(1);
    if ((first == 0xe0 && second < 0xa0) || (first == 0xed && second > 0x9f) ||
        (first == 0xf0 && second < 0x90) || (first == 0xf4 && second > 0x8f))
        return 0;
    return length;
}

bool isUtf8(std::string_view text) noexcept
{
    while (!text.empty()) {
        const std::size_t length = sequenceLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

bool endsWithoutCase(const std::string &text, std::string_view ending)
{
    return text.size() > ending.size() &&
           std::equal(ending.rbegin(), ending.rend(), text.rbegin(), [](char a, char b) {
               return a == std::tolower(static_cast<unsigned char>(b));
           });
}

} // namespace

std::string at(const std::string &file, std::uint64_t line, const std::string &cause)
{
    return file + ':' + std::to_string(line) + ": " + cause;
}

Failure failureAt(const std::string &file, std::uint64_t line, const std::string &cause)
{
    return Failure{at(file, line, cause)};
}

Failure failureOf(const std::string &file, const std::string &cause)
{
    return Failure{file + ": " + cause};
}

std::string counted(std::uint64_t count, const std::string &noun)
{
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
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
    if (clean.size() <= longest)
        return '"' + clean + '"';
    std::size_t end = longest;
    while ((static_cast<unsigned char>(clean[end]) & 0xc0U) == 0x80U)
        --end;
    return '"' + clean.substr(0, end) + "...\"";
}

std::size_t characterCount(std::string_view text) noexcept
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char character) {
        return (static_cast<unsigned char>(character) & 0xc0U) != 0x80U;
    }));
}

void padTo(std::string &text, std::size_t characters)
{
    const std::size_t count = characterCount(text);
    if (count < characters)
        text.append(characters - count, ' ');
}

bool isBlank(char character) noexcept
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

std::string_view trimmed(std::string_view text) noexcept
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string cleanText(std::string_view text)
{
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

std::string baseName(const std::string &file)
{
    std::string name = file;
    if (endsWithoutCase(name, ".gz"))
        name.resize(name.size() - 3);
    const std::size_t dot = name.rfind('.');
    if (dot != std::string::npos && dot > 0)
        name.resize(dot);
    return name;
}

} // namespace TAMBO::formats
