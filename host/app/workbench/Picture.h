// SPDX-License-Identifier: GPL-3.0-or-later
// Paints windows side by side into an image file.
#pragma once

#include "Result.h"

#include <QList>
#include <QString>

class QImage;
class QWidget;

namespace TAMBO::app {

// The windows as they look now, from left to right.
[[nodiscard]] QImage sideBySide(const QList<QWidget *> &windows);

[[nodiscard]] Result<void> writePicture(const QString &path, const QImage &image);

} // namespace TAMBO::app
