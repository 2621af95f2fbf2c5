// SPDX-License-Identifier: GPL-3.0-or-later
// A tree on the screen: in step with the rows of an alignment window, or with scroll bars and a
// size of its own.
#pragma once

#include "AlignmentViewObserver.h"
#include "ShownTree.h"
#include "TreePainting.h"

#include <QAbstractScrollArea>

#include <functional>
#include <optional>
#include <vector>

namespace companion {

// Has a present node, which the keys move. Who owns this owns the tree as well, and says when it
// has changed.
class TreeView : public QAbstractScrollArea, public TAMBO::AlignmentViewObserver
{
    Q_OBJECT

public:
    TreeView(TAMBO::AlignmentWindow &window, const Tree &tree, ShownTree &shown);
    ~TreeView() override;

    // What is told where no tree is.
    void setRemark(const QString &remark);
    // The tree, its leaves or what is collapsed are others.
    void treeChanged();
    // It may be drawn at the rows, when they stand in its order.
    void setBesideRows(bool isBesideRows);
    [[nodiscard]] bool showsLengths() const noexcept { return m_ShowsLengths; }
    void setShowsLengths(bool shows);

    // kNoNode when there is no tree.
    [[nodiscard]] std::size_t present() const noexcept { return m_Present; }
    void setPresent(std::size_t shown);
    void toggleCollapsed(std::size_t shown);
    // "Clade of 5 rows, branch length 0.12"
    [[nodiscard]] QString describe(std::size_t shown) const;

    // From one line to the next, where they are not rows; 0 fits all of them in.
    void setPitch(double pitch, double fixedY);
    [[nodiscard]] TreeSight sight() const;
    // By the last painting.
    [[nodiscard]] std::size_t painted() const noexcept { return m_Painted; }

    // The name of a leaf as it is now.
    void setNames(std::function<QString(std::size_t leaf)> nameOf);

    void cellSizeChanged() override;
    void visibleSizeChanged() override;
    void scrolled() override;
    void layoutRebuilt() override;

signals:
    // The rows of the node are to be selected, besides others or alone.
    void chosen(std::size_t shown, bool adds);
    void menuWanted(const QPoint &global);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    // Below which the scale is drawn.
    [[nodiscard]] QRect treeArea() const;
    [[nodiscard]] double leastPitch() const;
    [[nodiscard]] double pitch() const;
    void measureNames();
    [[nodiscard]] int nameRoom() const;
    void placeBars();
    void reveal(std::size_t shown);
    void go(ShownTree::Way way);
    void stretch(double factor);
    bool handleKey(QKeyEvent &event);
    [[nodiscard]] TAMBO::AlignmentWindow &shownWindow() const;

    const Tree &m_Tree;
    ShownTree &m_Shown;
    QString m_Remark;
    std::function<QString(std::size_t)> m_NameOf;
    bool m_IsBesideRows = true;
    bool m_ShowsLengths = false;
    // Fits all of the tree as long as it is 0.
    double m_Pitch = 0;
    // Wider than what there is room for.
    double m_Stretch = 1;
    std::size_t m_Present = kNoNode;
    std::size_t m_Painted = 0;
    // Of the names of leaves, with a margin.
    int m_NameWidth = 0;
};

} // namespace companion
