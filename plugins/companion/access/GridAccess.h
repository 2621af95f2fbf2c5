// SPDX-License-Identifier: GPL-3.0-or-later
// Tells assistive technology of the cells of one alignment window, and of what becomes of them.
#pragma once

#include "AlignmentViewObserver.h"
#include "Grid.h"
#include "Subscriber.h"

#include <QTimer>

#include <functional>

namespace companion {

// While no client listens nothing is made and nothing is told.
class GridAccess : public QObject,
                   public TAMBO::AlignmentViewObserver,
                   public Subscriber,
                   private QAccessible::ActivationObserver
{
    Q_OBJECT

public:
    using Tell = std::function<void(QAccessibleEvent &)>;

    // tell: how clients hear of something.
    explicit GridAccess(TAMBO::AlignmentWindow &window, Tell tell = tellClients);
    // The interfaces of the cells go; the widget is then what it is without this.
    ~GridAccess() override;

    // The cell cursor is there; nothing when there is none.
    void setCursor(const std::optional<TAMBO::CellIndex> &cell);
    [[nodiscard]] const Grid &grid() const noexcept { return *m_Grid; }

    void alignmentShown() override;
    void layoutRebuilt() override;
    void scrolled() override;
    void commUpdate() override;
    void commAdd() override { }
    void commDelete() override { }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static void tellClients(QAccessibleEvent &event);
    void accessibilityActiveChanged(bool isActive) override { m_IsHeard = isActive; }
    void tell(QAccessible::Event type);
    void tellFocus();

    std::shared_ptr<Grid> m_Grid;
    Tell m_Tell;
    bool m_IsHeard;
    // Somebody may select many times a second.
    QTimer m_Selecting;
};

} // namespace companion
