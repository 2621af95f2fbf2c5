// SPDX-License-Identifier: GPL-3.0-or-later
// Size and place of windows, remembered from one run to the next.
#pragma once

#include <QSize>
#include <QString>

class QWidget;

namespace TAMBO::services {

class WindowPlaces
{
public:
    // False when nothing is remembered under the key, or nothing that makes sense.
    static bool restore(QWidget &window, const QString &key);
    static void remember(const QWidget &window, const QString &key);
    // A size for a window that asks for the given one: enlarged when it asks for little, never
    // larger than the screen.
    [[nodiscard]] static QSize comfortable(const QSize &asked, const QSize &screen);
};

} // namespace TAMBO::services
