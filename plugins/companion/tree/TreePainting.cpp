// SPDX-License-Identifier: GPL-3.0-or-later
#include "TreePainting.h"

#include "TextColors.h"
#include "Texts.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <limits>

namespace companion {

namespace {

constexpr QColor kBranch(50, 50, 50);
constexpr QColor kToName(190, 190, 190);
constexpr QColor kTriangle(200, 214, 232);
constexpr QColor kPresent(208, 88, 0);
// In pixels.
constexpr double kReach = 5;
constexpr double kNode = 2;
constexpr double kLeastPitchOfNodes = 6;
constexpr double kLeastPitchOfNames = 7;
// Numbers above and below a branch have room.
constexpr double kLeastPitchOfLabels = 12;
constexpr int kBeforeName = 4;
// Of a line, on each side of its middle.
constexpr double kHalfTriangle = 0.4;
// Painters count in ints, and far fewer than that are to be seen.
constexpr double kFar = 20000;

// Calls visit for each drawn node of which something may be in sight, those above first. A node
// with less than a pixel below it is the last one of its clade, and told to be a dot.
template <typename Visit>
void forEachInSight(const ShownTree &shown, const TreeSight &sight, double margin, Visit visit)
{
    const double first = sight.area.top() - margin;
    const double last = sight.area.bottom() + 1 + margin;
    const std::vector<ShownNode> &nodes = shown.nodes();
    for (std::size_t i = 0; i < nodes.size();) {
        const ShownNode &each = nodes[i];
        const double above = sight.y(each.firstLine);
        const double below = sight.y(each.lastLine);
        if (below < first || above > last) {
            i = each.end;
            continue;
        }
        const bool isDot = !each.isLeaf() && below - above < 1 && !each.isCollapsed;
        visit(i, isDot);
        i = isDot || each.isCollapsed ? each.end : i + 1;
    }
}

QPolygonF triangleOf(const ShownNode &node, const TreeSight &sight)
{
    const double half = kHalfTriangle * sight.pitch;
    const double right = std::max(sight.x(node.farthest), sight.x(node.depth) + kReach);
    return {{{sight.x(node.depth), sight.y(node.line)},
             {right, sight.y(node.firstLine) - half},
             {right, sight.y(node.lastLine) + half}}};
}

class TreePainter
{
public:
    TreePainter(QPainter &painter, const Tree &tree, const ShownTree &shown, const TreeSight &sight,
                const TreeLook &look)
        : m_Painter(painter),
          m_Tree(tree),
          m_Shown(shown),
          m_Sight(sight),
          m_Look(look),
          m_Font(look.font)
    {
        const double pixels = QFontMetrics(m_Font).height();
        if (sight.pitch < pixels)
            m_Font.setPixelSize(std::max(1, int(sight.pitch * kOfALine)));
        m_TextHeight = QFontMetrics(m_Font).height();
    }

    void paint(std::size_t i, bool isDot)
    {
        const ShownNode &each = m_Shown.nodes()[i];
        const double y = m_Sight.y(each.line);
        const double x = m_Sight.x(each.depth);
        const double from =
            each.parent == kNoNode ? x : m_Sight.x(m_Shown.nodes()[each.parent].depth);
        m_Painter.setPen(kBranch);
        line(from, y, isDot ? m_Sight.x(each.farthest) : x, y);
        if (each.isCollapsed) {
            m_Painter.setBrush(kTriangle);
            m_Painter.drawPolygon(triangleOf(each, m_Sight));
        } else if (!each.isLeaf() && !isDot) {
            line(x, m_Sight.y(m_Shown.nodes()[i + 1].line), x, m_Sight.y(each.lastChildLine));
            if (m_Sight.pitch >= kLeastPitchOfNodes)
                m_Painter.fillRect(QRectF(x - kNode, y - kNode, 2 * kNode, 2 * kNode), kBranch);
        }
        if (isDot)
            return;
        if (each.isLeaf() || each.isCollapsed)
            paintName(each, y);
        if (each.parent == kNoNode)
            return;
        const TreeNode &node = m_Tree.nodes[each.node];
        if (m_Look.showsLengths && node.length && m_Sight.pitch >= kLeastPitchOfNames)
            paintAtBranch(QString::number(*node.length, 'g', kDigits), from, x, y, kLengthText);
        // What is known of the clade, mostly how well it is supported.
        if (!each.isLeaf() && m_Sight.pitch >= kLeastPitchOfLabels)
            paintAtBranch(QString::fromStdString(node.name), from, x, y, kCladeText);
    }

    void paintPresent(const ShownNode &each)
    {
        constexpr double kMark = 4;
        const QRectF mark(m_Sight.x(each.depth) - kMark, m_Sight.y(each.line) - kMark, 2 * kMark,
                          2 * kMark);
        m_Painter.fillRect(mark, kPresent);
        if (!m_Look.hasKeys)
            return;
        m_Painter.setPen(kPresent);
        m_Painter.setBrush(Qt::NoBrush);
        m_Painter.drawRect(mark.adjusted(-2, -2, 1, 1));
    }

private:
    static constexpr double kOfALine = 0.85;
    static constexpr int kDigits = 3;

    void line(double fromX, double fromY, double toX, double toY)
    {
        const auto cut = [](double place) { return std::clamp(place, -kFar, kFar); };
        m_Painter.drawLine(QLineF(cut(fromX), cut(fromY), cut(toX), cut(toY)));
    }

