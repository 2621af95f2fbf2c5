// SPDX-License-Identifier: GPL-3.0-or-later
// What the words behind `tambo convert` ask for.
#pragma once

#include "Result.h"
#include "WriteOptions.h"

#include <string>
#include <vector>

namespace TAMBO::app {

struct ConvertOrder
{
    std::string input;
    std::string output;
    // By the ending of output unless the call says it.
    WriteOptions options;
};

// The words behind "convert". The error is one sentence.
[[nodiscard]] Result<ConvertOrder> parseConvertOrder(const std::vector<std::string> &words);

} // namespace TAMBO::app
