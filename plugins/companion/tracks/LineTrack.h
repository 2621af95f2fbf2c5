// SPDX-License-Identifier: GPL-3.0-or-later
// Tracks of characters, one for each column: what a Stockholm file says of columns and residues,
// and the secondary structure of rows.
#pragma once

#include <QString>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO {
class Alignment;
}

namespace companion {

struct LineTrack
{
    enum class Look {
        // Helices and strands.
        Symbols,
        // Digits as bars.
        Bars,
        Letters
    };

    // Under which it is kept whether it is on; those of several rows have one.
    QString key;
    QString name;
    QString meaning;
    Look look = Look::Letters;
    // Nothing for what is said of columns.
    std::optional<unsigned long> row;
    // Which line of the file it is; nothing for what is known of the row's residues.
    std::optional<std::size_t> line;
    // Of the row's residues: their score, else their secondary structure.
    bool isScore = false;

    friend bool operator==(const LineTrack &, const LineTrack &) = default;
};

// All that there are of an alignment and of some of its rows, from above.
[[nodiscard]] std::vector<LineTrack> lineTracks(const TAMBO::Alignment &alignment,
                                                const std::vector<unsigned long> &rows);
// What is switched on and off: of all rows that have it.
[[nodiscard]] QString lineTitle(const LineTrack &track);
// Until somebody switches it on or off.
[[nodiscard]] bool isOnAtFirst(const LineTrack &track);
// Of a usual one, in lines of text.
[[nodiscard]] int trackLines(const LineTrack &track) noexcept;

// What it says of the columns [begin, end), a character for each; ' ' where there is nothing.
[[nodiscard]] std::string lineText(const TAMBO::Alignment &alignment, const LineTrack &track,
                                   unsigned long begin, unsigned long end);
// What one of the characters means.
[[nodiscard]] QString lineValue(const LineTrack &track, char character);
// What it says of a column, with the number where the character stands for one.
[[nodiscard]] QString columnValue(const TAMBO::Alignment &alignment, const LineTrack &track,
                                  unsigned long col);

// The character of secondary structure as one of "HET-", or ' '.
[[nodiscard]] char elementOf(char character) noexcept;
// Of a track with bars: the share of its height; 0 for what is no digit.
[[nodiscard]] double lineShare(const LineTrack &track, char character) noexcept;

} // namespace companion
