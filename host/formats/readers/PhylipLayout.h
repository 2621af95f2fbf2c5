// SPDX-License-Identifier: GPL-3.0-or-later
// Where the rows of one PHYLIP alignment stand, under one of the four ways to write them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::formats {

class WorkLooks;

struct PhylipSize
{
    std::uint64_t rows = 0;
    std::uint64_t columns = 0;
};

struct PhylipManner
{
    // Names fill ten characters, blanks included; otherwise a name is the first word.
    bool hasFixedNames = false;
    // The rows come in blocks; otherwise each is complete before the next one begins.
    bool isInterleaved = false;
};

struct PhylipLayout
{
    struct Piece
    {
        std::size_t row = 0;
        std::string_view text;
        // Which line, counted from 0.
        std::size_t line = 0;
    };

    std::vector<std::string_view> names;
    std::vector<Piece> pieces;
    // One past the last line, or how far the manner led.
    std::size_t end = 0;
    // Lines that make the manner look wrong although everything fits.
    std::size_t oddities = 0;
    // Why the manner does not fit, and which line shows it; empty when it does.
    std::string cause;
    std::size_t causeLine = 0;

    [[nodiscard]] bool fits() const noexcept { return cause.empty(); }
};

// The lines of a file, of which the alignment's first row begins at begin. Nothing fits once the
// reading is cancelled.
[[nodiscard]] PhylipLayout layOut(const std::vector<std::string_view> &lines, std::size_t begin,
                                  const PhylipSize &size, const PhylipManner &manner,
                                  WorkLooks &looks);

} // namespace TAMBO::formats
