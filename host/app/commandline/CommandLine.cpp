// SPDX-License-Identifier: GPL-3.0-or-later
#include "CommandLine.h"

#include "PluginDescriptor.h"

#include <algorithm>
#include <array>
#include <span>
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

bool isToolkitOption(std::span<const std::string_view> options, std::string_view argument)
{
    return std::ranges::find(options, withoutDashes(argument)) != options.end();
}

Failure wrong(std::string sentence)
{
    return {FailureKind::BadInput, std::move(sentence)};
}

// A command that cannot go on without files.
Result<CommandLine> withFiles(CommandLine line, const char *command)
{
    if (line.files.empty())
        return wrong(std::string(command) + " needs at least one file");
    return line;
}

Result<CommandLine> parsePrint(const std::vector<std::string> &words)
{
    Result<PrintOrder> order = parsePrintOrder(words);
    if (!order)
        return order.error();
    CommandLine line;
    line.mode = CommandLine::Mode::Print;
    line.print = std::move(order).value();
    return line;
}

Result<CommandLine> parseConvert(const std::vector<std::string> &words)
{
    Result<ConvertOrder> order = parseConvertOrder(words);
    if (!order)
        return order.error();
    CommandLine line;
    line.mode = CommandLine::Mode::Convert;
    line.convert = std::move(order).value();
    return line;
}

Result<CommandLine> parseIdentity(const std::vector<std::string> &words)
{
    CommandLine line;
    line.mode = CommandLine::Mode::Identity;
    bool optionsEnded = false;
    for (const std::string &word : words) {
        if (!optionsEnded && word == "--")
            optionsEnded = true;
        else if (!optionsEnded && word.size() > 1 && word.front() == '-')
            return wrong("identity knows no option " + word);
        else if (word.empty())
            return wrong("a file name is empty");
        else
            line.files.push_back(word);
    }
    if (line.files.size() != 1)
        return wrong("identity needs one file");
    return line;
}

Result<CommandLine> parseModels(const std::vector<std::string> &words)
{
    Result<FamilyOrder> order = parseFamilyOrder(words);
    if (!order)
        return order.error();
    CommandLine line;
    line.mode = CommandLine::Mode::Models;
    line.models = std::move(order).value();
    return line;
}

// What comes behind the file is the script's own.
Result<CommandLine> parseScript(const std::vector<std::string> &words)
{
    CommandLine line;
    line.mode = CommandLine::Mode::Script;
    line.script = words;
    if (!words.empty() && words.front() == "--")
        line.script.erase(line.script.begin());
    else if (!words.empty() && words.front().starts_with('-'))
        return wrong("script knows no option " + words.front());
    if (line.script.empty())
        return wrong("script needs a file");
    if (line.script.front().empty())
        return wrong("a file name is empty");
    return line;
}

// The commands whose options are not those of the toolkit.
using Parse = Result<CommandLine> (*)(const std::vector<std::string> &words);
constexpr std::array<std::pair<std::string_view, Parse>, 5> kCommands = {
    {{"print", parsePrint},
     {"convert", parseConvert},
     {"identity", parseIdentity},
     {"models", parseModels},
     {"script", parseScript}}};

// The words up to "--" may ask for help; of a script's call the first one, since the others are its
// own.
bool asksForHelp(const std::vector<std::string> &words)
{
    const bool isScript = words.front() == "script";
    const auto end = isScript
                         ? words.begin() + std::ptrdiff_t(std::min<std::size_t>(2, words.size()))
                         : std::ranges::find(words, "--");
    return std::find(words.begin(), end, "--help") != end ||
           std::find(words.begin(), end, "-h") != end;
}

} // namespace

