// SPDX-License-Identifier: GPL-3.0-or-later
// What formats cannot hold of an alignment, in words.
#pragma once

#include "Records.h"
#include "WriteOptions.h"

#include <optional>
#include <string>
#include <vector>

namespace TAMBO {

// Why the format cannot hold the alignment, as a sentence ("A Clustal file ..."); nothing when it
// can.
[[nodiscard]] std::optional<std::string> obstacleTo(const AlignmentRecord &alignment,
                                                    const WriteOptions &options);

// What of the alignment the format will lose or change, one sentence each.
[[nodiscard]] std::vector<std::string> lossesOf(const AlignmentRecord &alignment,
                                                const WriteOptions &options);

// What no format holds of how it is shown. It is not counted as lost: nobody has to be asked.
[[nodiscard]] std::vector<std::string> looksLostOf(const AlignmentRecord &alignment);

} // namespace TAMBO
