// SPDX-License-Identifier: GPL-3.0-or-later
// Dragging gaps in all rows of the block at once; and, as long as columns are kept, in one row
// instead of the window, which does not know of them.
#pragma once

#include "AlignmentViewObserver.h"
#include "CellEventFilter.h"
#include "CellOverlay.h"
#include "GapEditRun.h"
#include "Telling.h"

#include <QTimer>

#include <functional>
#include <optional>
#include <utility>

class QMouseEvent;

namespace companion {

class CellCursor;

// Asked before the cursor is. A press that the window would take for a drag of a gap, or of a
// residue and what follows it, is taken when it is inside the block, or when columns are kept.
// Nothing changes before the button is let go; meanwhile one sees where the gaps would come, or why
// they cannot. Escape gives it up, and so does any other change of the alignment.
class BlockDrag : public TAMBO::AlignmentViewObserver,
                  public TAMBO::CellOverlay,
                  public TAMBO::CellEventFilter
{
public:
    // The cursor is made before this and goes behind it.
    BlockDrag(TAMBO::AlignmentWindow &window, CellCursor &cursor, Telling telling);
    ~BlockDrag() override;

    // Of the drags of a block, while no columns are kept.
    struct News
    {
        // Where it was pressed, and the rows.
        std::function<void(const TAMBO::GapDrag &press, const TAMBO::CellBlock &rows)> began;
        // Nothing where letting go would do nothing.
        std::function<void(const std::optional<TAMBO::CellIndex> &pointer)> moved;
        // Before anything changes.
        std::function<void()> ended;
    };
    void setNews(News news) { m_News = std::move(news); }

    [[nodiscard]] bool isDragging() const noexcept { return m_Drag.has_value(); }

    void alignmentShown() override;
    void layoutRebuilt() override;
    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override;
    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    struct Drag
    {
        TAMBO::CellIndex from;
        // The rows of it, and the one column.
        TAMBO::CellBlock cells;
        // Of the block: all buttons move all gaps that stand side by side.
        bool isOfBlock = false;
        // Where the pointer is; nothing where letting go would do nothing.
        std::optional<unsigned long> to;
        unsigned long revision = 0;
    };

    [[nodiscard]] TAMBO::AlignmentWindow &shown() const;
    [[nodiscard]] bool isTaken(const QMouseEvent &mouse, const TAMBO::CellIndex &cell) const;
    bool press(const QMouseEvent &mouse);
    void moveTo(const QPoint &point);
    void release(Qt::MouseButton button);
    void end();
    [[nodiscard]] GapEdit edit(unsigned long to) const;
    [[nodiscard]] Outcome movePoint(unsigned long to) const;
    void beginLooking();
    void goOnLooking();
    // What is in sight of the rows.
    void repaintRows() const;
    // Where the gaps of a row come to stand.
    [[nodiscard]] TAMBO::CellBlock target(unsigned long row, const TAMBO::CellBlock &seen) const;

    CellCursor &m_Cursor;
    Telling m_Telling;
    News m_News;
    // While a button is held.
    std::optional<Drag> m_Drag;
    std::optional<GapEditRun> m_Run;
    QTimer m_Looking;
    bool m_IsRefused = false;
};

} // namespace companion
