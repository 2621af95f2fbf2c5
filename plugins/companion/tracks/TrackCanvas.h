// SPDX-License-Identifier: GPL-3.0-or-later
// Tracks below each other, their columns exactly below those of an alignment window.
#pragma once

#include "AlignmentViewObserver.h"
#include "Subscriber.h"
#include "Track.h"
#include "TrackColumns.h"

#include <QTimer>
#include <QWidget>

#include <optional>
#include <set>

namespace companion {

// Knows the columns in sight, and none while it is out of sight itself. Which tracks are on is kept
// for the windows that are opened later.
class TrackCanvas : public QWidget, public TAMBO::AlignmentViewObserver, public Subscriber
{
    Q_OBJECT

public:
    // More columns are not computed: nobody could tell them apart.
    static constexpr unsigned long kMostShown = 4000;

    // The window is that of the alignment, which goes later.
    explicit TrackCanvas(TAMBO::AlignmentWindow &window);
    ~TrackCanvas() override;

    [[nodiscard]] bool isOn(Track track) const { return m_On.contains(track); }
    void setOn(Track track, bool on);

    // Where a column of the track is drawn; empty while the track is off.
    [[nodiscard]] QRect columnRect(Track track, unsigned long col) const;
    [[nodiscard]] const TrackColumns &columns() const noexcept { return m_Columns; }
    [[nodiscard]] bool isComputing() const { return m_Slices.isActive(); }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    void alignmentShown() override;
    void layoutRebuilt() override;
    void cellSizeChanged() override;
    void visibleSizeChanged() override;
    void scrolled() override;
    // Structures may have moved.
    void commUpdate() override;
    void commAdd() override { commUpdate(); }
    void commDelete() override { commUpdate(); }

protected:
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] int heightOf(double share) const;
    void follow();
    void goOn();
    void keepSwitched() const;
    [[nodiscard]] TAMBO::AlignmentWindow &shown() const;
    // Where the cells are to be seen, in this one's coordinates, from its top to its bottom.
    [[nodiscard]] QRect cellsPlace() const;
    // Of a column in a track that is drawn there.
    [[nodiscard]] QRect columnRect(const QRect &track, int cellsLeft, unsigned long col) const;
    // From the left to the right edge; empty while the track is off.
    [[nodiscard]] QRect trackRect(Track track) const;
    [[nodiscard]] std::optional<Track> trackAt(int y) const;
    [[nodiscard]] bool hasTooMany() const;
    [[nodiscard]] QString toolTipText(const QPoint &place) const;
    // What is to be seen instead of tracks; empty when they are to be seen.
    [[nodiscard]] QString remark() const;

    std::set<Track> m_On;
    TrackColumns m_Columns;
    std::uint64_t m_Structures = 0;
    QTimer m_Slices;
};

} // namespace companion
