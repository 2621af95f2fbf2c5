// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectTreeModel.h"

#include "Compound.h"
#include "ObjectFacts.h"
#include "ObjectTwins.h"

#include <QLocale>

namespace TAMBO::app {

ObjectTreeModel::ObjectTreeModel(Compound &root, QObject *parent)
    : QAbstractItemModel(parent), m_Rows(root, *this), m_SelectionColor(Qt::yellow)
{
    m_RefreshTimer.setSingleShot(true);
    m_RefreshTimer.setInterval(0);
    connect(&m_RefreshTimer, &QTimer::timeout, this, &ObjectTreeModel::refresh);
    m_Rows.synchronise();
}

ObjectTreeModel::~ObjectTreeModel() = default;

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
    m_KnowsDifferences = false;
    if (!m_Rows.top().rows.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

void ObjectTreeModel::synchronise()
{
    m_KnowsDifferences = false;
    m_Rows.synchronise();
    scheduleRefresh();
}

void ObjectTreeModel::aboutToRemove(const Row &row, std::size_t begin, std::size_t end)
{
    beginRemoveRows(indexOfRow(row), int(begin), int(end - 1));
}

void ObjectTreeModel::removed()
{
    endRemoveRows();
}

void ObjectTreeModel::aboutToInsert(const Row &row, std::size_t begin, std::size_t end)
{
    beginInsertRows(indexOfRow(row), int(begin), int(end - 1));
}

void ObjectTreeModel::inserted()
{
    endInsertRows();
}

void ObjectTreeModel::aboutToMove(const Row &row, std::size_t from, std::size_t to)
{
    const QModelIndex index = indexOfRow(row);
    beginMoveRows(index, int(from), int(from), index, int(to));
}

void ObjectTreeModel::moved()
{
    endMoveRows();
}

// ---- The item model

ObjectRows::Row *ObjectTreeModel::rowOf(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<Row *>(index.internalPointer()) : &m_Rows.top();
}

QModelIndex ObjectTreeModel::indexOfRow(const Row &row) const
{
    return &row == &m_Rows.top() ? QModelIndex() : createIndex(row.place, 0, &row);
}

Compound *ObjectTreeModel::object(const QModelIndex &index) const
{
    return index.isValid() ? rowOf(index)->object : nullptr;
}

QModelIndex ObjectTreeModel::sequencesIndex() const
{
    const Row *row = m_Rows.sequences();
    return row == nullptr ? QModelIndex() : indexOfRow(*row);
}

QModelIndex ObjectTreeModel::indexOf(const Compound *object) const
{
    const Row *row = m_Rows.find(object);
    return row == nullptr ? QModelIndex() : indexOfRow(*row);
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
    return parent.column() <= 0 && m_Rows.canFetchMore(*rowOf(parent));
}

void ObjectTreeModel::fetchMore(const QModelIndex &parent)
{
    if (canFetchMore(parent))
        m_Rows.fetchMore(*rowOf(parent));
}

bool ObjectTreeModel::fetchAll(const QModelIndex &parent)
{
    return !canFetchMore(parent) || m_Rows.fetchAll(*rowOf(parent));
}

void ObjectTreeModel::appendObjects(const QModelIndex &parent, int begin, int end,
                                    std::vector<Compound *> &out) const
{
    const Row &row = *rowOf(parent);
    for (auto i = std::size_t(begin); i < std::size_t(end) && i < row.rows.size(); ++i) {
        if (row.rows[i]->object != nullptr)
            out.push_back(row.rows[i]->object);
    }
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
        return column == SizeColumn
                   ? sizeText(object)
                   : services::ObjectTwins::label(nameText(object), difference(object));
    case Qt::EditRole:
        return column == NameColumn ? nameText(object) : QVariant();
    case Qt::DecorationRole:
        return column == NameColumn ? QVariant(m_Icons.icon(kindOf(object), object.IsLocked()))
                                    : QVariant();
    case Qt::ToolTipRole: {
        return services::ObjectTwins::toolTip(object, object.IsLocked() ? tr("locked") : QString());
    }
    case Qt::BackgroundRole:
        return object.IsSelected() ? QVariant(m_SelectionColor) : QVariant();
    case Qt::ForegroundRole:
        return object.IsSelected() ? QVariant(QColor(Qt::black)) : QVariant();
    default:
        return {};
    }
}

QString ObjectTreeModel::difference(const Compound &object) const
{
    if (object.Parent() != m_Rows.top().object)
        return {};
    if (!m_KnowsDifferences)
        findDifferences();
    const QString *const found = m_Differences.find(object);
    return found == nullptr ? QString() : *found;
}

void ObjectTreeModel::findDifferences() const
{
    m_KnowsDifferences = true;
    m_Differences = {};
    const Compound &root = *m_Rows.top().object;
    services::ObjectTwins::Objects objects;
    const std::size_t count = root.ChildCount();
    for (std::size_t i = 0; i < count && count <= services::ObjectTwins::kMost; ++i) {
        if (const Compound *const object = root.Child(i))
            objects.push_back(object);
    }
    const std::vector<QString> texts = services::ObjectTwins::differences(
        objects, [](const Compound &object) { return object.Name(); });
    for (std::size_t i = 0; i < objects.size(); ++i) {
        if (!texts[i].isEmpty())
            m_Differences[*objects[i]] = texts[i];
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
    return column == SizeColumn ? QLocale().toString(qulonglong(m_Rows.sequenceCount()))
                                : QString();
}

void ObjectTreeModel::setSelectionColor(const QColor &color)
{
    m_SelectionColor = color;
    scheduleRefresh();
}

} // namespace TAMBO::app

#include "moc_ObjectTreeModel.cpp"
