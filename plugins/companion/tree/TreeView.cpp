// SPDX-License-Identifier: GPL-3.0-or-later
#include "TreeView.h"

#include "AlignmentWindow.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace companion {

using TAMBO::WindowArea;
using Way = ShownTree::Way;

namespace {

constexpr int kMargin = 8;
constexpr double kLargestPitch = 60;
constexpr double kWidest = 50;
constexpr double kZoomStep = 1.25;
// So many names are measured for the room that they need.
constexpr std::size_t kMeasured = 500;

} // namespace

TreeView::TreeView(TAMBO::AlignmentWindow &window, const Tree &tree, ShownTree &shown)
    : AlignmentViewObserver(window), m_Tree(tree), m_Shown(shown)
{
    setAccessibleName(tr("Tree of the rows"));
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumWidth(4 * kMargin);
    viewport()->setMouseTracking(true);
    placeBars();
}

TreeView::~TreeView() = default;

TAMBO::AlignmentWindow &TreeView::shownWindow() const
{
    return *AlignmentViewObserver::window();
}

void TreeView::setRemark(const QString &remark)
{
    m_Remark = remark;
    viewport()->update();
}

void TreeView::setNames(std::function<QString(std::size_t leaf)> nameOf)
{
    m_NameOf = std::move(nameOf);
}

void TreeView::treeChanged()
{
    m_Shown.setAtRows(m_IsBesideRows);
    if (m_Shown.nodes().empty())
        setPresent(kNoNode);
    else if (m_Present >= m_Shown.nodes().size())
        setPresent(0);
    measureNames();
    placeBars();
    viewport()->update();
}

void TreeView::setBesideRows(bool isBesideRows)
{
    m_IsBesideRows = isBesideRows;
    treeChanged();
}

void TreeView::setShowsLengths(bool shows)
{
    m_ShowsLengths = shows;
    viewport()->update();
}

// ---- Where it is drawn

QRect TreeView::treeArea() const
{
    QRect area = viewport()->rect();
    area.setBottom(area.bottom() - fontMetrics().height() - kMargin / 2);
    if (!m_Shown.isAtRows())
        return area;
    const QWidget *const cells = shownWindow().areaWidget(WindowArea::Cells);
    const int top = viewport()->mapFromGlobal(cells->mapToGlobal(QPoint(0, 0))).y();
    return area.intersected(
        QRect(area.left(), top, area.width(), shownWindow().visibleSize().height()));
}

double TreeView::leastPitch() const
{
    const double room = std::max(1, treeArea().height() - kMargin);
    return m_Shown.lines() > 0 ? room / m_Shown.lines() : 1;
}

double TreeView::pitch() const
{
    return std::clamp(m_Pitch, std::min(leastPitch(), kLargestPitch), kLargestPitch);
}

void TreeView::measureNames()
{
    m_NameWidth = 0;
    const std::size_t count = m_NameOf ? std::min(m_Shown.rows().size(), kMeasured) : 0;
    for (std::size_t leaf = 0; leaf < count; ++leaf)
        m_NameWidth = std::max(m_NameWidth, fontMetrics().horizontalAdvance(m_NameOf(leaf)));
    m_NameWidth += kMargin;
}

int TreeView::nameRoom() const
{
    const bool hasNames = pitch() >= fontMetrics().height() / 2.0;
    return hasNames ? std::min(m_NameWidth, viewport()->width() / 2) : 0;
}

TreeSight TreeView::sight() const
{
    TreeSight sight;
    sight.area = treeArea();
    double room = std::max(1, viewport()->width() - 2 * kMargin);
    if (m_Shown.isAtRows()) {
        const QWidget *const cells = shownWindow().areaWidget(WindowArea::Cells);
        sight.pitch = shownWindow().cellSize().height();
        sight.top = viewport()->mapFromGlobal(cells->mapToGlobal(QPoint(0, 0))).y() -
                    double(shownWindow().scrollPosition().y());
        sight.left = kMargin;
    } else {
        sight.pitch = pitch();
        sight.top = kMargin / 2.0 - verticalScrollBar()->value();
        room = std::max(1.0, room - nameRoom()) * m_Stretch;
        sight.left = kMargin - horizontalScrollBar()->value();
    }
    sight.scale = m_Shown.farthest() > 0 ? room / m_Shown.farthest() : 0;
    return sight;
}

