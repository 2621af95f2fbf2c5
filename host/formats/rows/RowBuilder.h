// SPDX-License-Identifier: GPL-3.0-or-later
// Builds one row after the other from the text of a file, in room that is used again for each.
#pragma once

#include "CellScan.h"
#include "GappedView.h"
#include "PackedRow.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace TAMBO::formats {

class RowBuilder
{
public:
    // So many bytes behind the text that append() gets are read, whatever they are.
    static constexpr std::size_t kReadAhead = 96;

    // Appends residues and gaps up to the first character that is neither, and says how many.
    [[nodiscard]] std::size_t append(std::string_view text);
    void appendGap();
    // A stop keeps its column, as a gap, so that the rows stay in step.
    void appendStop()
    {
        appendGap();
        ++m_Stops;
    }
    void appendLetter(char letter);

    [[nodiscard]] std::uint64_t width() const noexcept { return m_Width; }
    [[nodiscard]] std::uint64_t letterCount() const noexcept { return m_LetterCount; }
    [[nodiscard]] std::uint64_t lowerCaseCount() const noexcept { return m_LowerCaseCount; }
    // Gaps that were not written '-'.
    [[nodiscard]] bool hasOtherGaps() const noexcept { return m_HasOtherGaps; }
    [[nodiscard]] std::uint64_t stops() const noexcept { return m_Stops; }

    // The row as it is so far; holds until it is changed.
    [[nodiscard]] GappedView cells() const noexcept;
    // The row with that name, with no room to spare in it; the next one begins empty.
    [[nodiscard]] PackedRow pack(std::string_view name);
    // Begins the next row.
    void begin();

private:
    // There is room for it.
    [[nodiscard]] std::size_t appendPiece(std::string_view text);
    void makeRoom(std::size_t columns);

    std::string m_Letters;
    std::vector<std::uint64_t> m_Occupancy;
    std::uint64_t m_Width = 0;
    std::size_t m_LetterCount = 0;
    std::uint64_t m_LowerCaseCount = 0;
    std::uint64_t m_Stops = 0;
    bool m_HasOtherGaps = false;
};

} // namespace TAMBO::formats
