// SPDX-License-Identifier: GPL-3.0-or-later
// Walks through a text file line by line without holding more of it than a buffer. Line ends of
// every kind read as one '\n', and a byte-order mark is left out.
#pragma once

#include "ByteSource.h"

#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::formats {

class TextReader
{
public:
    explicit TextReader(ByteSource &source);

    // The start of the text, all of it when it fits into the buffer. Before the first line only.
    [[nodiscard]] std::string_view head();

    // Goes to the next line, past what is left of this one; false at the end of the text.
    [[nodiscard]] bool nextLine();
    // Counted from 1.
    [[nodiscard]] std::uint64_t line() const noexcept { return m_Line; }
    // The first characters of the line, at least four of them or all there are in the text; '\n'
    // ends the line.
    [[nodiscard]] std::string_view lineStart() const noexcept;
    // The next piece of the line without its end; false when the line has no more.
    [[nodiscard]] bool nextPiece(std::string_view &piece);
    // What is left of the line.
    [[nodiscard]] std::string restOfLine();

    // Everything from here on.
    [[nodiscard]] std::string restOfText();

    [[nodiscard]] const std::optional<Failure> &failure() const noexcept
    {
        return m_Source.failure();
    }
    [[nodiscard]] const std::string &fileName() const noexcept { return m_Source.fileName(); }

private:
    bool fill();
    std::size_t unifyLineEnds(char *text, std::size_t size);

    ByteSource &m_Source;
    std::vector<char> m_Buffer;
    std::size_t m_Position = 0;
    std::size_t m_End = 0;
    std::uint64_t m_Line = 0;
    bool m_LineIsDone = true;
    bool m_IsFirstPiece = true;
    bool m_AfterCarriageReturn = false;
};

} // namespace TAMBO::formats
