// SPDX-License-Identifier: GPL-3.0-or-later
#include "LineLabel.h"

#include <QLabel>

namespace companion {

namespace {

constexpr int kLineMargin = 6;

} // namespace

QLabel *makeLineLabel()
{
    auto *const label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(kLineMargin, 0, kLineMargin, 0);
    // Else a tool bar would make it as wide as its text.
    label->setMinimumWidth(1);
    label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    return label;
}

} // namespace companion
