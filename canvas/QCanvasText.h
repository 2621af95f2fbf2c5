// SPDX-License-Identifier: GPL-3.0-or-later
// A text on a canvas. Its flags say which point of it stands at (x, y): with AlignRight the right
// edge, with AlignHCenter the centre, otherwise the left edge; with AlignBottom the lower edge,
// with AlignVCenter the middle, otherwise the upper edge.
#pragma once

#include "QCanvasItem.h"

#include <QColor>
#include <QFont>
#include <QSize>
#include <QString>

class QCanvasText : public QCanvasItem
{
public:
    static constexpr int RTTI = Rtti_Text;

    explicit QCanvasText(QCanvas *canvas);
    QCanvasText(const QString &text, QCanvas *canvas);
    QCanvasText(const QString &text, const QFont &font, QCanvas *canvas);
    ~QCanvasText() override;

    [[nodiscard]] const QString &text() const noexcept { return m_Text; }
    [[nodiscard]] const QFont &font() const noexcept { return m_Font; }
    [[nodiscard]] const QColor &color() const noexcept { return m_Color; }
    // Of type Qt::AlignmentFlag.
    [[nodiscard]] int textFlags() const noexcept { return m_Flags; }
    void setText(const QString &text);
    void setFont(const QFont &font);
    void setColor(const QColor &color);
    void setTextFlags(int flags);

    void draw(QPainter &painter) override;
    [[nodiscard]] int rtti() const override;
    [[nodiscard]] QRect boundingRect() const override;

    // No text of so many characters on one line draws farther from where it stands.
    [[nodiscard]] static int farthest(const QFont &font, int length, int flags);

protected:
    [[nodiscard]] QRect reach() const override;

private:
    [[nodiscard]] QSize measured() const;
    [[nodiscard]] QRect placed(const QSize &size) const;

    QString m_Text;
    QFont m_Font;
    QColor m_Color{Qt::black};
    int m_Flags = 0;
    // Invalid until somebody asks; a text is too costly to measure when it is made.
    mutable QSize m_Size;
};
