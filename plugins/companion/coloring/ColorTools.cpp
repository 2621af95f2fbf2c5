// SPDX-License-Identifier: GPL-3.0-or-later
#include "ColorTools.h"

#include "ColumnRules.h"
#include "Toolbar.h"

#include <QAction>
#include <QIcon>
#include <QMainWindow>
#include <QPainter>
#include <QPixmap>

#include <algorithm>

namespace companion {

namespace {

// Columns in the colors of the legend, on white.
QIcon conservationIcon()
{
    const Legend legend = legendOf(ColumnRule::Conservation);
    QIcon icon;
    for (const int size : {16, 24, 32, 48}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        const int edge = size / 12;
        const QRectF paper(edge, 2 * edge, size - 2 * edge, size - 4 * edge);
        painter.fillRect(paper, Qt::white);
        const double width = paper.width() / double(legend.entries.size() + 1);
        double left = paper.left() + width;
        for (auto entry = legend.entries.rbegin(); entry != legend.entries.rend(); ++entry) {
            painter.fillRect(QRectF(left, paper.top(), width, paper.height()),
                             entry->color.toQColor());
            left += width;
        }
        painter.setPen(QPen(QColor(90, 90, 90), std::max(1, size / 24)));
        painter.drawRect(paper);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace

ColorTools::ColorTools(QMainWindow &window, const std::function<void()> &byConservation)
    : QToolBar(tr("Colors"), &window)
{
    setObjectName(QStringLiteral("ColorTools"));
    QAction *const action = addAction(conservationIcon(), tr("Color by Conservation"));
    action->setToolTip(tr("Color columns by their conservation, on white"));
    connect(action, &QAction::triggered, this, byConservation);
    const auto *const other = window.findChild<Toolbar *>();
    window.addToolBar(other == nullptr ? Qt::TopToolBarArea : window.toolBarArea(other), this);
}

ColorTools::~ColorTools() = default;

} // namespace companion

#include "moc_ColorTools.cpp"
