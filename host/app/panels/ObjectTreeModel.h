// SPDX-License-Identifier: GPL-3.0-or-later
// What a view shows of the rows of the workbench's objects.
#pragma once

#include "Compound.h"
#include "KindIcons.h"
#include "ObjectRows.h"
#include "PointerMap.h"
#include "Subscriber.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QTimer>

#include <cstddef>

namespace TAMBO::app {

class ObjectTreeModel : public QAbstractItemModel, private Subscriber, private ObjectRows::Listener
{
    Q_OBJECT

public:
    enum Column { NameColumn, KindColumn, SizeColumn, ColumnCount };

    // root outlives the model.
    explicit ObjectTreeModel(Compound &root, QObject *parent = nullptr);
    ~ObjectTreeModel() override;

    // Null for the row of the sequences and for an invalid index.
    [[nodiscard]] Compound *object(const QModelIndex &index) const;
    // Invalid when no view has asked for the object's row yet.
    [[nodiscard]] QModelIndex indexOf(const Compound *object) const;
    [[nodiscard]] QModelIndex sequencesIndex() const;
    // Behind the rows of selected objects.
    void setSelectionColor(const QColor &color);
    // Also called by the model itself: at once after an add or a delete, and once per run of the
    // event loop after updates.
    void synchronise();
    void refresh();
    // For changes that are not published.
    void scheduleRefresh();

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;
    // All that are left at once, as far as there are any. False when the user has given it up; then
    // there are as many as before.
    [[nodiscard]] bool fetchAll(const QModelIndex &parent);
    // Those of the rows [begin, end) below the parent that stand for one.
    void appendObjects(const QModelIndex &parent, int begin, int end,
                       std::vector<Compound *> &out) const;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

signals:
    // The user typed a new name into a row.
    void renameAsked(TAMBO::Compound *object, const QString &name);

private:
    using Row = ObjectRows::Row;

    void commUpdate() override;
    void commAdd() override;
    void commDelete() override;
    void aboutToRemove(const Row &row, std::size_t begin, std::size_t end) override;
    void removed() override;
    void aboutToInsert(const Row &row, std::size_t begin, std::size_t end) override;
    void inserted() override;
    void aboutToMove(const Row &row, std::size_t from, std::size_t to) override;
    void moved() override;

    [[nodiscard]] Row *rowOf(const QModelIndex &index) const;
    [[nodiscard]] QModelIndex indexOfRow(const Row &row) const;
    [[nodiscard]] QVariant objectData(const Compound &object, int column, int role) const;
    [[nodiscard]] QVariant sequencesData(int column, int role) const;
    // Behind the name of a top-level object of which there is another one of that name.
    [[nodiscard]] QString difference(const Compound &object) const;
    void findDifferences() const;

    ObjectRows m_Rows;
    mutable KindIcons m_Icons;
    QColor m_SelectionColor;
    QTimer m_RefreshTimer;
    // Of the objects with a name that others have; looked for when the first one is shown.
    mutable PointerMap<Compound, QString> m_Differences;
    mutable bool m_KnowsDifferences = false;
};

} // namespace TAMBO::app
