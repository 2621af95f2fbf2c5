// SPDX-License-Identifier: GPL-3.0-or-later
// A frame around the place that was gone to, for a moment.
#pragma once

#include "CellOverlay.h"
#include "CellPlaces.h"

#include <QTimer>

namespace companion {

class TargetMark : public TAMBO::CellOverlay
{
public:
    explicit TargetMark(TAMBO::AlignmentWindow &window);
    ~TargetMark() override;

    void show(const TAMBO::CellBlock &cells);
    void hide();
    // Empty when there is none.
    [[nodiscard]] const TAMBO::CellBlock &shown() const noexcept { return m_Cells; }

    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override;

private:
    TAMBO::CellBlock m_Cells;
    QTimer m_End;
};

} // namespace companion
