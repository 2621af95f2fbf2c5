// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureFile.h"

#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>

namespace structures {

QString writePictureFile(const QImage &picture, const QString &file)
{
    const QByteArray format = QFileInfo(file).suffix().toLower().toLatin1();
    if (!QImageWriter::supportedImageFormats().contains(format))
        return QStringLiteral("a picture's name ends in .png, .jpg or another format of pictures");
    QSaveFile place(file);
    if (!place.open(QIODevice::WriteOnly))
        return place.errorString();
    QImageWriter writer(&place, format);
    if (!writer.write(picture))
        return place.error() != QFileDevice::NoError ? place.errorString() : writer.errorString();
    return place.commit() ? QString() : place.errorString();
}

} // namespace structures
