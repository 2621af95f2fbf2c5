// SPDX-License-Identifier: GPL-3.0-or-later
// Base of the alignment windows of a plug-in that has such windows: tells the others about them,
// and calls what the others have registered.
#pragma once

#include "AlignmentViewObserver.h"
#include "AlignmentWindow.h"

class QEvent;
class QPainter;

namespace TAMBO {

class TAMBO_API ServedAlignmentWindow : public AlignmentWindow
{
public:
    ~ServedAlignmentWindow() override;

protected:
    ServedAlignmentWindow();

    // When everything of the window can be asked for; and first of all in the destructor, as long
    // as it still can.
    void opened();
    void going();

    // The user turned to the window.
    void activated();

    // Called when the first overlay or filter of an area has come, or the last one has gone.
    virtual void usersChanged();
    [[nodiscard]] bool hasOverlays(WindowArea area) const;
    [[nodiscard]] bool hasFilters(WindowArea area) const;

    // Over what the window has painted there, with a painter in the area's coordinates.
    void paintOverlays(WindowArea area, QPainter &painter, const QRect &exposed);
    // Before the window handles the event; true when it must not. The window may be gone then.
    [[nodiscard]] bool offer(WindowArea area, QEvent &event);

    // Told at once.
    void tellAlignmentShown();
    void tellGapDragBegan(const GapDrag &drag);
    void tellGapDragMoved(const GapDrag &drag);
    void tellGapDragEnded(const GapDrag &drag);

    // Told from the event loop.
    enum Change : unsigned { Rebuilt = 1, CellSize = 2, VisibleSize = 4, ScrollPosition = 8 };
    void hasChanged(Change change);

private:
    void tellChanges();

    unsigned m_Changes = 0;
};

} // namespace TAMBO
