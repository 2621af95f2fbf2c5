// SPDX-License-Identifier: GPL-3.0-or-later
#include "GapGuide.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "CellLooks.h"
#include "DistanceColors.h"
#include "GuideTexts.h"
#include "LetterFont.h"
#include "SlicedWork.h"
#include "Texts.h"
#include "WorkbenchValues.h"

#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace companion {

using TAMBO::CellBlock;
using TAMBO::WindowArea;

namespace {

constexpr char kGuideOf[] = "companion";
constexpr char kGuideKey[] = "gap-guide";
constexpr char kGuideOff[] = "off";
// Above the frames of what was found, below the cursor.
constexpr int kGuideZ = 15;
// Before the cell cursor, which Escape switches off.
constexpr int kGuideOrder = -10;
constexpr int kFrame = 2;
// Told from each other without color as well: by solid, dashed and dotted lines.
constexpr QColor kSplitMark(176, 0, 32);
constexpr QColor kWholeMark(0, 120, 60);
constexpr QColor kLeastMark(0, 72, 200);

void drawFrame(QPainter &painter, const QRect &place, const QColor &color, Qt::PenStyle style)
{
    const QRect inner = place.adjusted(1, 1, -2, -2);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, kFrame));
    painter.drawRect(inner);
    painter.setPen(QPen(color, kFrame, style, Qt::FlatCap, Qt::MiterJoin));
    painter.drawRect(inner);
}

// As the window has them.
std::optional<QFont> cellFont(const TAMBO::AlignmentWindow &window)
{
    const std::optional<QFont> names = window.nameFont();
    if (window.cellSize() == window.ownCellSize())
        return names;
    return letterFont(names.value_or(QFont()), window.cellSize());
}

} // namespace

GapGuide::GapGuide(TAMBO::AlignmentWindow &window)
    : AlignmentViewObserver(window),
      CellOverlay(window, WindowArea::Cells, kGuideZ),
      CellEventFilter(window, WindowArea::Cells, kGuideOrder),
      m_IsOn(WorkbenchValues::Get(kGuideOf, kGuideKey) != kGuideOff)
{
    m_Next.setInterval(0);
    m_Next.callOnTimeout([this] { goOn(); });
}

GapGuide::~GapGuide() = default;

TAMBO::AlignmentWindow &GapGuide::shown() const
{
    return *AlignmentViewObserver::window();
}

void GapGuide::toggle()
{
    m_IsOn = !m_IsOn;
    if (m_IsOn)
        WorkbenchValues::Remove(kGuideOf, kGuideKey);
    else
        WorkbenchValues::Set(kGuideOf, kGuideKey, kGuideOff);
    refresh();
}

// ---- What is held

void GapGuide::hold(MovesAt movesAt)
{
    letGo();
    if (!m_IsOn || shown().alignment() == nullptr)
        return;
    m_MovesAt = std::move(movesAt);
    m_Spread.begin(m_MovesAt);
    m_Colors = TAMBO::distanceColors();
}

void GapGuide::holdRows(const TAMBO::GapDrag &press, unsigned long begin, unsigned long end)
{
    if (end - begin > kMostRows)
        return;
    hold([this, press, begin, end](unsigned long column) {
        GapMoves all;
        const TAMBO::Alignment *const alignment = shown().alignment();
        if (alignment == nullptr)
            return all;
        const bool stays = column == press.from.col;
        const Qt::MouseButton button = stays ? press.button : Qt::MiddleButton;
        for (unsigned long row = begin; row < end; ++row)
            for (const GapMove &move :
                 movesOf(*alignment, {{row, press.from.col}, button, column}, column))
                all.push_back(move);
        return all;
    });
}

void GapGuide::aim(const std::optional<TAMBO::CellIndex> &pointer)
{
    const TAMBO::Alignment *const alignment = shown().alignment();
    if (!isHolding() || alignment == nullptr || pointer == m_Pointer)
        return;
    m_Pointer = pointer;
    m_Split.reset();
    m_Whole.reset();
    if (m_Pointer) {
        m_Spread.aim(*alignment, m_Pointer->col);
        m_Split = splitBy(*alignment, m_Spread.moves());
        if (m_Split)
            m_Whole = nearestWhole(*alignment, m_MovesAt, m_Pointer->col);
        m_Next.start();
        // Most of what is to be known takes less than a frame.
        goOn();
    }
    refresh();
}

