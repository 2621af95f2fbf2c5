// SPDX-License-Identifier: GPL-3.0-or-later
// Who shows a canvas, as far as the canvas has to know.
#pragma once

#include <QRect>

#include <vector>

class CanvasWatcher
{
public:
    virtual void canvasResized() = 0;
    // The canvas is being deleted and must not be asked any more.
    virtual void canvasGone() = 0;
    // What is to be painted again, in the canvas's coordinates.
    virtual void canvasChanged() = 0;
    virtual void canvasChanged(const std::vector<QRect> &rects) = 0;

protected:
    CanvasWatcher() = default;
    CanvasWatcher(const CanvasWatcher &) = delete;
    CanvasWatcher &operator=(const CanvasWatcher &) = delete;
    ~CanvasWatcher() = default;
};
