// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrintOrder.h"

#include "Text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace TAMBO::app {

namespace {

using Kind = PrintOrder::Kind;
using Style = PrintOrder::Style;

constexpr std::array<std::pair<std::string_view, Style>, 3> kStyles = {{
    {"fat", Style::Fat},
    {"slim", Style::Slim},
    {"bw", Style::BlackAndWhite},
}};
constexpr std::array<std::pair<std::string_view, Kind>, 4> kKinds = {{
    {".pdf", Kind::Pdf},
    {".ps", Kind::PostScript},
    {".svg", Kind::Svg},
    {".png", Kind::Png},
}};

std::optional<Style> styleCalled(std::string_view word)
{
    const auto *found = std::ranges::find(kStyles, word, &decltype(kStyles)::value_type::first);
    return found == kStyles.end() ? std::nullopt : std::optional(found->second);
}

std::optional<Kind> kindOf(const std::string &output)
{
    const std::string name = lowerCase(output);
    const auto *found =
        std::ranges::find_if(kKinds, [&](const auto &kind) { return name.ends_with(kind.first); });
    return found == kKinds.end() ? std::nullopt : std::optional(found->second);
}

// "1-5" or "8": as people count.
std::optional<PrintOrder::Range> rangeIn(const std::string &text)
{
    const std::size_t dash = text.find('-');
    const auto first = numberIn<std::size_t>(text.substr(0, dash));
    const auto last =
        dash == std::string::npos ? first : numberIn<std::size_t>(text.substr(dash + 1));
    if (!first || !last || *first == 0 || *last < *first)
        return std::nullopt;
    return PrintOrder::Range{*first - 1, *last};
}

std::optional<std::vector<PrintOrder::Range>> rangesIn(const std::string &text)
{
    std::vector<PrintOrder::Range> ranges;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const auto range = rangeIn(text.substr(begin, end - begin));
        if (!range)
            return std::nullopt;
        ranges.push_back(*range);
        begin = end + 1;
    }
    return ranges;
}

Failure wrongValue(const std::string &option, const char *expected, const std::string &found)
{
    return {FailureKind::BadInput, option + " needs " + expected + " instead of \"" + found + '"'};
}

Result<void> readPlaces(const std::string &option, const std::string &text,
                        std::vector<PrintOrder::Range> &ranges)
{
    if (text.empty())
        return {};
    auto found = rangesIn(text);
    if (!found)
        return wrongValue(option, "places that count from 1, as in 1-5,8,", text);
    ranges = std::move(*found);
    return {};
}

} // namespace

Result<PrintOrder> parsePrintOrder(const std::vector<std::string> &words)
{
    PrintOrder order;
    std::string style;
    std::string alignment;
    std::string rows;
    std::string columns;
    bool optionsEnded = false;
    for (auto word = words.begin(); word != words.end(); ++word) {
        std::string *value = nullptr;
        if (optionsEnded || word->empty() || word->front() != '-') {
            if (!order.file.empty() || word->empty())
                return Failure{FailureKind::BadInput, "print takes one file"};
            order.file = *word;
        } else if (*word == "--") {
            optionsEnded = true;
        } else if (*word == "--sse") {
            order.withElements = true;
        } else if (*word == "--style") {
            value = &style;
        } else if (*word == "--output") {
            value = &order.output;
        } else if (*word == "--font") {
            value = &order.font;
        } else if (*word == "--alignment") {
            value = &alignment;
        } else if (*word == "--rows") {
            value = &rows;
        } else if (*word == "--columns") {
            value = &columns;
        } else {
            return Failure{FailureKind::BadInput, "unknown option " + *word + " of print"};
        }
        if (value == nullptr)
            continue;
        const std::string &option = *word;
        if (++word == words.end() || word->empty())
            return Failure{FailureKind::BadInput, option + " needs a value"};
        *value = *word;
    }
    if (order.file.empty())
        return Failure{FailureKind::BadInput, "print needs a file"};
    const std::optional<Style> knownStyle = styleCalled(style);
    if (!knownStyle)
        return Failure{FailureKind::BadInput, "print needs --style fat, slim or bw"};
    const std::optional<Kind> kind = kindOf(order.output);
    if (!kind)
        return Failure{FailureKind::BadInput,
                       "print needs --output with a name that ends in .pdf, .ps, .svg or .png"};
    if (const auto number = numberIn<std::size_t>(alignment); number && *number > 0)
        order.alignment = *number;
    else if (!alignment.empty())
        return wrongValue("--alignment", "a number that counts from 1", alignment);
    if (const Result<void> read = readPlaces("--rows", rows, order.rows); !read)
        return read.error();
    if (const Result<void> read = readPlaces("--columns", columns, order.columns); !read)
        return read.error();
    order.style = *knownStyle;
    order.kind = *kind;
    return order;
}

} // namespace TAMBO::app
