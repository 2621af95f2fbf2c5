// SPDX-License-Identifier: GPL-3.0-or-later
// How a window shows an alignment: where it stands, what is seen in it, and how large. Lengths are
// logical pixels.
#pragma once

#include <QFont>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QSize>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

class QMainWindow;
class QWidget;

namespace TAMBO {
class AlignmentWindow;
class ValueReader;
class ValueWriter;
} // namespace TAMBO

namespace TAMBO::app {

// The window's place without its frame, pulled onto a screen when a part of it is on none. rooms:
// what the desktop leaves to windows on each screen.
[[nodiscard]] QRect placeInSight(const QRect &place, const std::vector<QRect> &rooms);

class WindowState
{
public:
    // What it was read from; null for a window that shows nothing.
    [[nodiscard]] static WindowState of(const AlignmentWindow &window);

    void write(ValueWriter &out) const;
    // The forms that have been written so far; the last one is what is written.
    enum class Form : std::uint8_t { WithoutFont = 1, WithFont = 2, WithDocks = 3 };
    // Numbers that no window can have make the reader fail.
    [[nodiscard]] static WindowState read(ValueReader &in, Form form);

    // The window is on the screen and shows the alignment.
    void apply(AlignmentWindow &window) const;

    // The number of the alignment.
    [[nodiscard]] std::uint32_t alignment() const noexcept { return m_Alignment; }

private:
    struct Bar
    {
        QString name;
        int area = 0;
        bool isShown = true;
    };

    struct Dock
    {
        QString name;
        int area = 0;
        bool isShown = true;
        QSize size;
    };

    void applyPlace(QWidget &window) const;
    void applyBars(QMainWindow &window) const;
    void applyDocks(QMainWindow &window) const;
    void applyView(AlignmentWindow &window) const;

    std::uint32_t m_Alignment = 0;
    // Neither maximised nor minimised.
    QRect m_Place;
    bool m_IsMaximised = false;
    bool m_IsFullScreen = false;
    bool m_IsMinimised = false;
    std::vector<Bar> m_Bars;
    std::vector<Dock> m_Docks;
    // Nothing for the one that the window begins with.
    std::optional<QFont> m_Font;
    // Nothing for what the window's font asks.
    std::optional<QSize> m_Cell;
    std::optional<int> m_NameWidth;
    // What is seen first, in cells.
    QPointF m_First;
};

} // namespace TAMBO::app
