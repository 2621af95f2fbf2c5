// SPDX-License-Identifier: GPL-3.0-or-later
#include "IdentityCommand.h"

#include "ExitStatus.h"
#include "FileReader.h"
#include "FormatText.h"
#include "PairIdentity.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <ostream>

namespace TAMBO::app {

namespace {

constexpr const char *kHeader =
    "alignment\tfirst\tsecond\tidentical\tdifferent\tlength_first\tlength_second\toverlap\t"
    "with_hangs\tpercent_of_first\tpercent_of_second\tpercent_of_overlap\tpercent_with_hangs\n";

void addField(std::string &line, std::uint64_t value)
{
    line += '\t' + std::to_string(value);
}

void addPercent(std::string &line, std::uint64_t part, std::uint64_t whole)
{
    if (whole == 0) {
        line += "\tNA";
        return;
    }
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "\t%.2f",
                  static_cast<double>(part) * 100 / static_cast<double>(whole));
    line += text.data();
}

void writePairs(const AlignmentRecord &alignment, std::ostream &out)
{
    const PairIdentities pairs(alignment);
    std::string line;
    for (std::size_t first = 0; first < alignment.rows.size(); ++first) {
        for (std::size_t second = first + 1; second < alignment.rows.size(); ++second) {
            const PairIdentity pair = pairs.compare(first, second);
            line = alignment.name + '\t' + alignment.rows[first].name + '\t' +
                   alignment.rows[second].name;
            for (const std::uint64_t value : {pair.identical, pair.different, pair.firstLength,
                                              pair.secondLength, pair.overlap, pair.hangs})
                addField(line, value);
            for (const std::uint64_t whole :
                 {pair.firstLength, pair.secondLength, pair.overlap, pair.hangs})
                addPercent(line, pair.identical, whole);
            line += '\n';
            out << line;
        }
        // Nobody reads on.
        if (!out)
            return;
    }
}

} // namespace

int runIdentity(const std::string &file, std::ostream &out, std::ostream &err)
{
    const std::string name = formats::cleanText(std::filesystem::path(file).filename().string());
    const Result<FileContents> contents = readFile(file);
    if (!contents)
        return complain(err, contents.error(), kBadInput);
    const std::vector<AlignmentRecord> &alignments = contents.value().alignments;
    if (alignments.empty())
        return complain(err, {FailureKind::BadInput, "holds no alignment", {name}}, kBadInput);
    if (!std::ranges::all_of(alignments, &AlignmentRecord::isAligned))
        return complain(err, {FailureKind::BadInput, "the sequences are not aligned", {name}},
                        kBadInput);
    out << kHeader;
    for (const AlignmentRecord &alignment : alignments)
        writePairs(alignment, out);
    out.flush();
    return out ? 0 : complain(err, unwrittenOutput(), kBadInput);
}

} // namespace TAMBO::app
