// SPDX-License-Identifier: GPL-3.0-or-later
#include "StatisticsModel.h"

#include <QColor>

#include <algorithm>

namespace {

QString text(const ColumnStatistics &column, int row, int field)
{
    switch (field) {
    case StatisticsModel::Column:
        return QString::number(row + 1);
    case StatisticsModel::Occupancy:
        return QString::number(double(column.occupancy), 'f', 2);
    case StatisticsModel::Letter:
        return QString(QLatin1Char(column.letter));
    case StatisticsModel::Share:
        return column.isEmpty() ? "-" : QString::number(column.share, 'f', 2);
    default:
        return column.isEmpty() ? "-" : QString::number(column.entropy, 'f', 3);
    }
}

QVariant sortKey(const ColumnStatistics &column, int row, int field)
{
    switch (field) {
    case StatisticsModel::Column:
        return row;
    case StatisticsModel::Occupancy:
        return column.occupancy;
    case StatisticsModel::Letter:
        return QString(QLatin1Char(column.letter));
    case StatisticsModel::Share:
        return column.share;
    default:
        // A column without residues is no conserved one.
        return column.isEmpty() ? -1.0 : column.entropy;
    }
}

} // namespace

void StatisticsModel::setColumns(std::vector<ColumnStatistics> columns, float threshold)
{
    m_Threshold = threshold;
    // A reset would lose the current row, which an edit in the editor need not do.
    if (columns.size() == m_Columns.size() && !columns.empty()) {
        m_Columns = std::move(columns);
        emit dataChanged(index(0, 0), index(rowCount() - 1, FieldCount - 1));
        return;
    }
    beginResetModel();
    m_Columns = std::move(columns);
    endResetModel();
}

bool StatisticsModel::isSparse(unsigned long column) const
{
    return column < m_Columns.size() && m_Columns[column].occupancy < m_Threshold;
}

std::size_t StatisticsModel::sparseCount() const
{
    return std::size_t(
        std::count_if(m_Columns.begin(), m_Columns.end(),
                      [this](const auto &column) { return column.occupancy < m_Threshold; }));
}

int StatisticsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_Columns.size());
}

int StatisticsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : FieldCount;
}

QVariant StatisticsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ColumnStatistics &column = m_Columns[std::size_t(index.row())];
    if (role == Qt::DisplayRole)
        return text(column, index.row(), index.column());
    if (role == kSortRole)
        return sortKey(column, index.row(), index.column());
    if (role == Qt::TextAlignmentRole)
        return int(index.column() == Letter ? Qt::AlignCenter : Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::ForegroundRole && index.column() == Occupancy &&
        isSparse(static_cast<unsigned long>(index.row())))
        return QColor(kSparseColor);
    return {};
}

QVariant StatisticsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const char *const kTitles[] = {"Column", "Occupancy", "Letter", "Share",
                                          "Entropy (bits)"};
    static const char *const kToolTips[] = {
        "Counted from 1",
        "Share of the rows that have a residue",
        "Most frequent letter",
        "Share of the residues that have this letter",
        "Shannon entropy of the letters (Shannon 1948); gaps are left out",
    };
    if (orientation != Qt::Horizontal || section < 0 || section >= FieldCount)
        return {};
    if (role == Qt::DisplayRole)
        return kTitles[section];
    if (role == Qt::ToolTipRole)
        return kToolTips[section];
    return {};
}
