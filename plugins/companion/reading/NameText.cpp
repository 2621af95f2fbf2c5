// SPDX-License-Identifier: GPL-3.0-or-later
#include "NameText.h"

#include "Alignment.h"
#include "AlignmentWindow.h"

#include <QFontMetrics>

namespace companion {

QString shownName(const TAMBO::Alignment &alignment, unsigned long row)
{
    return QString::fromStdString(alignment.GetSeqName(row));
}

int marginOfNames(const TAMBO::AlignmentWindow &window)
{
    return window.ownCellSize().width();
}

QString cutInTheMiddle(const QString &name, int width, const QFontMetrics &metrics)
{
    if (metrics.horizontalAdvance(name) <= width)
        return name;
    const QString cut = metrics.elidedText(name, Qt::ElideMiddle, width);
    return metrics.horizontalAdvance(cut) <= width ? cut : QString();
}

} // namespace companion
