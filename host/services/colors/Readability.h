// SPDX-License-Identifier: GPL-3.0-or-later
// What the toolkit's own looks lack for everything to be seen well.
#pragma once

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

// For the application, before it has windows: that style, and quiet texts, such as what an empty
// field asks for, strong enough to be read.
void makeReadable();

} // namespace TAMBO::services
