// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModelScores.h"

#include "Peptide.h"
#include "PluginValues.h"
#include "Structure.h"
#include "Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>

namespace TAMBO {

namespace {

// Remark 6 is free text.
constexpr std::string_view kScoreRemark = "REMARK   6 KESTRAM SCORE OF LETTER ";
constexpr int kDecimals = 4;

std::string numberText(double value)
{
    std::array<char, 64> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value,
                                            std::chars_format::fixed, kDecimals);
    return error == std::errc() ? std::string(text.data(), end) : std::string("-");
}

std::optional<double> numberOf(std::string_view text)
{
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace

std::string scoreRemarks(const ModelScores &scores)
{
    std::string text;
    for (const auto &[letter, share] : scores)
        text += std::string(kScoreRemark) + std::to_string(letter) + ' ' + numberText(share) + '\n';
    return text;
}

ModelScores scoresInRemarks(std::string_view pdb)
{
    ModelScores scores;
    while (pdb.starts_with("REMARK")) {
        const std::size_t end = std::min(pdb.find('\n'), pdb.size());
        std::string_view line = trimmed(pdb.substr(0, end));
        pdb.remove_prefix(std::min(end + 1, pdb.size()));
        if (!line.starts_with(kScoreRemark))
            continue;
        line.remove_prefix(kScoreRemark.size());
        const std::optional<std::size_t> letter = takeNumber<std::size_t>(line);
        if (!letter || !line.starts_with(' '))
            continue;
        if (const std::optional<double> share = numberOf(line.substr(1)))
            scores.emplace_back(*letter, *share);
    }
    return scores;
}

void keepScores(Structure &model, const ModelScores &scores, const std::vector<ModelRun> &runs)
{
    if (scores.empty() || model.objectCount() == 0)
        return;
    const std::map<std::size_t, double> shares(scores.begin(), scores.end());
    std::vector<std::string> texts(model.chain(0)->residueCount(), "-");
    bool isAny = false;
    for (const ModelRun &run : runs) {
        for (std::size_t i = 0; i < run.count && run.model + i < texts.size(); ++i) {
            const auto found = shares.find(run.target + i + 1);
            if (found == shares.end())
                continue;
            texts[run.model + i] = numberText(found->second);
            isAny = true;
        }
    }
    if (!isAny)
        return;
    std::string value;
    for (const std::string &text : texts)
        value += (value.empty() ? "" : " ") + text;
    PluginValues::Set(&model, kScoresOf, kScoresKey, value);
}

} // namespace TAMBO
