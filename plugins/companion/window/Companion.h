// SPDX-License-Identifier: GPL-3.0-or-later
// All that this plug-in adds to one alignment window.
#pragma once

#include "GoToBar.h"
#include "NameColumn.h"
#include "PlaceLine.h"
#include "Zoom.h"

#include <QObject>

class QMenu;

namespace companion {

class Companion : public QObject, public TAMBO::CellEventFilter
{
    Q_OBJECT

public:
    explicit Companion(TAMBO::AlignmentWindow &window);
    ~Companion() override;

    [[nodiscard]] NameColumn &names() noexcept { return m_Names; }
    [[nodiscard]] Zoom &zoom() noexcept { return m_Zoom; }
    [[nodiscard]] GoToBar &goTo() noexcept { return *m_GoTo; }

    // The menu of the corner.
    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    NameColumn m_Names;
    Zoom m_Zoom;
    PlaceLine m_Place;
    // A child of the window.
    GoToBar *m_GoTo;
};

} // namespace companion
