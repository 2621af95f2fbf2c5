// SPDX-License-Identifier: GPL-3.0-or-later
// Work on text that has been read already asks again and again whether it is to go on.
#pragma once

#include "TextReader.h"

#include <cstddef>

namespace TAMBO::formats {

class WorkLooks
{
public:
    // Characters at most between two looks, but for those of one line or row.
    static constexpr std::size_t kBetween = std::size_t{1} << 20U;

    // The reader outlives this.
    explicit WorkLooks(TextReader &reader) : m_Reader(reader) { }

    // Before work on so many characters. False when the reading is cancelled, again and again.
    [[nodiscard]] bool goesOn(std::size_t characters)
    {
        m_Done += characters;
        if (m_GoesOn && m_Done >= kBetween) {
            m_Done = 0;
            m_GoesOn = m_Reader.goesOn();
        }
        return m_GoesOn;
    }

private:
    TextReader &m_Reader;
    std::size_t m_Done = 0;
    bool m_GoesOn = true;
};

} // namespace TAMBO::formats
