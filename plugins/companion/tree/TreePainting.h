// SPDX-License-Identifier: GPL-3.0-or-later
// Painting a tree, and what of it is at a point. What is out of sight costs nothing, and what is
// smaller than a pixel is one line.
#pragma once

#include "ShownTree.h"

#include <QFont>
#include <QPoint>
#include <QRect>
#include <QString>

#include <functional>
#include <optional>

class QPainter;

namespace companion {

// From lines and depths to pixels.
struct TreeSight
{
    // In which it is to be seen.
    QRect area;
    // Of line 0, and from one line to the next.
    double top = 0;
    double pitch = 1;
    // Of the root, and for a length of 1.
    double left = 0;
    double scale = 1;

    [[nodiscard]] double y(double line) const noexcept { return top + line * pitch; }
    [[nodiscard]] double x(double depth) const noexcept { return left + depth * scale; }
};

struct TreeLook
{
    bool showsLengths = false;
    // Has a mark; a frame too while the keys go there.
    std::size_t present = kNoNode;
    bool hasKeys = false;
    // Of a leaf as it is shown. Without it lines lead from the leaves to the right edge, where the
    // names are.
    std::function<QString(std::size_t leaf)> nameOf;
    QFont font;
};

// Gives how many nodes it has looked at.
std::size_t paintTree(QPainter &painter, const Tree &tree, const ShownTree &shown,
                      const TreeSight &sight, const TreeLook &look);

// The node whose branch, or whose triangle, is at the point or near to it.
[[nodiscard]] std::optional<std::size_t> nodeAt(const ShownTree &shown, const TreeSight &sight,
                                                const QPoint &point);

// "1 row", "2,000 rows"
[[nodiscard]] QString rowsText(std::size_t rows);

// A length with few digits that takes no more pixels than most; 0 when there are no lengths.
[[nodiscard]] double scaleLength(double scale, double most);
// With a text, standing on the rectangle's lower edge.
void paintScale(QPainter &painter, const QRect &area, double scale);

} // namespace companion
