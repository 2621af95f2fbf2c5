// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertOrder.h"

#include "FormatText.h"
#include "SessionFile.h"

#include <filesystem>
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

Failure wrongOrder(const std::string &sentence)
{
    return {FailureKind::BadInput, sentence};
}

// How the new file is to be written, or that it is a folder.
Result<void> chooseFormat(const std::optional<std::string> &format, ConvertOrder &order)
{
    const std::optional<WriteOptions> byEnding = writeOptionsFor(order.output);
    const std::optional<WriteOptions> options = format ? writeOptionsNamed(*format) : byEnding;
    if (!options && format)
        return wrongOrder("there is no format " + *format + "; there are " + formatList());
    if (!options && !order.isSession)
        return wrongOrder("the name " + order.output +
                          " does not tell the format; say --to and one of " + formatList());
    order.hasEnding = byEnding.has_value();
    order.isFormatNamed = format.has_value();
    order.options = options.value_or(WriteOptions());
    return {};
}

// What the words say, before anything is looked at.
struct Words
{
    std::vector<std::string> files;
    std::optional<std::string> format;
    std::optional<std::string> object;
    bool isForced = false;
};

Result<Words> sort(const std::vector<std::string> &words)
{
    Words sorted;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string &word = words[i];
        if (optionsEnded || word.size() < 2 || word.front() != '-') {
            if (word.empty())
                return wrongOrder("a file name is empty");
            sorted.files.push_back(word);
        } else if (word == "--") {
            optionsEnded = true;
        } else if (word == "--force") {
            sorted.isForced = true;
        } else if (word != "--to" && word != "--object") {
            return wrongOrder("convert knows no option " + word);
        } else if (++i == words.size()) {
            return wrongOrder(word == "--to" ? "--to needs a format: " + formatList()
                                             : "--object needs the name of an object");
        } else {
            (word == "--to" ? sorted.format : sorted.object) = words[i];
        }
    }
    if (sorted.files.size() != 2)
        return wrongOrder("convert needs two files, one to read and one to write");
    return sorted;
}

} // namespace

Result<ConvertOrder> parseConvertOrder(const std::vector<std::string> &words)
{
    Result<Words> sorted = sort(words);
    if (!sorted)
        return sorted.error();
    ConvertOrder order;
    order.input = std::move(sorted->files[0]);
    order.output = std::move(sorted->files[1]);
    order.object = std::move(sorted->object);
    order.isForced = sorted->isForced;
    order.isSession = sessions::isSessionFile(order.input);
    if (!order.isSession && (order.object || order.isForced))
        return wrongOrder(std::string(order.object ? "--object" : "--force") +
                          " is for sessions, which " + order.input + " is not");
    if (const Result<void> chosen = chooseFormat(sorted->format, order); !chosen)
        return chosen.error();
    return order;
}

std::string endingRemark(const ConvertOrder &order)
{
    const std::filesystem::path output(order.output);
    const std::optional<WriteOptions> told = writeOptionsFor(output);
    if (!told || told->format == order.options.format)
        return {};
    return formats::cleanText(output.filename().string()) + ": is " + fileOf(order.options.format) +
           ", and ends like " + fileOf(told->format);
}

} // namespace TAMBO::app
