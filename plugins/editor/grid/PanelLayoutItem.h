// SPDX-License-Identifier: GPL-3.0-or-later
// A panel's place in the layout. A window's new font moves the maximum of a panel and not its
// minimum, so the maximum may be the smaller one. The minimum is what the panel then has, and the
// layout has to give it as much, or the panel would lie over its neighbour.
#pragma once

#include <QWidgetItem>

namespace ZEP {

class PanelLayoutItem : public QWidgetItem
{
public:
    using QWidgetItem::QWidgetItem;

    [[nodiscard]] QSize maximumSize() const override
    {
        return QWidgetItem::maximumSize().expandedTo(minimumSize());
    }
};

} // namespace ZEP
