// SPDX-License-Identifier: GPL-3.0-or-later
#include "StructureMarks.h"

#include "Alignment.h"
#include "AlignmentDetails.h"
#include "AlignmentWindow.h"
#include "TieText.h"
#include "WorkbenchValues.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QPolygon>
#include <QScopedValueRollback>
#include <QTextDocument>
#include <QToolTip>
#include <QWidget>

#include <algorithm>

namespace companion {

using TAMBO::CellTie;
using TAMBO::WindowArea;

namespace {

constexpr char kMarksOf[] = "companion";
constexpr char kMarksKey[] = "structure-marks";
constexpr char kMarksOff[] = "off";
// Below the frames of what was found.
constexpr int kMarksZ = -10;
// Seen on all colors of residues, and on white.
constexpr QColor kMark(0, 0, 0);
constexpr QColor kAroundMark(255, 255, 255);
constexpr int kSmallest = 3;
constexpr int kLargest = 9;

// A triangle in the upper right corner.
void markOther(QPainter &painter, const QRect &cell)
{
    const int size = std::clamp(2 * std::min(cell.width(), cell.height()) / 5, kSmallest, kLargest);
    const auto corner = [&cell](int length) {
        const QPoint right = cell.topRight() + QPoint(1, 0);
        return QPolygon({right, right - QPoint(length, 0), right + QPoint(0, length)});
    };
    painter.setPen(Qt::NoPen);
    painter.setBrush(kAroundMark);
    painter.drawPolygon(corner(size + 2));
    painter.setBrush(kMark);
    painter.drawPolygon(corner(size));
}

// A line of dashes along the lower edge, which goes on in the next cell.
void markMissing(QPainter &painter, const QRect &cell)
{
    const int line = cell.bottom();
    painter.fillRect(cell.left(), line - 1, cell.width(), 2, kAroundMark);
    const int dash = std::max(2, cell.width() / 4);
    painter.fillRect(cell.left() + cell.width() / 4 - dash / 2, line - 1, dash, 2, kMark);
    painter.fillRect(cell.left() + cell.width() * 3 / 4 - dash / 2, line - 1, dash, 2, kMark);
}

// Behind what the window says, as the toolkit takes it: maybe with marks of text.
QString withReason(const QString &text, const QString &reason)
{
    const QLatin1String end("</p>");
    if (text.isEmpty())
        return reason;
    return Qt::mightBeRichText(text) && text.endsWith(end)
               ? text.chopped(end.size()) + u'\n' + reason.toHtmlEscaped() + end
               : text + u'\n' + reason;
}

} // namespace

StructureMarks::StructureMarks(TAMBO::AlignmentWindow &window)
    : CellOverlay(window, WindowArea::Cells, kMarksZ),
      CellEventFilter(window, WindowArea::Cells),
      m_IsOn(WorkbenchValues::Get(kMarksOf, kMarksKey) != kMarksOff)
{
    repaint(window.visibleCells());
}

StructureMarks::~StructureMarks() = default;

void StructureMarks::toggle()
{
    m_IsOn = !m_IsOn;
    if (m_IsOn)
        WorkbenchValues::Remove(kMarksOf, kMarksKey);
    else
        WorkbenchValues::Set(kMarksOf, kMarksKey, kMarksOff);
    repaint(CellOverlay::window()->visibleCells());
}

void StructureMarks::paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
                           const TAMBO::OverlayExposure &exposed)
{
    const TAMBO::Alignment *const alignment = window.alignment();
    const QSize size = window.cellSize();
    if (!m_IsOn || alignment == nullptr || size.width() < kLeastWidth ||
        size.height() < kLeastHeight)
        return;
    const TAMBO::CellBlock &cells = exposed.cells;
    std::vector<CellTie> ties;
    for (unsigned long row = cells.rowBegin; row < cells.rowEnd; ++row) {
        ++m_RowsRead;
        ties.clear();
        TAMBO::AlignmentDetails::readTies(*alignment, row, cells.colBegin, cells.colEnd, ties);
        for (std::size_t i = 0; i < ties.size(); ++i) {
            const bool isOther = ties[i].kind == CellTie::Kind::OtherLetter;
            if (!isOther && ties[i].kind != CellTie::Kind::NoPosition)
                continue;
            const QRect cell = window.cellRect({row, cells.colBegin + i});
            if (isOther)
                markOther(painter, cell);
            else
                markMissing(painter, cell);
        }
    }
}

// The window tells what it always does, and the reason is put behind it.
bool StructureMarks::handle(TAMBO::AlignmentWindow &window, WindowArea area, QEvent &event)
{
    if (event.type() != QEvent::ToolTip || m_IsAsking || window.alignment() == nullptr)
        return false;
    const auto &help = static_cast<const QHelpEvent &>(event);
    const auto cell = window.cellAt(help.pos());
    const QString reason = cell ? tieText(*window.alignment(), *cell) : QString();
    if (reason.isEmpty())
        return false;
    QWidget *const widget = window.areaWidget(area);
    QHelpEvent again(QEvent::ToolTip, help.pos(), help.globalPos());
    const QScopedValueRollback isAsking(m_IsAsking, true);
    const bool hasText = QCoreApplication::sendEvent(widget, &again);
    QToolTip::showText(help.globalPos(), withReason(hasText ? QToolTip::text() : QString(), reason),
                       widget);
    return true;
}

} // namespace companion
