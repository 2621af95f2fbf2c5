// SPDX-License-Identifier: GPL-3.0-or-later
// What structure formats cannot hold, in words.
#pragma once

#include "Records.h"
#include "WriteOptions.h"

#include <optional>
#include <string>
#include <vector>

namespace TAMBO {

// Why the format cannot hold the structure, as a sentence ("A Clustal file ..."); nothing when it
// can.
[[nodiscard]] std::optional<std::string> obstacleTo(const StructureRecord &structure,
                                                    const WriteOptions &options);

// What of the structure the format will lose or change, one sentence each.
[[nodiscard]] std::vector<std::string> lossesOf(const StructureRecord &structure,
                                                const WriteOptions &options);

// What no format holds of how it is shown. It is not counted as lost: nobody has to be asked.
[[nodiscard]] std::vector<std::string> looksLostOf(const StructureRecord &structure);

} // namespace TAMBO
