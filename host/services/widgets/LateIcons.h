// SPDX-License-Identifier: GPL-3.0-or-later
// The standard buttons of a dialog. Their icons are looked for when the dialog is to be seen: in
// the folders of a desktop's theme that takes longer than to make all the rest of it.
#pragma once

#include <QDialogButtonBox>
#include <QObject>

namespace TAMBO::services {

class LateIcons : public QObject
{
    Q_OBJECT

public:
    // Belongs to the box, which has not been shown.
    explicit LateIcons(QDialogButtonBox &box);

    // The buttons, in this order, as the box adds them itself. They have their final size.
    void add(QDialogButtonBox::StandardButtons which);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setIcons();

    QDialogButtonBox &m_Box;
    bool m_AreSet = false;
};

} // namespace TAMBO::services
