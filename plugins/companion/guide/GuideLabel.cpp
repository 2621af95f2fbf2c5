// SPDX-License-Identifier: GPL-3.0-or-later
#include "GuideLabel.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace companion {

namespace {

constexpr int kPadding = 6;
constexpr int kFromCells = 8;

int chipWidth(const QFontMetrics &metrics)
{
    return metrics.ascent() + kPadding;
}

} // namespace

QSize guideLabelSize(const GuideLines &lines, const QFont &font)
{
    const QFontMetrics metrics(font);
    int width = 0;
    for (const GuideLine &line : lines)
        width = std::max(width, metrics.horizontalAdvance(line.text) +
                                    (line.mark.isValid() ? chipWidth(metrics) : 0));
    return {width + 2 * kPadding, metrics.lineSpacing() * int(lines.size()) + 2 * kPadding};
}

QRect guideLabelPlace(const QSize &label, const QSize &area, const QRect &keptFree,
                      const QPoint &pointer)
{
    const int x =
        std::clamp(pointer.x() - label.width() / 2, 0, std::max(0, area.width() - label.width()));
    const int below = keptFree.bottom() + 1 + kFromCells;
    if (below + label.height() <= area.height())
        return {QPoint(x, below), label};
    const int above = keptFree.top() - kFromCells - label.height();
    if (above >= 0)
        return {QPoint(x, above), label};
    const bool isLeft = pointer.x() < area.width() / 2;
    const bool isUp = pointer.y() < area.height() / 2;
    return {QPoint(isLeft ? std::max(0, area.width() - label.width()) : 0,
                   isUp ? std::max(0, area.height() - label.height()) : 0),
            label};
}

void paintGuideLabel(QPainter &painter, const QRect &place, const GuideLines &lines,
                     const QFont &font)
{
    const QPalette colors = QToolTip::palette();
    painter.setPen(colors.color(QPalette::ToolTipText));
    painter.setBrush(colors.color(QPalette::ToolTipBase));
    painter.drawRect(place.adjusted(0, 0, -1, -1));
    painter.setFont(font);
    const QFontMetrics metrics(font);
    int y = place.top() + kPadding;
    for (const GuideLine &line : lines) {
        int x = place.left() + kPadding;
        if (line.mark.isValid()) {
            const int size = metrics.ascent() - 2;
            const QRect chip(x, y + (metrics.height() - size) / 2, size, size);
            painter.fillRect(chip, Qt::white);
            painter.fillRect(chip.adjusted(1, 1, -1, -1), line.mark);
            x += chipWidth(metrics);
        }
        painter.setPen(colors.color(QPalette::ToolTipText));
        painter.drawText(x, y + metrics.ascent(), line.text);
        y += metrics.lineSpacing();
    }
}

} // namespace companion
