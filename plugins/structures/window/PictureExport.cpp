// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureExport.h"

#include "PictureDialog.h"
#include "PictureFile.h"
#include "StructureScene.h"
#include "StructureView.h"
#include "ViewOverlay.h"

#include "Logger.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QMainWindow>
#include <QMessageBox>
#include <QPainter>
#include <QStatusBar>

#include <algorithm>
#include <new>
#include <utility>

namespace structures {

PictureExport::PictureExport(QMainWindow &window, StructureScene &scene, const StructureView &view,
                             std::function<Palette()> palette)
    : m_Window(window), m_Scene(scene), m_View(view), m_Palette(std::move(palette))
{ }

QImage PictureExport::pictureOf(const QSize &size, bool isTransparent)
{
    const std::shared_ptr<const PictureScene> scene = m_Scene.picture();
    PictureRequest request;
    request.parts = scene->parts;
    request.bounds = scene->bounds;
    request.camera = m_View.goal();
    request.look = m_View.look();
    request.look.isTransparent = isTransparent;
    request.size = size;
    request.perAxis = 2;
    Renderer renderer;
    try {
        if (!renderer.draw(request, m_Palette()))
            return {};
    } catch (const std::bad_alloc &) {
        return {};
    }
    QImage picture = renderer.image();
    if (const ViewOverlay *const overlay = m_View.overlay()) {
        QPainter painter(&picture);
        overlay->paintOver(painter, request.camera, size, request.look,
                           double(size.height()) / std::max(1, m_View.height()));
    }
    return picture;
}

QSize PictureExport::shownSize() const
{
    return (QSizeF(m_View.size()) * m_View.devicePixelRatioF()).toSize();
}

void PictureExport::copy()
{
    const QImage picture = pictureOf(shownSize(), false);
    QApplication::clipboard()->setImage(picture);
    m_Window.statusBar()->showMessage(
        tr("Copied a picture of %1 x %2 pixels").arg(picture.width()).arg(picture.height()), 5000);
}

void PictureExport::save()
{
    PictureDialog dialog(shownSize(), &m_Window);
    if (dialog.exec() != QDialog::Accepted)
        return;
    QString file = QFileDialog::getSaveFileName(&m_Window, tr("Save Picture"), "structures.png",
                                                tr("PNG (*.png);;JPEG (*.jpg);;All files (*)"));
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix().isEmpty())
        file += ".png";
    const QString cause = write(file, dialog.size(), dialog.isTransparent());
    if (cause.isEmpty())
        Logger::Write(tr("Wrote the picture %1").arg(file));
    else
        QMessageBox::warning(&m_Window, tr("Save Picture"), tr("%1: %2").arg(file, cause));
}

QString PictureExport::write(const QString &file, const QSize &size, bool isTransparent)
{
    const QImage picture = pictureOf(size, isTransparent);
    if (picture.isNull())
        return tr("there is not enough memory for %1 x %2 pixels")
            .arg(size.width())
            .arg(size.height());
    return writePictureFile(picture, file);
}

} // namespace structures
