// SPDX-License-Identifier: GPL-3.0-or-later
#include "CandidateModel.h"

#include "Alignment.h"
#include "Compound.h"
#include "Directories.h"
#include "ObjectTwins.h"
#include "Peptide.h"
#include "Space.h"

#include <QFileInfo>

#include <algorithm>

namespace TAMBO::services {

namespace {

bool isBelowRoot(const Compound *object)
{
    const Compound *root = Space::instance();
    while (object != nullptr && object != root)
        object = object->Parent();
    return object != nullptr;
}

QString kindText(const std::string &typeName)
{
    QString kind = QString::fromStdString(typeName);
    if (!kind.isEmpty())
        kind[0] = kind[0].toUpper();
    return kind;
}

} // namespace

CandidateModel::CandidateModel(const std::vector<Compound *> &candidates, Ticks ticks,
                               QObject *parent)
    : QAbstractTableModel(parent), m_Ticks(ticks)
{
    m_Objects.reserve(candidates.size());
    m_IsLoaded.reserve(candidates.size());
    for (Compound *object : candidates) {
        if (object == nullptr)
            continue;
        m_Objects.push_back(object);
        m_IsLoaded.push_back(isBelowRoot(object));
    }
    m_IsTicked.resize(m_Objects.size());
}

// ---- What is told of a candidate

std::string CandidateModel::name(int row) const
{
    return object(row)->GetFQName();
}

std::string CandidateModel::kind(int row) const
{
    return object(row)->TypeName();
}

qulonglong CandidateModel::amount(int row) const
{
    Compound *const candidate = object(row);
    if (const auto *const alignment = dynamic_cast<const Alignment *>(candidate))
        return alignment->height();
    if (const Peptide *const peptide = Peptide::from(candidate))
        return peptide->residueCount();
    return candidate->ChildCount();
}

QString CandidateModel::shownName(int row) const
{
    const QString plain = QString::fromStdString(name(row));
    if (!m_TellsApart)
        return plain;
    if (!m_Differences) {
        m_Differences =
            ObjectTwins::differences({m_Objects.begin(), m_Objects.end()},
                                     [](const Compound &object) { return object.GetFQName(); });
    }
    return ObjectTwins::label(plain, (*m_Differences)[std::size_t(row)]);
}

QString CandidateModel::sizeText(int row) const
{
    const qulonglong count = amount(row);
    if (const auto *const alignment = dynamic_cast<const Alignment *>(object(row)))
        return tr("%1 × %2").arg(count).arg(alignment->width());
    if (Peptide::from(object(row)) != nullptr)
        return count == 1 ? tr("1 residue") : tr("%1 residues").arg(count);
    return QString::number(count);
}

void CandidateModel::setShown(const Alignment *shown)
{
    m_Present = {};
    if (shown == nullptr)
        return;
    m_Present[*shown] = 0;
    for (unsigned long row = 0; row < shown->height(); ++row) {
        const Compound *const sequence = shown->GetSeq(row);
        if (sequence == nullptr)
            continue;
        const auto [place, isNew] = m_Present.insert(*sequence);
        if (isNew)
            place = row;
    }
}

qulonglong CandidateModel::present(int row) const
{
    const qulonglong *const found = m_Present.find(*object(row));
    return found == nullptr ? kAbsent : *found;
}

QString CandidateModel::presentText(int row) const
{
    const qulonglong place = present(row);
    if (place == kAbsent)
        return {};
    return object(row)->Kind() == CompoundKind::Alignment ? tr("shown in this window")
                                                          : tr("already row %1").arg(place + 1);
}

int CandidateModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_Objects.size());
}

int CandidateModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant CandidateModel::data(const QModelIndex &index, int role) const
{
    const int row = index.row();
    if (role == Qt::DisplayRole) {
        switch (index.column()) {
        case NameColumn:
            return shownName(row);
        case KindColumn:
            return kindText(kind(row));
        case SizeColumn:
            return sizeText(row);
        default:
            return presentText(row);
        }
    }
    if (index.column() != NameColumn)
        return {};
    if (role == Qt::DecorationRole)
        return icon(kindText(kind(row)));
    if (role == Qt::ToolTipRole)
        return ObjectTwins::toolTip(*object(row));
    if (role == Qt::CheckStateRole && m_Ticks == Ticks::With)
        return isTicked(row) ? Qt::Checked : Qt::Unchecked;
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
    case SizeColumn:
        return tr("Size");
    default:
        return tr("In the alignment");
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
    const auto found = std::ranges::find(m_Objects, object);
    return found == m_Objects.end() ? -1 : int(found - m_Objects.begin());
}

void CandidateModel::setTicked(const std::vector<int> &rows, bool ticked)
{
    int first = rowCount();
    int last = -1;
    for (const int row : rows) {
        if (isTicked(row) == ticked)
            continue;
        m_IsTicked[std::size_t(row)] = ticked;
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
    objects.reserve(std::size_t(m_TickedCount));
    for (int row = 0; row < rowCount(); ++row)
        if (isTicked(row))
            objects.push_back(object(row));
    return objects;
}

std::vector<int> CandidateModel::forgetDeletedObjects()
{
    const std::size_t count = m_Objects.size();
    const auto isGone = [this](std::size_t row) {
        return m_IsLoaded[row] && !isBelowRoot(m_Objects[row]);
    };
    std::size_t kept = 0;
    while (kept < count && !isGone(kept))
        ++kept;
    if (kept == count)
        return {};
    beginResetModel();
    m_Differences.reset();
    std::vector<int> places(count, -1);
    for (std::size_t row = 0; row < kept; ++row)
        places[row] = int(row);
    for (std::size_t row = kept; row < count; ++row) {
        if (isGone(row)) {
            m_TickedCount -= m_IsTicked[row] ? 1 : 0;
            continue;
        }
        places[row] = int(kept);
        m_Objects[kept] = m_Objects[row];
        m_IsLoaded[kept] = m_IsLoaded[row];
        m_IsTicked[kept] = m_IsTicked[row];
        ++kept;
    }
    m_Objects.resize(kept);
    m_IsLoaded.resize(kept);
    m_IsTicked.resize(kept);
    endResetModel();
    return places;
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
