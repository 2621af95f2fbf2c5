// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextReader.h"

#include "Bits.h"
#include "FormatText.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 18U;
// What readers may look at to tell what kind of line begins.
constexpr std::size_t kLineStart = 4;

// One past the last line end; 0 when there is none.
std::size_t endOfLines(std::string_view text)
{
    const std::size_t last = text.rfind('\n');
    return last == std::string_view::npos ? 0 : last + 1;
}

// Where the last record begins; 0 when it is the only one. A mark in the line behind another one
// may belong to that record.
std::size_t endOfRecords(std::string_view text, char mark)
{
    const std::array<char, 2> lineStart{'\n', mark};
    const std::string_view wanted(lineStart.data(), lineStart.size());
    for (std::size_t at = text.rfind(wanted); at != std::string_view::npos && at > 0;
         at = text.rfind(wanted, at - 1)) {
        const std::size_t before = text.rfind('\n', at - 1);
        const std::size_t lineBefore = before == std::string_view::npos ? 0 : before + 1;
        if (text[lineBefore] != mark)
            return at + 1;
    }
    return 0;
}

// Eight characters at a time, of which each byte of a word counts one; a byte holds 255 of them.
std::uint64_t countLineEnds(std::string_view text)
{
    constexpr std::uint64_t lineEnds = 0x0a0a0a0a0a0a0a0aU;
    constexpr std::size_t step = sizeof(std::uint64_t);
    constexpr std::size_t most = 128;
    std::uint64_t count = 0;
    while (text.size() >= most * step) {
        std::uint64_t counts = 0;
        for (std::size_t i = 0; i < most; ++i) {
            std::uint64_t word = 0;
            std::memcpy(&word, text.data() + i * step, step);
            counts += bits::sameBytes(word, lineEnds) >> 7U;
        }
        for (; counts != 0; counts >>= 8U)
            count += counts & 0xff;
        text.remove_prefix(most * step);
    }
    return count + static_cast<std::uint64_t>(std::ranges::count(text, '\n'));
}

} // namespace

// Pages that a small file does not need are never touched.
TextReader::TextReader(ByteSource &source, const PartSizes &sizes)
    : m_Source(&source),
      m_FileName(source.fileName()),
      m_Sizes(sizes),
      m_Buffer(std::make_unique_for_overwrite<char[]>(kBufferSize + kReadAhead))
{ }

// A part of another text.
TextReader::TextReader(const TextReader &whole, std::unique_ptr<char[]> text, std::size_t size)
    : m_Source(nullptr),
      m_FileName(whole.m_FileName),
      m_Buffer(std::move(text)),
      m_End(size),
      m_Line(whole.m_Line)
{
    std::memset(m_Buffer.get() + size, 0, kReadAhead);
}

const Result<void> &TextReader::outcome() const noexcept
{
    static const Result<void> isThere;
    return m_Source == nullptr ? isThere : m_Source->outcome();
}

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
    text.reserve(fileSize() + kReadAhead);
    do {
        text.append(m_Buffer.get() + m_Position, m_End - m_Position);
        m_Position = m_End;
    } while (fill());
    return text;
}

std::unique_ptr<TextReader> TextReader::takePart(std::optional<char> mark)
{
    if (m_Source == nullptr || (m_Position == m_End && !fill()))
        return nullptr;
    std::unique_ptr<char[]> text;
    for (std::size_t room = m_Sizes.part, size = 0;; room *= 2) {
        auto larger = std::make_unique_for_overwrite<char[]>(room + kReadAhead);
        // What was read before is there still, and stays there until it is known what is taken.
        const std::size_t read = m_End - m_Position;
        const std::size_t old = std::min(read, room);
        std::memcpy(larger.get(), m_Buffer.get() + m_Position, old);
        if (size > old)
            std::memcpy(larger.get() + old, text.get() + old, size - old);
        size = std::max(size, old);
        text = std::move(larger);
        std::optional<std::size_t> more = 0;
        while (read <= size && size < room && (more = readMore(text.get() + size, room - size)))
            size += *more;
        // What a defect of the file cuts off is no part.
        if (!outcome())
            return nullptr;
        const std::string_view taken(text.get(), size);
        const std::size_t end = !more  ? size
                                : mark ? endOfRecords(taken, *mark)
                                       : endOfLines(taken);
        if (end == 0 && (room < m_Sizes.largest || size < read))
            continue;
        if (end == 0)
            return restBehind(std::move(text), size);
        if (size <= read) {
            m_Position += end;
            return partOf(std::move(text), end);
        }
        const std::size_t kept = size - end;
        if (kept > kBufferSize)
            m_Buffer = std::make_unique_for_overwrite<char[]>(kept + kReadAhead);
        std::memcpy(m_Buffer.get(), text.get() + end, kept);
        m_Position = 0;
        m_End = kept;
        return partOf(std::move(text), end);
    }
}

std::unique_ptr<TextReader> TextReader::partOf(std::unique_ptr<char[]> text, std::size_t size)
{
    const std::uint64_t lines = countLineEnds({text.get(), size});
    std::unique_ptr<TextReader> part(new TextReader(*this, std::move(text), size));
    m_Line += lines;
    return part;
}

// What has no end in sight is read on piece by piece.
std::unique_ptr<TextReader> TextReader::restBehind(std::unique_ptr<char[]> text, std::size_t size)
{
    if (size < kBufferSize) {
        auto buffer = std::make_unique_for_overwrite<char[]>(kBufferSize + kReadAhead);
        std::memcpy(buffer.get(), text.get(), size);
        text = std::move(buffer);
    }
    std::unique_ptr<TextReader> rest(new TextReader(*this, std::move(text), size));
    rest->m_Source = std::exchange(m_Source, nullptr);
    rest->m_AfterCarriageReturn = m_AfterCarriageReturn;
    rest->m_IsFirstPiece = false;
    m_Position = m_End = 0;
    return rest;
}

std::optional<std::size_t> TextReader::readMore(char *room, std::size_t size)
{
    if (m_Source == nullptr)
        return std::nullopt;
    std::size_t got = m_Source->read(room, size);
    if (got == 0)
        return std::nullopt;
    if (m_IsFirstPiece) {
        m_IsFirstPiece = false;
        if (got >= 3 && std::memcmp(room, "\xef\xbb\xbf", 3) == 0) {
            got -= 3;
            std::memmove(room, room + 3, got);
        }
    }
    return unifyLineEnds(room, got);
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
        const std::optional<std::size_t> more =
            readMore(m_Buffer.get() + m_End, kBufferSize - m_End);
        if (!more)
            return false;
        m_End += *more;
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
