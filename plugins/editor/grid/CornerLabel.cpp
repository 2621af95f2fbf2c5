// SPDX-License-Identifier: GPL-3.0-or-later
#include "CornerLabel.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyle>

#include <utility>

namespace {

constexpr int kTextMargin = 4;

} // namespace

namespace ZEP {

CornerLabel::CornerLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignCenter);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
}

QSize CornerLabel::sizeHint() const
{
    return {};
}

QSize CornerLabel::minimumSizeHint() const
{
    return {};
}

void CornerLabel::setForeground(std::function<void(QPainter &, const QRect &)> paint)
{
    m_Foreground = std::move(paint);
}

void CornerLabel::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const QRect place = contentsRect().adjusted(kTextMargin, 0, -kTextMargin, 0);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, place.width());
    style()->drawItemText(&painter, place, static_cast<int>(alignment()), palette(), isEnabled(),
                          shown, foregroundRole());
    if (m_Foreground)
        m_Foreground(painter, event->rect());
}

} // namespace ZEP
