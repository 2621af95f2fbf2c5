// SPDX-License-Identifier: GPL-3.0-or-later
// The names of an alignment window: as wide as they are long when an alignment is shown, cut in the
// middle where there is no room, whole in the tool tip, and with a border that can be dragged. A
// bar behind the name says what is selected, since the window's green can hardly be seen.
#pragma once

#include "AlignmentViewObserver.h"
#include "CellEventFilter.h"
#include "CellOverlay.h"

#include <QString>

#include <optional>

namespace companion {

class NameColumn : public TAMBO::AlignmentViewObserver,
                   public TAMBO::CellOverlay,
                   public TAMBO::CellEventFilter
{
public:
    explicit NameColumn(TAMBO::AlignmentWindow &window);
    ~NameColumn() override;

    // As wide as the longest name that is to be seen needs, and no wider than the window allows.
    void fitVisible();
    // Back to the width that the window has without this.
    void reset();

    void alignmentShown() override;
    void paint(QPainter &painter, const TAMBO::AlignmentWindow &window,
               const TAMBO::OverlayExposure &exposed) override;
    bool handle(TAMBO::AlignmentWindow &window, TAMBO::WindowArea area, QEvent &event) override;

private:
    [[nodiscard]] TAMBO::AlignmentWindow *window() const noexcept;
    // What the longest of the names [begin, end) needs, with the mark behind it.
    [[nodiscard]] int neededWidth(unsigned long begin, unsigned long end) const;
    void paintNames(QPainter &painter, const TAMBO::OverlayExposure &exposed) const;
    [[nodiscard]] bool isBorder(int x) const;
    void showToolTip(const QPoint &place, const QPoint &global) const;

    // Where the border was taken, and how wide the names were then.
    struct Drag
    {
        int x = 0;
        int width = 0;
    };
    std::optional<Drag> m_Drag;
    // The user has chosen a width, which stays for other alignments of the window.
    bool m_IsChosen = false;
};

} // namespace companion
