// SPDX-License-Identifier: GPL-3.0-or-later
#include "NameColumn.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "NameText.h"
#include "TextColors.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QMainWindow>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWidget>

#include <algorithm>

namespace companion {

using TAMBO::WindowArea;

namespace {

// Where the border is taken, in pixels left of it: what stands there is the end of a mark.
constexpr int kBorder = 5;
// Of an alignment that is shown: more names would be seen only after a while.
constexpr unsigned long kLookedAt = 1000;

} // namespace

NameColumn::NameColumn(TAMBO::AlignmentWindow &window)
    : AlignmentViewObserver(window),
      CellOverlay(window, WindowArea::Names),
      CellEventFilter(window, WindowArea::Names)
{
    if (window.alignment() != nullptr)
        alignmentShown();
}

NameColumn::~NameColumn() = default;

TAMBO::AlignmentWindow *NameColumn::window() const noexcept
{
    return AlignmentViewObserver::window();
}

int NameColumn::neededWidth(unsigned long begin, unsigned long end) const
{
    const TAMBO::Alignment *const alignment = window()->alignment();
    const std::optional<QFont> font = window()->nameFont();
    if (alignment == nullptr || !font)
        return 0;
    const QFontMetrics metrics(*font);
    int widest = 0;
    for (unsigned long row = begin; row < end; ++row)
        widest = std::max(widest, metrics.horizontalAdvance(shownName(*alignment, row)));
    return widest + metrics.horizontalAdvance(kSelectedMark) + marginOfNames(*window());
}

void NameColumn::fitVisible()
{
    const TAMBO::CellBlock cells = window()->visibleCells();
    if (const int needed = neededWidth(cells.rowBegin, cells.rowEnd); needed > 0)
        window()->setNameWidth(needed);
    m_IsChosen = true;
}

void NameColumn::reset()
{
    window()->resetNameWidth();
    m_IsChosen = true;
}

void NameColumn::alignmentShown()
{
    const TAMBO::Alignment *const alignment = window()->alignment();
    if (alignment == nullptr || m_IsChosen)
        return;
    const int needed = neededWidth(0, std::min(alignment->height(), kLookedAt));
    const int most = window()->mainWindow()->width() / 3;
    window()->resetNameWidth();
    if (needed > window()->nameWidth())
        window()->setNameWidth(std::max(window()->nameWidth(), std::min(needed, most)));
}

void NameColumn::paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
                       const TAMBO::OverlayExposure &exposed)
{
    const TAMBO::Alignment *const alignment = window.alignment();
    if (alignment == nullptr)
        return;
    paintNames(painter, exposed);
    const int third = std::max(1, marginOfNames(window) / 3);
    for (unsigned long row = exposed.cells.rowBegin; row < exposed.cells.rowEnd; ++row) {
        if (!alignment->isRowSelected(row))
            continue;
        const QRect place = window.blockRect({row, row + 1, 0, 1}, WindowArea::Names);
        painter.fillRect(window.nameWidth() - 2 * third, place.top(), third, place.height(),
                         kSelectedText);
    }
}

void NameColumn::paintNames(QPainter &painter, const TAMBO::OverlayExposure &exposed) const
{
    const TAMBO::AlignmentWindow &window = *this->window();
    const TAMBO::Alignment *const alignment = window.alignment();
    const std::optional<QFont> font = window.nameFont();
    if (!font)
        return;
    const QFontMetrics metrics(*font);
    const int right = window.nameWidth() - marginOfNames(window);
    const int room = right - metrics.horizontalAdvance(kSelectedMark);
    painter.setFont(*font);
    for (unsigned long row = exposed.cells.rowBegin; row < exposed.cells.rowEnd; ++row) {
        const QString name = shownName(*alignment, row);
        const QString cut = cutInTheMiddle(name, room, metrics);
        // The window's own picture of a name that has room is right.
        if (cut.size() == name.size())
            continue;
        QRect place = window.blockRect({row, row + 1, 0, 1}, WindowArea::Names);
        const bool isSelected = alignment->isRowSelected(row);
        painter.fillRect(place, Qt::white);
        painter.setPen(isSelected ? kSelectedText : QColor(Qt::black));
        place.setRight(place.left() + right - 1);
        // As the window places it: letters of its own size stand at the upper edge.
        if (window.cellSize() == window.ownCellSize())
            place.setHeight(metrics.height());
        painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip,
                         cut + (isSelected ? kSelectedMark : kUnselectedMark));
    }
}

bool NameColumn::isBorder(int x) const
{
    return x >= window()->areaWidget(WindowArea::Names)->width() - kBorder;
}

bool NameColumn::handle(TAMBO::AlignmentWindow &window, WindowArea, QEvent &event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress: {
        const auto &mouse = static_cast<const QMouseEvent &>(event);
        if (mouse.button() != Qt::LeftButton || !isBorder(mouse.pos().x()))
            return false;
        m_Drag = Drag{mouse.globalPosition().toPoint().x(), window.nameWidth()};
        return true;
    }
    case QEvent::MouseButtonDblClick: {
        const auto &mouse = static_cast<const QMouseEvent &>(event);
        if (mouse.button() != Qt::LeftButton || !isBorder(mouse.pos().x()))
            return false;
        fitVisible();
        return true;
    }
    case QEvent::MouseMove: {
        const auto &mouse = static_cast<const QMouseEvent &>(event);
        if (m_Drag) {
            m_IsChosen = true;
            window.setNameWidth(m_Drag->width + mouse.globalPosition().toPoint().x() - m_Drag->x);
            return true;
        }
        QWidget *const names = window.areaWidget(WindowArea::Names);
        if (mouse.buttons() == Qt::NoButton && isBorder(mouse.pos().x()))
            names->setCursor(Qt::SplitHCursor);
        else
            names->unsetCursor();
        return false;
    }
    case QEvent::MouseButtonRelease:
        return m_Drag.has_value() && (m_Drag.reset(), true);
    case QEvent::ToolTip: {
        const auto &help = static_cast<const QHelpEvent &>(event);
        showToolTip(help.pos(), help.globalPos());
        return true;
    }
    default:
        return false;
    }
}

void NameColumn::showToolTip(const QPoint &place, const QPoint &global) const
{
    const std::optional<unsigned long> row = window()->rowAt(place.y());
    if (!row || window()->alignment() == nullptr)
        return QToolTip::hideText();
    // A name may look like markup.
    QToolTip::showText(global, shownName(*window()->alignment(), *row).toHtmlEscaped(),
                       window()->areaWidget(WindowArea::Names),
                       window()->blockRect({*row, *row + 1, 0, 1}, WindowArea::Names));
}

} // namespace companion
