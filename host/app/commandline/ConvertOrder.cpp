// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertOrder.h"

#include <optional>
#include <utility>

namespace TAMBO::app {

namespace {

std::string formatList()
{
    std::string list;
    for (const std::string_view name : writeFormatNames())
        list += (list.empty() ? "" : " ") + std::string(name);
    return list;
}

} // namespace

Result<ConvertOrder> parseConvertOrder(const std::vector<std::string> &words)
{
    ConvertOrder order;
    std::vector<std::string> files;
    std::optional<std::string> format;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string &word = words[i];
        if (optionsEnded || word.size() < 2 || word.front() != '-') {
            if (word.empty())
                return Failure{FailureKind::BadInput, "a file name is empty"};
            files.push_back(word);
        } else if (word == "--") {
            optionsEnded = true;
        } else if (word != "--to") {
            return Failure{FailureKind::BadInput, "convert knows no option " + word};
        } else if (++i == words.size()) {
            return Failure{FailureKind::BadInput, "--to needs a format: " + formatList()};
        } else {
            format = words[i];
        }
    }
    if (files.size() != 2)
        return Failure{FailureKind::BadInput,
                       "convert needs two files, one to read and one to write"};
    order.input = std::move(files[0]);
    order.output = std::move(files[1]);
    const std::optional<WriteOptions> options =
        format ? writeOptionsNamed(*format) : writeOptionsFor(order.output);
    if (!options && format)
        return Failure{FailureKind::BadInput,
                       "there is no format " + *format + "; there are " + formatList()};
    if (!options)
        return Failure{FailureKind::BadInput,
                       "the name " + order.output +
                           " does not tell the format; say --to and one of " + formatList()};
    order.options = *options;
    return order;
}

} // namespace TAMBO::app
