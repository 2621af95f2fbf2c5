// SPDX-License-Identifier: GPL-3.0-or-later
#include "PairModel.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace companion {

namespace {

QByteArray quoted(const QString &name)
{
    QByteArray text = name.toUtf8();
    text.replace('"', "\"\"");
    return '"' + text + '"';
}

// The place of each name in the alphabet, so that sorting compares numbers.
std::vector<std::uint32_t> ranksOf(const QStringList &names)
{
    std::vector<std::uint32_t> order(std::size_t(names.size()));
    std::iota(order.begin(), order.end(), 0U);
    std::ranges::stable_sort(
        order, {}, [&names](std::uint32_t i) -> const QString & { return names[qsizetype(i)]; });
    std::vector<std::uint32_t> ranks(order.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        const bool isEqual = i > 0 && names[qsizetype(order[i])] == names[qsizetype(order[i - 1])];
        ranks[order[i]] = isEqual ? ranks[order[i - 1]] : std::uint32_t(i);
    }
    return ranks;
}

} // namespace

PairModel::PairModel(QObject *parent) : QAbstractTableModel(parent) { }

PairModel::~PairModel() = default;

void PairModel::setPairs(QStringList names, DistanceMatrix distances)
{
    beginResetModel();
    m_Names = std::move(names);
    m_Distances = std::move(distances);
    m_Pairs.clear();
    const auto rows = static_cast<std::uint32_t>(m_Distances.rows());
    m_Pairs.reserve(std::size_t(rows) * rows / 2);
    for (std::uint32_t first = 0; first < rows; ++first) {
        for (std::uint32_t second = first + 1; second < rows; ++second)
            m_Pairs.push_back({first, second});
    }
    endResetModel();
}

QByteArray PairModel::toCsv() const
{
    QByteArray csv = "first,second,identity %\n";
    for (const Pair &pair : m_Pairs)
        csv += quoted(m_Names[pair.first]) + ',' + quoted(m_Names[pair.second]) + ',' +
               QByteArray::number(percent(pair), 'f', 2) + '\n';
    return csv;
}

int PairModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_Pairs.size());
}

int PairModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PairModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::TextAlignmentRole && index.column() == Identity)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
    if (role != Qt::DisplayRole)
        return {};
    const Pair &shown = pair(index.row());
    switch (index.column()) {
    case FirstName:
        return m_Names[shown.first];
    case SecondName:
        return m_Names[shown.second];
    default:
        return QString::number(percent(shown), 'f', 1);
    }
}

QVariant PairModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case FirstName:
        return tr("First");
    case SecondName:
        return tr("Second");
    default:
        return tr("Identity %");
    }
}

void PairModel::sort(int column, Qt::SortOrder order)
{
    emit layoutAboutToBeChanged();
    const auto sortBy = [&](const auto &key) {
        if (order == Qt::AscendingOrder)
            std::ranges::stable_sort(m_Pairs, std::ranges::less(), key);
        else
            std::ranges::stable_sort(m_Pairs, std::ranges::greater(), key);
    };
    if (column == Identity) {
        sortBy([this](const Pair &pair) { return percent(pair); });
    } else {
        const std::vector<std::uint32_t> ranks = ranksOf(m_Names);
        sortBy([&](const Pair &pair) {
            return ranks[column == FirstName ? pair.first : pair.second];
        });
    }
    changePersistentIndexList(persistentIndexList(), QModelIndexList(persistentIndexList().size()));
    emit layoutChanged();
}

} // namespace companion
