// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QImage>
#include <QSize>

#include <functional>

class QMainWindow;

namespace structures {

class StructureScene;
class StructureView;
struct Palette;

// What is shown as a file, or on the clipboard.
class PictureExport final
{
    Q_DECLARE_TR_FUNCTIONS(PictureExport)

public:
    // palette: that of the scene. All of them outlive this.
    PictureExport(QMainWindow &window, StructureScene &scene, const StructureView &view,
                  std::function<Palette()> palette);

    // Asks for size and file.
    void save();
    // In the format that the file's name ends in. Gives the cause when it fails.
    [[nodiscard]] QString write(const QString &file, const QSize &size, bool isTransparent);
    void copy();

private:
    // Null where there is not enough memory for it.
    [[nodiscard]] QSize shownSize() const;
    [[nodiscard]] QImage pictureOf(const QSize &size, bool isTransparent);

    QMainWindow &m_Window;
    StructureScene &m_Scene;
    const StructureView &m_View;
    std::function<Palette()> m_Palette;
};

} // namespace structures
