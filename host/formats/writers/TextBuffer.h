// SPDX-License-Identifier: GPL-3.0-or-later
// Gathers the text of a file on its way to a sink, in pieces that stay in the processor's cache.
#pragma once

#include "CellText.h"
#include "TextSink.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace TAMBO::formats {

// Has the processor fetch the piece of a row that is written soon after that one.
inline void prefetchBehind(const std::vector<CellText> &rows, std::size_t row) noexcept
{
    constexpr std::size_t ahead = 4;
    if (row + ahead < rows.size())
        rows[row + ahead].prefetch();
}

class TextBuffer
{
public:
    // The sink outlives this.
    explicit TextBuffer(TextSink &sink);

    void append(std::string_view text);
    void append(char character);
    void append(std::size_t count, char character);
    // The next columns of a row.
    void append(CellText &cells, std::uint64_t columns, char gap);
    // The same in groups of so many columns, a blank before each.
    void appendGroups(CellText &cells, std::uint64_t columns, std::uint64_t group, char gap);
    // The same in lines of so many columns, each of which ends with '\n' when it is full.
    void appendLines(CellText &cells, std::uint64_t columns, std::uint64_t line, char gap);
    // Appends the text and blanks until it has so many characters.
    void appendPadded(std::string_view text, std::size_t characters);
    // Hands over what is left. Nothing does so by itself.
    void flush();
    // See TextSink.
    [[nodiscard]] bool isOpen() const noexcept { return m_IsOpen; }

private:
    // Room for so many characters, at most the size of a piece.
    [[nodiscard]] char *room(std::size_t size);

    TextSink &m_Sink;
    std::vector<char> m_Text;
    std::size_t m_Size = 0;
    bool m_IsOpen = true;
};

} // namespace TAMBO::formats
