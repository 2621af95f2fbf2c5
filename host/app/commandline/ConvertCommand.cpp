// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertCommand.h"

#include "Config.h"
#include "ExitStatus.h"
#include "FileReader.h"
#include "FileWriter.h"
#include "FormatText.h"

#include <ostream>
#include <span>
#include <utility>

namespace TAMBO::app {

namespace {

std::string nameOf(const std::string &file)
{
    return formats::cleanText(std::filesystem::path(file).filename().string());
}

// Why the file that was read does not go into one of the format.
std::optional<std::string> mismatch(const FileContents &contents, const WriteOptions &options)
{
    const std::string target = fileOf(options.format);
    if (isStructureFormat(options.format))
        return contents.structures.empty()
                   ? std::optional("holds no structure, which is what " + target + " is for")
                   : std::nullopt;
    if (contents.alignments.empty())
        return "holds no alignment, which is what " + target + " is for";
    if (contents.alignments.size() > 1 && !holds(options.format, Content::Several))
        return "holds " + std::to_string(contents.alignments.size()) + " alignments; " + target +
               " holds one, a " +
               formatTitles([](const FormatEntry &entry) { return entry.holds(Content::Several); },
                            " or ") +
               " file several";
    return std::nullopt;
}

// With the alignment's name where there are several.
std::vector<std::string> lossesOf(const FileContents &contents, const WriteOptions &options)
{
    if (isStructureFormat(options.format))
        return TAMBO::lossesOf(contents.structures.front(), options);
    std::vector<std::string> all;
    for (const AlignmentRecord &alignment : contents.alignments) {
        for (const std::string &loss : TAMBO::lossesOf(alignment, options))
            all.push_back((contents.alignments.size() > 1 ? alignment.name + ": " : std::string()) +
                          loss);
    }
    return all;
}

std::vector<std::string> remarksOf(const FileContents &contents)
{
    std::vector<std::string> all;
    for (const AlignmentRecord &alignment : contents.alignments)
        all.insert(all.end(), alignment.remarks.begin(), alignment.remarks.end());
    for (const StructureRecord &structure : contents.structures)
        all.insert(all.end(), structure.remarks.begin(), structure.remarks.end());
    return all;
}

std::optional<Failure> write(const ConvertOrder &order, const FileContents &contents,
                             WriteAids &aids)
{
    if (isStructureFormat(order.options.format))
        return writeFile(order.output, contents.structures.front(), order.options, &aids);
    return writeFile(order.output, contents.alignments, order.options, &aids);
}

} // namespace

int runConvert(const ConvertOrder &order, std::ostream &err)
{
    const auto complain = [&err](const std::string &sentence) {
        err << "tambo: " << sentence << '\n';
        return kBadInput;
    };
    const Result<FileContents> contents = readFile(order.input);
    if (!contents)
        return complain(contents.error().message());
    if (const std::optional<std::string> cause = mismatch(contents.value(), order.options))
        return complain(nameOf(order.input) + ": " + *cause);
    WriteAids aids{Config::GetPersonalTmpDir, {}};
    if (const std::optional<Failure> failure = write(order, contents.value(), aids))
        return complain(failure->message());
    for (const std::string &remark : remarksOf(contents.value()))
        err << remark << '\n';
    for (const std::string &remark : aids.remarks)
        err << remark << '\n';
    for (const std::string &loss : lossesOf(contents.value(), order.options))
        err << nameOf(order.output) << ": " << loss << '\n';
    return 0;
}

} // namespace TAMBO::app
