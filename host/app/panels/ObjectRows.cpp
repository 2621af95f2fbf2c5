// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectRows.h"

#include "LongWork.h"
#include "Peptide.h"
#include "PointerSet.h"

#include <algorithm>
#include <iterator>

namespace TAMBO::app {

namespace {

// So many rows are made at once when a view asks for more, and later as many as there are, so that
// the end of a million sequences is a dozen portions away and not thousands.
constexpr std::size_t kBatch = 256;

} // namespace

void ObjectRows::Row::renumber(std::size_t from)
{
    for (std::size_t i = from; i < rows.size(); ++i)
        rows[i]->place = int(i);
}

ObjectRows::ObjectRows(Compound &root, Listener &listener)
    : m_Root(root), m_Listener(listener), m_Top(std::make_unique<Row>())
{
    m_Top->object = &m_Root;
}

ObjectRows::~ObjectRows() = default;

// ---- What the objects are

void ObjectRows::splitTopLevel()
{
    Children all;
    const std::size_t count = m_Root.ChildCount();
    all.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (Compound *const object = m_Root.Child(i))
            all.push_back(object);
    }
    if (all == m_All)
        return;
    noteKinds(all);
    m_All = std::move(all);
    m_Others.clear();
    for (std::size_t i = 0; i < m_All.size(); ++i) {
        if (!m_AreSequences[i])
            m_Others.push_back(i);
    }
}

// A sequence is a chain without a structure above it. To tell costs a cast, so that only those are
// asked that stand between the ones that stayed at either end.
void ObjectRows::noteKinds(const Children &all)
{
    const std::size_t common = std::min(all.size(), m_All.size());
    std::size_t begin = 0;
    while (begin < common && all[begin] == m_All[begin])
        ++begin;
    std::size_t stayed = 0;
    while (stayed < common - begin &&
           all[all.size() - 1 - stayed] == m_All[m_All.size() - 1 - stayed])
        ++stayed;
    const std::size_t end = all.size() - stayed;
    std::vector<bool> kinds(m_AreSequences.begin(), m_AreSequences.begin() + std::ptrdiff_t(begin));
    kinds.reserve(all.size());
    for (std::size_t i = begin; i < end; ++i)
        kinds.push_back(Peptide::from(all[i]) != nullptr);
    kinds.insert(kinds.end(), m_AreSequences.end() - std::ptrdiff_t(stayed), m_AreSequences.end());
    m_AreSequences = std::move(kinds);
}

std::size_t ObjectRows::childCount(const Row &row) const
{
    if (&row == m_Top.get())
        return m_Others.size() + (sequenceCount() == 0 ? 0 : 1);
    return row.object == nullptr ? sequenceCount() : row.object->ChildCount();
}

Compound *ObjectRows::child(const Row &row, std::size_t place) const
{
    if (&row == m_Top.get())
        return place < m_Others.size() ? m_All[m_Others[place]] : nullptr;
    return row.object == nullptr ? sequence(place) : row.object->Child(place);
}

// Of a million a list of their own would be megabytes, and the others are few beside them.
Compound *ObjectRows::sequence(std::size_t place) const
{
    std::size_t before = 0;
    std::size_t end = m_Others.size();
    while (before < end) {
        const std::size_t middle = before + (end - before) / 2;
        if (m_Others[middle] - middle <= place)
            before = middle + 1;
        else
            end = middle;
    }
    return m_All[place + before];
}

ObjectRows::Children ObjectRows::children(const Row &row, std::size_t begin, std::size_t end) const
{
    Children result;
    result.reserve(end - begin);
    for (std::size_t i = begin; i < end; ++i)
        result.push_back(child(row, i));
    return result;
}

// ---- Following changes

void ObjectRows::synchronise()
{
    splitTopLevel();
    m_IsMatching = true;
    synchronise(*m_Top);
    m_IsMatching = false;
}

void ObjectRows::synchronise(Row &row)
{
    const bool wasComplete = row.isComplete();
    row.known = childCount(row);
    if (row.rows.empty() && !wasComplete)
        return;
    std::size_t fitting = 0;
    while (fitting < std::min(row.rows.size(), row.known) &&
           child(row, fitting) == row.rows[fitting]->object)
        ++fitting;
    if (fitting < row.rows.size() || (wasComplete && !row.isComplete())) {
        const Children wanted = children(row, fitting, row.known);
        removeGone(row, fitting, wanted);
        const std::size_t more = wasComplete ? kBatch : 0;
        matchRows(row, fitting, wanted, std::min(row.known, row.rows.size() + more));
    }
    for (const std::unique_ptr<Row> &made : row.rows)
        synchronise(*made);
}

// Of the rows from first on. wanted: the objects that are to stand there.
void ObjectRows::removeGone(Row &row, std::size_t first, const Children &wanted)
{
    const PointerSet<Compound> existing(wanted.begin(), wanted.end());
    const auto isGone = [&](std::size_t i) { return !existing.contains(row.rows[i]->object); };
    for (std::size_t end = row.rows.size(); end > first;) {
        if (!isGone(end - 1)) {
            --end;
            continue;
        }
        std::size_t begin = end - 1;
        while (begin > first && isGone(begin - 1))
            --begin;
        m_Listener.aboutToRemove(row, begin, end);
        for (std::size_t i = begin; i < end; ++i) {
            if (row.rows[i].get() == m_Sequences)
                m_Sequences = nullptr;
        }
        row.rows.erase(row.rows.begin() + std::ptrdiff_t(begin),
                       row.rows.begin() + std::ptrdiff_t(end));
        row.renumber(begin);
        m_Listener.removed();
        end = begin;
    }
}

