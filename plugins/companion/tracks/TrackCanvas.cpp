// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCanvas.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "StructureDetails.h"
#include "TrackPainting.h"
#include "WorkbenchValues.h"

#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QStringList>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace companion {

using TAMBO::WindowArea;

namespace {

constexpr char kTracksOf[] = "companion";
// Those that were switched otherwise than they are at first.
constexpr char kTracksOff[] = "tracks-off";
constexpr char kTracksOn[] = "tracks-on";
// Of a frame, so that scrolling is not felt.
constexpr auto kTrackSlice = std::chrono::milliseconds(6);
// Above and below each track.
constexpr int kTrackGap = 4;
// Of the usual height; then bars are two lines high, and the ends of a scale above each other.
constexpr double kLeastShare = 2.0 / 3;
constexpr int kLeastLines = 2;
constexpr QColor kTrackEdge(200, 200, 200);

QStringList keptKeys(const char *which)
{
    const std::string kept = WorkbenchValues::Get(kTracksOf, which).value_or("");
    return QString::fromStdString(kept).split(u' ', Qt::SkipEmptyParts);
}

} // namespace

TrackCanvas::TrackCanvas(TAMBO::AlignmentWindow &window) : AlignmentViewObserver(window)
{
    setAccessibleName(tr("Tracks along the columns"));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    const QStringList off = keptKeys(kTracksOff);
    const QStringList on = keptKeys(kTracksOn);
    for (const Track track : kTracks)
        if (isOnAtFirst(track) ? !off.contains(trackKey(track)) : on.contains(trackKey(track)))
            m_On.insert(track);
    m_Slices.callOnTimeout([this] { goOn(); });
}

TrackCanvas::~TrackCanvas() = default;

TAMBO::AlignmentWindow &TrackCanvas::shown() const
{
    return *AlignmentViewObserver::window();
}

// ---- Which tracks

void TrackCanvas::setOn(Track track, bool on)
{
    if (on == isOn(track))
        return;
    if (on)
        m_On.insert(track);
    else
        m_On.erase(track);
    keepSwitched();
    updateGeometry();
    follow();
}

void TrackCanvas::keepSwitched() const
{
    QStringList off;
    QStringList on;
    for (const Track track : kTracks)
        if (isOn(track) != isOnAtFirst(track))
            (isOn(track) ? on : off) << trackKey(track);
    WorkbenchValues::Set(kTracksOf, kTracksOff, off.join(u' ').toStdString());
    WorkbenchValues::Set(kTracksOf, kTracksOn, on.join(u' ').toStdString());
}

QSize TrackCanvas::sizeHint() const
{
    return {1, heightOf(1.0)};
}

QSize TrackCanvas::minimumSizeHint() const
{
    return {1, heightOf(kLeastShare)};
}

int TrackCanvas::heightOf(double share) const
{
    int lines = 0;
    int gaps = 0;
    for (const Track track : kTracks) {
        lines += isOn(track) ? trackLines(track) : 0;
        gaps += isOn(track) ? 2 * kTrackGap : 0;
    }
    // There is always room for a remark.
    return std::max(qRound(share * lines * fontMetrics().height()) + gaps,
                    kLeastLines * fontMetrics().height());
}

// ---- Where they are

QRect TrackCanvas::cellsPlace() const
{
    const QWidget *const cells = shown().areaWidget(WindowArea::Cells);
    const int left = mapFromGlobal(cells->mapToGlobal(QPoint(0, 0))).x();
    return {left, 0, shown().visibleSize().width(), height()};
}

QRect TrackCanvas::trackRect(Track track) const
{
    if (!isOn(track))
        return {};
    int all = 0;
    int above = 0;
    int gaps = 0;
    int gapsAbove = kTrackGap;
    for (const Track each : kTracks) {
        if (!isOn(each))
            continue;
        above += each < track ? trackLines(each) : 0;
        gapsAbove += each < track ? 2 * kTrackGap : 0;
        all += trackLines(each);
        gaps += 2 * kTrackGap;
    }
    const int room = std::max(0, height() - gaps);
    const int top = room * above / all;
    const int bottom = room * (above + trackLines(track)) / all;
    return {0, gapsAbove + top, width(), bottom - top};
}

QRect TrackCanvas::columnRect(Track track, unsigned long col) const
{
    const QRect all = trackRect(track);
    return all.isEmpty() ? QRect() : columnRect(all, cellsPlace().left(), col);
}

QRect TrackCanvas::columnRect(const QRect &track, int cellsLeft, unsigned long col) const
{
    const QRect cell = shown().cellRect({0, col});
    return {cellsLeft + cell.left(), track.top(), cell.width(), track.height()};
}

