// SPDX-License-Identifier: GPL-3.0-or-later
// What the words behind `tambo print` ask for.
#pragma once

#include "Result.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace TAMBO::app {

struct PrintOrder
{
    // The values by which the editor knows them.
    enum class Style { Slim = 1, Fat = 2, BlackAndWhite = 3 };
    enum class Kind { Pdf, PostScript, Svg, Png };

    // Half-open, from 0.
    using Range = std::pair<std::size_t, std::size_t>;

    std::string file;
    // Which of its alignments, from 1.
    std::size_t alignment = 1;
    // Those that are printed; empty for all.
    std::vector<Range> rows;
    std::vector<Range> columns;
    Style style = Style::Fat;
    std::string output;
    // By the ending of output.
    Kind kind = Kind::Pdf;
    // "NAME,SIZE"; empty for the one of the settings.
    std::string font;
    // Secondary structure whatever the settings say.
    bool withElements = false;
};

// The words behind "print". The error is one sentence.
[[nodiscard]] Result<PrintOrder> parsePrintOrder(const std::vector<std::string> &words);

} // namespace TAMBO::app
