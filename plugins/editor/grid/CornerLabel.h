// SPDX-License-Identifier: GPL-3.0-or-later
// The label at the top left: a name that is too long for its place is shortened in the middle, so
// that it never widens the panels beside the grid.
#pragma once

#include <QLabel>

#include <functional>

namespace ZEP {

class CornerLabel : public QLabel
{
public:
    explicit CornerLabel(QWidget *parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    // Paints over the name: a rectangle, in the label's coordinates. Null for nothing.
    void setForeground(std::function<void(QPainter &, const QRect &)> paint);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::function<void(QPainter &, const QRect &)> m_Foreground;
};

} // namespace ZEP
