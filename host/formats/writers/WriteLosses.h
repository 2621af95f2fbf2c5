// SPDX-License-Identifier: GPL-3.0-or-later
// What formats cannot hold of an alignment, in words.
#pragma once

#include "AlignmentSource.h"
#include "Result.h"
#include "WriteOptions.h"

#include <string>
#include <vector>

namespace TAMBO {

// Whether the format can hold the alignment; the failure is a sentence ("A Clustal file ...").
[[nodiscard]] Result<void> checkWritable(const AlignmentSource &alignment,
                                         const WriteOptions &options);
[[nodiscard]] Result<void> checkWritable(const AlignmentRecord &alignment,
                                         const WriteOptions &options);

// What of the alignment the format will lose or change, one sentence each.
[[nodiscard]] std::vector<std::string> lossesOf(const AlignmentSource &alignment,
                                                const WriteOptions &options);
[[nodiscard]] std::vector<std::string> lossesOf(const AlignmentRecord &alignment,
                                                const WriteOptions &options);

// What no format holds of how it is shown. It is not counted as lost: nobody has to be asked.
[[nodiscard]] std::vector<std::string> looksLostOf(const AlignmentSource &alignment);
[[nodiscard]] std::vector<std::string> looksLostOf(const AlignmentRecord &alignment);

} // namespace TAMBO
