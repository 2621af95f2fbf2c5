// SPDX-License-Identifier: GPL-3.0-or-later
// A cursor in the cells, and the block of cells around it, for reading, selecting and editing by
// keys.
#pragma once

#include "AlignmentViewObserver.h"
#include "CellEventFilter.h"
#include "CellOverlay.h"
#include "ChangeWalk.h"

#include <QPoint>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class QKeyEvent;
class QMouseEvent;

namespace companion {

// Not there until a key that moves it is pressed, or it is asked for. Arrows, Home, End and the
// pages move it, Ctrl and an arrow to the next change between gap and residue, and the window shows
// the cell where it is. With Shift they draw the block from where the cursor was; so does a drag
// with Alt, or with Ctrl and Shift. Ctrl and Space select the residues of the block or deselect
// them. Escape ends a drag, else drops the block, else deselects, else takes the cursor away. A
// click takes the cursor along, if it is there, and is the window's.
class CellCursor : public TAMBO::AlignmentViewObserver,
                   public TAMBO::CellOverlay,
                   public TAMBO::CellEventFilter
{
public:
    using Place = std::optional<TAMBO::CellIndex>;

    struct News
    {
        // With each new place, and with none when it goes.
        std::function<void(const Place &)> moved;
        // What users are to read; after moved().
        std::function<void(const QString &)> tell;
        // Whether something was dragged, and is not any more.
        std::function<bool()> endDrag = {};
        // Escape with nothing of the cursor's to drop. False when nothing is selected, or nothing
        // can be deselected now.
        std::function<bool()> deselect = {};
    };

    CellCursor(TAMBO::AlignmentWindow &window, News news);
    ~CellCursor() override;

    // There, where it was last, or at the cell that was clicked since, or else at the first in
    // sight, with the keyboard; or not there.
    void toggle();
    [[nodiscard]] const Place &place() const noexcept { return m_Place; }
    // Rows x columns, the cursor at one of its corners; without one the cursor's cell. Nothing when
    // there is no cursor.
    [[nodiscard]] std::optional<TAMBO::CellBlock> block() const;
    // More than the cursor's cell.
    [[nodiscard]] bool hasBlock() const noexcept;

    // Without a block. The place is cut off at the end of the alignment.
    void set(const Place &place);
    // The block with these two cells at its corners, and the cursor at the second one.
    void setBlock(const TAMBO::CellIndex &anchor, const TAMBO::CellIndex &place);
    // The cursor and its block go by so many columns, at most to the ends.
    void moveBy(long columns);
    // It goes there if it is there, without a block; otherwise that is where it will begin.
    void click(const TAMBO::CellIndex &cell);
    // Whether the button begins to draw a block.
    [[nodiscard]] static bool drawsBlock(const QMouseEvent &mouse);

    void alignmentShown() override;
    void layoutRebuilt() override;
    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override;
    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    enum class Shown { Yes, No };

    [[nodiscard]] TAMBO::AlignmentWindow &shown() const;
    // Where it begins; nothing without cells.
    [[nodiscard]] Place beginning() const;
    [[nodiscard]] TAMBO::CellIndex inBounds(const TAMBO::CellIndex &cell) const;
    [[nodiscard]] Place target(int key, bool isCtrl) const;
    bool handleKey(const QKeyEvent &key);
    bool handleEscape(const QKeyEvent &key);
    bool handlePress(const QMouseEvent &mouse);
    bool handleDrag(const QMouseEvent &mouse);
    void toggleSelected();
    void walk(Toward toward, bool extends);
    void goOnWalking();
    // Under the pointer, or the nearest.
    [[nodiscard]] Place cellNear(const QPoint &point) const;
    void drawTo(const QPoint &point);
    void change(const Place &anchor, const Place &place, Shown isShown);
    void tellBlock() const;

    News m_News;
    Place m_Place;
    // The other corner of the block.
    Place m_Anchor;
    // Where it was last, or what was clicked since.
    Place m_Begin;
    // It is where the window, which hears later of an edit, has no cell yet.
    bool m_IsNewToWindow = false;
    std::optional<ChangeWalk> m_Walk;
    unsigned long m_WalkRevision = 0;
    bool m_WalkExtends = false;
    QTimer m_Walking;
    // While a block is drawn with the mouse.
    std::optional<QPoint> m_Pointer;
    QTimer m_Scrolling;
};

} // namespace companion
