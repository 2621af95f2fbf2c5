// SPDX-License-Identifier: GPL-3.0-or-later
#include "CandidateModel.h"

#include "Alignment.h"
#include "Compound.h"
#include "Directories.h"
#include "Peptide.h"
#include "PlainText.h"
#include "Space.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace TAMBO::services {

namespace {

bool isBelowRoot(const Compound *object)
{
    const Compound *root = Space::instance();
    while (object != nullptr && object != root)
        object = object->Parent();
    return object != nullptr;
}

QString kindOf(const Compound &object)
{
    QString kind = QString::fromStdString(object.TypeName());
    if (!kind.isEmpty())
        kind[0] = kind[0].toUpper();
    return kind;
}

} // namespace

CandidateModel::CandidateModel(const std::vector<Compound *> &candidates, Ticks ticks,
                               QObject *parent)
    : QAbstractTableModel(parent), m_Ticks(ticks)
{
    m_Rows.reserve(candidates.size());
    for (Compound *object : candidates) {
        if (object == nullptr)
            continue;
        Row row;
        row.object = object;
        row.name = QString::fromStdString(object->GetFQName());
        row.kind = kindOf(*object);
        row.isLoaded = isBelowRoot(object);
        if (const auto *alignment = dynamic_cast<const Alignment *>(object)) {
            row.amount = alignment->height();
            row.size = tr("%1 × %2").arg(alignment->height()).arg(alignment->width());
        } else if (const Peptide *peptide = Peptide::from(object)) {
            row.amount = peptide->residueCount();
            row.size = row.amount == 1 ? tr("1 residue") : tr("%1 residues").arg(row.amount);
        } else {
            row.amount = object->ChildCount();
            row.size = QString::number(row.amount);
        }
        m_Rows.push_back(std::move(row));
    }
}

int CandidateModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_Rows.size());
}

int CandidateModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant CandidateModel::data(const QModelIndex &index, int role) const
{
    const Row &row = m_Rows[std::size_t(index.row())];
    if (role == Qt::DisplayRole || role == kSortRole) {
        switch (index.column()) {
        case NameColumn:
            return row.name;
        case KindColumn:
            return row.kind;
        default:
            return role == kSortRole ? QVariant(row.amount) : QVariant(row.size);
        }
    }
    if (index.column() != NameColumn)
        return {};
    if (role == Qt::DecorationRole)
        return icon(row.kind);
    if (role == Qt::ToolTipRole)
        return plainToolTip(row.name);
    if (role == Qt::CheckStateRole && m_Ticks == Ticks::With)
        return row.isTicked ? Qt::Checked : Qt::Unchecked;
    return {};
}

QVariant CandidateModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case NameColumn:
        return tr("Name");
    case KindColumn:
        return tr("Kind");
    default:
        return tr("Size");
    }
}

Qt::ItemFlags CandidateModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.column() == NameColumn && m_Ticks == Ticks::With)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

bool CandidateModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || index.column() != NameColumn || m_Ticks != Ticks::With)
        return false;
    setTicked(index.row(), value.toInt() == Qt::Checked);
    return true;
}

int CandidateModel::rowOf(const Compound *object) const
{
    const auto found = std::ranges::find(m_Rows, object, &Row::object);
    return found == m_Rows.end() ? -1 : int(std::distance(m_Rows.begin(), found));
}

void CandidateModel::setTicked(const std::vector<int> &rows, bool ticked)
{
    int first = rowCount();
    int last = -1;
    for (const int row : rows) {
        Row &changed = m_Rows[std::size_t(row)];
        if (changed.isTicked == ticked)
            continue;
        changed.isTicked = ticked;
        m_TickedCount += ticked ? 1 : -1;
        first = std::min(first, row);
        last = std::max(last, row);
    }
    if (last >= first)
        emit dataChanged(index(first, NameColumn), index(last, NameColumn), {Qt::CheckStateRole});
}

std::vector<Compound *> CandidateModel::ticked() const
{
    std::vector<Compound *> objects;
    for (const Row &row : m_Rows)
        if (row.isTicked)
            objects.push_back(row.object);
    return objects;
}

void CandidateModel::forgetDeletedObjects()
{
    for (int row = rowCount() - 1; row >= 0; --row) {
        const Row &candidate = m_Rows[std::size_t(row)];
        if (!candidate.isLoaded || isBelowRoot(candidate.object))
            continue;
        beginRemoveRows({}, row, row);
        m_TickedCount -= candidate.isTicked ? 1 : 0;
        m_Rows.erase(m_Rows.begin() + row);
        endRemoveRows();
    }
}

QIcon CandidateModel::icon(const QString &kind) const
{
    const auto known = m_Icons.find(kind);
    if (known != m_Icons.end())
        return known->second;
    const QString file =
        QStringLiteral("%1/icons/kind-%2.svg").arg(Directories::shared(), kind.toLower());
    return m_Icons[kind] = QFileInfo::exists(file) ? QIcon(file) : QIcon();
}

} // namespace TAMBO::services

#include "moc_CandidateModel.cpp"
