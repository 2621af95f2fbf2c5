// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QSize>

class QCheckBox;
class QSpinBox;

namespace structures {

// How large a picture is to be that has the shape of what is shown, and on what ground.
class PictureDialog final : public QDialog
{
    Q_OBJECT

public:
    // In pixels, of either side.
    static constexpr int kMost = 20000;

    // shown: what is on the screen, in pixels.
    PictureDialog(const QSize &shown, QWidget *parent);

    [[nodiscard]] QSize size() const;
    [[nodiscard]] bool isTransparent() const;

private:
    void follow(const QSpinBox &changed, QSpinBox &other, double ratio);

    QSpinBox *m_Width;
    QSpinBox *m_Height;
    QCheckBox *m_Transparent;
};

} // namespace structures