Result<CommandLine> parseCommandLine(const std::vector<std::string> &arguments)
{
    CommandLine line;
    for (const auto &[command, parse] : kCommands) {
        if (arguments.empty() || arguments.front() != command)
            continue;
        if (!asksForHelp(arguments))
            return parse({arguments.begin() + 1, arguments.end()});
        line.mode = CommandLine::Mode::Help;
        return line;
    }
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
        } else if (argument == "--tool") {
            if (line.mode == CommandLine::Mode::Info)
                return wrong("info opens no tool");
            if (++i == arguments.size() || arguments[i].empty())
                return wrong("--tool needs the title of a tool, as the menu Tools has it");
            line.tools.push_back(arguments[i]);
        } else if (argument == "--new" || argument == "--example") {
            if (line.mode == CommandLine::Mode::Info)
                return wrong("info knows no option " + argument);
            (argument == "--new" ? line.inNewWorkbench : line.withExample) = true;
        } else if (isToolkitOption(kToolkitOptionsWithValue, argument)) {
            // Another workbench would look otherwise.
            line.inNewWorkbench = true;
            ++i;
        } else if (isToolkitOption(kToolkitOptions, argument)) {
            line.inNewWorkbench = true;
        } else {
            return wrong("unknown option " + argument);
        }
    }
    if (line.mode == CommandLine::Mode::Info)
        return withFiles(std::move(line), "info");
    if (line.mode == CommandLine::Mode::Picture && !line.withExample)
        return withFiles(std::move(line), "--picture");
    return line;
}

bool isOwnCommand(std::string_view word)
{
    return word == "info" || std::ranges::any_of(kCommands, [&](const auto &command) {
               return command.first == word;
           });
}

bool mayBePluginCommand(const std::vector<std::string> &arguments)
{
    return !arguments.empty() && !isOwnCommand(arguments.front()) &&
           services::PluginDescriptor::isCommandWord(QString::fromStdString(arguments.front()));
}

std::string usageText()
{
    std::string formats;
    for (const std::string_view name : writeFormatNames())
        formats += ' ' + std::string(name);
    return "Usage: tambo [FILE...]               open the files in the workbench that runs, or in "
           "a new\n"
           "                                     one, and the editor on the first alignment\n"
           "       tambo --new [FILE...]         the same, always in a new workbench\n"
           "       tambo --example               open the example, a family with its structures\n"
           "       tambo --tool TITLE [FILE...]  the same, and a tool as the menu Tools has it\n"
           "       tambo --picture PNG FILE...   the same, painted into an image; with --tool, "
           "too\n"
           "       tambo info FILE...            one JSON object a line about each file\n"
           "       tambo print FILE --style fat|slim|bw --output OUT [--font NAME,SIZE] [--sse]\n"
           "                   [--alignment N] [--rows PLACES] [--columns PLACES]\n"
           "                                     the pages of the first alignment, or of the "
           "N-th;\n"
           "                                     PLACES as 1-5,8; OUT ends in .pdf, .ps, .svg or\n"
           "                                     .png\n"
           "       tambo convert IN OUT [--to FORMAT]\n"
           "                                     the same in the format that OUT ends in, or in\n"
           "                                     FORMAT; says what is lost by it\n"
           "       tambo convert SESSION OUT [--to FORMAT] [--object NAME] [--force]\n"
           "                                     the alignment or structure of a session, or the\n"
           "                                     one called NAME; all of them when OUT is a "
           "folder,\n"
           "                                     which is empty without --force\n"
           "       tambo identity IN             how alike the rows of an alignment are, a line\n"
           "                                     for each pair\n"
           "       tambo models FAMILY [FILE...] --out DIR [--template NAME|best]\n"
           "                    [--targets NAME,NAME...] [--object NAME] [--prepare]\n"
           "                    [--jobs N] [--profile NAME] [--pool]\n"
           "                                     models of the rows without a structure, or of "
           "the\n"
           "                                     targets, each on the row NAME or on the most "
           "like\n"
           "                                     it, and results.tsv; by Snakemake, or by N\n"
           "                                     processes; FILEs are structures of its rows; "
           "with\n"
           "                                     --prepare DIR is written, and nothing is built\n"
           "       tambo models --continue DIR [--jobs N] [--profile NAME] [--pool]\n"
           "                                     what is missing there\n"
           "       tambo models --table DIR      results.tsv of what is there\n"
           "       tambo script FILE [ARGUMENT...]\n"
           "                                     a script in Python, with the package tambo\n"
           "       tambo COMMAND ARGUMENTS...    a command that a plug-in adds\n"
           "       tambo --help | --version\n"
           "\n"
           "Files are structures (" +
           formatTitles([](const FormatEntry &entry) { return isStructureFormat(entry.format); }) +
           ") and alignments or sequences, plain or gzipped;\n"
           "all but identity know sessions (.tambo), too.\n"
           "A FORMAT is one of" +
           formats +
           ".\n"
           "A file called like a command is written ./info and so on. Exit status: 0; 1 when a\n"
           "file is bad, or a model is missing; 2 when the call is wrong.\n";
}

} // namespace TAMBO::app
