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
    if (wanted <= dialog.width() || dialog.maximumWidth() < wanted)
        return;
    // The toolkit puts it over its parent afterwards, unless it has been moved.
    dialog.resize(wanted, dialog.height());
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
