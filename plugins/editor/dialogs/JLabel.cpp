// SPDX-License-Identifier: GPL-3.0-or-later
#include "JLabel.h"

#include "LetterColor.h"

#include <QMouseEvent>

namespace {

// Around the letter, so that a swatch is easy to see and to hit.
constexpr int kMargin = 5;

} // namespace

namespace ZEP {

JLabel::JLabel(const QString &text, int index, QWidget *parent)
    : QLabel(text, parent), m_Index(index)
{
    setAlignment(Qt::AlignCenter);
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    setMargin(kMargin);
    setCursor(Qt::PointingHandCursor);
    setAutoFillBackground(true);
}

void JLabel::setBackground(const QColor &color)
{
    // The letter stays readable on any colour, by the rule that the residue cells follow.
    QPalette colors = palette();
    colors.setColor(backgroundRole(), color);
    colors.setColor(foregroundRole(), letterColorOn(color));
    setPalette(colors);
}

void JLabel::mousePressEvent(QMouseEvent *event)
{
    m_On = !m_On;
    emit switched(m_Index);
    QLabel::mousePressEvent(event);
}

} // namespace ZEP

#include "moc_JLabel.cpp"
