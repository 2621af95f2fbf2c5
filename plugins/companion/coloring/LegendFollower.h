// SPDX-License-Identifier: GPL-3.0-or-later
// Which legend fits to the colors that a window shows now: undo and redo, of whatever command, take
// a legend away with its colors and bring it back with them. All windows of an alignment have it.
#pragma once

#include "AlignmentViewObserver.h"
#include "Legend.h"
#include "Subscriber.h"

#include <QPointer>
#include <QTimer>

#include <vector>

namespace companion {

class LegendBar;

class LegendFollower : public TAMBO::AlignmentViewObserver, private Subscriber
{
public:
    LegendFollower(TAMBO::AlignmentWindow &window, LegendBar &bar);
    ~LegendFollower() override;

    // Of the colors as they have just become; without entries when they mean nothing any more.
    void show(const Legend &legend);
    // Takes the legend away, or shows one of the present colors, whatever gave them: that of the
    // last coloring that fits, else that of the types of residues, else the colors by how many
    // residues have them. False when there is no residue.
    bool toggle();

    // Something has changed, and whether the legend still fits is not known yet.
    [[nodiscard]] bool isLooking() const { return m_Later.isActive(); }

    void alignmentShown() override;

private:
    struct ColoredCell
    {
        unsigned long row;
        unsigned long col;
        unsigned int color;
    };
    struct Known
    {
        Legend legend;
        // Some of what was colored, spread over the alignment.
        std::vector<ColoredCell> cells;
        // None of them had a color of the legend: it is all white, say.
        bool isOfOthers = false;
    };
    static constexpr int kNone = -1;

    void commUpdate() override;
    void commAdd() override { }
    void commDelete() override { }

    // As another window of the alignment has got it.
    void take(const Legend &legend);
    // What another window of the alignment knows.
    void takeOver();
    void remember(const Legend &legend, std::vector<ColoredCell> cells, bool isOfOthers);
    void forget();
    void look();
    // Cells have other places: what was known of them is worth nothing.
    void takeNewPlaces();
    void put(int known);
    [[nodiscard]] int bestKnown() const;
    // Those in the colors; in any color when there are none.
    [[nodiscard]] std::vector<ColoredCell> cellsIn(const std::vector<unsigned int> &colors) const;
    // Of the colors as they are, when nothing is known of them.
    [[nodiscard]] static Legend legendOfColorsSeen(const std::vector<ColoredCell> &cells);
    [[nodiscard]] double shareLeft(const Known &known) const;

    QPointer<LegendBar> m_Bar;
    std::vector<Known> m_Known;
    int m_Shown = kNone;
    // By the user; until the next coloring.
    bool m_IsClosed = false;
    unsigned long m_Layout = 0;
    // Colors change many times a second while somebody drags a slider.
    QTimer m_Later;
};

} // namespace companion
