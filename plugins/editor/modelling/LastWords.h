// SPDX-License-Identifier: GPL-3.0-or-later
// What a modelling program said last, as the reason for there being no model.
#pragma once

#include <QString>
#include <QStringList>

namespace ZEP {

struct LastWords
{
    // Of the output on standard error, of which the end is looked at, however long it is.
    explicit LastWords(const QString &errors);

    // One sentence without a full stop; empty when the program said nothing.
    QString reason;
    // The lines that end with it, without empty ones.
    QStringList lines;
};

} // namespace ZEP
