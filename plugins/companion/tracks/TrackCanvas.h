// SPDX-License-Identifier: GPL-3.0-or-later
// Tracks below each other, their columns exactly below those of an alignment window.
#pragma once

#include "AlignmentViewObserver.h"
#include "ChosenRows.h"
#include "LineTrack.h"
#include "Subscriber.h"
#include "Track.h"
#include "TrackColumns.h"
#include "TrackCursor.h"

#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace companion {

// Knows the columns in sight, and none while it is out of sight itself. Which tracks are on is kept
// for the windows that are opened later, by what they show and not of which rows.
class TrackCanvas : public QWidget, public TAMBO::AlignmentViewObserver, public Subscriber
{
    Q_OBJECT

public:
    // More columns are not computed: nobody could tell them apart.
    static constexpr unsigned long kMostShown = 4000;
    static constexpr std::size_t kMostRows = 4;

    // The window is that of the alignment, which goes later.
    explicit TrackCanvas(TAMBO::AlignmentWindow &window);
    ~TrackCanvas() override;

    [[nodiscard]] bool isOn(Track track) const;
    void setOn(Track track, bool on);
    [[nodiscard]] bool isOn(const LineTrack &line) const;
    void setOn(const LineTrack &line, bool on);
    // All of the alignment and of the chosen rows, those that are off, too.
    [[nodiscard]] const std::vector<LineTrack> &lines() const noexcept { return m_Lines; }

    // Rows of which a residue is selected are shown, up to kMostRows; without one it is told how.
    void chooseRows();
    void giveUpRow(unsigned long row);
    void giveUpRows();
    [[nodiscard]] std::vector<unsigned long> chosenRows() const { return m_Rows.rows(); }
    // What is to be told of them; mostly empty.
    [[nodiscard]] const QString &rowHint() const noexcept { return m_RowHint; }

    // Where a column of the track is drawn; empty while the track is off.
    [[nodiscard]] QRect columnRect(Track track, unsigned long col) const;
    [[nodiscard]] QRect columnRect(const LineTrack &line, unsigned long col) const;
    [[nodiscard]] const TrackColumns &columns() const noexcept { return m_Columns; }
    [[nodiscard]] bool isComputing() const { return m_Slices.isActive(); }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    void alignmentShown() override;
    void layoutRebuilt() override;
    void cellSizeChanged() override;
    void visibleSizeChanged() override;
    void scrolled() override;
    // Structures may have moved, and lines over the columns may say something else.
    void commUpdate() override;
    void commAdd() override { commUpdate(); }
    void commDelete() override { commUpdate(); }

signals:
    // The tracks need so many pixels more, or less, than before.
    void heightWanted(int more);

protected:
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    // From above: a track of numbers, a line of characters, or else a hint.
    struct Item
    {
        std::optional<Track> track;
        std::optional<LineTrack> line;
        int lines = 1;
    };

    [[nodiscard]] bool isOn(const QString &key, bool atFirst) const;
    void setOn(const QString &key, bool atFirst, bool on);
    // What there is to be shown has changed.
    void arrange();
    [[nodiscard]] int heightOf(double share) const;
    void follow();
    void followLines();
    void goOn(std::chrono::microseconds most);
    [[nodiscard]] TAMBO::AlignmentWindow &shown() const;
    // Where the cells are to be seen, in this one's coordinates, from its top to its bottom.
    [[nodiscard]] QRect cellsPlace() const;
    // Of a column in a track that is drawn there.
    [[nodiscard]] QRect columnRect(const QRect &track, int cellsLeft, unsigned long col) const;
    // From the left to the right edge.
    [[nodiscard]] QRect itemRect(std::size_t index) const;
    // Null beside all of them.
    [[nodiscard]] const Item *itemAt(int y) const;
    [[nodiscard]] bool hasTooMany() const;
    [[nodiscard]] bool hasNumbers() const;
    void paintItem(QPainter &painter, const Item &item, const QRect &place) const;
    [[nodiscard]] QString toolTipText(const QPoint &place) const;
    [[nodiscard]] QString valueText(const Item &item, unsigned long col) const;
    [[nodiscard]] QString columnText(unsigned long col) const;
    // All that is known of it.
    [[nodiscard]] QString allText(unsigned long col) const;
    void paintCursor(QPainter &painter) const;
    // What is to be seen instead of tracks; empty when they are to be seen.
    [[nodiscard]] QString remark() const;

    // Those that were switched otherwise than they are at first.
    QStringList m_Off;
    QStringList m_On;
    ChosenRows m_Rows;
    QString m_RowHint;
    std::vector<LineTrack> m_Lines;
    std::vector<Item> m_Items;
    TrackColumns m_Columns;
    std::uint64_t m_Structures = 0;
    QTimer m_Slices;
    TrackCursor m_Cursor;
};

} // namespace companion
