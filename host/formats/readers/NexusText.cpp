// SPDX-License-Identifier: GPL-3.0-or-later
#include "NexusText.h"

#include "FormatText.h"
#include "Text.h"

#include <algorithm>

namespace TAMBO::formats {

namespace {

constexpr std::string_view kMarks = ";=,";

bool isQuotationMark(char character) noexcept
{
    return character == '\'' || character == '"';
}

} // namespace

bool NexusWord::is(const char *command) const noexcept
{
    return kind == Kind::Word && isSameWithoutCase(text, command);
}

std::string NexusWord::name() const
{
    return std::string(trimmed(text));
}

char NexusText::here()
{
    if (m_IsAtEnd || (m_Reader.ahead().empty() && !m_Reader.fill()))
        return '\n';
    return m_Reader.ahead().front();
}

void NexusText::passComment()
{
    const std::uint64_t begin = line();
    std::size_t depth = 0;
    do {
        const char character = here();
        if (character == '\n') {
            if (!passLine())
                return fail(begin, "the file ends within the comment that begins here, expected "
                                   "\"]\"");
            continue;
        }
        if (character == '[')
            ++depth;
        else if (character == ']')
            --depth;
        pass();
        const std::string_view text = depth > 0 ? m_Reader.ahead() : std::string_view();
        m_Reader.skip(std::min(text.find_first_of("[]\n"), text.size()));
    } while (depth > 0);
}

char NexusText::passBlanks()
{
    for (;;) {
        const char character = here();
        if (character == '[')
            passComment();
        else if (character != '\n' && isBlank(character))
            pass();
        else
            return character;
    }
}

std::optional<char> NexusText::passLines()
{
    for (;;) {
        const char character = passBlanks();
        if (character != '\n')
            return character;
        if (!passLine())
            return std::nullopt;
    }
}

NexusWord NexusText::word()
{
    return wordUpTo(";=,[\"");
}

NexusWord NexusText::nameWord()
{
    return wordUpTo(";[");
}

NexusWord NexusText::wordUpTo(std::string_view ends)
{
    const std::optional<char> first = passLines();
    if (!first)
        return {};
    if (isQuotationMark(*first))
        return quoted(*first);
    if (ends.find(*first) != std::string_view::npos &&
        kMarks.find(*first) != std::string_view::npos) {
        pass();
        return {NexusWord::Kind::Mark, std::string(1, *first)};
    }
    NexusWord word{NexusWord::Kind::Word, {}};
    for (char next = *first; !isBlank(next) && ends.find(next) == std::string_view::npos;
         next = here()) {
        word.text += next;
        pass();
    }
    return word;
}

// Two marks stand for one.
NexusWord NexusText::quoted(char mark)
{
    NexusWord word{NexusWord::Kind::Quoted, {}};
    pass();
    for (;;) {
        const char next = here();
        if (next == '\n') {
            fail(line(), "found " + shown(mark + word.text) +
                             ", which does not end in its line, expected " + shown(mark));
            return word;
        }
        pass();
        if (next == mark) {
            if (here() != mark)
                return word;
            pass();
        }
        word.text += next;
    }
}

std::optional<char> NexusText::symbol()
{
    std::optional<char> first = passLines();
    if (!first || *first == ';')
        return std::nullopt;
    pass();
    if (!isQuotationMark(*first))
        return first;
    const char symbol = here();
    if (symbol == '\n')
        return std::nullopt;
    pass();
    if (here() != *first)
        return std::nullopt;
    pass();
    return symbol;
}

bool NexusText::passCommand()
{
    bool isWord = false;
    for (;;) {
        const std::optional<char> next = passLines();
        if (!next)
            return false;
        // Apostrophes within words quote nothing.
        if (!isWord && isQuotationMark(*next)) {
            pass();
            while (here() != '\n' && here() != *next)
                pass();
        }
        if (here() != '\n')
            pass();
        if (*next == ';')
            return true;
        isWord = here() != '\n' && !isBlank(here()) && (isLetter(*next) || isDigit(*next));
    }
}

void NexusText::fail(std::uint64_t line, const std::string &cause)
{
    if (m_Outcome)
        m_Outcome = failureAt(m_Reader.fileName(), line, cause);
}

} // namespace TAMBO::formats
