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

} // namespace

Result<PrintOrder> parsePrintOrder(const std::vector<std::string> &words)
{
    PrintOrder order;
    std::string style;
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
    order.style = *knownStyle;
    order.kind = *kind;
    return order;
}

} // namespace TAMBO::app