// Makes the rows from first on the first ones of wanted, so that there are at least count rows. All
// rows from first on occur in wanted.
void ObjectRows::matchRows(Row &row, std::size_t first, const Children &wanted, std::size_t count)
{
    PointerSet<Compound> made;
    for (std::size_t i = first; i < row.rows.size(); ++i)
        made.insert(row.rows[i]->object);
    for (std::size_t i = first; i < std::max(count, row.rows.size()); ++i) {
        Compound *const object = wanted[i - first];
        if (i < row.rows.size() && row.rows[i]->object == object)
            continue;
        if (made.contains(object)) {
            std::size_t from = i + 1;
            while (row.rows[from]->object != object)
                ++from;
            moveRow(row, from, i);
            continue;
        }
        std::size_t end = i + 1;
        while (end < std::max(count, row.rows.size() + (end - i)) && end - first < wanted.size() &&
               !made.contains(wanted[end - first]))
            ++end;
        addRows(row, i,
                Children(wanted.begin() + std::ptrdiff_t(i - first),
                         wanted.begin() + std::ptrdiff_t(end - first)));
        i = end - 1;
    }
}

std::unique_ptr<ObjectRows::Row> ObjectRows::makeRow(Row &parent, Compound *object)
{
    auto made = std::make_unique<Row>();
    made->object = object;
    made->parent = &parent;
    if (object == nullptr)
        m_Sequences = made.get();
    made->known = childCount(*made);
    return made;
}

void ObjectRows::addRows(Row &row, std::size_t at, const Children &objects)
{
    std::vector<std::unique_ptr<Row>> fresh;
    fresh.reserve(objects.size());
    for (Compound *const object : objects)
        fresh.push_back(makeRow(row, object));
    insertRows(row, at, std::move(fresh));
}

void ObjectRows::insertRows(Row &row, std::size_t at, std::vector<std::unique_ptr<Row>> fresh)
{
    m_Listener.aboutToInsert(row, at, at + fresh.size());
    row.rows.insert(row.rows.begin() + std::ptrdiff_t(at), std::make_move_iterator(fresh.begin()),
                    std::make_move_iterator(fresh.end()));
    row.renumber(at);
    m_Listener.inserted();
}

void ObjectRows::moveRow(Row &row, std::size_t from, std::size_t to)
{
    m_Listener.aboutToMove(row, from, to);
    const auto begin = row.rows.begin();
    std::rotate(begin + std::ptrdiff_t(to), begin + std::ptrdiff_t(from),
                begin + std::ptrdiff_t(from) + 1);
    row.renumber(to);
    m_Listener.moved();
}

// ---- What views ask for

const ObjectRows::Row *ObjectRows::find(const Compound *object) const
{
    std::vector<const Compound *> path;
    for (; object != nullptr && object != &m_Root; object = object->Parent())
        path.push_back(object);
    if (object == nullptr)
        return nullptr;
    const auto below = [](const Row &row, const Compound *wanted) -> const Row * {
        const auto found = std::ranges::find(row.rows, wanted, [](const auto &made) {
            return static_cast<const Compound *>(made->object);
        });
        return found == row.rows.end() ? nullptr : found->get();
    };
    const Row *row = m_Top.get();
    for (auto step = path.rbegin(); row != nullptr && step != path.rend(); ++step) {
        const Row *next = below(*row, *step);
        if (next == nullptr && row == m_Top.get() && m_Sequences != nullptr)
            next = below(*m_Sequences, *step);
        row = next;
    }
    return row == m_Top.get() ? nullptr : row;
}

bool ObjectRows::canFetchMore(const Row &row) const noexcept
{
    return !m_IsMatching && !row.isComplete();
}

void ObjectRows::fetchMore(Row &row)
{
    const std::size_t at = row.rows.size();
    m_IsMatching = true;
    addRows(row, at, children(row, at, std::min(row.known, at + std::max(kBatch, at))));
    m_IsMatching = false;
}

bool ObjectRows::fetchAll(Row &row)
{
    const std::size_t at = row.rows.size();
    // No object comes or goes during long work.
    LongWork work("Listing", row.known - at, LongWork::Kind::Reading);
    std::vector<std::unique_ptr<Row>> fresh;
    fresh.reserve(row.known - at);
    Row *const sequences = m_Sequences;
    m_IsMatching = true;
    bool goesOn = true;
    for (std::size_t i = at; i < row.known && goesOn; ++i) {
        goesOn = work.goesOn();
        if (goesOn)
            fresh.push_back(makeRow(row, child(row, i)));
    }
    if (goesOn)
        insertRows(row, at, std::move(fresh));
    else
        m_Sequences = sequences;
    m_IsMatching = false;
    return goesOn;
}

} // namespace TAMBO::app
