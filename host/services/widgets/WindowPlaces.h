// SPDX-License-Identifier: GPL-3.0-or-later
// Size and place of windows, remembered from one run to the next.
#pragma once

#include <QRect>
#include <QSize>
#include <QString>

#include <optional>

class QWidget;

namespace TAMBO::services {

class WindowPlaces
{
public:
    // False when nothing is remembered under the key, or nothing that makes sense.
    static bool restore(QWidget &window, const QString &key);
    static void remember(const QWidget &window, const QString &key);

    // The same of dialogs: the place relative to the window that it is called from. An empty size
    // is that which the dialog asks for.
    [[nodiscard]] static std::optional<QRect> dialogPlace(const QString &key);
    static void rememberDialog(const QString &key, const QRect &place);

    // A size for a window that asks for the given one: enlarged when it asks for little, never
    // larger than the screen.
    [[nodiscard]] static QSize comfortable(const QSize &asked, const QSize &screen);
};

} // namespace TAMBO::services
