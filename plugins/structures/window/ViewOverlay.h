// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Camera.h"
#include "Look.h"

#include <QSizeF>

class QPainter;

namespace structures {

// What is painted over a picture of structures.
class ViewOverlay
{
public:
    // What belongs to the picture. On what has the size, in the painter's coordinates. scale: how
    // much larger than on the screen everything is.
    virtual void paintOver(QPainter &painter, const Camera &camera, const QSizeF &size,
                           const Look &look, double scale) const = 0;
    // What is on the screen alone, over all that.
    virtual void paintMarks(QPainter &painter, const Camera &camera, const QSizeF &size,
                            const Look &look) const = 0;

protected:
    ~ViewOverlay() = default;
};

} // namespace structures
