// SPDX-License-Identifier: GPL-3.0-or-later
#include "EngineReport.h"

#include "Text.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <string_view>

namespace kestram {

namespace {

std::optional<double> scoreIn(std::string_view text)
{
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

void takeLine(EngineReport &report, std::string_view line)
{
    const std::size_t blank = line.find(' ');
    if (blank == std::string_view::npos)
        return;
    const std::string_view word = line.substr(0, blank);
    std::string_view rest = line.substr(blank + 1);
    if (word == "engine") {
        report.engine = rest;
    } else if (word == "failure") {
        report.failure = rest;
    } else if (word == "score") {
        report.score = scoreIn(rest);
    } else if (word == "residue") {
        const std::optional<std::size_t> number = TAMBO::takeNumber<std::size_t>(rest);
        if (!number || !rest.starts_with(' '))
            return;
        if (const std::optional<double> share = scoreIn(rest.substr(1)))
            report.residueScores.emplace_back(*number, *share);
    }
}

} // namespace

EngineReport readReport(const std::filesystem::path &file)
{
    EngineReport report;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);)
        takeLine(report, line);
    return report;
}

} // namespace kestram
