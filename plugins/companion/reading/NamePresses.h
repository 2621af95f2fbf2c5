// SPDX-License-Identifier: GPL-3.0-or-later
// The empty place left of a short name, which stands at the right: a press there is one on the
// name.
#pragma once

#include "CellEventFilter.h"

#include <QEvent>
#include <QPointF>
#include <QTimer>

#include <optional>

class QMouseEvent;

namespace companion {

// The window itself knows the name's letters alone. A press beside them is taken from it, and sent
// again as one on them as soon as this has returned; so the window has all that follows for itself.
class NamePresses : public TAMBO::CellEventFilter
{
public:
    explicit NamePresses(TAMBO::AlignmentWindow &window);
    ~NamePresses() override;

    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    struct Sent
    {
        QEvent::Type type = QEvent::None;
        QPointF place;
        QPointF global;
        Qt::MouseButton button = Qt::NoButton;
        Qt::MouseButtons buttons;
        Qt::KeyboardModifiers keys;
    };

    // Where the same would be done to the name; nothing when it is at the name, or there is none.
    [[nodiscard]] std::optional<Sent> onName(const QMouseEvent &mouse) const;
    // False when this has gone meanwhile.
    bool send(const Sent &sent);
    bool sendPress();

    std::optional<Sent> m_Press;
    QTimer m_Soon;
    bool m_IsSending = false;
};

} // namespace companion
