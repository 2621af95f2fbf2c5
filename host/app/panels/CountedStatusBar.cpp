// SPDX-License-Identifier: GPL-3.0-or-later
#include "CountedStatusBar.h"

#include "PlainText.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QSizeGrip>
#include <QStyleOption>

#include <algorithm>

namespace TAMBO::app {

namespace {

// Between message and widgets, and at the ends of the line.
constexpr int kMessageMargin = 6;
// A message and a count that stand closer than this read as one text.
constexpr int kGapBeforeCount = 16;

} // namespace

CountedStatusBar::CountedStatusBar(QWidget *parent) : QStatusBar(parent), m_Count(new QLabel)
{
    m_Count->setObjectName(QStringLiteral("ObjectCount"));
    addPermanentWidget(m_Count);
    connect(this, &QStatusBar::messageChanged, this, [this](const QString &text) {
        setToolTip(plainToolTip(text));
        makeRoom();
    });
}

void CountedStatusBar::addNotice(QWidget *notice)
{
    insertPermanentWidget(int(m_Notices.size()), notice);
    m_Notices << notice;
}

void CountedStatusBar::setCount(const QString &text)
{
    m_Count->setText(text);
    makeRoom();
}

QString CountedStatusBar::shownMessage() const
{
    return fontMetrics().elidedText(currentMessage(), Qt::ElideRight, messageArea().width(),
                                    Qt::TextSingleLine);
}

// Notices come and go, and grow with their texts.
bool CountedStatusBar::event(QEvent *event)
{
    const bool isTaken = QStatusBar::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize ||
        event->type() == QEvent::FontChange) {
        makeRoom();
        update();
    }
    return isTaken;
}

// As the base class does, which cuts a message in the middle of a letter.
void CountedStatusBar::paintEvent(QPaintEvent *event)
{
    const QString shown = shownMessage();
    if (shown == currentMessage()) {
        QStatusBar::paintEvent(event);
        return;
    }
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_PanelStatusBar, &option, &painter, this);
    painter.setPen(palette().windowText().color());
    painter.drawText(messageArea(), Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine,
                     shown);
}

int CountedStatusBar::roomBesideNotices() const
{
    int room = width() - 2 * kMessageMargin;
    for (const QWidget *notice : m_Notices)
        if (!notice->isHidden())
            room -= notice->sizeHint().width() + kMessageMargin;
    const auto *grip = findChild<QSizeGrip *>(QString(), Qt::FindDirectChildrenOnly);
    if (grip != nullptr && grip->isVisible())
        room -= grip->width();
    return room;
}

QRect CountedStatusBar::messageArea() const
{
    const QRect inner = rect().adjusted(kMessageMargin, 0, -kMessageMargin, 0);
    int room = roomBesideNotices();
    if (!m_Count->isHidden())
        room -= m_Count->sizeHint().width() + kGapBeforeCount;
    return QStyle::alignedRect(layoutDirection(), Qt::AlignLeading | Qt::AlignVCenter,
                               {std::max(0, room), inner.height()}, inner);
}

// What is said is worth more than how much is loaded.
void CountedStatusBar::makeRoom()
{
    const int needed = fontMetrics().horizontalAdvance(currentMessage()) + kGapBeforeCount +
                       m_Count->sizeHint().width();
    m_Count->setVisible(currentMessage().isEmpty() || needed <= roomBesideNotices());
}

} // namespace TAMBO::app

#include "moc_CountedStatusBar.cpp"
