// SPDX-License-Identifier: GPL-3.0-or-later
#include "TitleWidths.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QFontMetrics>
#include <QScreen>

#include <algorithm>

namespace TAMBO::services {

namespace {

// Icon and buttons of a frame, and the room around them.
constexpr int kFrameParts = 120;
constexpr double kMostOfScreen = 0.9;

void widenToTitle(QDialog &dialog)
{
    int wanted = TitleWidths::widthFor(dialog.windowTitle());
    if (const QScreen *const screen = dialog.screen())
        wanted = std::min(wanted, int(kMostOfScreen * screen->availableGeometry().width()));
    const int missing = wanted - dialog.width();
    if (missing <= 0 || dialog.maximumWidth() < wanted)
        return;
    dialog.resize(wanted, dialog.height());
    // Where the toolkit has put it, it stays in the middle.
    if (dialog.parentWidget() != nullptr && !dialog.testAttribute(Qt::WA_Moved))
        dialog.setGeometry(dialog.geometry().translated(-missing / 2, 0));
}

} // namespace

void TitleWidths::install()
{
    if (qobject_cast<QApplication *>(QCoreApplication::instance()) != nullptr)
        qApp->installEventFilter(new TitleWidths(qApp));
}

int TitleWidths::widthFor(const QString &title)
{
    QFont font = QApplication::font("QMdiSubWindowTitleBar");
    font.setBold(true);
    return QFontMetrics(font).horizontalAdvance(title) + kFrameParts;
}

bool TitleWidths::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && !event->spontaneous()) {
        auto *const dialog = qobject_cast<QDialog *>(watched);
        if (dialog != nullptr && dialog->isWindow())
            widenToTitle(*dialog);
    }
    return false;
}

} // namespace TAMBO::services
