// SPDX-License-Identifier: GPL-3.0-or-later
// Small things that are done with texts. Letters and blanks are those of ASCII, whatever the
// language of the system; bytes beyond belong to characters of UTF-8. C++17, which is what some of
// those need that use it.
#pragma once

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO {

constexpr bool isSmallLetter(char character) noexcept
{
    return character >= 'a' && character <= 'z';
}

constexpr bool isCapitalLetter(char character) noexcept
{
    return character >= 'A' && character <= 'Z';
}

// In either case.
constexpr bool isLetter(char character) noexcept
{
    return static_cast<unsigned char>((character | 0x20) - 'a') < 26;
}

constexpr bool isDigit(char character) noexcept
{
    return character >= '0' && character <= '9';
}

// A space, or what moves the place of writing.
constexpr bool isBlank(char character) noexcept
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

constexpr bool isControl(char character) noexcept
{
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7f;
}

constexpr char smallLetter(char character) noexcept
{
    return isCapitalLetter(character) ? static_cast<char>(character - 'A' + 'a') : character;
}

constexpr char capitalLetter(char character) noexcept
{
    return isSmallLetter(character) ? static_cast<char>(character - 'a' + 'A') : character;
}

inline std::string lowerCase(std::string_view text)
{
    std::string result(text);
    for (char &character : result)
        character = smallLetter(character);
    return result;
}

inline std::string upperCase(std::string_view text)
{
    std::string result(text);
    for (char &character : result)
        character = capitalLetter(character);
    return result;
}

constexpr bool isSameWithoutCase(std::string_view a, std::string_view b) noexcept
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (smallLetter(a[i]) != smallLetter(b[i]))
            return false;
    return true;
}

constexpr bool startsWithoutCase(std::string_view text, std::string_view start) noexcept
{
    return text.size() >= start.size() && isSameWithoutCase(text.substr(0, start.size()), start);
}

constexpr bool endsWithoutCase(std::string_view text, std::string_view ending) noexcept
{
    return text.size() >= ending.size() &&
           isSameWithoutCase(text.substr(text.size() - ending.size()), ending);
}

// Without blanks at either end.
constexpr std::string_view trimmed(std::string_view text) noexcept
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

// The first word, which goes from the text together with the blanks in front of it; empty when
// there is none.
constexpr std::string_view takeWord(std::string_view &text) noexcept
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    std::size_t length = 0;
    while (length < text.size() && !isBlank(text[length]))
        ++length;
    const std::string_view word = text.substr(0, length);
    text.remove_prefix(length);
    return word;
}

inline std::vector<std::string_view> wordsOf(std::string_view text)
{
    std::vector<std::string_view> words;
    for (std::string_view word = takeWord(text); !word.empty(); word = takeWord(text))
        words.push_back(word);
    return words;
}

// The first line without its '\n', which goes from the text together with it.
constexpr std::string_view takeLine(std::string_view &text) noexcept
{
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

// The last part of a path: a file that travelled still names the directories it came from.
constexpr std::string_view withoutDirectories(std::string_view name) noexcept
{
    return name.substr(name.find_last_of("/\\") + 1);
}

constexpr bool isAllDigits(std::string_view text) noexcept
{
    for (const char character : text)
        if (!isDigit(character))
            return false;
    return true;
}

// The number at the start of the text, which goes from it; nothing, and the text as it was, when
// there is none or it is too large.
template <typename Number> std::optional<Number> takeNumber(std::string_view &text) noexcept
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc())
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

// The number that the whole text is.
template <typename Number> std::optional<Number> numberIn(std::string_view text) noexcept
{
    const std::optional<Number> number = takeNumber<Number>(text);
    return text.empty() ? number : std::nullopt;
}

// "1 row", "2 rows".
inline std::string counted(std::uint64_t count, std::string_view one, std::string_view many)
{
    return (std::to_string(count) + ' ').append(count == 1 ? one : many);
}

inline std::string counted(std::uint64_t count, std::string_view noun)
{
    return (std::to_string(count) + ' ').append(noun) + (count == 1 ? "" : "s");
}

// Whether a byte goes on with a character that began before it, in UTF-8.
constexpr bool isContinuation(char byte) noexcept
{
    return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
}

// The length of the UTF-8 character at the start of a text that is not empty, 0 when there is none:
// overlong forms, surrogates and what lies beyond the last code point are no characters.
constexpr std::size_t characterLength(std::string_view text) noexcept
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned first = byte(0);
    if (first < 0x80)
        return 1;
    const std::size_t length = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
    if (first < 0xc2 || first > 0xf4 || text.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if (!isContinuation(text[i]))
            return 0;
    const unsigned second = byte(1);
    const bool isNone = (first == 0xe0 && second < 0xa0) || (first == 0xed && second > 0x9f) ||
                        (first == 0xf0 && second < 0x90) || (first == 0xf4 && second > 0x8f);
    return isNone ? 0 : length;
}

constexpr bool isUtf8(std::string_view text) noexcept
{
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

// Of a UTF-8 text, which is how far it reaches in a line.
constexpr std::size_t characterCount(std::string_view text) noexcept
{
    std::size_t count = 0;
    for (const char byte : text)
        count += isContinuation(byte) ? 0 : 1;
    return count;
}

// The start of a UTF-8 text that has at most so many bytes and ends with a whole character.
constexpr std::string_view shortened(std::string_view text, std::size_t bytes) noexcept
{
    if (text.size() <= bytes)
        return text;
    while (bytes > 0 && isContinuation(text[bytes]))
        --bytes;
    return text.substr(0, bytes);
}

} // namespace TAMBO
