// SPDX-License-Identifier: GPL-3.0-or-later
#include "NameText.h"

#include <QFontMetrics>

namespace companion {

QString cutInTheMiddle(const QString &name, int width, const QFontMetrics &metrics)
{
    if (metrics.horizontalAdvance(name) <= width)
        return name;
    const QString cut = metrics.elidedText(name, Qt::ElideMiddle, width);
    return metrics.horizontalAdvance(cut) <= width ? cut : QString();
}

} // namespace companion
