// SPDX-License-Identifier: GPL-3.0-or-later
// What the coloring commands of an alignment window itself mean, once they have colored: the
// entries of its menu and tool bars, and its dialog of properties.
#pragma once

#include "Legend.h"

#include <QColor>
#include <QObject>

#include <functional>
#include <optional>

class QMainWindow;

namespace companion {

// A child of the window.
class EditorColors : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        // A legend without entries when the colors mean nothing any more.
        std::function<void(const Legend &)> show;
        // Whether there is what these commands color: else the legend stays as it is.
        std::function<bool()> hasSelected;
        std::function<bool()> hasPositions;
    };

    EditorColors(QMainWindow &window, Parts parts);
    ~EditorColors() override;

protected:
    // Notes what users choose in the dialogs of these commands.
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    // 21 of them, in the order of the dialog's letters.
    void colored(QColor *colors);
    void pressed(int number, int, bool);

private:
    enum class Kind { Selected, Conserved, ConservedN };

    void followMenu(const QMainWindow &window);
    void showPicked(Kind kind);

    Parts m_Parts;
    // Of the command that runs.
    std::optional<QColor> m_Picked;
    std::optional<int> m_Number;
};

// The colors of a scale's letters as they are given, from its lowest value to its highest, at up to
// five of its letters; letters that are white are left out. No entries when none is left.
[[nodiscard]] Legend legendOfScale(const std::string &scale, const QColor *colors);
// Of the mean distances of columns.
[[nodiscard]] Legend legendOfDistances();

} // namespace companion
