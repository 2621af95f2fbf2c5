// SPDX-License-Identifier: GPL-3.0-or-later
#include "RedundancyModel.h"

#include <algorithm>
#include <utility>

namespace companion {

namespace {

constexpr double kWhole = 100;

} // namespace

RedundancyModel::RedundancyModel(QObject *parent) : QAbstractTableModel(parent) { }

RedundancyModel::~RedundancyModel() = default;

void RedundancyModel::show(std::vector<RedundantRow> found, Rows rows)
{
    beginResetModel();
    m_Found = std::move(found);
    m_Rows = std::move(rows);
    m_IsTicked.assign(m_Found.size(), true);
    m_TickedCount = int(m_Found.size());
    endResetModel();
    emit ticksChanged();
}

void RedundancyModel::clear()
{
    show({}, {});
}

void RedundancyModel::set(std::size_t place, bool isTicked)
{
    if (m_IsTicked[place] == isTicked)
        return;
    m_IsTicked[place] = isTicked;
    m_TickedCount += isTicked ? 1 : -1;
}

void RedundancyModel::tickAll(bool isTicked)
{
    if (m_Found.empty())
        return;
    m_IsTicked.assign(m_Found.size(), isTicked);
    m_TickedCount = isTicked ? int(m_Found.size()) : 0;
    emit dataChanged(index(0, Row), index(rowCount() - 1, Row), {Qt::CheckStateRole});
    emit ticksChanged();
}

void RedundancyModel::tick(const QList<int> &rows, bool isTicked)
{
    if (rows.isEmpty())
        return;
    for (const int row : rows)
        set(std::size_t(row), isTicked);
    const auto [first, last] = std::ranges::minmax(rows);
    emit dataChanged(index(first, Row), index(last, Row), {Qt::CheckStateRole});
    emit ticksChanged();
}

std::vector<bool> RedundancyModel::tickedRows(unsigned long rows) const
{
    std::vector<bool> ticked(rows);
    for (std::size_t i = 0; i < m_Found.size(); ++i)
        if (m_IsTicked[i])
            ticked[m_Found[i].row] = true;
    return ticked;
}

int RedundancyModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_Found.size());
}

int RedundancyModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString RedundancyModel::structureText(const RedundantRow &found) const
{
    const bool has = m_Rows.hasStructure(found.row);
    const bool keptHas = m_Rows.hasStructure(found.kept);
    return has && keptHas ? tr("both")
           : has          ? tr("this row")
           : keptHas      ? tr("the kept row")
                          : QString();
}

QVariant RedundancyModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::CheckStateRole && index.column() == Row)
        return isTicked(index.row()) ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::TextAlignmentRole && index.column() == Identity)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
    if (role != Qt::DisplayRole)
        return {};
    const RedundantRow &found = at(index.row());
    switch (index.column()) {
    case Row:
        return QString::number(found.row + 1UL);
    case Name:
        return m_Rows.name(found.row);
    case KeptRow:
        return QString::number(found.kept + 1UL);
    case KeptName:
        return m_Rows.name(found.kept);
    case Identity:
        return QString::number(kWhole * found.identity, 'f', 1);
    default:
        return structureText(found);
    }
}

bool RedundancyModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || index.column() != Row || role != Qt::CheckStateRole)
        return false;
    tick({index.row()}, value.toInt() == Qt::Checked);
    return true;
}

Qt::ItemFlags RedundancyModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags own = QAbstractTableModel::flags(index);
    return index.isValid() && index.column() == Row ? own | Qt::ItemIsUserCheckable : own;
}

QVariant RedundancyModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case Row:
        return tr("Remove row");
    case Name:
        return tr("Name");
    case KeptRow:
        return tr("Like row");
    case KeptName:
        return tr("Name of that one");
    case Identity:
        return tr("Identity %");
    default:
        return tr("Structure");
    }
}

} // namespace companion
