// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectTree.h"

#include "Alignment.h"
#include "LongStages.h"
#include "ObjectCommands.h"
#include "ObjectTreeModel.h"
#include "Publisher.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace TAMBO::app {

namespace {

// So many sequences are shown at once; more stay folded.
constexpr int kFewSequences = 20;
// More room between the rows than the style leaves.
constexpr int kRowPadding = 5;

// Whether a row of the unfolded tree stands above another one.
bool isAbove(QModelIndex a, QModelIndex b)
{
    const auto depthOf = [](QModelIndex index) {
        int depth = 0;
        for (; index.isValid(); index = index.parent())
            ++depth;
        return depth;
    };
    if (a.parent() == b.parent())
        return a.row() < b.row();
    const int depthA = depthOf(a);
    const int depthB = depthOf(b);
    for (int i = depthA; i > depthB; --i)
        a = a.parent();
    for (int i = depthB; i > depthA; --i)
        b = b.parent();
    // A row stands above what it holds.
    if (a == b)
        return depthA < depthB;
    while (a.parent() != b.parent()) {
        a = a.parent();
        b = b.parent();
    }
    return a.row() < b.row();
}

class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, kRowPadding);
    }
};

} // namespace

ObjectTree::ObjectTree(ObjectTreeModel &model, QWidget *parent)
    : QTreeView(parent), m_Objects(model)
{
    setObjectName(QStringLiteral("ObjectTree"));
    setUniformRowHeights(true);
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(EditKeyPressed);
    setExpandsOnDoubleClick(false);
    setAllColumnsShowFocus(true);
    setFrameShape(NoFrame);
    setItemDelegate(new RowDelegate(this));
    setModel(&model);
    // The toolkit repaints the rows that are named alone, and not those below them.
    connect(&model, &QAbstractItemModel::dataChanged, viewport(), qOverload<>(&QWidget::update));
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::Interactive);
    header()->setSectionResizeMode(2, QHeaderView::Interactive);
    const auto roomFor = [this](const QString &text) {
        return fontMetrics().horizontalAdvance(text) + 3 * fontMetrics().averageCharWidth();
    };
    header()->resizeSection(1, roomFor(tr("alignment")));
    header()->resizeSection(2, roomFor(QStringLiteral("20,000 × 10,000")));
    connect(this, &QAbstractItemView::doubleClicked, this, &ObjectTree::activate);
    connect(this, &QAbstractItemView::pressed, this, &ObjectTree::pressed);
    connect(&model, &QAbstractItemModel::rowsInserted, this, &ObjectTree::unfoldFewSequences);
    // Those that are there already.
    if (const int rows = model.rowCount(); rows > 0)
        unfoldFewSequences({}, 0, rows - 1);
}

ObjectTree::~ObjectTree() = default;

// Of a million rows an index each would take longer than all that is done with their objects.
std::vector<Compound *> ObjectTree::objectsOf(const QItemSelection &rows) const
{
    std::vector<Compound *> objects;
    for (const QItemSelectionRange &range : rows) {
        if (range.left() <= ObjectTreeModel::NameColumn && range.isValid())
            m_Objects.appendObjects(range.parent(), range.top(), range.bottom() + 1, objects);
    }
    return objects;
}

std::vector<Compound *> ObjectTree::pickedObjects() const
{
    QItemSelection ranges = selectionModel()->selection();
    const auto rowOf = [this](const QItemSelectionRange &range, int row) {
        return m_Objects.index(row, 0, range.parent());
    };
    std::sort(ranges.begin(), ranges.end(), [&](const auto &a, const auto &b) {
        return isAbove(rowOf(a, a.top()), rowOf(b, b.top()));
    });
    // Mostly one after the other; not when rows below a picked one are picked, too.
    const auto meet =
        std::adjacent_find(ranges.begin(), ranges.end(), [&](const auto &a, const auto &b) {
            return !isAbove(rowOf(a, a.bottom()), rowOf(b, b.top()));
        });
    if (meet == ranges.end())
        return objectsOf(ranges);
    QModelIndexList rows = selectionModel()->selectedRows();
    // Mostly they are picked from the top down.
    if (!std::is_sorted(rows.begin(), rows.end(), isAbove))
        std::sort(rows.begin(), rows.end(), isAbove);
    std::vector<Compound *> objects;
    for (const QModelIndex &index : rows) {
        if (Compound *const object = m_Objects.object(index))
            objects.push_back(object);
    }
    return objects;
}

