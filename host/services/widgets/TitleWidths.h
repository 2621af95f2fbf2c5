// SPDX-License-Identifier: GPL-3.0-or-later
// Makes dialogs, whoever opens them, as wide as their titles, since frames cut a title off that has
// no room. The toolkit does so with message boxes alone.
#pragma once

#include <QObject>

namespace TAMBO::services {

class TitleWidths : public QObject
{
public:
    using QObject::QObject;

    // For all dialogs of the program, once; the application owns it.
    static void install();
    // That the title takes in a frame, with the frame's icon and buttons.
    [[nodiscard]] static int widthFor(const QString &title);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace TAMBO::services
