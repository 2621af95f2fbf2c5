// SPDX-License-Identifier: GPL-3.0-or-later
// The window with the wrapped view of an alignment window.
#pragma once

#include "BaseWindow.h"
#include "WrappedView.h"

namespace companion {

class WrappedWindow : public BaseWindow
{
    Q_OBJECT

public:
    // A child of the window's own widget, and gone with it. Out of sight until it is asked for.
    explicit WrappedWindow(TAMBO::AlignmentWindow &window);
    ~WrappedWindow() override;

    // Into sight and to the front.
    void ask();
    [[nodiscard]] WrappedView &view() noexcept { return *m_View; }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    WrappedView *m_View;
};

} // namespace companion
