// SPDX-License-Identifier: GPL-3.0-or-later
// What the words behind `tambo convert` ask for.
#pragma once

#include "Result.h"
#include "WriteOptions.h"

#include <optional>
#include <string>
#include <vector>

namespace TAMBO::app {

struct ConvertOrder
{
    std::string input;
    std::string output;
    // By the ending of output unless the call says it.
    WriteOptions options;

    // ---- Of a session
    bool isSession = false;
    // How the format was told. By neither: the output is a folder.
    bool hasEnding = false;
    bool isFormatNamed = false;
    // The one that is wanted.
    std::optional<std::string> object;
    // Into a folder where something is.
    bool isForced = false;
};

// The words behind "convert". The error is one sentence. A file that may be a session's is looked
// at.
[[nodiscard]] Result<ConvertOrder> parseConvertOrder(const std::vector<std::string> &words);
// What is to be said when the call names another format than the output's ending; else empty.
[[nodiscard]] std::string endingRemark(const ConvertOrder &order);

} // namespace TAMBO::app
