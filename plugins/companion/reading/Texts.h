// SPDX-License-Identifier: GPL-3.0-or-later
// Texts for people, outside of classes that have a translation of their own.
#pragma once

#include <QCoreApplication>
#include <QString>

namespace companion {

[[nodiscard]] inline QString tr(const char *text)
{
    return QCoreApplication::translate("companion", text);
}

} // namespace companion
