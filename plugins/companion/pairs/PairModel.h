// SPDX-License-Identifier: GPL-3.0-or-later
// The identity of each two rows as a table that can be sorted.
#pragma once

#include "IdentityDistances.h"

#include <QAbstractTableModel>
#include <QStringList>

#include <cstdint>
#include <vector>

namespace companion {

class PairModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { FirstName, SecondName, Identity, ColumnCount };

    explicit PairModel(QObject *parent = nullptr);
    ~PairModel() override;

    // As many names as the matrix has rows.
    void setPairs(QStringList names, DistanceMatrix distances);

    // The rows of the alignment that a row of the table is about.
    struct Pair
    {
        std::uint32_t first = 0;
        std::uint32_t second = 0;
    };
    [[nodiscard]] const Pair &pair(int row) const { return m_Pairs.at(std::size_t(row)); }
    // The table as it is sorted, with a heading: names in quotes, identities in percent with two
    // digits behind a point.
    [[nodiscard]] QByteArray toCsv() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // Those that are equal stay in their order.
    void sort(int column, Qt::SortOrder order) override;

private:
    [[nodiscard]] double percent(const Pair &pair) const
    {
        return 100 * (1 - m_Distances.at(pair.first, pair.second));
    }

    QStringList m_Names;
    DistanceMatrix m_Distances;
    std::vector<Pair> m_Pairs;
};

} // namespace companion
