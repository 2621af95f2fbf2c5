// SPDX-License-Identifier: GPL-3.0-or-later
// The tree of loaded objects. Picking rows selects their objects; objects that are selected, here
// or elsewhere, have their rows tinted.
#pragma once

#include "Compound.h"
#include "PointerSet.h"

#include <QTreeView>

#include <cstddef>
#include <vector>

namespace TAMBO::app {

class ObjectTreeModel;

class ObjectTree : public QTreeView
{
    Q_OBJECT

public:
    // The model outlives the tree.
    explicit ObjectTree(ObjectTreeModel &model, QWidget *parent = nullptr);
    ~ObjectTree() override;

    // In the order of the rows.
    [[nodiscard]] std::vector<Compound *> pickedObjects() const;

    // The rows of these alone, of objects at the top. What is selected of the objects stays as it
    // is until the user picks something; then what is still picked is selected as well.
    void pick(const std::vector<Compound *> &objects);
    // And not by pick().
    [[nodiscard]] bool isPickedByUser() const noexcept { return m_PickedForUser.empty(); }
    // How often the user has picked something.
    [[nodiscard]] std::size_t userPicks() const noexcept { return m_UserPicks; }

    // With the rows of unfolded objects that nobody has scrolled to yet.
    void selectAll() override;

signals:
    void menuAsked(const std::vector<TAMBO::Compound *> &objects);
    void opened(TAMBO::Compound *object);
    void picked();

protected:
    void selectionChanged(const QItemSelection &selected,
                          const QItemSelection &deselected) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void activate(const QModelIndex &index);
    // Of a row that was picked for the user and stays picked nothing else tells.
    void pressed();
    void userPicked(std::vector<Compound *> selected, std::vector<Compound *> deselected);
    // The runs of rows below the parent that stand for one of the objects; how many rows.
    std::size_t appendRowsOf(const QModelIndex &parent, const PointerSet<Compound> &objects,
                             QItemSelection &out) const;
    void goTo(const QItemSelection &rows);
    void unfoldFewSequences(const QModelIndex &parent, int first, int last);
    // The rows below it, each that is unfolded followed by its own. False when the user has given
    // it up.
    [[nodiscard]] bool appendUnfolded(const QModelIndex &parent, QItemSelection &out);
    // In the order of the ranges.
    [[nodiscard]] std::vector<Compound *> objectsOf(const QItemSelection &rows) const;

    ObjectTreeModel &m_Objects;
    // As pick() has been told, until the user picks something.
    PointerSet<Compound> m_PickedForUser;
    bool m_IsPicking = false;
    std::size_t m_UserPicks = 0;
};

} // namespace TAMBO::app
