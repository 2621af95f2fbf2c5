// SPDX-License-Identifier: GPL-3.0-or-later
// Tells a file's format from how its text begins.
#pragma once

#include <string>
#include <string_view>

namespace TAMBO::formats {

enum class FileFormat {
    Pir,
    Fasta,
    Pdb,
    Mmcif,
    // Known, but there is no reader.
    Clustal,
    Stockholm,
    Msf,
    Phylip,
    Unknown
};

// From the start of the text, '\n' as line end. A first record has to begin within it.
[[nodiscard]] FileFormat recognise(std::string_view head);

// What a file is for which there is no reader, for a message: "a Clustal alignment, ...".
[[nodiscard]] std::string describeUnreadable(FileFormat format, std::string_view head);

// Whether a line begins a PIR record: ">P1;".
[[nodiscard]] bool isPirStart(std::string_view line) noexcept;
// Whether an ATOM or HETATM record: with a coordinate where it belongs.
[[nodiscard]] bool isAtomRecord(std::string_view line) noexcept;

} // namespace TAMBO::formats
