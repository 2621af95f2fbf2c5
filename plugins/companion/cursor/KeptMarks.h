// SPDX-License-Identifier: GPL-3.0-or-later
// The kept columns of the alignment that a window shows: their mark above and over the cells, and
// choosing them.
#pragma once

#include "AlignmentViewObserver.h"
#include "CellEventFilter.h"
#include "CellOverlay.h"
#include "KeptRegion.h"
#include "Subscriber.h"
#include "Telling.h"

#include <memory>
#include <optional>

namespace companion {

class CellCursor;

class KeptMarks : public TAMBO::AlignmentViewObserver,
                  public TAMBO::CellOverlay,
                  public TAMBO::CellEventFilter,
                  public Subscriber
{
public:
    // The cursor is made before this and goes behind it.
    KeptMarks(TAMBO::AlignmentWindow &window, CellCursor &cursor, Telling telling);
    ~KeptMarks() override;

    // The columns of the block; without one those of the alignment's range.
    void keep();
    void keepNoLonger();

    void alignmentShown() override;
    void layoutRebuilt() override { refresh(); }
    void commUpdate() override { refresh(); }
    void commAdd() override { }
    void commDelete() override { }
    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override;
    // The tool tip of the mark above the cells.
    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    [[nodiscard]] TAMBO::AlignmentWindow &shown() const;
    void refresh();
    void repaintColumns(const std::optional<ColumnRange> &columns) const;
    // Of what is kept; empty for nothing.
    [[nodiscard]] QString text() const;

    CellCursor &m_Cursor;
    Telling m_Telling;
    std::shared_ptr<KeptRegions> m_Regions;
    // As they are painted.
    std::optional<ColumnRange> m_Columns;
};

} // namespace companion
