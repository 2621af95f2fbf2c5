// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextBuffer.h"

#include "Text.h"

#include <algorithm>
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