// The toolkit makes a range of each row and joins it to those before, which takes seconds for a
// million of them.
void ObjectTree::selectAll()
{
    LongStages stages("Selecting", 2);
    QItemSelection all;
    if (!appendUnfolded({}, all))
        return;
    stages.next();
    selectionModel()->select(all, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

bool ObjectTree::appendUnfolded(const QModelIndex &parent, QItemSelection &out)
{
    // Of one that was unfolded a moment ago nobody may have asked for a row yet.
    if (!m_Objects.fetchAll(parent))
        return false;
    int begin = 0;
    const auto appendTo = [&](int end) {
        if (begin < end)
            out.select(m_Objects.index(begin, 0, parent), m_Objects.index(end - 1, 0, parent));
        begin = end;
    };
    for (int row = 0; row < m_Objects.rowCount(parent); ++row) {
        const QModelIndex index = m_Objects.index(row, 0, parent);
        if (!isExpanded(index) || !m_Objects.hasChildren(index))
            continue;
        // In the order in which they are seen.
        appendTo(row + 1);
        if (!appendUnfolded(index, out))
            return false;
    }
    appendTo(m_Objects.rowCount(parent));
    return true;
}

// Rows of deleted objects leave the selection while the deletion is being published; guards are
// refused then, so nothing is done to objects that are going.
void ObjectTree::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    const bool isChange = !selected.isEmpty() || !deselected.isEmpty();
    if (isChange && !m_IsPicking && !Publisher::isPublishing())
        userPicked(objectsOf(selected), objectsOf(deselected));
    emit picked();
}

void ObjectTree::userPicked(std::vector<Compound *> selected, std::vector<Compound *> deselected)
{
    ++m_UserPicks;
    const PointerSet<Compound> forUser = std::exchange(m_PickedForUser, {});
    if (!forUser.empty()) {
        std::erase_if(deselected, [&](Compound *object) { return forUser.contains(object); });
        for (Compound *const object : pickedObjects()) {
            if (forUser.contains(object))
                selected.push_back(object);
        }
    }
    ObjectCommands::changeSelection(selected, deselected);
}

void ObjectTree::pressed()
{
    const bool isLeft = QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    if (isLeft && !isPickedByUser() && !Publisher::isPublishing())
        userPicked({}, {});
}

// ---- Picking for the user

std::size_t ObjectTree::appendRowsOf(const QModelIndex &parent, const PointerSet<Compound> &objects,
                                     QItemSelection &out) const
{
    std::vector<Compound *> one;
    std::size_t count = 0;
    int begin = 0;
    const auto end = [&](int row) {
        if (begin < row)
            out.select(m_Objects.index(begin, 0, parent), m_Objects.index(row - 1, 0, parent));
        begin = row + 1;
    };
    const int rows = m_Objects.rowCount(parent);
    for (int row = 0; row < rows; ++row) {
        one.clear();
        m_Objects.appendObjects(parent, row, row + 1, one);
        if (!one.empty() && objects.contains(one.front()))
            ++count;
        else
            end(row);
    }
    end(rows);
    return count;
}

void ObjectTree::pick(const std::vector<Compound *> &objects)
{
    PointerSet<Compound> wanted(objects.begin(), objects.end());
    QItemSelection rows;
    if (!m_Objects.fetchAll({}))
        return;
    const std::size_t found = appendRowsOf({}, wanted, rows);
    const QModelIndex sequences = m_Objects.sequencesIndex();
    if (found < wanted.size() && sequences.isValid() && m_Objects.fetchAll(sequences))
        appendRowsOf(sequences, wanted, rows);
    if (rows.isEmpty())
        return;
    m_PickedForUser = std::move(wanted);
    m_IsPicking = true;
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    goTo(rows);
    m_IsPicking = false;
}

// What is folded stays so: a file may have brought thousands of sequences.
void ObjectTree::goTo(const QItemSelection &rows)
{
    const QItemSelectionRange &first = rows.front();
    const bool isFolded = first.parent().isValid() && !isExpanded(first.parent());
    const QModelIndex row =
        isFolded ? first.parent() : m_Objects.index(first.top(), 0, first.parent());
    selectionModel()->setCurrentIndex(row, QItemSelectionModel::NoUpdate);
    scrollTo(row);
}

void ObjectTree::contextMenuEvent(QContextMenuEvent *event)
{
    std::vector<Compound *> objects = pickedObjects();
    if (event->reason() == QContextMenuEvent::Mouse) {
        Compound *object = m_Objects.object(indexAt(event->pos()));
        if (object == nullptr)
            return;
        if (std::ranges::find(objects, object) == objects.end())
            objects = {object};
    }
    if (!objects.empty())
        emit menuAsked(objects);
}

void ObjectTree::activate(const QModelIndex &index)
{
    Compound *object = m_Objects.object(index);
    if (dynamic_cast<Alignment *>(object) != nullptr)
        emit opened(object);
    else
        setExpanded(index.siblingAtColumn(0), !isExpanded(index.siblingAtColumn(0)));
}

void ObjectTree::unfoldFewSequences(const QModelIndex &parent, int first, int last)
{
    const QModelIndex sequences = m_Objects.sequencesIndex();
    const bool isNew = !parent.isValid() && sequences.isValid() && sequences.row() >= first &&
                       sequences.row() <= last;
    if (!isNew)
        return;
    // The model is still telling of its new rows.
    QMetaObject::invokeMethod(
        this,
        [this] {
            const QModelIndex added = m_Objects.sequencesIndex();
            m_Objects.fetchMore(added);
            if (added.isValid() && m_Objects.rowCount(added) <= kFewSequences)
                expand(added);
        },
        Qt::QueuedConnection);
}

void ObjectTree::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    if (m_Objects.rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(24, 24, -24, -24),
                     Qt::AlignCenter | Qt::TextWordWrap,
                     tr("Open structures or alignments, or drop them here"));
}

} // namespace TAMBO::app

#include "moc_ObjectTree.cpp"
