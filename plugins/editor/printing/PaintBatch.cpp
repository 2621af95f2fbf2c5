// SPDX-License-Identifier: GPL-3.0-or-later
#include "PaintBatch.h"

#include <QPainter>

#include <algorithm>
#include <tuple>

namespace ZEP {

namespace {

void drawRects(QPainter &painter, const std::vector<QRect> &rects)
{
    painter.drawRects(rects.data(), static_cast<int>(rects.size()));
}

} // namespace

void PaintBatch::fill(const QRect &rect, const QColor &color)
{
    m_Fills[color.rgb()].push_back(rect);
}

void PaintBatch::write(const QRect &rect, int flags, const QString &text, const QColor &color)
{
    m_Texts.push_back({rect, flags, text, color});
}

void PaintBatch::frame(const QRect &rect)
{
    m_Frames.push_back(rect);
}

void PaintBatch::paint(QPainter &painter)
{
    painter.setPen(Qt::NoPen);
    for (const auto &[color, rects] : m_Fills) {
        painter.setBrush(QColor(color));
        drawRects(painter, rects);
    }
    painter.setBrush(Qt::NoBrush);

    std::stable_sort(m_Texts.begin(), m_Texts.end(), [](const Text &a, const Text &b) {
        return std::tuple(a.rect.top(), a.rect.left()) < std::tuple(b.rect.top(), b.rect.left());
    });
    for (const Text &text : m_Texts) {
        painter.setPen(text.color);
        painter.drawText(text.rect, text.flags, text.text);
    }

    painter.setPen(Qt::black);
    drawRects(painter, m_Frames);
    m_Fills.clear();
    m_Texts.clear();
    m_Frames.clear();
}

} // namespace ZEP
