// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectTreeModel.h"

#include "Compound.h"
#include "ObjectFacts.h"
#include "PlainText.h"

#include <QLocale>

#include <algorithm>
#include <unordered_set>

namespace TAMBO::app {

namespace {

// Rows made at once when a view asks for more.
constexpr std::size_t kBatch = 256;

} // namespace

struct ObjectTreeModel::Row
{
    Compound *object = nullptr;
    Row *parent = nullptr;
    int place = 0;
    // The first ones of the object's children.
    std::vector<std::unique_ptr<Row>> rows;
    // How many children the object had when it was last looked at.
    std::size_t known = 0;

    [[nodiscard]] bool isComplete() const noexcept { return rows.size() == known; }

    void renumber(std::size_t from)
    {
        for (std::size_t i = from; i < rows.size(); ++i)
            rows[i]->place = int(i);
    }
};

ObjectTreeModel::ObjectTreeModel(Compound &root, QObject *parent)
    : QAbstractItemModel(parent),
      m_Root(root),
      m_Top(std::make_unique<Row>()),
      m_SelectionColor(Qt::yellow)
{
    m_Top->object = &m_Root;
    m_RefreshTimer.setSingleShot(true);
    m_RefreshTimer.setInterval(0);
    connect(&m_RefreshTimer, &QTimer::timeout, this, &ObjectTreeModel::refresh);
    splitTopLevel();
    synchronise(*m_Top);
}

ObjectTreeModel::~ObjectTreeModel() = default;

// ---- What the objects are

// A chain without a structure above it.
void ObjectTreeModel::splitTopLevel()
{
    m_Objects.clear();
    m_SequenceObjects.clear();
    for (std::size_t i = 0; i < m_Root.ChildCount(); ++i) {
        Compound *object = m_Root.Child(i);
        if (object != nullptr) {
            const bool isSequence = kindOf(*object) == ObjectKind::Sequence;
            (isSequence ? m_SequenceObjects : m_Objects).push_back(object);
        }
    }
}

std::size_t ObjectTreeModel::childCount(const Row &row) const
{
    if (&row == m_Top.get())
        return m_Objects.size() + (m_SequenceObjects.empty() ? 0 : 1);
    return row.object == nullptr ? m_SequenceObjects.size() : row.object->ChildCount();
}

Compound *ObjectTreeModel::child(const Row &row, std::size_t place) const
{
    if (&row == m_Top.get())
        return place < m_Objects.size() ? m_Objects[place] : nullptr;
    return row.object == nullptr ? m_SequenceObjects[place] : row.object->Child(place);
}

ObjectTreeModel::Children ObjectTreeModel::children(const Row &row, std::size_t begin,
                                                    std::size_t end) const
{
    Children result;
    result.reserve(end - begin);
    for (std::size_t i = begin; i < end; ++i)
        result.push_back(child(row, i));
    return result;
}

// ---- Following changes

void ObjectTreeModel::commUpdate()
{
    scheduleRefresh();
}

void ObjectTreeModel::commAdd()
{
    synchronise();
}

// At once: deleted objects are freed when everybody has been told.
void ObjectTreeModel::commDelete()
{
    synchronise();
}

void ObjectTreeModel::scheduleRefresh()
{
    if (!m_RefreshTimer.isActive())
        m_RefreshTimer.start();
}

// Views repaint what they show and ask for nothing else.
void ObjectTreeModel::refresh()
{
    if (!m_Top->rows.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

void ObjectTreeModel::synchronise()
{
    splitTopLevel();
    m_IsMatching = true;
    synchronise(*m_Top);
    m_IsMatching = false;
    scheduleRefresh();
}

void ObjectTreeModel::synchronise(Row &row)
{
    const bool wasComplete = row.isComplete();
    row.known = childCount(row);
    if (row.rows.empty() && !wasComplete)
        return;
    const auto fits = [&](const std::unique_ptr<Row> &made) {
        return child(row, std::size_t(made->place)) == made->object;
    };
    const bool isPrefix = row.rows.size() <= row.known && std::ranges::all_of(row.rows, fits);
    if (!isPrefix || (wasComplete && !row.isComplete())) {
        const Children wanted = children(row, 0, row.known);
        removeGone(row, wanted);
        const std::size_t more = wasComplete ? kBatch : 0;
        matchRows(row, wanted, std::min(wanted.size(), row.rows.size() + more));
    }
    for (const std::unique_ptr<Row> &made : row.rows)
        synchronise(*made);
}

void ObjectTreeModel::removeGone(Row &row, const Children &wanted)
{
    const std::unordered_set<const Compound *> existing(wanted.begin(), wanted.end());
    const auto isGone = [&](std::size_t i) { return !existing.contains(row.rows[i]->object); };
    for (std::size_t end = row.rows.size(); end > 0;) {
        if (!isGone(end - 1)) {
            --end;
            continue;
        }
        std::size_t begin = end - 1;
        while (begin > 0 && isGone(begin - 1))
            --begin;
        beginRemoveRows(indexOfRow(row), int(begin), int(end - 1));
        for (std::size_t i = begin; i < end; ++i) {
            if (row.rows[i].get() == m_Sequences)
                m_Sequences = nullptr;
        }
        row.rows.erase(row.rows.begin() + std::ptrdiff_t(begin),
                       row.rows.begin() + std::ptrdiff_t(end));
        row.renumber(begin);
        endRemoveRows();
        end = begin;
    }
}

// Makes the rows the first ones of wanted, at least count of them. All rows occur in wanted.
void ObjectTreeModel::matchRows(Row &row, const Children &wanted, std::size_t count)
{
    std::unordered_set<const Compound *> made;
    for (const std::unique_ptr<Row> &child : row.rows)
        made.insert(child->object);
    for (std::size_t i = 0; i < std::max(count, row.rows.size()); ++i) {
        if (i < row.rows.size() && row.rows[i]->object == wanted[i])
            continue;
        if (made.contains(wanted[i])) {
            std::size_t from = i + 1;
            while (row.rows[from]->object != wanted[i])
                ++from;
            moveRow(row, from, i);
            continue;
        }
        std::size_t end = i + 1;
        while (end < std::max(count, row.rows.size() + (end - i)) && end < wanted.size() &&
               !made.contains(wanted[end]))
            ++end;
        addRows(row, i,
                Children(wanted.begin() + std::ptrdiff_t(i), wanted.begin() + std::ptrdiff_t(end)));
        i = end - 1;
    }
}

void ObjectTreeModel::addRows(Row &row, std::size_t at, const Children &objects)
{
    std::vector<std::unique_ptr<Row>> fresh;
    for (Compound *object : objects) {
        auto &made = fresh.emplace_back(std::make_unique<Row>());
        made->object = object;
        made->parent = &row;
        if (object == nullptr)
            m_Sequences = made.get();
        made->known = childCount(*made);
    }
    beginInsertRows(indexOfRow(row), int(at), int(at + objects.size() - 1));
    row.rows.insert(row.rows.begin() + std::ptrdiff_t(at), std::make_move_iterator(fresh.begin()),
                    std::make_move_iterator(fresh.end()));
    row.renumber(at);
    endInsertRows();
}

void ObjectTreeModel::moveRow(Row &row, std::size_t from, std::size_t to)
{
    const QModelIndex index = indexOfRow(row);
    beginMoveRows(index, int(from), int(from), index, int(to));
    const auto begin = row.rows.begin();
    std::rotate(begin + std::ptrdiff_t(to), begin + std::ptrdiff_t(from),
                begin + std::ptrdiff_t(from) + 1);
    row.renumber(to);
    endMoveRows();
}

// ---- The item model

ObjectTreeModel::Row *ObjectTreeModel::rowOf(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<Row *>(index.internalPointer()) : m_Top.get();
}

QModelIndex ObjectTreeModel::indexOfRow(const Row &row) const
{
    return &row == m_Top.get() ? QModelIndex() : createIndex(row.place, 0, &row);
}

Compound *ObjectTreeModel::object(const QModelIndex &index) const
{
    return index.isValid() ? rowOf(index)->object : nullptr;
}

QModelIndex ObjectTreeModel::sequencesIndex() const
{
    return m_Sequences == nullptr ? QModelIndex() : indexOfRow(*m_Sequences);
}

QModelIndex ObjectTreeModel::indexOf(const Compound *object) const
{
    std::vector<const Compound *> path;
    for (; object != nullptr && object != &m_Root; object = object->Parent())
        path.push_back(object);
    if (object == nullptr)
        return {};
    const auto find = [](const Row &row, const Compound *wanted) -> const Row * {
        const auto found = std::ranges::find(row.rows, wanted, [](const auto &made) {
            return static_cast<const Compound *>(made->object);
        });
        return found == row.rows.end() ? nullptr : found->get();
    };
    const Row *row = m_Top.get();
    for (auto step = path.rbegin(); row != nullptr && step != path.rend(); ++step) {
        const Row *next = find(*row, *step);
        if (next == nullptr && row == m_Top.get() && m_Sequences != nullptr)
            next = find(*m_Sequences, *step);
        row = next;
    }
    return row == nullptr || row == m_Top.get() ? QModelIndex() : indexOfRow(*row);
}

QModelIndex ObjectTreeModel::index(int row, int column, const QModelIndex &parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, rowOf(parent)->rows[std::size_t(row)].get());
}

QModelIndex ObjectTreeModel::parent(const QModelIndex &index) const
{
    return index.isValid() ? indexOfRow(*rowOf(index)->parent) : QModelIndex();
}

int ObjectTreeModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : int(rowOf(parent)->rows.size());
}

int ObjectTreeModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}

