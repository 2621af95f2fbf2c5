// SPDX-License-Identifier: GPL-3.0-or-later
// A line at the lower edge of an alignment window: what is under the pointer.
#pragma once

#include "AlignmentViewObserver.h"
#include "CellEventFilter.h"
#include "CellPlaces.h"

#include <optional>

class QLabel;

namespace companion {

class PlaceLine : public TAMBO::AlignmentViewObserver, public TAMBO::CellEventFilter
{
public:
    explicit PlaceLine(TAMBO::AlignmentWindow &window);
    ~PlaceLine() override;

    void alignmentShown() override;
    void layoutRebuilt() override;
    void scrolled() override;
    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    // Looks again at what is at the place where the pointer was last.
    void show();

    QLabel *m_Text;
    std::optional<QPoint> m_Place;
};

} // namespace companion