void GapGuide::letGo()
{
    m_Next.stop();
    m_MovesAt = nullptr;
    m_IsOfWindow = false;
    m_Pointer.reset();
    m_Split.reset();
    m_Whole.reset();
    m_Spread.end();
    refresh();
}

void GapGuide::goOn()
{
    const TAMBO::Alignment *const alignment = shown().alignment();
    if (alignment == nullptr || !isHolding())
        return m_Next.stop();
    const bool hadLive = m_Spread.live().has_value();
    const bool isDone = !m_Spread.goOn(*alignment, m_Table, kSlice);
    if (isDone)
        m_Next.stop();
    if (isDone || (!hadLive && m_Spread.live()))
        refresh();
}

bool GapGuide::isGuided() const
{
    const TAMBO::Alignment *const alignment = shown().alignment();
    return m_Pointer && alignment != nullptr &&
           std::ranges::any_of(m_Spread.moves(), [alignment](const GapMove &move) {
               return alignment->hasPositions(move.row);
           });
}

std::optional<GuidedPlace> GapGuide::place() const
{
    if (!isGuided())
        return std::nullopt;
    GuidedPlace place;
    place.column = m_Pointer->col;
    place.spread = m_Spread.live();
    place.total = m_Table.total();
    place.split = m_Split;
    place.whole = m_Whole;
    if (place.total)
        place.least = m_Spread.least(*place.total);
    return place;
}

GuideLines GapGuide::lines() const
{
    const std::optional<GuidedPlace> found = place();
    if (!found)
        return {};
    const QString waiting = QStringLiteral("…");
    const auto &[column, spread, total, split, whole, least] = *found;
    GuideLines lines;
    const bool hasSpread = !total || total->columns > 0 || (spread && spread->after.columns > 0);
    if (hasSpread)
        lines.push_back({tr("%1: %2").arg(
            columnsText(m_Spread.changedBegin(), m_Spread.changedEnd()),
            spread ? changeText(spread->before.value(), spread->after.value()) : waiting)});
    if (hasSpread)
        lines.push_back(
            {tr("Alignment: %1")
                 .arg(spread && total ? changeText(total->value(), spread->total(*total).value())
                                      : waiting)});
    if (split)
        lines.push_back({splitText(*shown().alignment(), *split), kSplitMark});
    if (whole)
        lines.push_back({tr("column %1 splits nothing").arg(*whole + 1), kWholeMark});
    if (least && total) {
        const auto mean = m_Spread.at(*least)->total(*total).value();
        lines.push_back({tr("column %1 has the least spread: %2 Å")
                             .arg(*least + 1)
                             .arg(mean.value_or(0), 0, 'f', 2),
                         kLeastMark});
    }
    return lines;
}

// ---- What happens in the window

void GapGuide::alignmentShown()
{
    letGo();
    m_Table.clear();
}

// News of an edit may come when the next drag has begun.
void GapGuide::layoutRebuilt()
{
    if (isHolding())
        aim(std::exchange(m_Pointer, std::nullopt));
}

void GapGuide::scrolled()
{
    if (!isHolding())
        return;
    // What is painted has been scrolled along.
    shown().repaint(WindowArea::Cells, {QPoint(0, 0), shown().visibleSize()});
    refresh();
}

void GapGuide::gapDragBegan(const TAMBO::GapDrag &drag)
{
    hold([this, drag](unsigned long column) {
        const TAMBO::Alignment *const alignment = shown().alignment();
        return alignment == nullptr ? GapMoves() : movesOf(*alignment, drag, column);
    });
    m_IsOfWindow = true;
    gapDragMoved(drag);
}

void GapGuide::gapDragMoved(const TAMBO::GapDrag &drag)
{
    aim(drag.column ? std::optional(TAMBO::CellIndex{drag.from.row, *drag.column}) : std::nullopt);
}

void GapGuide::gapDragEnded(const TAMBO::GapDrag &)
{
    letGo();
}

bool GapGuide::handle(TAMBO::AlignmentWindow &window, WindowArea, QEvent &event)
{
    if (!m_IsOfWindow || event.type() != QEvent::KeyPress ||
        static_cast<const QKeyEvent &>(event).key() != Qt::Key_Escape)
        return false;
    window.endDrag();
    return true;
}

// ---- Painting

CellBlock GapGuide::movedCells() const
{
    const GapMoves &moves = m_Spread.moves();
    if (!isGuided())
        return {};
    const auto [first, last] = std::ranges::minmax(moves, {}, &GapMove::row);
    return {first.row, last.row + 1, m_Spread.changedBegin(), m_Spread.changedEnd()};
}