bool ObjectTreeModel::hasChildren(const QModelIndex &parent) const
{
    const Row &row = *rowOf(parent);
    return parent.column() <= 0 && (row.known > 0 || !row.rows.empty());
}

bool ObjectTreeModel::canFetchMore(const QModelIndex &parent) const
{
    return !m_IsMatching && parent.column() <= 0 && !rowOf(parent)->isComplete();
}

void ObjectTreeModel::fetchMore(const QModelIndex &parent)
{
    if (!canFetchMore(parent))
        return;
    Row &row = *rowOf(parent);
    const std::size_t at = row.rows.size();
    m_IsMatching = true;
    addRows(row, at, children(row, at, std::min(row.known, at + kBatch)));
    m_IsMatching = false;
}

QVariant ObjectTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && section == SizeColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
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
        return {};
    }
}

Qt::ItemFlags ObjectTreeModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Compound *row = object(index);
    if (row == nullptr)
        return Qt::ItemIsEnabled;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() == NameColumn && isRenamable(*row))
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool ObjectTreeModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    Compound *row = object(index);
    if (row == nullptr || role != Qt::EditRole || index.column() != NameColumn)
        return false;
    const QString name = value.toString().trimmed();
    if (name.isEmpty() || name == nameText(*row))
        return false;
    emit renameAsked(row, name);
    return true;
}

