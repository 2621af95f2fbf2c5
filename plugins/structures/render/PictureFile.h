// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>

namespace structures {

// Writes the picture in the format that the file's name ends in, in place of what is there. Gives
// the cause when it fails: what was there stays then.
[[nodiscard]] QString writePictureFile(const QImage &picture, const QString &file);

} // namespace structures
