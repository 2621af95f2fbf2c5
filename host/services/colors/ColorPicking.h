// SPDX-License-Identifier: GPL-3.0-or-later
// Dialogs for a color: the color that was picked last, and the user's own colors, which all of them
// offer and which are kept from one run to the next.
#pragma once

#include <QColor>
#include <QString>

class QColorDialog;
class QWidget;

namespace TAMBO::services {

// Begins with the color that was picked last, in whichever dialog, or else with otherwise. Invalid
// when the user cancels.
[[nodiscard]] QColor pickColor(const QColor &otherwise, QWidget *parent, const QString &title);

// For the application, before the first dialog: the toolkit gives all of them the user's own
// colors.
void restoreOwnColors();

// To be called when any dialog for a color closes: keeps what was picked, and the user's own.
void keepColorsOf(const QColorDialog &dialog);

} // namespace TAMBO::services