QVariant ObjectTreeModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::TextAlignmentRole && index.column() == SizeColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    const Compound *row = object(index);
    return row == nullptr ? sequencesData(index.column(), role)
                          : objectData(*row, index.column(), role);
}

QVariant ObjectTreeModel::objectData(const Compound &object, int column, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        if (column == KindColumn)
            return kindText(kindOf(object));
        return column == SizeColumn ? sizeText(object) : nameText(object);
    case Qt::EditRole:
        return column == NameColumn ? nameText(object) : QVariant();
    case Qt::DecorationRole:
        return column == NameColumn ? QVariant(m_Icons.icon(kindOf(object), object.IsLocked()))
                                    : QVariant();
    case Qt::ToolTipRole: {
        const QString name = QString::fromStdString(object.GetFQName());
        return plainToolTip(object.IsLocked() ? tr("%1 (locked)").arg(name) : name);
    }
    case Qt::BackgroundRole:
        return object.IsSelected() ? QVariant(m_SelectionColor) : QVariant();
    case Qt::ForegroundRole:
        return object.IsSelected() ? QVariant(QColor(Qt::black)) : QVariant();
    default:
        return {};
    }
}

QVariant ObjectTreeModel::sequencesData(int column, int role) const
{
    if (role == Qt::DecorationRole && column == NameColumn)
        return m_Icons.icon(ObjectKind::Sequence, false);
    if (role != Qt::DisplayRole)
        return {};
    if (column == NameColumn)
        return tr("Sequences");
    return column == SizeColumn ? QLocale().toString(qulonglong(m_SequenceObjects.size()))
                                : QString();
}

void ObjectTreeModel::setSelectionColor(const QColor &color)
{
    m_SelectionColor = color;
    scheduleRefresh();
}

} // namespace TAMBO::app
