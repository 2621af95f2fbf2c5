// SPDX-License-Identifier: GPL-3.0-or-later
#include "NamePresses.h"

#include "AlignmentWindow.h"
#include "NameText.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

#include <utility>

namespace companion {

namespace {

// Letters may reach beyond their place by a little.
constexpr int kOverhang = 2;

} // namespace

NamePresses::NamePresses(TAMBO::AlignmentWindow &window)
    : CellEventFilter(window, TAMBO::WindowArea::Names)
{
    m_Soon.setSingleShot(true);
    m_Soon.callOnTimeout([this] { sendPress(); });
}

NamePresses::~NamePresses() = default;

std::optional<NamePresses::Sent> NamePresses::onName(const QMouseEvent &mouse) const
{
    const TAMBO::AlignmentWindow &window = *this->window();
    const std::optional<QFont> font = window.nameFont();
    const std::optional<unsigned long> row = window.rowAt(int(mouse.position().y()));
    // Beside cells of another size a name is all of its place.
    if (!font || !row || window.alignment() == nullptr || window.cellSize() != window.ownCellSize())
        return std::nullopt;
    const QFontMetrics metrics(*font);
    const int right = window.nameWidth() - marginOfNames(window);
    const int mark = metrics.horizontalAdvance(kUnselectedMark);
    const int left =
        right - mark - metrics.horizontalAdvance(shownName(*window.alignment(), *row)) - kOverhang;
    if (mouse.position().x() >= left)
        return std::nullopt;
    const int onMark = right - mark / 2;
    const QPointF shift(onMark - mouse.position().x(), 0);
    return Sent{mouse.type(),   mouse.position() + shift, mouse.globalPosition() + shift,
                mouse.button(), mouse.buttons(),          mouse.modifiers()};
}

bool NamePresses::send(const Sent &sent)
{
    const QPointer<QTimer> isThere(&m_Soon);
    QMouseEvent mouse(sent.type, sent.place, sent.place, sent.global, sent.button, sent.buttons,
                      sent.keys);
    m_IsSending = true;
    QCoreApplication::sendEvent(window()->areaWidget(TAMBO::WindowArea::Names), &mouse);
    if (isThere == nullptr)
        return false;
    m_IsSending = false;
    return true;
}

bool NamePresses::sendPress()
{
    m_Soon.stop();
    const std::optional<Sent> press = std::exchange(m_Press, std::nullopt);
    return !press || window() == nullptr || send(*press);
}

bool NamePresses::handle(TAMBO::AlignmentWindow &, TAMBO::WindowArea, QEvent &event)
{
    if (m_IsSending)
        return false;
    const bool isPress =
        event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
    const bool isRelease = event.type() == QEvent::MouseButtonRelease;
    if (!isPress && !isRelease && event.type() != QEvent::MouseMove)
        return false;
    const auto &mouse = static_cast<const QMouseEvent &>(event);
    if (isPress) {
        if (mouse.buttons() != Qt::MouseButtons(mouse.button()))
            return false;
        m_Press = onName(mouse);
        if (m_Press)
            m_Soon.start(0);
        return m_Press.has_value();
    }
    const bool wasWaiting = m_Press.has_value();
    if (wasWaiting && !sendPress())
        return true;
    if (isRelease) {
        // A row that is let go beside a short name. What the window gets behind it means nothing.
        if (const std::optional<Sent> release = onName(mouse))
            send(*release);
    }
    return wasWaiting;
}

} // namespace companion
