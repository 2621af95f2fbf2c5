// SPDX-License-Identifier: GPL-3.0-or-later
// The tree of loaded objects. Picking rows selects their objects; objects that are selected, here
// or elsewhere, have their rows tinted.
#pragma once

#include "Compound.h"

#include <QTreeView>

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
    void unfoldFewSequences(const QModelIndex &parent, int first, int last);
    // The rows below it, each that is unfolded followed by its own. False when the user has given
    // it up.
    [[nodiscard]] bool appendUnfolded(const QModelIndex &parent, QItemSelection &out);
    // In the order of the ranges.
    [[nodiscard]] std::vector<Compound *> objectsOf(const QItemSelection &rows) const;

    ObjectTreeModel &m_Objects;
};

} // namespace TAMBO::app