    void paintName(const ShownNode &each, double y)
    {
        const double behind =
            m_Sight.x(each.isCollapsed ? each.farthest : each.depth) + kBeforeName;
        if (!m_Look.nameOf) {
            m_Painter.setPen(QPen(kToName, 1, Qt::DotLine));
            if (each.isLeaf() && m_Sight.pitch >= kLeastPitchOfNodes)
                line(behind, y, m_Sight.area.right(), y);
            return;
        }
        if (m_Sight.pitch < kLeastPitchOfNames)
            return;
        const QString text =
            each.isCollapsed
                ? tr("%1 … (%2)").arg(m_Look.nameOf(each.firstLeaf)).arg(rowsText(each.leaves()))
                : m_Look.nameOf(each.firstLeaf);
        m_Painter.setPen(Qt::black);
        m_Painter.setFont(m_Font);
        m_Painter.drawText(QRectF(behind, y - m_TextHeight, kFar, 2 * m_TextHeight),
                           Qt::AlignLeft | Qt::AlignVCenter, text);
    }

    // At the end of the branch, where that is long enough: a length above it, a label below.
    void paintAtBranch(const QString &text, double from, double x, double y, const QColor &color)
    {
        QFont small(m_Look.font);
        small.setPixelSize(std::clamp(int(m_Sight.pitch * kOfALine / 2), 7, 11));
        const QFontMetrics metrics(small);
        const double width = metrics.horizontalAdvance(text);
        if (text.isEmpty() || width + kNode > x - from)
            return;
        m_Painter.setFont(small);
        m_Painter.setPen(color);
        const double baseline = color == kCladeText ? y + metrics.ascent() : y - 2;
        m_Painter.drawText(QPointF(x - width - kNode, baseline), text);
    }

    QPainter &m_Painter;
    const Tree &m_Tree;
    const ShownTree &m_Shown;
    const TreeSight &m_Sight;
    const TreeLook &m_Look;
    QFont m_Font;
    double m_TextHeight = 0;
};

double distanceTo(const ShownTree &shown, const TreeSight &sight, std::size_t i,
                  const QPoint &point)
{
    const ShownNode &each = shown.nodes()[i];
    if (each.isCollapsed && triangleOf(each, sight).containsPoint(point, Qt::OddEvenFill))
        return 0;
    const double x = sight.x(each.depth);
    const double from = each.parent == kNoNode ? x : sight.x(shown.nodes()[each.parent].depth);
    const auto [left, right] = std::minmax(from, x);
    const double across = point.x() < left    ? left - point.x()
                          : point.x() > right ? point.x() - right
                                              : 0;
    // The node itself rather than the line along its children.
    const double toNode = std::hypot(point.x() - x, point.y() - sight.y(each.line));
    const double toBranch = std::hypot(across, point.y() - sight.y(each.line));
    return std::min(toBranch, toNode);
}

} // namespace

std::size_t paintTree(QPainter &painter, const Tree &tree, const ShownTree &shown,
                      const TreeSight &sight, const TreeLook &look)
{
    std::size_t looked = 0;
    painter.save();
    painter.setClipRect(sight.area);
    TreePainter nodes(painter, tree, shown, sight, look);
    // Names and numbers reach beyond their lines.
    forEachInSight(shown, sight, sight.pitch, [&](std::size_t i, bool isDot) {
        ++looked;
        nodes.paint(i, isDot);
    });
    if (shown.isDrawn(look.present))
        nodes.paintPresent(shown.nodes()[look.present]);
    painter.restore();
    return looked;
}

std::optional<std::size_t> nodeAt(const ShownTree &shown, const TreeSight &sight,
                                  const QPoint &point)
{
    if (!sight.area.contains(point))
        return std::nullopt;
    TreeSight near = sight;
    near.area = QRect(sight.area.left(), point.y() - 1, sight.area.width(), 2);
    double least = kReach;
    std::optional<std::size_t> found;
    forEachInSight(shown, near, kReach + sight.pitch, [&](std::size_t i, bool) {
        const double distance = distanceTo(shown, sight, i, point);
        // Of those that are as near the last one, which is the farthest from the root.
        if (distance <= least) {
            least = distance;
            found = i;
        }
    });
    return found;
}

QString rowsText(std::size_t rows)
{
    return rows == 1 ? tr("1 row") : tr("%L1 rows").arg(rows);
}

double scaleLength(double scale, double most)
{
    if (!(scale > 0) || !(most > 0))
        return 0;
    const double longest = most / scale;
    const double power = std::pow(10.0, std::floor(std::log10(longest)));
    for (const double digit : {5.0, 2.0})
        if (digit * power <= longest)
            return digit * power;
    return power;
}

void paintScale(QPainter &painter, const QRect &area, double scale)
{
    constexpr int kEnd = 3;
    constexpr int kShare = 3;
    const double length = scaleLength(scale, double(area.width()) / kShare);
    if (length == 0)
        return;
    const int left = area.left() + 2 * kEnd;
    const int right = left + int(std::lround(length * scale));
    const int y = area.center().y();
    painter.setPen(kBranch);
    painter.drawLine(left, y, right, y);
    painter.drawLine(left, y - kEnd, left, y + kEnd);
    painter.drawLine(right, y - kEnd, right, y + kEnd);
    painter.drawText(QRect(right + 2 * kEnd, area.top(), area.width(), area.height()),
                     Qt::AlignLeft | Qt::AlignVCenter, QString::number(length));
}

} // namespace companion
