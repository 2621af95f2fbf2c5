// SPDX-License-Identifier: GPL-3.0-or-later
// The signs by which a text tells its format.
#pragma once

#include "FormatTable.h"

#include <optional>
#include <string>
#include <string_view>

namespace TAMBO::formats {

struct Recognised
{
    FileFormat format;
    // Names and rows, nothing else: what a Stockholm file is without its markup.
    bool isBare = false;
};

// From the start of the text, '\n' as line end. A first record has to begin within it.
[[nodiscard]] std::optional<Recognised> recognise(std::string_view head);

// What a file of no known format is, for a message: "is a zip archive; unpack it first".
[[nodiscard]] std::string describeUnreadable(std::string_view head);

// Whether a word begins the line that says what a Clustal file is.
[[nodiscard]] bool isClustalWord(std::string_view word) noexcept;
// Two numbers alone, of rows and columns.
[[nodiscard]] bool isPhylipHeader(std::string_view line) noexcept;
// Whether it ends the text before the rows of an MSF file.
[[nodiscard]] bool isMsfLine(std::string_view line) noexcept;
// Whether a line begins a PIR record: ">P1;".
[[nodiscard]] bool isPirStart(std::string_view line) noexcept;
// Whether an ATOM or HETATM record: with a coordinate where it belongs.
[[nodiscard]] bool isAtomRecord(std::string_view line) noexcept;

} // namespace TAMBO::formats
