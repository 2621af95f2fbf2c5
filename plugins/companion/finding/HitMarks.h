// SPDX-License-Identifier: GPL-3.0-or-later
// Frames around what was found, the present hit with a thicker one.
#pragma once

#include "CellOverlay.h"
#include "FindRun.h"

#include <cstddef>
#include <optional>

namespace companion {

class HitMarks : public TAMBO::CellOverlay
{
public:
    explicit HitMarks(TAMBO::AlignmentWindow &window);
    ~HitMarks() override;

    // Of which the hits are framed; null for none. It outlives this, or is taken back.
    void setRun(const FindRun *run);
    void setPresent(std::optional<std::size_t> hit);
    // All that is in sight anew.
    void refresh() const;

    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override;

private:
    const FindRun *m_Run = nullptr;
    std::optional<std::size_t> m_Present;
};

} // namespace companion
