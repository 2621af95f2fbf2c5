// SPDX-License-Identifier: GPL-3.0-or-later
// What the toolkit's own looks lack for everything to be seen well.
#pragma once

#include <QColor>
#include <QProxyStyle>

namespace TAMBO::services {

// Icons in selected lines keep their colors, by which one tells them apart; the toolkit would tint
// them all alike.
class PlainIconStyle : public QProxyStyle
{
    Q_OBJECT

public:
    PlainIconStyle();
    ~PlainIconStyle() override;

    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                const QStyleOption *option) const override;
};

// The ground, if need be darker below a light text and lighter below a dark one, of the same hue,
// so that the text has a contrast of 4.5 to 1. The ground itself where that does not help.
[[nodiscard]] QColor readableGround(const QColor &text, const QColor &ground);

// For the application, before it has windows: that style, quiet texts, such as what an empty field
// asks for, strong enough to be read, and selected lines dark or light enough for their text.
void makeReadable();

} // namespace TAMBO::services
