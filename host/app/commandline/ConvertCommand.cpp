// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertCommand.h"

#include "Config.h"
#include "ExitStatus.h"
#include "FileReader.h"
#include "FileWriter.h"
#include "FormatText.h"
#include "SessionConversion.h"

#include <ostream>
#include <span>
#include <utility>

namespace TAMBO::app {

namespace {

std::string nameOf(const std::string &file)
{
    return formats::cleanText(std::filesystem::path(file).filename().string());
}

// Whether the file that was read goes into one of the format.
Result<void> checkKind(const FileContents &contents, const ConvertOrder &order)
{
    const auto refusal = [&](const std::string &cause) {
        return Failure{FailureKind::Refused, cause, {nameOf(order.input)}};
    };
    const FileFormat format = order.options.format;
    const std::string target = fileOf(format);
    if (isStructureFormat(format)) {
        if (contents.structures.empty())
            return refusal("holds no structure, which is what " + target + " is for");
        return {};
    }
    if (contents.alignments.empty())
        return refusal("holds no alignment, which is what " + target + " is for");
    if (contents.alignments.size() > 1 && !holds(format, Content::Several))
        return refusal(
            "holds " + std::to_string(contents.alignments.size()) + " alignments; " + target +
            " holds one, a " +
            formatTitles([](const FormatEntry &entry) { return entry.holds(Content::Several); },
                         " or ") +
            " file several");
    return {};
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

Result<void> write(const ConvertOrder &order, const FileContents &contents, WriteAids &aids)
{
    if (isStructureFormat(order.options.format))
        return writeFile(order.output, contents.structures.front(), order.options, &aids);
    return writeFile(order.output, contents.alignments, order.options, &aids);
}

} // namespace

int runConvert(const ConvertOrder &order, std::ostream &err)
{
    if (order.isSession)
        return convertSession(order, err);
    const Result<FileContents> contents = readFile(order.input);
    if (!contents)
        return complain(err, contents.error(), kBadInput);
    if (const Result<void> fits = checkKind(contents.value(), order); !fits)
        return complain(err, fits.error(), kBadInput);
    WriteAids aids{Config::GetPersonalTmpDir, {}};
    if (const Result<void> written = write(order, contents.value(), aids); !written)
        return complain(err, written.error(), kBadInput);
    for (const std::string &remark : remarksOf(contents.value()))
        err << remark << '\n';
    for (const std::string &remark : aids.remarks)
        err << remark << '\n';
    if (const std::string remark = endingRemark(order); !remark.empty())
        err << remark << '\n';
    for (const std::string &loss : lossesOf(contents.value(), order.options))
        err << nameOf(order.output) << ": " << loss << '\n';
    return 0;
}

} // namespace TAMBO::app
