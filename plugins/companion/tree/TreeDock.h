// SPDX-License-Identifier: GPL-3.0-or-later
// The dock with the tree of the rows of an alignment window: made, opened, shown, kept in step with
// edits, and saved.
#pragma once

#include "AlignmentViewObserver.h"
#include "LeafRows.h"
#include "ShownTree.h"
#include "TreeJob.h"

#include <QDockWidget>
#include <QTimer>

#include <memory>
#include <optional>

class QLabel;
class QMenu;
class QProgressBar;
class QToolButton;

namespace companion {

class TreeView;

// Out of sight until it is asked for. Left of the names its leaves stand beside their rows, when
// the rows stand in the tree's order; afloat, and otherwise, it has a size of its own.
class TreeDock : public QDockWidget, public TAMBO::AlignmentViewObserver
{
    Q_OBJECT

public:
    // A child of the window's own widget, and gone with it.
    explicit TreeDock(TAMBO::AlignmentWindow &window);
    ~TreeDock() override;

    // Into sight, or out of it. In sight, a tree that takes little time is made at once.
    void toggle();
    // By neighbor joining, or by fasttree of too many rows.
    void compute();
    void compute(TreeMethod method, const QString &file = {});
    void cancel();
    // A tree is made first when there is none.
    void sortRows();
    void askAndOpen();
    void askAndSave();
    void openFile(const QString &file);
    // False, and told, when it cannot be written.
    bool saveTo(const QString &file);

    [[nodiscard]] bool isComputing() const noexcept { return m_Job != nullptr; }
    [[nodiscard]] bool hasTree() const noexcept { return m_Made.has_value(); }
    [[nodiscard]] const ShownTree &shown() const noexcept { return m_Shown; }
    // How the rows of now are to those that the tree was made of.
    [[nodiscard]] const LeafRows &leaves() const noexcept { return m_Leaves; }
    // Still being looked at.
    [[nodiscard]] bool isLooking() const { return m_Slices.isActive(); }
    [[nodiscard]] TreeView &view() const noexcept { return *m_View; }
    [[nodiscard]] QString stateText() const;
    void fillMenu(QMenu &menu);

    void alignmentShown() override;
    void layoutRebuilt() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void makeWidgets();
    void comeIntoSight();
    // Of rows that can be joined.
    void computeIfQuick();
    void take(const MadeTree &made);
    void fail(const QString &cause);
    void endJob();
    void clear();
    // At the rows as they are now.
    void look();
    void lookOn();
    void showRows();
    void choose(std::size_t shown, bool adds);
    void tell(const QString &text);
    void showState();
    [[nodiscard]] TAMBO::AlignmentWindow &shownWindow() const;
    [[nodiscard]] TAMBO::Alignment *alignment() const;
    [[nodiscard]] QString originText() const;
    [[nodiscard]] std::string nameOfLeaf(std::size_t leaf) const;

    // Without tree and leaves.
    std::optional<MadeTree> m_Made;
    // The view has a reference to it.
    Tree m_Tree;
    LeafRows m_Leaves;
    ShownTree m_Shown;
    // Of the rows that are shown.
    unsigned long m_ShownRevision = 0;
    // Of the alignment when it was looked at last.
    unsigned long m_Layout = 0;
    QTimer m_Slices;
    std::unique_ptr<TreeJob> m_Job;
    bool m_SortsWhenMade = false;
    // Has been in sight, and has the width that the user likes.
    bool m_HasWidth = false;

    TreeView *m_View = nullptr;
    QLabel *m_State = nullptr;
    QProgressBar *m_Progress = nullptr;
    QToolButton *m_Compute = nullptr;
    QToolButton *m_Sort = nullptr;
    QToolButton *m_Cancel = nullptr;
    QToolButton *m_More = nullptr;
};

} // namespace companion