void GapGuide::refresh()
{
    TAMBO::AlignmentWindow &window = shown();
    const CellBlock visible = window.visibleCells();
    CellBlock now = movedCells();
    QRect label;
    if (!now.isEmpty()) {
        const std::optional<GuidedPlace> known = place();
        for (const auto &column : {known->whole, known->least})
            if (column)
                now = now.united(CellBlock::of({m_Pointer->row, *column}));
        m_Lines = lines();
        const QSize size = guideLabelSize(m_Lines, QToolTip::font());
        const QRect kept = window.blockRect(now.united(CellBlock::of(*m_Pointer)));
        label =
            guideLabelPlace(size, window.visibleSize(), kept, window.cellRect(*m_Pointer).center());
    }
    repaint(std::exchange(m_Painted, now).intersected(visible), kFrame);
    repaint(now.intersected(visible), kFrame);
    for (const QRect &rect : {std::exchange(m_LabelPlace, label), label})
        if (!rect.isEmpty())
            window.repaint(WindowArea::Cells, rect);
}

void GapGuide::paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
                     const TAMBO::OverlayExposure &exposed)
{
    if (!isGuided())
        return;
    for (const GapMove &move : m_Spread.moves()) {
        const CellBlock cells = exposed.cells.intersected(
            {move.row, move.row + 1, move.begin(), std::min(move.end(), window.columns())});
        if (!cells.isEmpty())
            paintRow(painter, window, move, cells);
    }
    paintMarks(painter, window);
    if (!m_LabelPlace.isEmpty())
        paintGuideLabel(painter, m_LabelPlace, m_Lines, QToolTip::font());
}

void GapGuide::paintRow(QPainter &painter, const TAMBO::AlignmentWindow &window,
                        const GapMove &move, const CellBlock &cells) const
{
    const TAMBO::Alignment &alignment = *window.alignment();
    const std::optional<QFont> font = cellFont(window);
    // Alone a structure is far from nothing.
    const bool hasDistances = m_Table.rows().size() > 1;
    std::vector<TAMBO::AlignmentCell> cell;
    std::vector<TAMBO::Vertex> place;
    for (unsigned long col = cells.colBegin; col < cells.colEnd; ++col) {
        cell.assign(1, {});
        place.assign(1, {});
        if (const auto source = move.source(col)) {
            cell.clear();
            place.clear();
            alignment.readRow(move.row, *source, *source + 1, cell);
            alignment.readPositions(move.row, *source, *source + 1, place);
        }
        const TAMBO::AlignmentCell now = cell.empty() ? TAMBO::AlignmentCell() : cell.front();
        QRgb ground = groundOf(now);
        const std::optional<PairSum> column = m_Spread.liveAt(col);
        if (hasDistances && column && !place.empty() && place.front().isDefined())
            ground = column->hasMean() ? m_Colors->lookupValue(float(column->mean())).argb()
                                       : kWhiteGround;
        const QRect rect = window.cellRect({move.row, col});
        painter.fillRect(rect, QColor::fromRgb(ground));
        if (!font)
            continue;
        painter.setFont(*font);
        painter.setPen(hasWhiteLetter(ground) ? Qt::white : Qt::black);
        painter.drawText(rect, Qt::AlignCenter, QString(QLatin1Char(letterOf(now))));
    }
    painter.setPen(Qt::black);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(window.blockRect({move.row, move.row + 1, move.begin(), move.end()})
                         .adjusted(0, 0, -1, -1));
}

void GapGuide::paintMarks(QPainter &painter, const TAMBO::AlignmentWindow &window) const
{
    const std::optional<GuidedPlace> known = place();
    const auto markAt = [&](unsigned long column, const QColor &color, Qt::PenStyle style) {
        drawFrame(painter, window.cellRect({m_Pointer->row, column}), color, style);
    };
    if (known->split) {
        const auto move = std::ranges::find(m_Spread.moves(), known->split->row, &GapMove::row);
        drawFrame(painter,
                  window.blockRect({move->row, move->row + 1, move->to, move->to + move->count}),
                  kSplitMark, Qt::SolidLine);
    }
    if (known->least)
        markAt(*known->least, kLeastMark, Qt::DotLine);
    if (known->whole)
        markAt(*known->whole, kWholeMark, Qt::DashLine);
}

} // namespace companion
