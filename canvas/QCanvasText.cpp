// SPDX-License-Identifier: GPL-3.0-or-later
#include "QCanvasText.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace {

// The measures of the font used last: all texts of a canvas have the same one as a rule, and asking
// the toolkit for a font's measures costs more than making an item.
class FontMeasure
{
public:
    const QFontMetrics &of(const QFont &font)
    {
        if (!m_Metrics || !font.isCopyOf(m_Font)) {
            m_Font = font;
            m_Metrics.emplace(font);
            m_Widest = std::max(m_Metrics->maxWidth(), 2 * m_Metrics->height());
            m_Widths.fill(kUnknown);
        }
        return *m_Metrics;
    }
    // Wider than any one character, also one that another font stands in for.
    int widest(const QFont &font)
    {
        of(font);
        return m_Widest;
    }
    // Of a text of one line. Most texts over a grid are single letters, and laying one out to
    // measure it takes as long as drawing it.
    int width(const QFont &font, const QString &text)
    {
        const QFontMetrics &metrics = of(font);
        if (text.size() != 1 || text.front().unicode() >= m_Widths.size())
            return metrics.horizontalAdvance(text);
        int &width = m_Widths[text.front().unicode()];
        if (width == kUnknown)
            width = metrics.horizontalAdvance(text);
        return width;
    }

private:
    static constexpr int kUnknown = -1;

    QFont m_Font;
    std::optional<QFontMetrics> m_Metrics;
    int m_Widest = 0;
    // Of the characters of plain ASCII.
    std::array<int, 128> m_Widths{};
};

FontMeasure &fontMeasure()
{
    // Lives as long as the program's fonts may be used, which statics with destructors do not.
    static auto *measure = new FontMeasure;
    return *measure;
}

} // namespace

QCanvasText::QCanvasText(QCanvas *canvas) : QCanvasItem(canvas) { }

QCanvasText::QCanvasText(const QString &text, QCanvas *canvas) : QCanvasItem(canvas), m_Text(text)
{ }

QCanvasText::QCanvasText(const QString &text, const QFont &font, QCanvas *canvas)
    : QCanvasItem(canvas), m_Text(text), m_Font(font)
{ }

QCanvasText::~QCanvasText()
{
    hide();
}

void QCanvasText::setText(const QString &text)
{
    if (text == m_Text)
        return;
    aboutToChange();
    m_Text = text;
    m_Size = {};
    hasChanged();
}

void QCanvasText::setFont(const QFont &font)
{
    aboutToChange();
    m_Font = font;
    m_Size = {};
    hasChanged();
}

void QCanvasText::setColor(const QColor &color)
{
    if (color == m_Color)
        return;
    aboutToChange();
    m_Color = color;
    hasChanged();
}

void QCanvasText::setTextFlags(int flags)
{
    if (flags == m_Flags)
        return;
    aboutToChange();
    m_Flags = flags;
    hasChanged();
}

void QCanvasText::draw(QPainter &painter)
{
    if (m_Text.isEmpty())
        return;
    painter.setFont(m_Font);
    painter.setPen(m_Color);
    const QRect area = boundingRect();
    if (m_Text.contains(QLatin1Char('\n')))
        painter.drawText(area, Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, m_Text);
    else
        painter.drawText(area.left(), area.top() + fontMeasure().of(m_Font).ascent(), m_Text);
}

// As reach() has it.
int QCanvasText::farthest(const QFont &font, int length, int flags)
{
    const int widest = fontMeasure().widest(font);
    const int whole = std::max(1, length) * widest;
    return ((flags & Qt::AlignHCenter) != 0 ? whole / 2 : whole) + widest + 2;
}

int QCanvasText::rtti() const
{
    return RTTI;
}

QRect QCanvasText::boundingRect() const
{
    return placed(measured());
}

// Large enough for a text that is as long and made of the widest characters, or that gets its first
// character while it is drawn; italic letters may hang over a little.
QRect QCanvasText::reach() const
{
    const QFontMetrics &metrics = fontMeasure().of(m_Font);
    const int widest = fontMeasure().widest(m_Font);
    const auto lines = static_cast<int>(m_Text.count(QLatin1Char('\n'))) + 1;
    const int length = std::max(1, static_cast<int>(m_Text.size()));
    // In some fonts lines are closer than their letters are high.
    const QSize size(length * widest, lines * std::max(metrics.lineSpacing(), metrics.height()));
    return placed(size).adjusted(-widest, -2, widest, 2);
}

QSize QCanvasText::measured() const
{
    if (!m_Size.isValid()) {
        const QFontMetrics &metrics = fontMeasure().of(m_Font);
        m_Size = m_Text.contains(QLatin1Char('\n')) ? metrics.size(0, m_Text)
                 : m_Text.isEmpty()                 ? QSize(0, 0)
                                    : QSize(fontMeasure().width(m_Font, m_Text), metrics.height());
    }
    return m_Size;
}

QRect QCanvasText::placed(const QSize &size) const
{
    double left = x();
    double top = y();
    if ((m_Flags & Qt::AlignRight) != 0)
        left -= size.width();
    else if ((m_Flags & Qt::AlignHCenter) != 0)
        left -= size.width() / 2.0;
    if ((m_Flags & Qt::AlignBottom) != 0)
        top -= size.height();
    else if ((m_Flags & Qt::AlignVCenter) != 0)
        top -= size.height() / 2.0;
    return {QPoint(static_cast<int>(std::floor(left)), static_cast<int>(std::floor(top))), size};
}
