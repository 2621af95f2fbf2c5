// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeptMarks.h"

#include "AlignmentWindow.h"
#include "CellCursor.h"
#include "Texts.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <QWidget>

#include <utility>

namespace companion {

using TAMBO::WindowArea;

namespace {

// Below the frames of hits and the cursor.
constexpr int kKeptZ = 5;
constexpr int kKeptThickness = 3;
constexpr QColor kKeptLine(150, 90, 0);
constexpr QColor kKeptGround(230, 150, 0, 70);

} // namespace

KeptMarks::KeptMarks(TAMBO::AlignmentWindow &window, CellCursor &cursor, Telling telling)
    : AlignmentViewObserver(window),
      CellOverlay(window, WindowArea::Cells | WindowArea::Header, kKeptZ),
      CellEventFilter(window, WindowArea::Header),
      m_Cursor(cursor),
      m_Telling(std::move(telling)),
      m_Regions(KeptRegions::shared())
{
    m_Regions->look();
    refresh();
}

KeptMarks::~KeptMarks() = default;

TAMBO::AlignmentWindow &KeptMarks::shown() const
{
    return *AlignmentViewObserver::window();
}

void KeptMarks::keep()
{
    TAMBO::Alignment *const alignment = shown().alignment();
    if (alignment == nullptr)
        return;
    ColumnRange columns = alignment->range();
    if (m_Cursor.hasBlock())
        columns = {m_Cursor.block()->colBegin, m_Cursor.block()->colEnd};
    if (columns.first >= columns.second)
        m_Telling.show(tr("Draw a block first, or set a range: its columns are those to be kept."));
    else if (keepColumns(*alignment, columns))
        m_Telling.tell(text());
}

void KeptMarks::keepNoLonger()
{
    TAMBO::Alignment *const alignment = shown().alignment();
    if (alignment == nullptr)
        return;
    if (keepNoColumns(*alignment))
        m_Telling.tell(tr("No columns are kept any more."));
    else
        m_Telling.show(tr("No columns are kept."));
}

QString KeptMarks::text() const
{
    const auto columns = keptColumns(*shown().alignment());
    return columns ? tr("Columns %1 to %2 are kept where they are.")
                         .arg(columns->first + 1)
                         .arg(columns->second)
                   : QString();
}

void KeptMarks::alignmentShown()
{
    m_Regions->look();
    m_Columns.reset();
    refresh();
}

void KeptMarks::refresh()
{
    const TAMBO::Alignment *const alignment = shown().alignment();
    const auto columns = alignment == nullptr ? std::nullopt : keptColumns(*alignment);
    if (columns == m_Columns)
        return;
    repaintColumns(std::exchange(m_Columns, columns));
    repaintColumns(m_Columns);
}

void KeptMarks::repaintColumns(const std::optional<ColumnRange> &columns) const
{
    if (columns)
        repaint({0, shown().rows(), columns->first, columns->second}, kKeptThickness);
}

void KeptMarks::paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
                      const TAMBO::OverlayExposure &exposed)
{
    if (!m_Columns)
        return;
    const QRect place =
        window.blockRect({0, window.rows(), m_Columns->first, m_Columns->second}, exposed.area);
    const QRect seen = place.intersected(
        exposed.rect.adjusted(-kKeptThickness, -kKeptThickness, kKeptThickness, kKeptThickness));
    if (seen.isEmpty())
        return;
    if (exposed.area == WindowArea::Header) {
        painter.fillRect(seen, kKeptGround);
        painter.fillRect(
            QRect(place.left(), place.bottom() + 1 - kKeptThickness, place.width(), kKeptThickness),
            kKeptLine);
    }
    for (const int x : {place.left(), place.right() + 1 - kKeptThickness})
        painter.fillRect(QRect(x, seen.top(), kKeptThickness, seen.height()), kKeptLine);
}

bool KeptMarks::handle(TAMBO::AlignmentWindow &window, WindowArea area, QEvent &event)
{
    if (event.type() != QEvent::ToolTip || !m_Columns)
        return false;
    const auto &help = static_cast<const QHelpEvent &>(event);
    const std::optional<unsigned long> column = window.columnAt(help.pos().x());
    if (!column || *column < m_Columns->first || *column >= m_Columns->second)
        return false;
    QToolTip::showText(help.globalPos(), tr("column %1").arg(*column + 1) + u'\n' + text(),
                       window.areaWidget(area));
    return true;
}

} // namespace companion
