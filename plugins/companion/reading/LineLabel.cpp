// SPDX-License-Identifier: GPL-3.0-or-later
#include "LineLabel.h"

#include <QLabel>
#include <QPainter>
#include <QStyle>

namespace companion {

namespace {

constexpr int kLineMargin = 6;

class LineLabel : public QLabel
{
protected:
    // A label cuts its text in the middle of a word, and nobody sees that there is more.
    void paintEvent(QPaintEvent *event) override
    {
        const QRect room = contentsRect();
        const QString shown =
            fontMetrics().elidedText(text(), Qt::ElideRight, room.width(), Qt::TextSingleLine);
        if (shown == text())
            return QLabel::paintEvent(event);
        QPainter painter(this);
        style()->drawItemText(&painter, room, int(alignment()) | Qt::TextSingleLine, palette(),
                              isEnabled(), shown, foregroundRole());
    }
};

} // namespace

QLabel *makeLineLabel()
{
    auto *const label = new LineLabel;
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(kLineMargin, 0, kLineMargin, 0);
    // Else a tool bar would make it as wide as its text.
    label->setMinimumWidth(1);
    label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    return label;
}

} // namespace companion
