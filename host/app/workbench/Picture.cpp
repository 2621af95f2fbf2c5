// SPDX-License-Identifier: GPL-3.0-or-later
#include "Picture.h"

#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QSaveFile>
#include <QWidget>

#include <algorithm>

namespace TAMBO::app {

namespace {

constexpr int kMargin = 16;
const QColor kDesktop(0x4a, 0x5a, 0x6a);

} // namespace

QImage sideBySide(const QList<QWidget *> &windows)
{
    QList<QPixmap> grabs;
    QSize size(kMargin, 0);
    qreal ratio = 1;
    for (QWidget *window : windows) {
        const QPixmap grab = window->grab();
        ratio = std::max(ratio, grab.devicePixelRatio());
        size.rwidth() += window->width() + kMargin;
        size.setHeight(std::max(size.height(), window->height()));
        grabs << grab;
    }
    size.rheight() += 2 * kMargin;

    QImage image(size * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(kDesktop);
    QPainter painter(&image);
    int left = kMargin;
    for (const QPixmap &grab : grabs) {
        painter.drawPixmap(left, kMargin, grab);
        left += int(grab.width() / grab.devicePixelRatio()) + kMargin;
    }
    return image;
}

Result<void> writePicture(const QString &path, const QImage &image)
{
    QSaveFile file(path);
    QByteArray format = QFileInfo(path).suffix().toLatin1().toLower();
    if (!QImageWriter::supportedImageFormats().contains(format))
        format = "png";
    if (file.open(QIODevice::WriteOnly)) {
        QImageWriter writer(&file, format);
        if (writer.write(image) && file.commit())
            return {};
        if (file.error() == QFileDevice::NoError)
            return Failure{
                FailureKind::System, writer.errorString().toStdString(), {path.toStdString()}};
    }
    return Failure{FailureKind::System, file.errorString().toStdString(), {path.toStdString()}};
}

} // namespace TAMBO::app
