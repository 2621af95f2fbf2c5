// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextBuffer.h"

#include "Bits.h"
#include "Text.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace TAMBO::formats {

namespace {

constexpr std::size_t kRoom = std::size_t{1} << 17U;
// What is put into a piece at a time at most.
constexpr std::size_t kPortion = kRoom / 4;

} // namespace

TextBuffer::TextBuffer(TextSink &sink) : m_Sink(sink), m_Text(kRoom) { }

char *TextBuffer::room(std::size_t size)
{
    if (m_Size + size > m_Text.size())
        flush();
    return m_Text.data() + m_Size;
}

void TextBuffer::append(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t count = std::min(text.size(), kPortion);
        std::memcpy(room(count), text.data(), count);
        m_Size += count;
        text.remove_prefix(count);
    }
}

void TextBuffer::append(char character)
{
    *room(1) = character;
    ++m_Size;
}

void TextBuffer::append(std::size_t count, char character)
{
    while (count > 0) {
        const std::size_t part = std::min(count, kPortion);
        std::memset(room(part), character, part);
        m_Size += part;
        count -= part;
    }
}

void TextBuffer::append(CellText &cells, std::uint64_t columns, char gap)
{
    while (columns > 0) {
        const std::uint64_t part = std::min<std::uint64_t>(columns, kPortion);
        cells.put(part, gap, room(part + CellText::kSlack));
        m_Size += part;
        columns -= part;
    }
}

void TextBuffer::appendGroups(CellText &cells, std::uint64_t columns, std::uint64_t group, char gap)
{
    // Few columns are put down at once and parted afterwards.
    constexpr std::size_t most = 120;
    std::array<char, most + CellText::kSlack> text{};
    while (columns > 0) {
        if (group > most) {
            const std::uint64_t part = std::min(columns, group);
            append(' ');
            append(cells, part, gap);
            columns -= part;
            continue;
        }
        const std::uint64_t part = std::min<std::uint64_t>(columns, most / group * group);
        cells.put(part, gap, text.data());
        char *to = room(2 * most);
        for (std::uint64_t at = 0; at < part; at += group) {
            const std::uint64_t count = std::min(group, part - at);
            *to++ = ' ';
            to = std::copy_n(text.data() + at, count, to);
        }
        m_Size = static_cast<std::size_t>(to - m_Text.data());
        columns -= part;
    }
}

void TextBuffer::appendLines(CellText &cells, std::uint64_t columns, std::uint64_t line, char gap)
{
    // Of the columns that are put down at a time.
    std::array<char, bits::kPerWord + CellText::kSlack> text{};
    std::uint64_t left = line;
    while (columns > 0) {
        const std::uint64_t part = std::min<std::uint64_t>(columns, bits::kPerWord);
        char *to = room(2 * text.size());
        if (part < left) {
            cells.put(part, gap, to);
            m_Size += part;
            left -= part;
        } else {
            cells.put(part, gap, text.data());
            std::uint64_t done = 0;
            while (part - done >= left) {
                to = std::copy_n(text.data() + done, left, to);
                *to++ = '\n';
                done += left;
                left = line;
            }
            to = std::copy_n(text.data() + done, part - done, to);
            left -= part - done;
            m_Size = static_cast<std::size_t>(to - m_Text.data());
        }
        columns -= part;
    }
}

void TextBuffer::appendPadded(std::string_view text, std::size_t characters)
{
    append(text);
    const std::size_t count = characterCount(text);
    if (count < characters)
        append(characters - count, ' ');
}

void TextBuffer::flush()
{
    m_Sink.write({m_Text.data(), m_Size});
    m_Size = 0;
    m_IsOpen = m_Sink.isOpen();
}

} // namespace TAMBO::formats
