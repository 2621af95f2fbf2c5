// SPDX-License-Identifier: GPL-3.0-or-later
// The alignment of a window in blocks as wide as this view, below each other, to be scrolled up and
// down alone.
#pragma once

#include "AlignmentViewObserver.h"
#include "CellTiles.h"
#include "Subscriber.h"
#include "TargetMark.h"
#include "WrapLayout.h"

#include <QAbstractScrollArea>

#include <optional>
#include <vector>

namespace companion {

// Reads and paints the lines in sight and no others. Goes before the alignment window does.
class WrappedView : public QAbstractScrollArea,
                    public TAMBO::AlignmentViewObserver,
                    public Subscriber
{
    Q_OBJECT

public:
    // Smaller cells would be too many for a frame.
    static constexpr QSize kSmallestCell{2, 4};

    explicit WrappedView(TAMBO::AlignmentWindow &window);
    ~WrappedView() override;

    [[nodiscard]] const WrapLayout &layout() const noexcept { return m_Layout; }
    [[nodiscard]] QSize cellSize() const noexcept { return m_Tiles.size(); }
    void setCellSize(const QSize &size);
    [[nodiscard]] bool hasNumbers() const noexcept { return m_HasNumbers; }
    // At the ends of the rows; stays for views that are made later.
    void setNumbers(bool on);

    // Of the viewport; empty when the cell is not in sight.
    [[nodiscard]] QRect cellRect(const TAMBO::CellIndex &cell) const;
    [[nodiscard]] std::optional<TAMBO::CellIndex> cellAt(const QPoint &place) const;
    // How many cells were read by painting, since this was made.
    [[nodiscard]] std::size_t cellsRead() const noexcept { return m_CellsRead; }
    // What is framed in the window after a click.
    [[nodiscard]] const TAMBO::CellBlock &marked() const noexcept { return m_Mark.shown(); }

    void alignmentShown() override;
    void layoutRebuilt() override;
    void cellSizeChanged() override;
    void commUpdate() override;
    void commAdd() override { }
    void commDelete() override { }

protected:
    bool viewportEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    // Of the window; null while it shows none.
    [[nodiscard]] TAMBO::Alignment *alignment() const;
    [[nodiscard]] QFont ownFont() const;
    void follow();
    void arrange();
    [[nodiscard]] int nameWidthOf(const TAMBO::Alignment &alignment) const;
    [[nodiscard]] std::uint64_t firstLine() const;
    void paintLine(QPainter &painter, const WrapLine &line, int top);
    void paintRuler(QPainter &painter, const WrapLine &line, int top) const;
    void paintRow(QPainter &painter, const WrapLine &line, int top);
    void paintDragged(QPainter &painter, const WrapLine &line, int top) const;
    [[nodiscard]] TAMBO::CellBlock dragged() const;
    // As cellAt(), but of a place outside the cells the nearest one in that line.
    [[nodiscard]] std::optional<TAMBO::CellIndex> nearestCell(const QPoint &place) const;
    void goTo(const TAMBO::CellIndex &cell);
    void select(const TAMBO::CellBlock &cells);
    [[nodiscard]] QString toolTipText(const QPoint &place) const;

    TargetMark m_Mark;
    WrapLayout m_Layout;
    CellTiles m_Tiles;
    QFont m_RulerFont;
    std::optional<QFont> m_NameFont;
    // In pixels, of all beside the cells.
    int m_NameWidth = 0;
    int m_NumberWidth = 0;
    bool m_HasNumbers = true;
    bool m_HasOwnCells = true;
    // Of the wheel, what is less than a step.
    int m_Turned = 0;
    // Where the button was pressed, and where the pointer is once it has moved to another cell.
    std::optional<TAMBO::CellIndex> m_Pressed;
    std::optional<TAMBO::CellIndex> m_Moved;
    std::vector<TAMBO::AlignmentCell> m_Cells;
    std::size_t m_CellsRead = 0;
};

} // namespace companion
