// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompareMarks.h"

#include "AlignmentWindow.h"
#include "LayoutChanges.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace companion {

using TAMBO::WindowArea;

namespace {

constexpr int kCompareZ = -5;
constexpr int kBand = 4;
constexpr int kPresentFrame = 2;
constexpr int kSmallestMarked = 4;
constexpr int kSmallestDot = 2;
constexpr int kLargestDot = 6;
// Seen on all colors of residues, and on white.
constexpr QColor kDiffers(192, 0, 96);
constexpr QColor kWithin(240, 160, 200);
constexpr QColor kAround(255, 255, 255);

// In the lower left corner; marks of structures stand in the upper right one.
void paintDot(QPainter &painter, const QRect &cell)
{
    const int size =
        std::clamp(2 * std::min(cell.width(), cell.height()) / 5, kSmallestDot, kLargestDot);
    const QRect dot(cell.left() + 1, cell.bottom() - size, size, size);
    painter.fillRect(dot.adjusted(-1, -1, 1, 1), kAround);
    painter.fillRect(dot, kDiffers);
}

} // namespace

CompareMarks::CompareMarks(TAMBO::AlignmentWindow &window, Side side)
    : CellOverlay(window, WindowArea::Cells | WindowArea::Header, kCompareZ), m_Side(side)
{ }

CompareMarks::~CompareMarks() = default;

void CompareMarks::setCompared(std::shared_ptr<const Compared> compared,
                               const TAMBO::Alignment *alignment)
{
    m_Alignment = alignment;
    m_Compared = std::move(compared);
    m_Present.reset();
    repaintAll();
}

void CompareMarks::setPresent(std::optional<std::size_t> stretch)
{
    m_Present = stretch;
    repaintAll();
}

void CompareMarks::repaintAll() const
{
    if (window() != nullptr)
        repaint(window()->visibleCells(), kPresentFrame);
}

bool CompareMarks::isTrueOf(const TAMBO::AlignmentWindow &window) const
{
    return m_Compared != nullptr && m_Alignment != nullptr && window.alignment() == m_Alignment &&
           TAMBO::LayoutChanges::revision(*window.alignment()) ==
               (m_Side == Side::Here ? m_Compared->revisionHere : m_Compared->revisionThere);
}

std::pair<unsigned long, unsigned long> CompareMarks::columnsOf(const Stretch &stretch) const
{
    return m_Side == Side::Here ? std::pair(stretch.begin, stretch.end)
                                : std::pair(stretch.otherBegin, stretch.otherEnd);
}

void CompareMarks::paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
                         const TAMBO::OverlayExposure &exposed)
{
    if (!isTrueOf(window))
        return;
    // Those that are exposed.
    const std::vector<Stretch> &all = m_Compared->comparison.stretches;
    auto stretch = std::ranges::partition_point(
        all, [&](const Stretch &one) { return columnsOf(one).second <= exposed.cells.colBegin; });
    for (; stretch != all.end(); ++stretch) {
        const auto [begin, end] = columnsOf(*stretch);
        if (begin >= exposed.cells.colEnd)
            break;
        TAMBO::CellBlock cells = exposed.cells;
        cells.colBegin = std::max(cells.colBegin, begin);
        cells.colEnd = std::min(cells.colEnd, end);
        if (exposed.area == WindowArea::Header)
            paintHeader(painter, window, cells);
        else
            paintCells(painter, window, cells);
        if (m_Present != std::size_t(stretch - all.begin()) || exposed.area == WindowArea::Header)
            continue;
        painter.setPen(QPen(kDiffers, kPresentFrame));
        painter.drawRect(window.blockRect({0, window.rows(), begin, end}).adjusted(0, 0, -1, -1));
    }
}

void CompareMarks::paintHeader(QPainter &painter, const TAMBO::AlignmentWindow &window,
                               const TAMBO::CellBlock &cells) const
{
    const Comparison &found = m_Compared->comparison;
    const ComparedColumns &columns = m_Side == Side::Here ? found.here : found.there;
    for (unsigned long column = cells.colBegin; column < cells.colEnd; ++column) {
        const QRect place = window.blockRect({0, 1, column, column + 1}, WindowArea::Header);
        const bool differs =
            columns.isSame[column] == 0 && columns.mostly[column] != ComparedColumns::kNone;
        painter.fillRect(place.left(), place.bottom() + 1 - kBand, place.width(), kBand,
                         differs ? kDiffers : kWithin);
    }
}

void CompareMarks::paintCells(QPainter &painter, const TAMBO::AlignmentWindow &window,
                              const TAMBO::CellBlock &cells) const
{
    if (std::min(window.cellSize().width(), window.cellSize().height()) < kSmallestMarked)
        return;
    for (unsigned long row = cells.rowBegin; row < cells.rowEnd; ++row)
        paintRow(painter, window, row, cells);
}

void CompareMarks::paintRow(QPainter &painter, const TAMBO::AlignmentWindow &window,
                            unsigned long row, const TAMBO::CellBlock &cells) const
{
    const bool isHere = m_Side == Side::Here;
    const std::vector<std::uint32_t> &places =
        isHere ? m_Compared->placesHere : m_Compared->placesThere;
    const std::uint32_t place = row < places.size() ? places[row] : ComparedColumns::kNone;
    if (place == ComparedColumns::kNone)
        return;
    const LayoutRows &rows = isHere ? m_Compared->here.rows : m_Compared->there.rows;
    const LayoutRows &others = isHere ? m_Compared->there.rows : m_Compared->here.rows;
    const std::vector<std::uint32_t> &mostly =
        isHere ? m_Compared->comparison.here.mostly : m_Compared->comparison.there.mostly;
    const auto runs = rows.residues(place);
    const auto otherRuns = others.residues(place);
    ResidueWalk walk(rows, place);
    ResidueWalk other(others, place);
    walk.skipTo(cells.colBegin, rows.cells(place), runs);
    if (runs.empty() && otherRuns.empty())
        other.skipToOrdinal(walk.ordinal(), others.cells(place), otherRuns);
    for (; !walk.isAtEnd() && walk.column() < cells.colEnd; walk.next(rows.cells(place), runs)) {
        const unsigned long residue = walk.residue(runs);
        while (!other.isAtEnd() && other.residue(otherRuns) < residue)
            other.next(others.cells(place), otherRuns);
        const bool hasBoth = !other.isAtEnd() && other.residue(otherRuns) == residue;
        if (hasBoth && other.column() != mostly[walk.column()])
            paintDot(painter, window.cellRect({row, walk.column()}));
    }
}

} // namespace companion
