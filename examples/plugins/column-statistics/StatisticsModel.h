// SPDX-License-Identifier: GPL-3.0-or-later
// The statistics of an alignment's columns as a table. Holds copies: it outlives the alignment.
#pragma once

#include "ColumnStatistics.h"

#include <QAbstractTableModel>

// Of what belongs to a column below the threshold, in the table and in the editor.
constexpr unsigned int kSparseColor = 0xd1491bU;

class StatisticsModel final : public QAbstractTableModel
{
public:
    enum Field { Column, Occupancy, Letter, Share, Entropy, FieldCount };
    // What rows are sorted by: numbers, where the text shown would sort 10 before 9.
    static constexpr int kSortRole = Qt::UserRole;

    void setColumns(std::vector<ColumnStatistics> columns, float threshold);

    [[nodiscard]] bool isSparse(unsigned long column) const;
    [[nodiscard]] std::size_t sparseCount() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<ColumnStatistics> m_Columns;
    float m_Threshold = 0;
};
