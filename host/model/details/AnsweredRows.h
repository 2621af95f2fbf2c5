// SPDX-License-Identifier: GPL-3.0-or-later
// What goes to an aligner and comes from it: letters that it knows, and rows under names of our
// own, which no name of a sequence can confuse.
#pragma once

#include "Result.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO::realign {

// A capital letter of an amino acid; X for all that an aligner may not know.
[[nodiscard]] char asKnown(char letter) noexcept;
[[nodiscard]] bool isAnsweredGap(char c) noexcept;
// Without gaps, as they were sent.
[[nodiscard]] std::string lettersOf(std::string_view answered);

// A record of FASTA.
[[nodiscard]] std::string fastaRecord(std::size_t number, std::string_view text);

// Each of the rows 0 to count - 1, whatever their order in the answer; all are of one length. The
// failure says what is wrong with it, as the end of a sentence.
[[nodiscard]] Result<std::vector<std::string>> answeredRows(std::string_view answer,
                                                            std::size_t count);

} // namespace TAMBO::realign
