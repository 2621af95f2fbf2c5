// SPDX-License-Identifier: GPL-3.0-or-later
#include "LegendBar.h"

#include "LineLabel.h"
#include "PlainText.h"

#include <QLabel>
#include <QMainWindow>
#include <QPainter>
#include <QToolButton>

namespace companion {

namespace {

constexpr int kSwatch = 14;
constexpr int kBetween = 5;

QPixmap swatchOf(const Color &color)
{
    QPixmap swatch(kSwatch, kSwatch);
    swatch.fill(color.toQColor());
    QPainter painter(&swatch);
    painter.setPen(Qt::gray);
    painter.drawRect(0, 0, kSwatch - 1, kSwatch - 1);
    return swatch;
}

QLabel *textLabel(const QString &text)
{
    auto *const label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(kBetween, 0, kBetween, 0);
    return label;
}

} // namespace

LegendBar::LegendBar(QMainWindow &window) : QToolBar(tr("Legend"), &window)
{
    setObjectName(QStringLiteral("Legend"));
    setMovable(false);
    window.addToolBarBreak(Qt::BottomToolBarArea);
    window.addToolBar(Qt::BottomToolBarArea, this);
    hide();
}

LegendBar::~LegendBar() = default;

void LegendBar::show(const Legend &legend)
{
    clear();
    if (legend.entries.empty())
        return hide();
    QString title = QString::fromStdString(legend.title);
    if (legend.scale)
        title += tr(" (%1)").arg(tr("%1 to %2 %3")
                                     .arg(legend.scale->above)
                                     .arg(legend.scale->upTo)
                                     .arg(QString::fromStdString(legend.unit))
                                     .trimmed());
    addWidget(textLabel(title + u':'));
    for (const LegendEntry &entry : legend.entries) {
        auto *const swatch = new QLabel;
        swatch->setPixmap(swatchOf(entry.color));
        swatch->setAccessibleName(tr("Color %1").arg(entry.color.toQColor().name()));
        swatch->setContentsMargins(kBetween, 0, 0, 0);
        addWidget(swatch);
        addWidget(textLabel(QString::fromStdString(entry.label)));
    }
    if (!legend.note.empty()) {
        auto *const note = makeLineLabel();
        note->setText(QString::fromStdString(legend.note));
        note->setToolTip(TAMBO::plainToolTip(note->text()));
        addWidget(note);
    }
    // At the end of the bar, where it is taken for none of the entries.
    auto *const room = new QWidget;
    room->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(room);
    auto *const close = new QToolButton;
    close->setObjectName(QStringLiteral("CloseLegend"));
    close->setText(QStringLiteral("×"));
    close->setToolTip(tr("Close the legend"));
    close->setAccessibleName(close->toolTip());
    connect(close, &QToolButton::clicked, this, [this] {
        hide();
        emit closed();
    });
    addWidget(close);
    show();
}

} // namespace companion
