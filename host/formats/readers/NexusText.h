// SPDX-License-Identifier: GPL-3.0-or-later
// The words of a NEXUS file: comments, which may stand anywhere and in each other, are passed over.
#pragma once

#include "Result.h"
#include "TextReader.h"

#include <cstdint>
#include <optional>
#include <string>

namespace TAMBO::formats {

struct NexusWord
{
    // A mark is one character that ends a command or joins words. What stands between quotation
    // marks is never a command.
    enum class Kind { End, Mark, Word, Quoted };

    Kind kind = Kind::End;
    std::string text;

    [[nodiscard]] bool isEnd() const noexcept { return kind == Kind::End; }
    [[nodiscard]] bool isMark(char mark) const noexcept
    {
        return kind == Kind::Mark && text.front() == mark;
    }
    // Commands are known in any case of letters.
    [[nodiscard]] bool is(const char *command) const noexcept;
    // As the name of a row.
    [[nodiscard]] std::string name() const;
};

class NexusText
{
public:
    // Which outlives this.
    explicit NexusText(TextReader &reader) : m_Reader(reader) { m_IsAtEnd = !reader.nextLine(); }

    // The character here, '\n' at the end of a line and of the text.
    [[nodiscard]] char here();
    void pass() { m_Reader.skip(1); }
    // Goes past a comment that begins here.
    void passComment();
    // Goes past blanks and comments in the line, and says what comes then.
    char passBlanks();
    // The same past ends of lines too; nothing at the end of the text.
    std::optional<char> passLines();
    // What comes next, in commands.
    [[nodiscard]] NexusWord word();
    // What comes next, where names are: more can stand in them.
    [[nodiscard]] NexusWord nameWord();
    // One character, of which words may be without blanks between: "GAP=-MISSING=?".
    [[nodiscard]] std::optional<char> symbol();
    // Goes past the end of the command. What stands in it may be of any kind. False at the end of
    // the text.
    bool passCommand();
    // Passes what is left of the line.
    bool passLine() { return !(m_IsAtEnd = m_IsAtEnd || !m_Reader.nextLine()); }

    [[nodiscard]] std::uint64_t line() const noexcept { return m_Reader.line(); }
    [[nodiscard]] bool isAtEnd() const noexcept { return m_IsAtEnd; }
    // What is wrong with the text: a comment or a quotation without an end.
    [[nodiscard]] const Result<void> &outcome() const noexcept { return m_Outcome; }

private:
    NexusWord wordUpTo(std::string_view ends);
    NexusWord quoted(char mark);
    void fail(std::uint64_t line, const std::string &cause);

    TextReader &m_Reader;
    bool m_IsAtEnd = false;
    Result<void> m_Outcome;
};

} // namespace TAMBO::formats