void TreeView::placeBars()
{
    const bool isOwn = !m_Shown.isAtRows();
    const auto policy = isOwn ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
    setVerticalScrollBarPolicy(policy);
    setHorizontalScrollBarPolicy(policy);
    const int room = treeArea().height();
    const int needed = isOwn ? int(std::ceil(m_Shown.lines() * pitch())) + kMargin : 0;
    verticalScrollBar()->setPageStep(room);
    verticalScrollBar()->setSingleStep(std::max(1, int(pitch())));
    verticalScrollBar()->setRange(0, std::max(0, needed - room));
    const int width = viewport()->width();
    horizontalScrollBar()->setPageStep(width);
    horizontalScrollBar()->setSingleStep(kMargin);
    horizontalScrollBar()->setRange(0, isOwn ? int((m_Stretch - 1) * (width - 2 * kMargin)) : 0);
}

void TreeView::setPitch(double pitch, double fixedY)
{
    const TreeSight before = sight();
    m_Pitch = pitch <= leastPitch() ? 0 : std::min(pitch, kLargestPitch);
    placeBars();
    if (!m_Shown.isAtRows())
        verticalScrollBar()->setValue(int(std::lround(
            (fixedY - before.top) * (sight().pitch / before.pitch) - fixedY + kMargin / 2.0)));
    viewport()->update();
}

void TreeView::stretch(double factor)
{
    m_Stretch = std::clamp(m_Stretch * factor, 1.0, kWidest);
    placeBars();
    viewport()->update();
}

// ---- In step with the window

void TreeView::cellSizeChanged()
{
    viewport()->update();
}

void TreeView::visibleSizeChanged()
{
    placeBars();
    viewport()->update();
}

void TreeView::layoutRebuilt()
{
    viewport()->update();
}

void TreeView::scrolled()
{
    if (m_Shown.isAtRows())
        viewport()->update();
}

void TreeView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    placeBars();
}

void TreeView::scrollContentsBy(int, int)
{
    viewport()->update();
}

// ---- Painting

void TreeView::paintEvent(QPaintEvent *)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), Qt::white);
    painter.setPen(Qt::black);
    m_Painted = 0;
    if (m_Shown.nodes().empty()) {
        painter.drawText(viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin),
                         Qt::AlignCenter | Qt::TextWordWrap, m_Remark);
        return;
    }
    const TreeSight seen = sight();
    TreeLook look;
    look.showsLengths = m_ShowsLengths;
    look.present = m_Present;
    look.hasKeys = hasFocus();
    look.font = font();
    if (!m_Shown.isAtRows())
        look.nameOf = m_NameOf;
    painter.setRenderHint(QPainter::Antialiasing, false);
    m_Painted = paintTree(painter, m_Tree, m_Shown, seen, look);
    const int below = viewport()->rect().bottom() - fontMetrics().height() - kMargin / 2 + 1;
    if (m_Shown.hasLengths())
        paintScale(painter, {0, below, viewport()->width(), viewport()->height() - below},
                   seen.scale);
}

// ---- The present node

