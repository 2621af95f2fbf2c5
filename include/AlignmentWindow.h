// SPDX-License-Identifier: GPL-3.0-or-later
// A window that shows an alignment as a grid of cells, as other plug-ins see it: where its cells
// are, how large they are, and what is painted over them. The editor's windows are such.
#pragma once

#include "CellPlaces.h"
#include "Export.h"

#include <QFont>
#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <memory>
#include <optional>
#include <vector>

class QMainWindow;
class QWidget;

namespace TAMBO {

class Alignment;
namespace services {
class WindowUsers;
}

// Belongs to whoever shows the window, and is there as long as it is open: an
// AlignmentWindowObserver hears before it goes, and a QPointer to it is null afterwards. Only for
// the GUI thread. Lengths are logical pixels, positions those of a WindowArea; where no area is
// named, of Cells. Everything is said of what is shown: while an alignment has just been changed,
// that may be what it was before.
class TAMBO_API AlignmentWindow : public QObject
{
public:
    // ---- Which there are

    // In the order of opening.
    [[nodiscard]] static std::vector<AlignmentWindow *> All();
    // The window that the widget is, or is part of, a floating dock included; null when there is
    // none, and for null.
    [[nodiscard]] static AlignmentWindow *Of(const QWidget *widget);
    // Of those that are open the one that was opened or activated last; null when none is.
    [[nodiscard]] static AlignmentWindow *LastUsed();

    ~AlignmentWindow() override;

    // ---- What it shows

    // For docks, tool bars and dialogs. It deletes what is added to it when it goes.
    [[nodiscard]] virtual QMainWindow *mainWindow() const = 0;
    // The widget whose coordinates are those of the area: for mapping them, a cursor and tool tips.
    [[nodiscard]] virtual QWidget *areaWidget(WindowArea area) const = 0;
    // Null while the window is empty; it has no cells then.
    [[nodiscard]] virtual Alignment *alignment() const = 0;
    // Both 0 when the alignment has no rows or no columns.
    [[nodiscard]] virtual unsigned long rows() const = 0;
    [[nodiscard]] virtual unsigned long columns() const = 0;

    // ---- Where cells are

    // Also of cells that are scrolled out of sight; beyond the last row or column, where one would
    // be. Cut off at about half of what an int holds.
    [[nodiscard]] QRect cellRect(const CellIndex &cell) const;
    // What the block's cells cover of the area: of Names all that stands beside its rows, of Header
    // all that stands above its columns, of Corner all. Empty when the block is.
    [[nodiscard]] QRect blockRect(const CellBlock &block,
                                  WindowArea area = WindowArea::Cells) const;
    // Nothing where no cell is. The point may be out of sight.
    [[nodiscard]] std::optional<CellIndex> cellAt(const QPoint &point) const;
    [[nodiscard]] std::optional<unsigned long> rowAt(int y) const;
    [[nodiscard]] std::optional<unsigned long> columnAt(int x) const;
    // All of which at least a pixel is in sight.
    [[nodiscard]] CellBlock visibleCells() const;
    // Those of which the rectangle has at least a pixel: for Names the rows, for Header the columns
    // of it, and all of the other.
    [[nodiscard]] CellBlock cellsIn(const QRect &rect, WindowArea area = WindowArea::Cells) const;
    // Of the area in which cells are shown.
    [[nodiscard]] virtual QSize visibleSize() const = 0;

    // ---- Scrolling

    enum class Placement { Nearest, Centred };

    // How much of the cells is left of and above what is to be seen.
    [[nodiscard]] virtual QPoint scrollPosition() const = 0;
    // Cut off at the ends. Names and header go along.
    virtual void scrollTo(const QPoint &position) = 0;
    void scrollBy(const QPoint &distance);
    // Scrolls as little as shows the whole cell, not at all when it is shown; or so far that the
    // cell is in the middle. Of a cell larger than the view its beginning is shown. A cell that the
    // window does not have is ignored.
    void showCell(const CellIndex &cell, Placement placement = Placement::Nearest);

    // ---- The size of cells

    [[nodiscard]] virtual QSize cellSize() const = 0;
    // What the window's own font asks for.
    [[nodiscard]] virtual QSize ownCellSize() const = 0;
    // What that font asks for at 40 points, or at its own size when that is larger.
    [[nodiscard]] virtual QSize maximumCellSize() const = 0;
    // Shows letters in a font that fits, and only colors where none can be read. Cut off at 1 x 1
    // and at the maximum. What is at the point stays there, as far as the ends allow. Names and
    // header keep their width and height. Ends when the window gets another font.
    virtual void setCellSize(const QSize &size, const QPoint &fixedPoint = {}) = 0;
    // Back to its own.
    virtual void resetCellSize(const QPoint &fixedPoint = {}) = 0;

    // ---- The names

    [[nodiscard]] virtual int nameWidth() const = 0;
    // Cut off at one cell of the window's own, and where no cell beside the names would have room.
    // Stays when the window gets another font.
    virtual void setNameWidth(int width) = 0;
    // Back to eight of the window's own cells.
    virtual void resetNameWidth() = 0;

    // ---- The font

    // That the user, or somebody for him, gave the window after it was opened; nothing as long as
    // it has the one that it began with.
    [[nodiscard]] virtual std::optional<QFont> chosenFont() const;
    // Cells and header take the size that it asks for. What is seen first stays so. A window whose
    // font cannot be chosen ignores it.
    virtual void setChosenFont(const QFont &font);

    // In which names are shown beside cells of the present size; nothing where none can be read.
    [[nodiscard]] virtual std::optional<QFont> nameFont() const;

    // ---- Painting and holding

    // Paints the rectangle of the area anew, with everything that lies over it, from the event
    // loop.
    virtual void repaint(WindowArea area, const QRect &rect) = 0;
    // The window gives up what the user drags in it: the button that is held means nothing to it
    // any more.
    virtual void endDrag() = 0;

private:
    friend class AlignmentViewObserver;
    friend class CellEventFilter;
    friend class CellOverlay;
    friend class ServedAlignmentWindow;

    // Derive from ServedAlignmentWindow.
    AlignmentWindow();

    // Outlives the window as long as one of them is being called.
    std::shared_ptr<services::WindowUsers> m_Users;
};

} // namespace TAMBO
