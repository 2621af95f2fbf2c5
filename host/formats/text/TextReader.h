// SPDX-License-Identifier: GPL-3.0-or-later
// Walks through a text file line by line without holding more of it than a buffer. Line ends of
// every kind read as one '\n', and a byte-order mark is left out.
#pragma once

#include "ByteSource.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace TAMBO::formats {

// How a large text is divided among several threads.
struct PartSizes
{
    // A smaller file on disk is not worth another thread.
    std::uint64_t worthAThread = std::uint64_t{4} << 20U;
    // A part has this many bytes, or more when what must stay together is longer, ...
    std::size_t part = std::size_t{1} << 17U;
    // ... up to this many; what is longer still is not held in memory.
    std::size_t largest = std::size_t{1} << 26U;
};

class TextReader
{
public:
    explicit TextReader(ByteSource &source, const PartSizes &sizes = {});

    // The start of the text, all of it when it fits into the buffer. Before the first line only.
    [[nodiscard]] std::string_view head();

    // Goes to the next line, past what is left of this one; false at the end of the text.
    [[nodiscard]] bool nextLine();
    // Counted from 1.
    [[nodiscard]] std::uint64_t line() const noexcept { return m_Line; }
    // What is in the buffer from here on, in the line and beyond; '\n' ends the line. At the start
    // of a line at least four characters, or all there are in the text.
    [[nodiscard]] std::string_view ahead() const noexcept
    {
        return {m_Buffer.get() + m_Position, m_End - m_Position};
    }
    // Goes on by so many characters of the line.
    void skip(std::size_t count) noexcept { m_Position += count; }
    // Keeps what was not read yet and adds what fits; false when the text has no more.
    bool fill();
    // The next piece of the line without its end; false when the line has no more. At least
    // kReadAhead bytes behind it may be read, which makes for fast loops; they mean nothing.
    static constexpr std::size_t kReadAhead = 128;
    [[nodiscard]] bool nextPiece(std::string_view &piece);
    // Goes past the blanks and the word that come next in the line; empty at the line's end. Holds
    // until more is read.
    [[nodiscard]] std::string_view nextWord();
    // What is left of the line.
    [[nodiscard]] std::string restOfLine();

    // Everything from here on.
    [[nodiscard]] std::string restOfText();
    // The next part of the text: the bytes of a part that end with a line, or before one that
    // begins a record, if records begin with lines that begin with a mark. Null at the end of the
    // text, and when the rest of it cannot be read. Only lines that no part has are read otherwise.
    // It counts its lines as those of the whole text.
    [[nodiscard]] std::unique_ptr<TextReader> takePart(std::optional<char> mark);
    // Whether the file is so large that several threads read it sooner than one.
    [[nodiscard]] bool isWorthThreads() const noexcept
    {
        return fileSize() >= m_Sizes.worthAThread;
    }

    // Whether what is done with text that has been read is to go on. False when the reading is
    // cancelled, which outcome() tells.
    [[nodiscard]] bool goesOn() { return m_Source == nullptr || m_Source->goesOn(); }
    // Of a part, whether all of it is there.
    [[nodiscard]] const Result<void> &outcome() const noexcept;
    [[nodiscard]] const std::string &fileName() const noexcept { return m_FileName; }
    // Bytes on disk.
    [[nodiscard]] std::uint64_t fileSize() const noexcept
    {
        return m_Source == nullptr ? 0 : m_Source->size();
    }

private:
    TextReader(const TextReader &whole, std::unique_ptr<char[]> text, std::size_t size);
    [[nodiscard]] std::unique_ptr<TextReader> partOf(std::unique_ptr<char[]> text,
                                                     std::size_t size);
    [[nodiscard]] std::unique_ptr<TextReader> restBehind(std::unique_ptr<char[]> text,
                                                         std::size_t size);
    // What fits, line ends unified; nothing at the end of the file.
    [[nodiscard]] std::optional<std::size_t> readMore(char *room, std::size_t size);
    std::size_t unifyLineEnds(char *text, std::size_t size);

    // Null for a part that is all in the buffer.
    ByteSource *m_Source;
    std::string m_FileName;
    PartSizes m_Sizes;
    std::unique_ptr<char[]> m_Buffer;
    std::size_t m_Position = 0;
    std::size_t m_End = 0;
    std::uint64_t m_Line = 0;
    bool m_LineIsDone = true;
    bool m_IsFirstPiece = true;
    bool m_AfterCarriageReturn = false;
};

} // namespace TAMBO::formats
