// SPDX-License-Identifier: GPL-3.0-or-later
#include "FittedAnnotation.h"

#include "Bits.h"
#include "FormatText.h"

#include <algorithm>
#include <set>
#include <utility>

namespace TAMBO::formats {

namespace {

constexpr char kNothing = '.';

std::string fittedTag(const std::string &tag)
{
    std::string fitted(trimmed(cleanText(tag)));
    std::replace(fitted.begin(), fitted.end(), ' ', '_');
    return fitted;
}

std::string fittedLine(const std::string &text, std::uint64_t width)
{
    std::string line = text;
    line.resize(width, kNothing);
    for (char &character : line) {
        if (character <= ' ' || character >= '\x7f')
            character = kNothing;
    }
    return line;
}

} // namespace

std::vector<Annotation> fittedRemarks(const std::vector<Annotation> &remarks)
{
    std::vector<Annotation> fitted;
    for (const Annotation &remark : remarks) {
        std::string tag = fittedTag(remark.tag);
        if (!tag.empty())
            fitted.push_back({std::move(tag), std::string(trimmed(cleanText(remark.text)))});
    }
    return fitted;
}

std::vector<Annotation> fittedLines(const std::vector<Annotation> &lines, std::uint64_t width)
{
    std::vector<Annotation> fitted;
    std::set<std::string> taken;
    for (const Annotation &line : lines) {
        const std::string tag = fittedTag(line.tag);
        if (tag.empty())
            continue;
        std::string own = tag;
        for (int number = 2; !taken.insert(own).second; ++number)
            own = tag + '_' + std::to_string(number);
        fitted.push_back({std::move(own), fittedLine(line.text, width)});
    }
    return fitted;
}

std::vector<Annotation> fittedLines(const std::vector<Annotation> &lines, const GappedView &row)
{
    std::vector<Annotation> fitted = fittedLines(lines, row.width);
    for (Annotation &line : fitted) {
        for (std::uint64_t column = 0; column < row.width; ++column) {
            if (!bits::isSet(row.occupancy, column))
                line.text[column] = kNothing;
        }
    }
    return fitted;
}

} // namespace TAMBO::formats
