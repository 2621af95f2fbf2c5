// SPDX-License-Identifier: GPL-3.0-or-later
// Work that goes on between events, and is to come to its end at once.
#pragma once

#include <QString>

#include <chrono>
#include <functional>

class QWidget;

namespace companion {

// What is done between two looks at events, of a frame, so that keys and scrolling are not felt.
constexpr auto kSlice = std::chrono::milliseconds(6);

struct SlicedWork
{
    // Goes on for about so long; false when nothing is left.
    std::function<bool(std::chrono::microseconds)> goOn;
    // From 0 to 100.
    std::function<int()> percent;
};

// Goes on to the end. When it takes longer than a moment, a dialog over the widget says what is
// done and how far it is. False when the user has cancelled it there, or the widget has gone. The
// work is prepared for anything that happens between events but what users do.
[[nodiscard]] bool finish(const SlicedWork &work, const QString &what, QWidget *over);

// Tests shorten it.
struct Pace
{
    // After so long the dialog comes.
    std::chrono::microseconds withoutProgress = std::chrono::milliseconds(300);
    std::chrono::microseconds slice = kSlice;
};
[[nodiscard]] Pace &paceOfFinishing() noexcept;

} // namespace companion