std::optional<Track> TrackCanvas::trackAt(int y) const
{
    const auto found = std::ranges::find_if(kTracks, [this, y](Track track) {
        const QRect all = trackRect(track);
        return y >= all.top() - kTrackGap && y <= all.bottom() + kTrackGap && !all.isEmpty();
    });
    return found == kTracks.end() ? std::nullopt : std::optional(*found);
}

// ---- In step with the window

void TrackCanvas::alignmentShown()
{
    m_Columns.clear();
    follow();
}

void TrackCanvas::layoutRebuilt()
{
    follow();
}

void TrackCanvas::commUpdate()
{
    const std::uint64_t now = TAMBO::StructureDetails::revision();
    if (std::exchange(m_Structures, now) != now && isOn(Track::Distance))
        follow();
}

void TrackCanvas::cellSizeChanged()
{
    follow();
}

void TrackCanvas::visibleSizeChanged()
{
    follow();
}

void TrackCanvas::scrolled()
{
    follow();
}

void TrackCanvas::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    follow();
}

void TrackCanvas::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_Slices.stop();
}

bool TrackCanvas::hasTooMany() const
{
    const TAMBO::CellBlock cells = shown().visibleCells();
    return cells.colEnd - cells.colBegin > kMostShown;
}

void TrackCanvas::follow()
{
    m_Slices.stop();
    update();
    if (!isVisible() || shown().alignment() == nullptr)
        return;
    m_Columns.wantSpread(isOn(Track::Distance));
    if (m_On.empty() || hasTooMany()) {
        m_Columns.want(0, 0);
        return;
    }
    const TAMBO::CellBlock cells = shown().visibleCells();
    m_Columns.want(cells.colBegin, cells.colEnd);
    // At once what there is time for: then small alignments never flicker.
    goOn();
}

void TrackCanvas::goOn()
{
    const TAMBO::Alignment *const alignment = shown().alignment();
    const std::size_t before = m_Columns.computed();
    if (alignment == nullptr || !m_Columns.goOn(*alignment, kTrackSlice))
        m_Slices.stop();
    else if (!m_Slices.isActive())
        m_Slices.start(0);
    if (m_Columns.computed() != before)
        update();
}

// ---- What is to be seen

QString TrackCanvas::remark() const
{
    if (m_On.empty())
        return tr("All tracks are switched off. The right mouse button switches them on.");
    if (hasTooMany())
        return tr("More than %L1 columns are in sight. Zoom in to see their tracks.")
            .arg(kMostShown);
    return {};
}

void TrackCanvas::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), Qt::white);
    if (shown().alignment() == nullptr)
        return;
    const QRect cells = cellsPlace();
    const QString instead = remark();
    const TAMBO::CellBlock block = shown().visibleCells();
    for (const Track track : kTracks) {
        const QRect all = trackRect(track);
        if (all.isEmpty())
            continue;
        painter.setClipping(false);
        paintTrackName(painter, track, {0, all.top(), std::max(0, cells.left()), all.height()});
        painter.setPen(kTrackEdge);
        painter.drawLine(cells.left(), all.bottom() + 1, cells.right(), all.bottom() + 1);
        painter.setClipRect(cells.intersected(all));
        for (unsigned long col = block.colBegin; col < block.colEnd && instead.isEmpty(); ++col)
            paintTrackColumn(painter, track, m_Columns.at(col), columnRect(all, cells.left(), col));
    }
    painter.setClipping(false);
    painter.setPen(Qt::black);
    painter.drawText(cells, Qt::AlignCenter | Qt::TextWordWrap, instead);
}

QString TrackCanvas::toolTipText(const QPoint &place) const
{
    const std::optional<Track> track = trackAt(place.y());
    if (!track || shown().alignment() == nullptr)
        return {};
    const QRect cells = cellsPlace();
    if (place.x() < cells.left())
        return trackMeaning(*track);
    const std::optional<unsigned long> col = shown().columnAt(place.x() - cells.left());
    if (!col || place.x() > cells.right() || hasTooMany())
        return {};
    const TrackColumn *const column = m_Columns.isKnown(*col) ? m_Columns.at(*col) : nullptr;
    return tr("Column %1 of %2").arg(*col + 1).arg(shown().columns()) + u'\n' +
           (column == nullptr ? tr("is being computed") : trackValue(*track, *column));
}

bool TrackCanvas::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *const help = static_cast<QHelpEvent *>(event);
    const QString text = toolTipText(help->pos());
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), text, this);
    return true;
}

} // namespace companion
