// SPDX-License-Identifier: GPL-3.0-or-later
// A part of a file of rows that come line by line; see readInParts().
#pragma once

#include "Result.h"
#include "RowLines.h"
#include "TextReader.h"

#include <cstdint>

namespace TAMBO::formats {

// addLine(reader, lines) adds the line that the reader has come to.
template <void (*addLine)(TextReader &, RowLines &)> class LinePart
{
public:
    explicit LinePart(TextReader &reader) : m_Reader(reader) { }

    void parse()
    {
        while (m_Reader.nextLine())
            addLine(m_Reader, m_Lines);
        m_LastLine = m_Reader.line();
        m_Outcome = m_Reader.outcome();
    }
    [[nodiscard]] const RowLines &lines() const noexcept { return m_Lines; }
    [[nodiscard]] RowLines &room() noexcept { return m_Lines; }
    [[nodiscard]] std::uint64_t lastLine() const noexcept { return m_LastLine; }
    [[nodiscard]] const Result<void> &outcome() const noexcept { return m_Outcome; }

private:
    TextReader &m_Reader;
    RowLines m_Lines;
    std::uint64_t m_LastLine = 0;
    Result<void> m_Outcome;
};

} // namespace TAMBO::formats
