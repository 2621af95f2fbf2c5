// SPDX-License-Identifier: GPL-3.0-or-later
// Says while gaps are dragged what letting go would mean for the structures of their rows: how far
// apart residues of a column would lie, which helix or strand it would split, and where else it
// would be better. The cells are painted as they would stand; nothing changes before.
#pragma once

#include "AlignmentViewObserver.h"
#include "CellEventFilter.h"
#include "CellOverlay.h"
#include "Colormap.h"
#include "DragSpread.h"
#include "ElementSplits.h"
#include "GuideLabel.h"

#include <QPoint>
#include <QTimer>

#include <functional>
#include <optional>

namespace companion {

// What is known of the place under the pointer.
struct GuidedPlace
{
    unsigned long column = 0;
    std::optional<PlaceSpread> spread;
    std::optional<MeanOfColumns> total;
    std::optional<SplitElement> split;
    // Columns to let go over instead: nearest that splits nothing, when this one does; least spread
    // within reach.
    std::optional<unsigned long> whole;
    std::optional<unsigned long> least;
};

// On until it is switched off, which is kept for the windows that are opened later. It follows the
// drags of the window by itself; others, as that of a block, call hold(), aim() and letGo(). Of
// rows without coordinates it says nothing.
class GapGuide : public TAMBO::AlignmentViewObserver,
                 public TAMBO::CellOverlay,
                 public TAMBO::CellEventFilter
{
public:
    explicit GapGuide(TAMBO::AlignmentWindow &window);
    ~GapGuide() override;

    [[nodiscard]] bool isOn() const noexcept { return m_IsOn; }
    void toggle();

    // Something is dragged: what letting go over a column would move. The alignment stays as it is
    // until letGo().
    void hold(MovesAt movesAt);
    // The same of several rows at once, each of which does what the middle button would do in it;
    // nothing is said of more than kMostRows.
    static constexpr unsigned long kMostRows = 100;
    void holdRows(const TAMBO::GapDrag &press, unsigned long begin, unsigned long end);
    // The pointer is over a cell of it; without a column, letting go would do nothing.
    void aim(const std::optional<TAMBO::CellIndex> &pointer);
    void letGo();

    [[nodiscard]] bool isHolding() const noexcept { return m_MovesAt != nullptr; }
    // Nothing when no drag is guided.
    [[nodiscard]] std::optional<GuidedPlace> place() const;
    [[nodiscard]] GuideLines lines() const;
    // All that is to be known of the place is known.
    [[nodiscard]] bool isSettled() const noexcept { return !m_Next.isActive(); }
    // Of the label, in the area of the cells; empty without one.
    [[nodiscard]] QRect labelRect() const { return m_LabelPlace; }
    [[nodiscard]] const DragSpread &spread() const noexcept { return m_Spread; }
    [[nodiscard]] const SpreadTable &table() const noexcept { return m_Table; }

    void alignmentShown() override;
    void layoutRebuilt() override;
    void scrolled() override;
    void gapDragBegan(const TAMBO::GapDrag &drag) override;
    void gapDragMoved(const TAMBO::GapDrag &drag) override;
    void gapDragEnded(const TAMBO::GapDrag &drag) override;
    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override;
    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    [[nodiscard]] TAMBO::AlignmentWindow &shown() const;
    void goOn();
    // Whether a row that would move has coordinates.
    [[nodiscard]] bool isGuided() const;
    // Everything that is or was painted, anew.
    void refresh();
    [[nodiscard]] TAMBO::CellBlock movedCells() const;
    void paintRow(QPainter &painter, const TAMBO::AlignmentWindow &window, const GapMove &move,
                  const TAMBO::CellBlock &cells) const;
    void paintMarks(QPainter &painter, const TAMBO::AlignmentWindow &window) const;

    bool m_IsOn;
    // The window's own drag; others hold by themselves.
    bool m_IsOfWindow = false;
    MovesAt m_MovesAt;
    std::optional<TAMBO::CellIndex> m_Pointer;
    SpreadTable m_Table;
    DragSpread m_Spread;
    std::optional<SplitElement> m_Split;
    std::optional<unsigned long> m_Whole;
    // As the settings have them while something is held.
    std::optional<Colormap> m_Colors;
    QTimer m_Next;
    // What has been painted.
    TAMBO::CellBlock m_Painted;
    QRect m_LabelPlace;
    GuideLines m_Lines;
};

} // namespace companion
