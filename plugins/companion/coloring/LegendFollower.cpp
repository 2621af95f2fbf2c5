// SPDX-License-Identifier: GPL-3.0-or-later
#include "LegendFollower.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "LegendBar.h"
#include "Texts.h"
#include "TypeColors.h"

#include <algorithm>
#include <functional>
#include <map>
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
// Of colors that nothing is known of.
constexpr std::size_t kMostColorsSeen = 8;

// Those there are, in any window.
std::vector<LegendFollower *> s_LegendFollowers;

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
    QObject::connect(&bar, &LegendBar::closed, &m_Later, [this] { m_IsClosed = true; });
    s_LegendFollowers.push_back(this);
    takeOver();
}

LegendFollower::~LegendFollower()
{
    std::erase(s_LegendFollowers, this);
}

void LegendFollower::show(const Legend &legend)
{
    take(legend);
    const TAMBO::Alignment *const alignment = window() == nullptr ? nullptr : window()->alignment();
    for (LegendFollower *const other : s_LegendFollowers) {
        const TAMBO::AlignmentWindow *const shown = other->window();
        if (other != this && shown != nullptr && alignment != nullptr &&
            shown->alignment() == alignment)
            other->take(legend);
    }
}

void LegendFollower::take(const Legend &legend)
{
    if (m_Bar == nullptr)
        return;
    m_IsClosed = false;
    const TAMBO::Alignment *const alignment = window() == nullptr ? nullptr : window()->alignment();
    if (alignment != nullptr && alignment->layoutRevision() != m_Layout) {
        m_Known.clear();
        m_Layout = alignment->layoutRevision();
    }
    m_Shown = kNone;
    std::vector<ColoredCell> cells = cellsIn(meaningfulColors(legend));
    const bool isOfOthers = cells.empty();
    if (isOfOthers)
        cells = cellsIn({});
    if (!legend.entries.empty() && !cells.empty())
        remember(legend, std::move(cells), isOfOthers);
    m_Bar->show(legend);
}

void LegendFollower::remember(const Legend &legend, std::vector<ColoredCell> cells, bool isOfOthers)
{
    if (m_Known.size() == kMostKnown)
        m_Known.erase(m_Known.begin());
    m_Known.push_back({legend, std::move(cells), isOfOthers});
    m_Shown = int(m_Known.size()) - 1;
}

bool LegendFollower::toggle()
{
    if (m_Bar == nullptr || window() == nullptr || window()->alignment() == nullptr)
        return false;
    if (!m_Bar->isHidden()) {
        m_IsClosed = true;
        m_Bar->hide();
        return true;
    }
    std::vector<ColoredCell> cells = cellsIn({});
    if (cells.empty())
        return false;
    m_IsClosed = false;
    look();
    if (m_Shown != kNone) {
        m_Bar->show(m_Known[std::size_t(m_Shown)].legend);
        return true;
    }
    m_Layout = window()->alignment()->layoutRevision();
    const auto typed = std::count_if(cells.begin(), cells.end(), [this](const ColoredCell &cell) {
        return cell.color == typeColor(window()->alignment()->letterAt(cell.row, cell.col)).rgb();
    });
    const Legend legend = double(typed) >= kEnoughLeft * double(cells.size())
                              ? typeLegend()
                              : legendOfColorsSeen(cells);
    remember(legend, std::move(cells), false);
    m_Bar->show(legend);
    return true;
}

Legend LegendFollower::legendOfColorsSeen(const std::vector<ColoredCell> &cells)
{
    constexpr double percent = 100;
    std::map<unsigned int, std::size_t> counts;
    for (const ColoredCell &cell : cells)
        ++counts[cell.color];
    std::vector<std::pair<std::size_t, unsigned int>> colors;
    colors.reserve(counts.size());
    for (const auto &[color, count] : counts)
        colors.emplace_back(count, color);
    std::ranges::sort(colors, std::greater<>());
    Legend legend{tr("Colors of residues").toStdString(), {}, {}, {}};
    for (const auto &[count, color] : colors) {
        if (legend.entries.size() == kMostColorsSeen)
            break;
        const double share = percent * double(count) / double(cells.size());
        legend.entries.push_back(
            {tr("%1 %").arg(share, 0, 'f', share < 1 ? 1 : 0).toStdString(), Color(color), {}});
    }
    if (colors.size() > kMostColorsSeen)
        legend.note = tr("and others. ").toStdString();
    legend.note += tr("No command is known that gave them").toStdString();
    return legend;
}

void LegendFollower::alignmentShown()
{
    forget();
    if (m_Bar != nullptr)
        m_Bar->show(Legend());
    takeOver();
}

void LegendFollower::takeOver()
{
    const TAMBO::Alignment *const alignment = window() == nullptr ? nullptr : window()->alignment();
    if (alignment == nullptr || m_Bar == nullptr)
        return;
    for (const LegendFollower *const other : s_LegendFollowers) {
        const TAMBO::AlignmentWindow *const shown = other->window();
        if (other == this || shown == nullptr || shown->alignment() != alignment)
            continue;
        m_Known = other->m_Known;
        m_Layout = other->m_Layout;
        return look();
    }
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
    m_IsClosed = false;
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
    if (!m_IsClosed)
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
