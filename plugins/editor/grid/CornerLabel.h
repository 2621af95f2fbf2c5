// SPDX-License-Identifier: GPL-3.0-or-later
// The label at the top left: a name that is too long for its place is shortened in the middle, so
// that it never widens the panels beside the grid.
#pragma once

#include <QLabel>

namespace ZEP {

class CornerLabel : public QLabel
{
public:
    explicit CornerLabel(QWidget *parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace ZEP
