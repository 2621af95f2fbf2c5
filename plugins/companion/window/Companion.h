// SPDX-License-Identifier: GPL-3.0-or-later
// All that this plug-in adds to one alignment window.
#pragma once

#include "GoToBar.h"
#include "NameColumn.h"
#include "PlaceLine.h"
#include "Zoom.h"

#include <QPointer>

namespace companion {

// Goes before the window does.
class Companion
{
public:
    explicit Companion(TAMBO::AlignmentWindow &window);
    ~Companion();
    Companion(const Companion &) = delete;
    Companion &operator=(const Companion &) = delete;

    [[nodiscard]] NameColumn &names() noexcept { return m_Names; }
    [[nodiscard]] Zoom &zoom() noexcept { return m_Zoom; }
    [[nodiscard]] GoToBar &goTo() noexcept { return *m_GoTo; }

private:
    NameColumn m_Names;
    Zoom m_Zoom;
    PlaceLine m_Place;
    // A child of the window.
    QPointer<GoToBar> m_GoTo;
};

} // namespace companion
