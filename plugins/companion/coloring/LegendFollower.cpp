// SPDX-License-Identifier: GPL-3.0-or-later
#include "LegendFollower.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "LegendBar.h"

#include <algorithm>
#include <utility>

namespace companion {

namespace {

constexpr int kSettleMilliseconds = 50;
constexpr std::size_t kMostKnown = 16;
constexpr std::size_t kMostCells = 512;
// So many cells are looked at for them; of larger alignments only some rows.
constexpr unsigned long kMostCellsLookedAt = 4000000;
// With more of its residues in other colors a legend would explain what is not seen.
constexpr double kEnoughLeft = 0.5;
constexpr unsigned int kWithoutMeaning = 0xffffffU;

std::vector<unsigned int> meaningfulColors(const Legend &legend)
{
    std::vector<unsigned int> colors;
    for (const LegendEntry &entry : legend.entries)
        if (entry.color.rgb() != kWithoutMeaning)
            colors.push_back(entry.color.rgb());
    return colors;
}

} // namespace

LegendFollower::LegendFollower(TAMBO::AlignmentWindow &window, LegendBar &bar)
    : AlignmentViewObserver(window), m_Bar(&bar)
{
    m_Later.setSingleShot(true);
    m_Later.setInterval(kSettleMilliseconds);
    m_Later.callOnTimeout([this] { look(); });
    QObject::connect(&bar, &LegendBar::closed, &m_Later, [this] { forget(); });
}

LegendFollower::~LegendFollower() = default;

void LegendFollower::show(const Legend &legend)
{
    if (m_Bar == nullptr)
        return;
    const TAMBO::Alignment *const alignment = window() == nullptr ? nullptr : window()->alignment();
    if (alignment != nullptr && alignment->layoutRevision() != m_Layout) {
        m_Known.clear();
        m_Layout = alignment->layoutRevision();
    }
    m_Shown = kNone;
    Known known{legend, cellsIn(meaningfulColors(legend))};
    known.isOfOthers = known.cells.empty();
    if (known.isOfOthers)
        known.cells = cellsIn({});
    if (!legend.entries.empty() && !known.cells.empty()) {
        if (m_Known.size() == kMostKnown)
            m_Known.erase(m_Known.begin());
        m_Known.push_back(std::move(known));
        m_Shown = int(m_Known.size()) - 1;
    }
    m_Bar->show(legend);
}

void LegendFollower::alignmentShown()
{
    forget();
    if (m_Bar != nullptr)
        m_Bar->show(Legend());
}

void LegendFollower::commUpdate()
{
    if (!m_Known.empty())
        m_Later.start();
}

void LegendFollower::forget()
{
    m_Later.stop();
    m_Known.clear();
    m_Shown = kNone;
}

void LegendFollower::look()
{
    if (window() == nullptr || window()->alignment() == nullptr || m_Bar == nullptr)
        return;
    if (window()->alignment()->layoutRevision() != m_Layout)
        takeNewPlaces();
    else
        put(bestKnown());
}

void LegendFollower::takeNewPlaces()
{
    m_Layout = window()->alignment()->layoutRevision();
    if (m_Shown == kNone)
        return m_Known.clear();
    Known known = std::move(m_Known[std::size_t(m_Shown)]);
    known.cells =
        cellsIn(known.isOfOthers ? std::vector<unsigned int>() : meaningfulColors(known.legend));
    m_Known.clear();
    if (known.cells.empty())
        return put(kNone);
    m_Known.push_back(std::move(known));
    m_Shown = 0;
}

void LegendFollower::put(int known)
{
    if (known == m_Shown)
        return;
    m_Shown = known;
    m_Bar->show(known == kNone ? Legend() : m_Known[std::size_t(known)].legend);
}

int LegendFollower::bestKnown() const
{
    int best = kNone;
    double most = kEnoughLeft;
    for (std::size_t i = 0; i < m_Known.size(); ++i) {
        const double share = shareLeft(m_Known[i]);
        // Of equal ones the latest.
        if (share >= most) {
            most = share;
            best = int(i);
        }
    }
    return best;
}

std::vector<LegendFollower::ColoredCell>
LegendFollower::cellsIn(const std::vector<unsigned int> &colors) const
{
    std::vector<ColoredCell> found;
    const TAMBO::Alignment *const alignment = window() == nullptr ? nullptr : window()->alignment();
    if (alignment == nullptr)
        return found;
    std::vector<TAMBO::AlignmentCell> cells;
    const unsigned long rowStep = 1 + alignment->width() * alignment->height() / kMostCellsLookedAt;
    std::size_t step = 1;
    std::size_t passed = 0;
    for (unsigned long row = 0; row < alignment->height(); row += rowStep) {
        cells.clear();
        alignment->readRow(row, 0, alignment->width(), cells);
        for (unsigned long col = 0; col < cells.size(); ++col) {
            const unsigned int color = cells[col].color.rgb();
            const bool isMeant =
                colors.empty() || std::find(colors.begin(), colors.end(), color) != colors.end();
            if (cells[col].isGap() || !isMeant || passed++ % step != 0)
                continue;
            found.push_back({row, col, color});
            if (found.size() < 2 * kMostCells)
                continue;
            // Every other one goes.
            for (std::size_t i = 0; i < kMostCells; ++i)
                found[i] = found[2 * i];
            found.resize(kMostCells);
            step *= 2;
        }
    }
    return found;
}

double LegendFollower::shareLeft(const Known &known) const
{
    const TAMBO::Alignment &alignment = *window()->alignment();
    std::vector<TAMBO::AlignmentCell> cell;
    const auto left = std::count_if(
        known.cells.begin(), known.cells.end(), [&alignment, &cell](const ColoredCell &colored) {
            cell.clear();
            alignment.readRow(colored.row, colored.col, colored.col + 1, cell);
            return !cell.empty() && !cell.front().isGap() &&
                   cell.front().color.rgb() == colored.color;
        });
    return double(left) / double(known.cells.size());
}

} // namespace companion
