// SPDX-License-Identifier: GPL-3.0-or-later
#include "BaseWindow.h"

#include "UndoActions.h"
#include "WindowPlaces.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QMetaObject>
#include <QPointer>
#include <QScreen>
#include <QShowEvent>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <vector>

using namespace TAMBO::services;

namespace {

// By how much windows of one key are shifted, so that none hides another.
constexpr QPoint kAside(28, 28);
// As much of a window can be taken hold of.
constexpr QSize kCaption(160, 60);

// A modal dialog that is asked on somebody's stack must not go with its parent: neither while it
// waits for an answer, nor when it has one and is still on its way back. A dialog that deletes
// itself is on no stack.
void endWaitingDialogs(const QWidget &window)
{
    std::vector<QPointer<QDialog>> asked;
    for (QDialog *dialog : window.findChildren<QDialog *>()) {
        const bool mayWait = dialog->isVisible() || dialog->parent() == &window;
        if (mayWait && dialog->isModal() && !dialog->testAttribute(Qt::WA_DeleteOnClose))
            asked.emplace_back(dialog);
    }
    for (const QPointer<QDialog> &dialog : asked) {
        if (dialog && dialog->isVisible())
            dialog->done(QDialog::Rejected);
        if (dialog)
            dialog->setParent(nullptr, dialog->windowFlags());
    }
}

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
    // Nobody's choice yet; what the layout asks for is none either.
    setAttribute(Qt::WA_Resized, false);
    if (fixedSize)
        setFixedSize(size);
    addAction(UndoActions::undo());
    addAction(UndoActions::redo());
}

BaseWindow::~BaseWindow()
{
    endWaitingDialogs(*this);
}

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
    endWaitingDialogs(*this);
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
            endWaitingDialogs(*this);
            Kill(this);
        },
        Qt::QueuedConnection);
}

// A window system that has heard of another size before may tell of that one late, and the layout
// then makes it the size of the window.
void BaseWindow::setVisible(bool visible)
{
    if (visible)
        placeOnce();
    QMainWindow::setVisible(visible);
}

// A plug-in that was built with an older kit shows its windows without the above.
void BaseWindow::showEvent(QShowEvent *event)
{
    placeOnce();
    QMainWindow::showEvent(event);
}

void BaseWindow::placeOnce()
{
    if (m_Placed)
        return;
    m_Placed = true;
    choosePlace();
}

void BaseWindow::choosePlace()
{
    const bool restored = !m_FixedSize && WindowPlaces::restore(*this, m_PlaceKey);
    // A size set between construction and showing is somebody's choice.
    if (!restored && !m_FixedSize && !testAttribute(Qt::WA_Resized))
        resize(WindowPlaces::comfortable(m_FirstSize, screen()->availableSize()));
    // Else the toolkit would fit it to its contents.
    setAttribute(Qt::WA_Resized);
    if (!isMaximized() && !isFullScreen())
        stepAsideOfTwins();
}

// One that nobody has placed begins where another one is: the window manager might put it there.
void BaseWindow::stepAsideOfTwins()
{
    std::vector<const QWidget *> twins;
    for (const QWidget *const other : QApplication::topLevelWidgets()) {
        const auto *twin = qobject_cast<const BaseWindow *>(other);
        if (twin != nullptr && twin != this && twin->isVisible() && !twin->isMinimized() &&
            twin->m_PlaceKey == m_PlaceKey)
            twins.push_back(twin);
    }
    if (twins.empty())
        return;
    // Window managers put a window some pixels beside where it wants to be.
    const auto isTaken = [&twins](const QPoint &place) {
        return std::any_of(twins.begin(), twins.end(), [&place](const QWidget *twin) {
            const QPoint distance = twin->pos() - place;
            return std::abs(distance.x()) < kAside.x() && std::abs(distance.y()) < kAside.y();
        });
    };
    const bool isPlaced = testAttribute(Qt::WA_Moved);
    const QRect room = (isPlaced ? this : twins.front())->screen()->availableGeometry();
    const QPoint begin = isPlaced ? pos() : twins.front()->pos();
    const QRect captions = room.adjusted(0, 0, -kCaption.width(), -kCaption.height());
    // At the right edge of the screen to the left, at the lower one upwards.
    const std::array<QPoint, 4> ways = {kAside, QPoint(-kAside.x(), kAside.y()),
                                        QPoint(kAside.x(), -kAside.y()), -kAside};
    std::optional<QPoint> found;
    QPoint place = begin;
    for (std::size_t way = 0; way < ways.size() && isTaken(begin) && !found; ++way) {
        QPoint tried = begin;
        while (isTaken(tried))
            tried += ways[way];
        if (room.contains(QRect(tried, size())))
            found = tried;
        // Where none fits, its caption is seen at least.
        if (found || (place == begin && captions.contains(tried)))
            place = tried;
    }
    if (place != pos() || !isPlaced)
        move(place);
}

void BaseWindow::savePlace() const
{
    if (m_Placed)
        WindowPlaces::remember(*this, m_PlaceKey);
}
