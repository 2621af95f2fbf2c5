// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScoreColoring.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "DataPoint.h"
#include "ResidueScores.h"
#include "SlicedWork.h"
#include "Space.h"
#include "StepName.h"
#include "Texts.h"

#include <QMainWindow>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>
#include <vector>

namespace companion {

namespace {

// From blue to red, as those who do not tell red from green see them, too; letters can be read on
// each. After Brewer's RdBu.
constexpr std::array<unsigned, 5> kFifths = {0x67a9cf, 0xb6d5e7, 0xf7f7f7, 0xf6c0a3, 0xef8a62};

struct ScoredRow
{
    unsigned long row = 0;
    ResidueScores scores;
};

// Rows are looked at between events: a family may have a million without a model.
class FindingScores
{
public:
    explicit FindingScores(const TAMBO::Alignment &alignment) : m_Alignment(alignment) { }

    bool goOn(std::chrono::microseconds most)
    {
        const auto end = std::chrono::steady_clock::now() + most;
        while (m_Next < m_Alignment.height()) {
            const unsigned long row = m_Next++;
            if (auto scores = residueScores(m_Alignment, row))
                m_Found.push_back({row, *std::move(scores)});
            if (std::chrono::steady_clock::now() >= end)
                break;
        }
        return m_Next < m_Alignment.height();
    }
    [[nodiscard]] int percent() const
    {
        constexpr unsigned long all = 100;
        return int(m_Next * all / std::max(1UL, m_Alignment.height()));
    }
    [[nodiscard]] const std::vector<ScoredRow> &found() const noexcept { return m_Found; }

private:
    const TAMBO::Alignment &m_Alignment;
    unsigned long m_Next = 0;
    std::vector<ScoredRow> m_Found;
};

} // namespace

ScoreColored colorByScore(TAMBO::AlignmentWindow &window)
{
    TAMBO::Alignment *const alignment = window.alignment();
    if (alignment == nullptr)
        return {};
    FindingScores finding(*alignment);
    if (!finish({[&](auto most) { return finding.goOn(most); }, [&] { return finding.percent(); }},
                tr("Looking for models…"), window.mainWindow()))
        return {1, false};
    if (finding.found().empty())
        return {};
    const DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
    if (!change.m_good)
        return {finding.found().size(), false};
    const StepName name("Color by model score");
    for (const ScoredRow &row : finding.found()) {
        TAMBO::Compound *const sequence = alignment->GetSeq(row.row);
        for (std::size_t residue = 0; residue < sequence->ChildCount(); ++residue) {
            const auto fifth = row.scores.partOf(residue, kFifths.size());
            if (fifth)
                sequence->Child(residue)->SetColor(Color(kFifths[*fifth]));
        }
    }
    return {finding.found().size(), true};
}

bool mayHaveScores(const TAMBO::Alignment &alignment)
{
    constexpr std::chrono::milliseconds most(20);
    constexpr std::chrono::milliseconds between(1);
    // Mostly there are no models at all, whatever the rows are.
    TAMBO::Space &space = *TAMBO::Space::instance();
    if (std::none_of(space.begin(), space.end(),
                     [](const TAMBO::Compound *object) { return hasScores(*object); }))
        return false;
    FindingScores finding(alignment);
    const auto end = std::chrono::steady_clock::now() + most;
    bool goesOn = true;
    while (goesOn && finding.found().empty() && std::chrono::steady_clock::now() < end)
        goesOn = finding.goOn(between);
    return goesOn || !finding.found().empty();
}

QString lackOfScores()
{
    return tr("No row shows a model whose score is known: Kestram and Models of a Family build "
              "such.");
}

Legend scoreLegend()
{
    Legend legend;
    legend.title = "Model score, by fifths";
    const std::array<const char *, kFifths.size()> labels = {"lowest: fits best", "low", "middle",
                                                             "high", "highest"};
    for (std::size_t i = 0; i < kFifths.size(); ++i)
        legend.entries.push_back({labels[i], Color(kFifths[i]), std::nullopt});
    legend.note = "No confidence. Do not compare models by it: each has a highest fifth";
    return legend;
}

} // namespace companion
