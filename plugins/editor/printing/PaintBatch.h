// SPDX-License-Identifier: GPL-3.0-or-later
// Gathers the parts of a block and paints them in a better order than they are found in: fills
// color by color, since page files grow with every change of a brush, and texts as one reads, so
// that whoever copies from a page file gets rows.
#pragma once

#include <QColor>
#include <QRect>
#include <QString>

#include <map>
#include <vector>

class QPainter;

namespace ZEP {

// Fills are painted first, then texts, then frames.
class PaintBatch
{
public:
    void fill(const QRect &rect, const QColor &color);
    void write(const QRect &rect, int flags, const QString &text, const QColor &color);
    void frame(const QRect &rect);
    // Paints all and is empty then. Leaves pen and brush of the painter changed.
    void paint(QPainter &painter);

private:
    struct Text
    {
        QRect rect;
        int flags;
        QString text;
        QColor color;
    };

    std::map<QRgb, std::vector<QRect>> m_Fills;
    std::vector<Text> m_Texts;
    std::vector<QRect> m_Frames;
};

} // namespace ZEP
