// SPDX-License-Identifier: GPL-3.0-or-later
#include "DuplicateModel.h"

#include <utility>

namespace companion {

DuplicateModel::DuplicateModel(QObject *parent) : QAbstractTableModel(parent) { }

DuplicateModel::~DuplicateModel() = default;

void DuplicateModel::show(DuplicateGroups groups, Rows rows)
{
    beginResetModel();
    m_Groups = std::move(groups);
    m_Rows = std::move(rows);
    endResetModel();
}

int DuplicateModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_Groups.size());
}

int DuplicateModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant DuplicateModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    const DuplicateRow &shown = at(index.row());
    switch (index.column()) {
    case Row:
        return QString::number(shown.row + 1UL);
    case Name:
        return m_Rows.name(shown.row);
    case SameAs:
        return shown.row == shown.first
                   ? tr("the first one")
                   : tr("row %1, %2").arg(shown.first + 1UL).arg(m_Rows.name(shown.first));
    default:
        return QString::number(m_Rows.residues(shown.row));
    }
}

QVariant DuplicateModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case Row:
        return tr("Row");
    case Name:
        return tr("Name");
    case SameAs:
        return tr("Same as");
    default:
        return tr("Residues");
    }
}

} // namespace companion