void TreeView::setPresent(std::size_t shown)
{
    if (shown == m_Present)
        return;
    m_Present = shown;
    setAccessibleDescription(shown == kNoNode ? QString() : describe(shown));
    QAccessibleEvent event(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
    viewport()->update();
}

QString TreeView::describe(std::size_t shown) const
{
    const ShownNode &each = m_Shown.nodes()[shown];
    const TreeNode &node = m_Tree.nodes[each.node];
    QStringList parts;
    if (each.isLeaf())
        parts << (m_NameOf ? m_NameOf(each.firstLeaf) : QString::fromStdString(node.name));
    else
        parts << tr("Clade of %1").arg(rowsText(each.leaves()));
    if (!each.isLeaf() && !node.name.empty())
        parts << QString::fromStdString(node.name);
    if (node.length && each.parent != kNoNode)
        parts << tr("branch length %1").arg(*node.length, 0, 'g', 4);
    if (each.isCollapsed)
        parts << tr("collapsed");
    return parts.join(QStringLiteral(", "));
}

void TreeView::toggleCollapsed(std::size_t shown)
{
    if (shown >= m_Shown.nodes().size())
        return;
    m_Shown.setCollapsed(shown, !m_Shown.nodes()[shown].isCollapsed);
    placeBars();
    viewport()->update();
}

void TreeView::reveal(std::size_t shown)
{
    const ShownNode &each = m_Shown.nodes()[shown];
    if (m_Shown.isAtRows()) {
        TAMBO::AlignmentWindow &window = shownWindow();
        window.showCell({static_cast<unsigned long>(each.line), window.visibleCells().colBegin});
        return;
    }
    const double y = each.line * pitch();
    const int room = treeArea().height();
    QScrollBar *const bar = verticalScrollBar();
    if (y - kMargin < bar->value())
        bar->setValue(int(y) - kMargin);
    else if (y + kMargin > bar->value() + room)
        bar->setValue(int(y) + kMargin - room);
}

void TreeView::go(Way way)
{
    if (m_Present >= m_Shown.nodes().size())
        return;
    setPresent(m_Shown.next(m_Present, way));
    reveal(m_Present);
}

bool TreeView::handleKey(QKeyEvent &event)
{
    if (m_Shown.nodes().empty() || m_Present >= m_Shown.nodes().size())
        return false;
    const double middle = treeArea().center().y();
    switch (event.key()) {
    case Qt::Key_Left:
        go(Way::ToParent);
        return true;
    case Qt::Key_Right:
        go(Way::ToChildren);
        return true;
    case Qt::Key_Up:
        go(Way::Up);
        return true;
    case Qt::Key_Down:
        go(Way::Down);
        return true;
    case Qt::Key_Home:
        setPresent(0);
        reveal(0);
        return true;
    case Qt::Key_Space:
        toggleCollapsed(m_Present);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit chosen(m_Present, event.modifiers().testFlag(Qt::ControlModifier));
        return true;
    case Qt::Key_Escape:
        shownWindow().areaWidget(WindowArea::Cells)->parentWidget()->setFocus();
        return true;
    case Qt::Key_Plus:
        setPitch(pitch() * kZoomStep, middle);
        return true;
    case Qt::Key_Minus:
        setPitch(pitch() / kZoomStep, middle);
        return true;
    default:
        return false;
    }
}

void TreeView::keyPressEvent(QKeyEvent *event)
{
    if (!handleKey(*event))
        QAbstractScrollArea::keyPressEvent(event);
}

void TreeView::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void TreeView::focusOutEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

// ---- The mouse

void TreeView::mousePressEvent(QMouseEvent *event)
{
    const std::optional<std::size_t> hit = nodeAt(m_Shown, sight(), event->pos());
    if (!hit || event->button() != Qt::LeftButton)
        return;
    setPresent(*hit);
    emit chosen(*hit, event->modifiers().testFlag(Qt::ControlModifier));
}

void TreeView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const std::optional<std::size_t> hit = nodeAt(m_Shown, sight(), event->pos());
    if (hit && event->button() == Qt::LeftButton)
        toggleCollapsed(*hit);
}

void TreeView::wheelEvent(QWheelEvent *event)
{
    const int notches = event->angleDelta().y();
    if (m_Shown.isAtRows()) {
        // As if it were over the names.
        QWidget *const names = shownWindow().areaWidget(WindowArea::Names);
        const QPointF at(0, names->mapFromGlobal(event->globalPosition()).y());
        QWheelEvent passed(at, names->mapToGlobal(at), event->pixelDelta(), event->angleDelta(),
                           event->buttons(), event->modifiers(), event->phase(), event->inverted(),
                           event->source());
        QCoreApplication::sendEvent(names, &passed);
    } else if (event->modifiers() == Qt::ControlModifier && notches != 0) {
        setPitch(notches > 0 ? pitch() * kZoomStep : pitch() / kZoomStep, event->position().y());
    } else if (event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier) && notches != 0) {
        stretch(notches > 0 ? kZoomStep : 1 / kZoomStep);
    } else {
        QAbstractScrollArea::wheelEvent(event);
    }
    event->accept();
}

void TreeView::contextMenuEvent(QContextMenuEvent *event)
{
    QPoint global = event->globalPos();
    if (event->reason() == QContextMenuEvent::Mouse) {
        if (const auto hit = nodeAt(m_Shown, sight(), event->pos()))
            setPresent(*hit);
    } else if (m_Present < m_Shown.nodes().size()) {
        const TreeSight seen = sight();
        const ShownNode &each = m_Shown.nodes()[m_Present];
        global = viewport()->mapToGlobal(QPoint(int(seen.x(each.depth)), int(seen.y(each.line))));
    }
    emit menuWanted(global);
}

bool TreeView::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto *const help = static_cast<const QHelpEvent *>(event);
    if (const auto hit = nodeAt(m_Shown, sight(), help->pos()))
        // A name may look like markup.
        QToolTip::showText(help->globalPos(), describe(*hit).toHtmlEscaped(), viewport());
    else
        QToolTip::hideText();
    return true;
}

} // namespace companion
