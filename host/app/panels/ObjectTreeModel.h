// SPDX-License-Identifier: GPL-3.0-or-later
// The objects of the workbench as a tree of rows. A row is made when a view asks for it, so a
// structure of a million atoms costs nothing until somebody opens it.
#pragma once

#include "Compound.h"
#include "KindIcons.h"
#include "Subscriber.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QTimer>

#include <memory>
#include <vector>

namespace TAMBO::app {

// Sequences without a structure stand together below one row of their own at the end, since a
// large alignment brings thousands of them. That row stands for no object.
class ObjectTreeModel : public QAbstractItemModel, private Subscriber
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
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

signals:
    // The user typed a new name into a row.
    void renameAsked(TAMBO::Compound *object, const QString &name);

private:
    struct Row;
    using Children = std::vector<Compound *>;

    void commUpdate() override;
    void commAdd() override;
    void commDelete() override;

    [[nodiscard]] Row *rowOf(const QModelIndex &index) const;
    [[nodiscard]] QModelIndex indexOfRow(const Row &row) const;
    void splitTopLevel();
    [[nodiscard]] std::size_t childCount(const Row &row) const;
    // Null stands for the row of the sequences.
    [[nodiscard]] Compound *child(const Row &row, std::size_t place) const;
    [[nodiscard]] Children children(const Row &row, std::size_t begin, std::size_t end) const;
    void synchronise(Row &row);
    void matchRows(Row &row, const Children &wanted, std::size_t count);
    void removeGone(Row &row, const Children &wanted);
    void addRows(Row &row, std::size_t at, const Children &objects);
    void moveRow(Row &row, std::size_t from, std::size_t to);
    [[nodiscard]] QVariant objectData(const Compound &object, int column, int role) const;
    [[nodiscard]] QVariant sequencesData(int column, int role) const;

    Compound &m_Root;
    // The top-level objects: those shown at the top, and those below the sequences' row.
    Children m_Objects;
    Children m_SequenceObjects;
    std::unique_ptr<Row> m_Top;
    Row *m_Sequences = nullptr;
    mutable KindIcons m_Icons;
    // Views ask for more while they are told of new rows; what is being matched must stand still.
    bool m_IsMatching = false;
    QColor m_SelectionColor;
    QTimer m_RefreshTimer;
};

} // namespace TAMBO::app
