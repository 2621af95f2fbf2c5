// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCanvas.h"

#include "Alignment.h"
#include "AlignmentDetails.h"
#include "AlignmentWindow.h"
#include "LinePainting.h"
#include "PlainText.h"
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

using TAMBO::AlignmentDetails;
using TAMBO::WindowArea;

namespace {

constexpr char kTracksOf[] = "companion";
constexpr char kTracksOff[] = "tracks-off";
constexpr char kTracksOn[] = "tracks-on";
// Of a frame, so that scrolling is not felt: with the painting of the cells, and by itself.
constexpr auto kFirstSlice = std::chrono::milliseconds(2);
constexpr auto kTrackSlice = std::chrono::milliseconds(5);
// Above and below each track.
constexpr int kTrackGap = 4;
// Of the usual height; then bars are two lines high, and the ends of a scale above each other.
constexpr double kLeastShare = 2.0 / 3;
constexpr int kLeastLines = 2;
constexpr QColor kTrackEdge(200, 200, 200);
constexpr int kLeastCursor = 3;

QStringList keptKeys(const char *which)
{
    const std::string kept = WorkbenchValues::Get(kTracksOf, which).value_or("");
    return QString::fromStdString(kept).split(u' ', Qt::SkipEmptyParts);
}

} // namespace

TrackCanvas::TrackCanvas(TAMBO::AlignmentWindow &window)
    : AlignmentViewObserver(window),
      m_Cursor(*this, window, [this](unsigned long col) { return allText(col); })
{
    setAccessibleName(tr("Tracks along the columns"));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_Off = keptKeys(kTracksOff);
    m_On = keptKeys(kTracksOn);
    arrange();
    m_Slices.callOnTimeout([this] { goOn(kTrackSlice); });
}

TrackCanvas::~TrackCanvas() = default;

TAMBO::AlignmentWindow &TrackCanvas::shown() const
{
    return *AlignmentViewObserver::window();
}

// ---- Which tracks

bool TrackCanvas::isOn(const QString &key, bool atFirst) const
{
    return atFirst ? !m_Off.contains(key) : m_On.contains(key);
}

bool TrackCanvas::isOn(Track track) const
{
    return isOn(trackKey(track), isOnAtFirst(track));
}

bool TrackCanvas::isOn(const LineTrack &line) const
{
    return isOn(line.key, isOnAtFirst(line));
}

void TrackCanvas::setOn(Track track, bool on)
{
    setOn(trackKey(track), isOnAtFirst(track), on);
}

void TrackCanvas::setOn(const LineTrack &line, bool on)
{
    setOn(line.key, isOnAtFirst(line), on);
}

void TrackCanvas::setOn(const QString &key, bool atFirst, bool on)
{
    if (on == isOn(key, atFirst))
        return;
    QStringList &switched = atFirst ? m_Off : m_On;
    if (on == atFirst)
        switched.removeAll(key);
    else
        switched << key;
    WorkbenchValues::Set(kTracksOf, kTracksOff, m_Off.join(u' ').toStdString());
    WorkbenchValues::Set(kTracksOf, kTracksOn, m_On.join(u' ').toStdString());
    arrange();
    follow();
}

void TrackCanvas::chooseRows()
{
    const TAMBO::Alignment *const alignment = shown().alignment();
    if (alignment == nullptr)
        return;
    // One more, to know whether some are left out.
    std::vector<unsigned long> rows = rowsWithSelection(*alignment, kMostRows + 1);
    m_RowHint.clear();
    if (rows.empty())
        m_RowHint =
            tr("Select a residue of each row that is to be shown here, and choose Tracks of "
               "Selected Rows again.");
    else if (rows.size() > kMostRows)
        m_RowHint = tr("These are the first %1 rows with selected residues.").arg(kMostRows);
    if (rows.size() > kMostRows)
        rows.resize(kMostRows);
    if (!rows.empty())
        m_Rows.choose(*alignment, rows);
    arrange();
    follow();
}

void TrackCanvas::giveUpRow(unsigned long row)
{
    m_Rows.giveUp(row);
    m_RowHint.clear();
    arrange();
    follow();
}

void TrackCanvas::giveUpRows()
{
    m_Rows.clear();
    m_RowHint.clear();
    arrange();
    follow();
}

