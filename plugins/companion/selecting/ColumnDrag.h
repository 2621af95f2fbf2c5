// SPDX-License-Identifier: GPL-3.0-or-later
// Marks columns by dragging over the header: the column range follows the pointer, and when the
// button is let go the columns are selected, or deselected, as the first one was by the press.
#pragma once

#include "AlignmentViewObserver.h"
#include "CellEventFilter.h"

#include <QPoint>
#include <QTimer>

#include <optional>
#include <utility>

class QMouseEvent;

namespace companion {

// The window has the press and the release all the same: what they mean in one column stays as it
// is. A drag begins with the left button alone, once the pointer is in another column.
class ColumnDrag : public TAMBO::AlignmentViewObserver, public TAMBO::CellEventFilter
{
public:
    explicit ColumnDrag(TAMBO::AlignmentWindow &window);
    ~ColumnDrag() override;

    // The range is that of the press again, and nothing is selected when the button is let go.
    // False when there is no drag.
    bool giveUp();
    [[nodiscard]] bool isDragging() const noexcept { return m_IsDragging; }

    void alignmentShown() override { forget(); }
    void layoutRebuilt() override { forget(); }
    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    void press(TAMBO::AlignmentWindow &window, const QMouseEvent &mouse);
    void moveTo(TAMBO::AlignmentWindow &window, const QPoint &point);
    // While the pointer is beside the columns in sight.
    void scrollOn();
    void markUpTo(TAMBO::AlignmentWindow &window, unsigned long column);
    void release(TAMBO::AlignmentWindow &window);
    void forget();

    // Where the button was pressed, while it is held.
    std::optional<unsigned long> m_From;
    unsigned long m_To = 0;
    bool m_IsDragging = false;
    std::pair<unsigned long, unsigned long> m_Before;
    bool m_Selects = true;
    QPoint m_Pointer;
    QTimer m_Scrolling;
};

} // namespace companion
