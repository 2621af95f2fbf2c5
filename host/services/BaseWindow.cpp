// SPDX-License-Identifier: GPL-3.0-or-later
#include "BaseWindow.h"

#include "UndoActions.h"
#include "WindowPlaces.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMetaObject>
#include <QPointer>
#include <QScreen>
#include <QShowEvent>

using namespace TAMBO::services;

namespace {

// By how much windows of one key are shifted, so that none hides another.
constexpr QPoint kAside(28, 28);

} // namespace

BaseWindow::BaseWindow(const QString &caption, const QSize &size, const QString &placeKey,
                       bool fixedSize, QWidget *parent, const char *name)
    : QMainWindow(parent),
      m_PlaceKey(placeKey.isNull() ? caption : placeKey),
      m_FirstSize(size),
      m_FixedSize(fixedSize)
{
    setWindowTitle(caption);
    setObjectName(QString::fromUtf8(name));
    resize(size);
    if (fixedSize)
        setFixedSize(size);
    addAction(UndoActions::undo());
    addAction(UndoActions::redo());
}

BaseWindow::~BaseWindow() = default;

void BaseWindow::setFont(const QFont &font)
{
    QMainWindow::setFont(font);
}

void BaseWindow::Kill(BaseWindow *) { }

bool BaseWindow::close(bool alsoDelete)
{
    const QPointer<BaseWindow> self(this);
    m_Closing = true;
    const bool closed = QMainWindow::close();
    if (!self)
        return true;
    m_Closing = false;
    if (!closed)
        return false;
    m_KillPending = false;
    Kill(this);
    if (alsoDelete)
        delete self.data();
    return true;
}

void BaseWindow::closeEvent(QCloseEvent *event)
{
    savePlace();
    event->accept();
    if (m_Closing || m_KillPending)
        return;
    // The toolkit is still busy with this window, so that deleting it has to wait. The call dies
    // with the window when somebody else deletes it first.
    m_KillPending = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!m_KillPending)
                return;
            m_KillPending = false;
            Kill(this);
        },
        Qt::QueuedConnection);
}

void BaseWindow::showEvent(QShowEvent *event)
{
    if (!m_Placed) {
        m_Placed = true;
        choosePlace();
    }
    QMainWindow::showEvent(event);
}

void BaseWindow::choosePlace()
{
    const bool restored = !m_FixedSize && WindowPlaces::restore(*this, m_PlaceKey);
    // A size set between construction and showing is somebody's choice, unless it was the layout's,
    // which lets no window be smaller than its contents.
    const bool isOwnSize =
        size() == m_FirstSize || size() == m_FirstSize.expandedTo(minimumSizeHint());
    if (!restored && !m_FixedSize && isOwnSize)
        resize(WindowPlaces::comfortable(m_FirstSize, screen()->availableSize()));
    if (!isMaximized() && !isFullScreen())
        stepAsideOfTwins();
}

void BaseWindow::stepAsideOfTwins()
{
    const auto isTaken = [this](QPoint place) {
        const QWidgetList windows = QApplication::topLevelWidgets();
        return std::any_of(windows.begin(), windows.end(), [&](QWidget *other) {
            const auto *twin = qobject_cast<const BaseWindow *>(other);
            return twin != nullptr && twin != this && twin->isVisible() &&
                   twin->m_PlaceKey == m_PlaceKey && twin->pos() == place;
        });
    };
    const QRect room = screen()->availableGeometry();
    QPoint place = pos();
    while (isTaken(place) && room.contains(QRect(place + kAside, size())))
        place += kAside;
    if (place != pos())
        move(place);
}

void BaseWindow::savePlace() const
{
    if (m_Placed)
        WindowPlaces::remember(*this, m_PlaceKey);
}
