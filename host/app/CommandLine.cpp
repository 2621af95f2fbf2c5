// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace TAMBO::app {

namespace {

// The toolkit takes these itself, with one dash or two.
constexpr std::array<std::string_view, 13> kToolkitOptionsWithValue = {
    "platform", "platformpluginpath", "platformtheme", "plugin",   "display", "style", "stylesheet",
    "session",  "qwindowgeometry",    "qwindowtitle",  "geometry", "title",   "name"};
constexpr std::array<std::string_view, 2> kToolkitOptions = {"reverse", "widgetcount"};

std::string_view withoutDashes(std::string_view option)
{
    return option.substr(option.starts_with("--") ? 2 : 1);
}

CommandLine wrong(std::string error)
{
    CommandLine line;
    line.mode = CommandLine::Mode::Wrong;
    line.error = std::move(error);
    return line;
}

// A command that cannot go on without files.
CommandLine withFiles(CommandLine line, const char *command)
{
    if (line.files.empty())
        return wrong(std::string(command) + " needs at least one file");
    return line;
}

CommandLine parsePrint(const std::vector<std::string> &arguments)
{
    CommandLine line;
    if (std::ranges::find(arguments, "--help") != arguments.end()) {
        line.mode = CommandLine::Mode::Help;
        return line;
    }
    Result<PrintOrder> order = parsePrintOrder({arguments.begin() + 1, arguments.end()});
    if (!order)
        return wrong(order.error().message);
    line.mode = CommandLine::Mode::Print;
    line.print = std::move(order).value();
    return line;
}

} // namespace

CommandLine parseCommandLine(const std::vector<std::string> &arguments)
{
    // Its options are not those of the toolkit.
    if (!arguments.empty() && arguments.front() == "print")
        return parsePrint(arguments);
    CommandLine line;
    bool optionsEnded = false;
    bool firstWord = true;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string &argument = arguments[i];
        const bool isOption = !optionsEnded && argument.size() > 1 && argument.front() == '-';
        if (!isOption) {
            if (firstWord && !optionsEnded && argument == "info")
                line.mode = CommandLine::Mode::Info;
            else if (argument.empty())
                return wrong("a file name is empty");
            else
                line.files.push_back(argument);
            firstWord = false;
        } else if (argument == "--") {
            optionsEnded = true;
        } else if (argument == "--help" || argument == "-h") {
            line.mode = CommandLine::Mode::Help;
            return line;
        } else if (argument == "--version") {
            line.mode = CommandLine::Mode::Version;
            return line;
        } else if (argument == "--picture") {
            if (line.mode == CommandLine::Mode::Info)
                return wrong("info makes no picture");
            if (++i == arguments.size() || arguments[i].empty())
                return wrong("--picture needs the name of the image to write");
            line.mode = CommandLine::Mode::Picture;
            line.picture = arguments[i];
        } else if (std::ranges::find(kToolkitOptionsWithValue, withoutDashes(argument)) !=
                   kToolkitOptionsWithValue.end()) {
            ++i;
        } else if (std::ranges::find(kToolkitOptions, withoutDashes(argument)) ==
                   kToolkitOptions.end()) {
            return wrong("unknown option " + argument);
        }
    }
    if (line.mode == CommandLine::Mode::Info)
        return withFiles(std::move(line), "info");
    if (line.mode == CommandLine::Mode::Picture)
        return withFiles(std::move(line), "--picture");
    return line;
}

std::string usageText()
{
    return "Usage: tambo [FILE...]                   open the workbench, and the editor on the "
           "first\n"
           "                                         alignment\n"
           "       tambo --picture PNG FILE...       the same, painted into an image\n"
           "       tambo info FILE...                one JSON object a line about each file\n"
           "       tambo print FILE --style fat|slim|bw --output OUT [--font NAME,SIZE] [--sse]\n"
           "                                         the pages of the first alignment; OUT ends "
           "in\n"
           "                                         .pdf, .ps, .svg or .png\n"
           "       tambo --help | --version\n"
           "\n"
           "Files are structures (PDB, mmCIF) and alignments or sequences, plain or gzipped.\n"
           "A file called \"info\" or \"print\" is written ./info or ./print. Exit status: 0; 1 "
           "when a file is bad;\n"
           "2 when the call is wrong.\n";
}

} // namespace TAMBO::app
