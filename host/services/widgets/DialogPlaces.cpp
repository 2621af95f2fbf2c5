// SPDX-License-Identifier: GPL-3.0-or-later
#include "DialogPlaces.h"

#include "BaseDialog.h"
#include "WindowPlaces.h"

#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QProgressDialog>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace TAMBO::services {

namespace {

// Window managers put a window some pixels beside where it wants to be.
constexpr int kBesideOfWanted = 48;

// Where a dialog was put when it came up.
class ComeUp : public QObject
{
public:
    explicit ComeUp(QDialog &dialog) : QObject(&dialog) { }

    static ComeUp *of(const QDialog &dialog)
    {
        for (QObject *child : dialog.children())
            if (auto *const found = dynamic_cast<ComeUp *>(child))
                return found;
        return nullptr;
    }

    QString key;
    QPointer<QWidget> caller;
    QPoint offset;
    QSize size;
};

bool canCallDialogs(const QWidget *window)
{
    return window != nullptr && window->isVisible() && !window->isMinimized();
}

QRect callersPlace(const QWidget *caller)
{
    if (!canCallDialogs(caller))
        return QGuiApplication::primaryScreen()->availableGeometry();
    // While the window manager puts the frame around it, the frame may be said to be a point.
    return caller->frameGeometry().united(caller->geometry());
}

QPoint inRoom(const QPoint &place, const QSize &size, const QRect &room)
{
    const auto clamp = [](int at, int least, int most) {
        return std::max(least, std::min(at, most));
    };
    return {clamp(place.x(), room.left(), room.right() + 1 - size.width()),
            clamp(place.y(), room.top(), room.bottom() + 1 - size.height())};
}

bool isDialogRemembered(const QDialog &dialog)
{
    return qobject_cast<const QMessageBox *>(&dialog) == nullptr &&
           qobject_cast<const QProgressDialog *>(&dialog) == nullptr;
}

// Of one kind: what a title names may be another object the next time.
QString dialogKey(const QDialog &dialog)
{
    return QStringLiteral("%1/%2").arg(QString::fromLatin1(dialog.metaObject()->className()),
                                       dialog.objectName());
}

// The toolkit's own are as large as what they ask for.
bool hasSizeOfItsOwn(const QDialog &dialog)
{
    return !dialog.objectName().isEmpty() || dialog.metaObject()->className()[0] != 'Q' ||
           dialog.inherits("QFileDialog");
}

} // namespace

DialogPlaces::DialogPlaces()
{
    qApp->installEventFilter(this);
}

DialogPlaces::~DialogPlaces() = default;

void DialogPlaces::comeUp(QDialog &dialog, QWidget *caller, const QString &key)
{
    ComeUp *shown = ComeUp::of(dialog);
    if (shown == nullptr)
        shown = new ComeUp(dialog);
    shown->key = key;
    shown->caller = canCallDialogs(caller) ? caller : nullptr;
    const QRect place = callersPlace(caller);
    const std::optional<QRect> kept = key.isEmpty() ? std::nullopt : WindowPlaces::dialogPlace(key);
    const QScreen *const screen =
        shown->caller != nullptr ? caller->screen() : QGuiApplication::primaryScreen();
    // Its own frame is not known before it has been shown.
    const QSize frame = shown->caller != nullptr ? place.size() - caller->size() : QSize(0, 0);
    // It may have been made larger on another screen, and its buttons are at its end.
    if (kept && !kept->size().isEmpty())
        dialog.resize(kept->size()
                          .boundedTo(screen->availableSize() - frame)
                          .expandedTo(dialog.minimumSizeHint()));
    const QPoint middle =
        QRect(QPoint(0, 0), place.size()).center() - QRect(QPoint(0, 0), dialog.size()).center();
    const QPoint wanted = place.topLeft() + (kept ? kept->topLeft() : middle);
    const QPoint at = inRoom(wanted, dialog.size() + frame, screen->availableGeometry());
    dialog.move(at);
    shown->offset = at - place.topLeft();
    shown->size = dialog.size();
}

void DialogPlaces::leave(const QDialog &dialog)
{
    const ComeUp *const shown = ComeUp::of(dialog);
    if (shown == nullptr || shown->key.isEmpty() || dialog.isMaximized() || dialog.isFullScreen())
        return;
    const QPoint offset = dialog.pos() - callersPlace(shown->caller).topLeft();
    const QPoint moved = offset - shown->offset;
    const bool isMoved = std::max(std::abs(moved.x()), std::abs(moved.y())) > kBesideOfWanted;
    const bool isResized = dialog.size() != shown->size;
    if (isMoved || isResized)
        WindowPlaces::rememberDialog(
            shown->key, {isMoved ? offset : shown->offset,
                         isResized || hasSizeOfItsOwn(dialog) ? dialog.size() : QSize()});
}

QWidget *DialogPlaces::callerOf(const QDialog &dialog) const
{
    if (dialog.parentWidget() != nullptr)
        return dialog.parentWidget()->window();
    for (QWidget *const window : {QApplication::activeWindow(), m_LastActive.data()})
        if (window != &dialog && canCallDialogs(window))
            return window;
    return nullptr;
}

bool DialogPlaces::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::WindowActivate && watched->isWidgetType()) {
        auto *const window = static_cast<QWidget *>(watched);
        if (window->windowType() == Qt::Window)
            m_LastActive = window;
        return false;
    }
    if ((type != QEvent::Show && type != QEvent::Hide) || event->spontaneous())
        return false;
    auto *const dialog = qobject_cast<QDialog *>(watched);
    if (dialog == nullptr)
        return false;
    const bool remembersItself = qobject_cast<BaseDialog *>(dialog) != nullptr;
    if (type == QEvent::Hide) {
        if (!remembersItself)
            leave(*dialog);
        return false;
    }
    QWidget *const caller = callerOf(*dialog);
    // A box finds its size while it is shown, and the toolkit puts it over its parent.
    if (qobject_cast<QMessageBox *>(dialog) != nullptr && dialog->parentWidget() != nullptr)
        dialog->setAttribute(Qt::WA_Moved, false);
    else if (!remembersItself)
        comeUp(*dialog, caller, isDialogRemembered(*dialog) ? dialogKey(*dialog) : QString());
    // So that the window manager keeps it above.
    if (dialog->parentWidget() == nullptr && caller != nullptr && dialog->windowHandle() != nullptr)
        dialog->windowHandle()->setTransientParent(caller->windowHandle());
    return false;
}

} // namespace TAMBO::services
