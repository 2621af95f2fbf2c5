// SPDX-License-Identifier: GPL-3.0-or-later
// Cells as large as the user wants them: by the wheel, around the pointer, and by commands, around
// the middle of what is to be seen. The size stays for the windows that are opened later.
#pragma once

#include "AlignmentViewObserver.h"
#include "CellEventFilter.h"

#include <QPoint>
#include <QTimer>

namespace companion {

class Zoom : public TAMBO::AlignmentViewObserver, public TAMBO::CellEventFilter
{
public:
    explicit Zoom(TAMBO::AlignmentWindow &window);
    ~Zoom() override;

    void in();
    void out();
    // The window's own size.
    void reset();
    // So small that all columns, or all rows as well, are seen, as far as cells can be, and no
    // larger than the window's own.
    void showAllColumns();
    void showAll();

    void alignmentShown() override;
    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    [[nodiscard]] TAMBO::AlignmentWindow *window() const noexcept;
    [[nodiscard]] QPoint middle() const;
    void step(int steps, const QPoint &fixedPoint);
    void fit(bool hasAllRows);
    void keepSize() const;
    void setSize(const QSize &size, const QPoint &fixedPoint);

    // Turning the wheel is many steps, and only the last one is worth keeping.
    QTimer m_Keeping;
    // Of the wheel, what is less than a step.
    int m_Turned = 0;
    bool m_HasBegun = false;
};

} // namespace companion
