// SPDX-License-Identifier: GPL-3.0-or-later
// What stands beside the pointer while gaps are dragged: lines of text, some with the mark that
// they explain.
#pragma once

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <vector>

class QFont;
class QPainter;

namespace companion {

struct GuideLine
{
    QString text;
    // Of the mark on the cells; invalid for none.
    QColor mark = {};

    friend bool operator==(const GuideLine &, const GuideLine &) = default;
};

using GuideLines = std::vector<GuideLine>;

[[nodiscard]] QSize guideLabelSize(const GuideLines &lines, const QFont &font);
// As near to the pointer as it can be without covering what is kept free: below that, else above,
// else in the corner that is farthest from the pointer.
[[nodiscard]] QRect guideLabelPlace(const QSize &label, const QSize &area, const QRect &keptFree,
                                    const QPoint &pointer);
void paintGuideLabel(QPainter &painter, const QRect &place, const GuideLines &lines,
                     const QFont &font);

} // namespace companion