void TrackCanvas::arrange()
{
    const int before = sizeHint().height();
    const TAMBO::Alignment *const alignment = shown().alignment();
    m_Lines.clear();
    if (alignment != nullptr) {
        m_Rows.follow(*alignment);
        m_Lines = lineTracks(*alignment, m_Rows.rows());
    }
    m_Items.clear();
    for (const Track track : kTracks)
        if (isOn(track))
            m_Items.push_back({track, std::nullopt, trackLines(track)});
    for (const LineTrack &line : m_Lines)
        if (isOn(line))
            m_Items.push_back({std::nullopt, line, trackLines(line)});
    if (!m_RowHint.isEmpty())
        m_Items.push_back({});
    const int more = sizeHint().height() - before;
    updateGeometry();
    if (more != 0)
        emit heightWanted(more);
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
    for (const Item &item : m_Items)
        lines += item.lines;
    const int gaps = 2 * kTrackGap * int(m_Items.size());
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

QRect TrackCanvas::itemRect(std::size_t index) const
{
    int all = 0;
    int above = 0;
    for (std::size_t i = 0; i < m_Items.size(); ++i) {
        above += i < index ? m_Items[i].lines : 0;
        all += m_Items[i].lines;
    }
    const int gaps = 2 * kTrackGap;
    const int room = std::max(0, height() - gaps * int(m_Items.size()));
    const int top = room * above / all;
    const int bottom = room * (above + m_Items[index].lines) / all;
    return {0, gaps * int(index) + kTrackGap + top, width(), bottom - top};
}

QRect TrackCanvas::columnRect(Track track, unsigned long col) const
{
    const auto found = std::ranges::find(m_Items, std::optional(track), &Item::track);
    return found == m_Items.end() ? QRect()
                                  : columnRect(itemRect(std::size_t(found - m_Items.begin())),
                                               cellsPlace().left(), col);
}

QRect TrackCanvas::columnRect(const LineTrack &line, unsigned long col) const
{
    const auto found = std::ranges::find(m_Items, std::optional(line), &Item::line);
    return found == m_Items.end() ? QRect()
                                  : columnRect(itemRect(std::size_t(found - m_Items.begin())),
                                               cellsPlace().left(), col);
}

QRect TrackCanvas::columnRect(const QRect &track, int cellsLeft, unsigned long col) const
{
    const QRect cell = shown().cellRect({0, col});
    return {cellsLeft + cell.left(), track.top(), cell.width(), track.height()};
}

const TrackCanvas::Item *TrackCanvas::itemAt(int y) const
{
    for (std::size_t i = 0; i < m_Items.size(); ++i) {
        const QRect place = itemRect(i);
        if (y >= place.top() - kTrackGap && y <= place.bottom() + kTrackGap)
            return &m_Items[i];
    }
    return nullptr;
}

// ---- In step with the window

void TrackCanvas::alignmentShown()
{
    m_Columns.clear();
    m_Rows.clear();
    m_RowHint.clear();
    arrange();
    follow();
}

void TrackCanvas::layoutRebuilt()
{
    arrange();
    follow();
}

void TrackCanvas::commUpdate()
{
    followLines();
    const std::uint64_t now = TAMBO::StructureDetails::revision();
    if (std::exchange(m_Structures, now) != now && isOn(Track::Distance))
        follow();
}

// They are no part of the layout.
void TrackCanvas::followLines()
{
    const TAMBO::Alignment *const alignment = shown().alignment();
    if (alignment == nullptr)
        return;
    QStringList tags;
    for (const std::string &tag : AlignmentDetails::columnLines(*alignment))
        tags << QString::fromStdString(tag);
    QStringList known;
    for (const LineTrack &line : m_Lines)
        if (!line.row)
            known << line.name;
    if (tags != known) {
        arrange();
        follow();
    } else if (!tags.isEmpty()) {
        update();
    }
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

bool TrackCanvas::hasNumbers() const
{
    return std::ranges::any_of(m_Items, [](const Item &item) { return item.track.has_value(); });
}

void TrackCanvas::follow()
{
    m_Slices.stop();
    update();
    if (!isVisible() || shown().alignment() == nullptr)
        return;
    m_Columns.wantSpread(isOn(Track::Distance));
    if (!hasNumbers() || hasTooMany()) {
        m_Columns.want(0, 0);
        return;
    }
    const TAMBO::CellBlock cells = shown().visibleCells();
    m_Columns.want(cells.colBegin, cells.colEnd);
    // At once what there is time for: then small alignments never flicker.
    goOn(kFirstSlice);
}

void TrackCanvas::goOn(std::chrono::microseconds most)
{
    const TAMBO::Alignment *const alignment = shown().alignment();
    const std::size_t before = m_Columns.computed() + m_Columns.spreads();
    if (alignment == nullptr || !m_Columns.goOn(*alignment, most))
        m_Slices.stop();
    else if (!m_Slices.isActive())
        m_Slices.start(0);
    if (m_Columns.computed() + m_Columns.spreads() == before)
        return;
    update();
    m_Cursor.refresh();
}

// ---- What is to be seen

QString TrackCanvas::remark() const
{
    if (m_Items.empty())
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
    for (std::size_t i = 0; i < m_Items.size(); ++i) {
        const Item &item = m_Items[i];
        const QRect place = itemRect(i);
        const QRect beside(0, place.top(), std::max(0, cells.left()), place.height());
        painter.setClipping(false);
        if (item.track)
            paintTrackName(painter, *item.track, beside);
        else if (item.line)
            paintLineName(painter, *item.line, beside);
        painter.setPen(kTrackEdge);
        painter.drawLine(cells.left(), place.bottom() + 1, cells.right(), place.bottom() + 1);
        painter.setClipRect(cells.intersected(place));
        if (instead.isEmpty())
            paintItem(painter, item, place);
    }
    paintCursor(painter);
    painter.setClipping(false);
    painter.setPen(Qt::black);
    painter.drawText(cells, Qt::AlignCenter | Qt::TextWordWrap, instead);
}

void TrackCanvas::paintItem(QPainter &painter, const Item &item, const QRect &place) const
{
    const QRect cells = cellsPlace();
    const TAMBO::CellBlock block = shown().visibleCells();
    if (item.track) {
        for (unsigned long col = block.colBegin; col < block.colEnd; ++col)
            paintTrackColumn(painter, *item.track, m_Columns.at(col),
                             columnRect(place, cells.left(), col));
    } else if (item.line) {
        const unsigned long begin = block.colBegin - std::min(block.colBegin, kBesideSight);
        const std::string text =
            lineText(*shown().alignment(), *item.line, begin, block.colEnd + kBesideSight);
        paintLine(painter, *item.line, text, columnRect(place, cells.left(), begin));
    } else {
        painter.setPen(Qt::black);
        painter.drawText(place.intersected(cells), Qt::AlignLeft | Qt::AlignVCenter, m_RowHint);
    }
}

QString TrackCanvas::valueText(const Item &item, unsigned long col) const
{
    if (item.line)
        return columnValue(*shown().alignment(), *item.line, col);
    const TrackColumn *const column = m_Columns.isKnown(col) ? m_Columns.at(col) : nullptr;
    return column == nullptr ? tr("is being computed") : trackValue(*item.track, *column);
}

QString TrackCanvas::toolTipText(const QPoint &place) const
{
    const Item *const item = itemAt(place.y());
    if (item == nullptr || shown().alignment() == nullptr)
        return {};
    if (!item->track && !item->line)
        return m_RowHint;
    const QRect cells = cellsPlace();
    if (place.x() < cells.left())
        return item->track ? trackMeaning(*item->track) : item->line->meaning;
    const std::optional<unsigned long> col = shown().columnAt(place.x() - cells.left());
    if (!col || place.x() > cells.right() || hasTooMany())
        return {};
    return columnText(*col) + u'\n' + valueText(*item, *col);
}

QString TrackCanvas::columnText(unsigned long col) const
{
    return tr("Column %1 of %2").arg(col + 1).arg(shown().columns());
}

QString TrackCanvas::allText(unsigned long col) const
{
    QStringList lines(columnText(col));
    if (hasTooMany())
        lines << remark();
    else
        for (const Item &item : m_Items)
            if (item.track || item.line)
                lines << valueText(item, col);
    return lines.join(u'\n');
}

void TrackCanvas::paintCursor(QPainter &painter) const
{
    const std::optional<unsigned long> col = m_Cursor.column();
    if (!col)
        return;
    const QRect cells = cellsPlace();
    QRect place = columnRect(cells, cells.left(), *col).adjusted(0, 1, -1, -2);
    // Seen where columns are narrow, too.
    place.setWidth(std::max(place.width(), kLeastCursor));
    painter.setClipRect(cells.adjusted(-1, 0, 1, 0));
    painter.setPen(QPen(Qt::black, 2));
    painter.drawRect(place);
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
        QToolTip::showText(help->globalPos(), TAMBO::plainToolTip(text), this);
    return true;
}

} // namespace companion
