// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextReader.h"

#include "FormatText.h"

#include <cstring>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 18U;
// What readers may look at to tell what kind of line begins.
constexpr std::size_t kLineStart = 4;

} // namespace

// Pages that a small file does not need are never touched.
TextReader::TextReader(ByteSource &source)
    : m_Source(source), m_Buffer(std::make_unique_for_overwrite<char[]>(kBufferSize + kReadAhead))
{ }

std::string_view TextReader::head()
{
    while (m_End < kBufferSize && fill()) {
    }
    return {m_Buffer.get() + m_Position, m_End - m_Position};
}

bool TextReader::nextLine()
{
    if (!m_LineIsDone && m_Position < m_End && m_Buffer[m_Position] == '\n') {
        ++m_Position;
        m_LineIsDone = true;
    }
    std::string_view skipped;
    while (nextPiece(skipped)) {
    }
    while (m_End - m_Position < kLineStart && fill()) {
    }
    if (m_Position == m_End)
        return false;
    ++m_Line;
    m_LineIsDone = false;
    return true;
}

bool TextReader::nextPiece(std::string_view &piece)
{
    if (m_LineIsDone)
        return false;
    if (m_Position == m_End && !fill()) {
        m_LineIsDone = true;
        return false;
    }
    const char *start = m_Buffer.get() + m_Position;
    const void *end = std::memchr(start, '\n', m_End - m_Position);
    if (end == nullptr) {
        piece = {start, m_End - m_Position};
        m_Position = m_End;
        return true;
    }
    piece = {start, static_cast<std::size_t>(static_cast<const char *>(end) - start)};
    m_Position += piece.size() + 1;
    m_LineIsDone = true;
    return true;
}

std::string_view TextReader::nextWord()
{
    const auto at = [this](std::size_t place) { return m_Buffer[m_Position + place]; };
    for (;;) {
        while (m_Position < m_End && at(0) != '\n' && isBlank(at(0)))
            ++m_Position;
        if (m_Position < m_End)
            break;
        if (!fill())
            return {};
    }
    std::size_t length = 0;
    for (;;) {
        while (m_Position + length < m_End && !isBlank(at(length)))
            ++length;
        // A word that fills the buffer is given in pieces.
        if (m_Position + length < m_End || length == kBufferSize || !fill())
            break;
    }
    const std::string_view word(m_Buffer.get() + m_Position, length);
    m_Position += length;
    return word;
}

std::string TextReader::restOfLine()
{
    std::string line;
    std::string_view piece;
    while (nextPiece(piece))
        line += piece;
    return line;
}

std::string TextReader::restOfText()
{
    std::string text;
    text.reserve(m_Source.size() + kReadAhead);
    do {
        text.append(m_Buffer.get() + m_Position, m_End - m_Position);
        m_Position = m_End;
    } while (fill());
    return text;
}

bool TextReader::fill()
{
    const std::size_t kept = m_End - m_Position;
    if (m_Position > 0) {
        std::memmove(m_Buffer.get(), m_Buffer.get() + m_Position, kept);
        m_Position = 0;
        m_End = kept;
    }
    while (m_End < kBufferSize) {
        char *room = m_Buffer.get() + m_End;
        std::size_t size = m_Source.read(room, kBufferSize - m_End);
        if (size == 0)
            return false;
        if (m_IsFirstPiece) {
            m_IsFirstPiece = false;
            if (size >= 3 && std::memcmp(room, "\xef\xbb\xbf", 3) == 0) {
                size -= 3;
                std::memmove(room, room + 3, size);
            }
        }
        m_End += unifyLineEnds(room, size);
        if (m_End > kept) {
            std::memset(m_Buffer.get() + m_End, 0, kReadAhead);
            return true;
        }
    }
    return false;
}

std::size_t TextReader::unifyLineEnds(char *text, std::size_t size)
{
    if (size == 0)
        return 0;
    char *from = text;
    char *const end = text + size;
    if (m_AfterCarriageReturn && *from == '\n')
        ++from;
    m_AfterCarriageReturn = end[-1] == '\r';
    char *to = text;
    while (from != end) {
        auto *carriageReturn =
            static_cast<char *>(std::memchr(from, '\r', static_cast<std::size_t>(end - from)));
        char *stop = carriageReturn == nullptr ? end : carriageReturn;
        const auto length = static_cast<std::size_t>(stop - from);
        if (to != from)
            std::memmove(to, from, length);
        to += length;
        from = stop;
        if (carriageReturn == nullptr)
            break;
        *to++ = '\n';
        ++from;
        if (from != end && *from == '\n')
            ++from;
    }
    return static_cast<std::size_t>(to - text);
}

} // namespace TAMBO::formats
