// SPDX-License-Identifier: GPL-3.0-or-later
// The dock with the tracks of an alignment window: numbers, annotation, structures.
#pragma once

#include "TrackCanvas.h"

#include <QDockWidget>

class QMenu;

namespace companion {

// Out of sight until it is asked for. Its context menu switches each track on and off.
class Tracks : public QDockWidget
{
    Q_OBJECT

public:
    // A child of the window's own widget, and gone with it.
    explicit Tracks(TAMBO::AlignmentWindow &window);
    ~Tracks() override;

    // Into sight, or out of it.
    void toggle();
    [[nodiscard]] TrackCanvas &canvas() const noexcept { return *m_Canvas; }
    // Rows with selected residues, into sight.
    void chooseRows();
    void giveUpRows();
    void fillMenu(QMenu &menu);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void fillLines(QMenu &menu);
    void fillRows(QMenu &menu);
    void setHeight(int height);

    TrackCanvas *m_Canvas;
    // Has been in sight, and has the height that the user likes.
    bool m_HasHeight = false;
};

} // namespace companion
