// SPDX-License-Identifier: GPL-3.0-or-later
// Base of what is painted over the cells, names, header or corner of an alignment window: frames,
// marks, texts. On the screen alone: neither prints nor pictures of the alignment have it.
#pragma once

#include "CellPlaces.h"
#include "Export.h"

#include <QRect>

class QPainter;

namespace TAMBO {

class AlignmentWindow;

// What is to be painted of an area.
struct OverlayExposure
{
    WindowArea area = WindowArea::Cells;
    // In the area's coordinates; the painter is clipped to it.
    QRect rect;
    // AlignmentWindow::cellsIn() of it.
    CellBlock cells;
};

// Registered from its construction until it or the window goes. Of several the one with the lower z
// is painted first; of equal ones, the one made first. It begins with nothing painted; when it
// goes, its areas are painted anew. Only for the GUI thread.
class TAMBO_API CellOverlay
{
public:
    CellOverlay(AlignmentWindow &window, WindowAreas areas, int z = 0);
    virtual ~CellOverlay();

    CellOverlay(const CellOverlay &) = delete;
    CellOverlay &operator=(const CellOverlay &) = delete;

    // Null when it has gone.
    [[nodiscard]] AlignmentWindow *window() const noexcept { return m_Window; }
    [[nodiscard]] WindowAreas areas() const noexcept { return m_Areas; }
    [[nodiscard]] int z() const noexcept { return m_Z; }

    // In the area's coordinates, which are also the painter's; the painter is as new each time.
    // Called often and for small parts: paint what is exposed and no more. Must not change or close
    // windows. An overlay that throws is logged and painted no more.
    virtual void paint(QPainter &painter, const AlignmentWindow &window,
                       const OverlayExposure &exposed) = 0;

    // Has the cells painted anew in all of its areas, and margin pixels around them; nothing else.
    // To be called when what paint() would paint has become another.
    void repaint(const CellBlock &cells, int margin = 0) const;

private:
    friend class ServedAlignmentWindow;

    AlignmentWindow *m_Window;
    WindowAreas m_Areas;
    int m_Z;
};

} // namespace TAMBO
