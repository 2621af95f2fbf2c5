// SPDX-License-Identifier: GPL-3.0-or-later
// The wording that readers share: where something stands in a file, and text of files made fit to
// be shown.
#pragma once

#include "Result.h"
#include "Text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace TAMBO::formats {

// "x.ali:7: cause"
[[nodiscard]] std::string at(const std::string &file, std::uint64_t line, const std::string &cause);
[[nodiscard]] Failure failureAt(const std::string &file, std::uint64_t line,
                                const std::string &cause);
[[nodiscard]] Failure failureOf(const std::string &file, const std::string &cause);
// A format cannot hold what is to be written.
[[nodiscard]] Failure unwritable(std::string cause);
// A file that was written does not hold what was to be written.
[[nodiscard]] Failure different(std::string cause);

// Why rows with gaps are no alignment.
[[nodiscard]] std::string describeUneven(const std::string &file, std::uint64_t shortest,
                                         std::uint64_t longest);

// A character for a message: between quotation marks when it can be shown, "byte 0x07" otherwise.
[[nodiscard]] std::string shown(char character);
// The start of a text for a message, between quotation marks.
[[nodiscard]] std::string shown(std::string_view text);

// Appends blanks until the text has so many characters.
void padTo(std::string &text, std::size_t characters);

// UTF-8 without control characters; a text that is not UTF-8 is taken for Latin-1.
[[nodiscard]] std::string cleanText(std::string_view text);

// As a word of a command that is shown to be copied into a shell: quoted where it has to be.
[[nodiscard]] std::string shellWord(std::string_view text);

// Whether it is printable ASCII throughout, which cleanText() leaves as it is.
[[nodiscard]] constexpr bool isPlainText(std::string_view text) noexcept
{
    // Without a branch for each character: most texts are.
    bool isOther = false;
    for (const char character : text)
        isOther |= character < ' ' || character > '~';
    return !isOther;
}

// The file's name without ".gz" and its last extension.
[[nodiscard]] std::string baseName(const std::string &file);

} // namespace TAMBO::formats
