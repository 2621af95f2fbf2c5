// SPDX-License-Identifier: GPL-3.0-or-later
#include "ShownCandidates.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace TAMBO::services {

namespace {

char lowered(char byte)
{
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

bool isPlain(std::string_view text)
{
    return std::ranges::all_of(text,
                               [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

// part is in lower case.
bool holds(std::string_view text, std::string_view part)
{
    const auto isSame = [](char a, char b) { return lowered(a) == b; };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), isSame) != text.end();
}

} // namespace

ShownCandidates::ShownCandidates(CandidateModel &candidates, QObject *parent)
    : QAbstractTableModel(parent), m_Candidates(candidates), m_Sorted(candidates.rowCount())
{
    std::iota(m_Sorted.begin(), m_Sorted.end(), 0);
    m_Rows = m_Sorted;
    m_Timer.setInterval(0);
    connect(&m_Timer, &QTimer::timeout, this, &ShownCandidates::work);
    // Of many ticks the view is told by whoever sets them.
    connect(&candidates, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex &first, const QModelIndex &last) {
                const QModelIndex shown = indexOf(first.row());
                if (first == last && shown.isValid())
                    emit dataChanged(shown, shown, {Qt::CheckStateRole});
            });
}

ShownCandidates::~ShownCandidates() = default;

// ---- The item model

int ShownCandidates::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_Rows.size());
}

int ShownCandidates::columnCount(const QModelIndex &parent) const
{
    return m_Candidates.columnCount(parent);
}

int ShownCandidates::candidateAt(const QModelIndex &index) const
{
    return index.isValid() ? m_Rows[std::size_t(index.row())] : kNone;
}

QModelIndex ShownCandidates::indexOf(int candidate) const
{
    const auto found = std::ranges::find(m_Rows, candidate);
    return found == m_Rows.end() ? QModelIndex()
                                 : index(int(found - m_Rows.begin()), CandidateModel::NameColumn);
}

QVariant ShownCandidates::data(const QModelIndex &index, int role) const
{
    return m_Candidates.data(m_Candidates.index(candidateAt(index), index.column()), role);
}

QVariant ShownCandidates::headerData(int section, Qt::Orientation orientation, int role) const
{
    return m_Candidates.headerData(section, orientation, role);
}

// The same for all of a column.
Qt::ItemFlags ShownCandidates::flags(const QModelIndex &index) const
{
    return m_Candidates.flags(index);
}

bool ShownCandidates::setData(const QModelIndex &index, const QVariant &value, int role)
{
    return m_Candidates.setData(m_Candidates.index(candidateAt(index), index.column()), value,
                                role);
}

// ---- Order

void ShownCandidates::sort(int column, Qt::SortOrder order)
{
    if (column == m_Column && order == m_Direction)
        return;
    m_Column = column;
    m_Direction = order;
    if (column >= 0) {
        m_Order = std::make_unique<CandidateOrder>(m_Candidates, column, order);
    } else {
        m_Order.reset();
        std::ranges::sort(m_Sorted);
        applyOrder();
    }
    work();
}

void ShownCandidates::applyOrder()
{
    if (m_IsFiltering) {
        startFilter(m_Sorted);
        return;
    }
    std::vector<bool> isShown(m_Sorted.size());
    for (const int candidate : m_Rows)
        isShown[std::size_t(candidate)] = true;
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::vector<int> candidates;
    for (const QModelIndex &index : before)
        candidates.push_back(candidateAt(index));
    m_Rows.clear();
    std::ranges::copy_if(m_Sorted, std::back_inserter(m_Rows),
                         [&](int candidate) { return isShown[std::size_t(candidate)]; });
    QModelIndexList after;
    for (qsizetype i = 0; i < before.size(); ++i)
        after.append(indexOf(candidates[std::size_t(i)]).siblingAtColumn(before[i].column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

// ---- Filter

bool ShownCandidates::matches(int candidate) const
{
    const std::string name = m_Candidates.name(candidate);
    if (!m_PlainText.empty() && isPlain(name))
        return holds(name, m_PlainText);
    return QString::fromStdString(name).contains(m_Text, Qt::CaseInsensitive);
}

void ShownCandidates::setFilter(const QString &text, int current)
{
    // Then nothing can match that does not match now.
    const bool isNarrower = !isWorking() && text.contains(m_Text, Qt::CaseInsensitive);
    m_Text = text;
    const std::string bytes = text.toStdString();
    m_PlainText.clear();
    if (isPlain(bytes))
        std::ranges::transform(bytes, std::back_inserter(m_PlainText), lowered);
    m_Current = current;
    m_WasShown.assign(m_Sorted.size(), false);
    for (const int candidate : m_Rows)
        m_WasShown[std::size_t(candidate)] = true;
    startFilter(isNarrower ? m_Rows : m_Sorted);
    work();
}

void ShownCandidates::startFilter(std::vector<int> todo)
{
    m_Todo = std::move(todo);
    m_Next = 0;
    m_Found.clear();
    m_IsFiltering = true;
    m_IsFresh = true;
    m_IsBehindCurrent = m_Current == kNone;
    m_Before = kNone;
    m_Wanted = kNone;
}

void ShownCandidates::filterSome()
{
    const std::size_t end = std::min(m_Next + kAtOnce, m_Todo.size());
    for (; m_Next < end; ++m_Next) {
        const int candidate = m_Todo[m_Next];
        const bool isFound = m_Text.isEmpty() || matches(candidate);
        if (isFound)
            m_Found.push_back(candidate);
        follow(candidate, isFound);
    }
    const bool isAll = m_Next == m_Todo.size();
    // The view lays out everything anew each time, so that not every piece is worth it.
    if (isAll || m_IsFresh || m_Found.size() >= 2 * m_Rows.size())
        publish();
    if (!isAll)
        return;
    m_IsFiltering = false;
    m_Todo.clear();
    m_WasShown.clear();
    if (m_Wanted == kNone)
        m_Wanted = m_Before;
    if (m_Wanted == kNone && !m_Rows.empty())
        m_Wanted = m_Rows.front();
}

// Looks whether the user is to be at this candidate, the next one in the order.
void ShownCandidates::follow(int candidate, bool isFound)
{
    if (m_Wanted != kNone || m_Current == kNone)
        return;
    if (isFound && m_WasShown[std::size_t(candidate)]) {
        if (m_IsBehindCurrent || candidate == m_Current)
            m_Wanted = candidate;
        else
            m_Before = candidate;
    }
    m_IsBehindCurrent = m_IsBehindCurrent || candidate == m_Current;
}

void ShownCandidates::publish()
{
    if (m_IsFresh) {
        beginResetModel();
        m_Rows = m_Found;
        endResetModel();
        m_IsFresh = false;
    } else if (m_Found.size() > m_Rows.size()) {
        beginInsertRows({}, rowCount(), int(m_Found.size()) - 1);
        m_Rows = m_Found;
        endInsertRows();
    }
}

// ---- Work

void ShownCandidates::step()
{
    if (m_Order == nullptr) {
        if (m_IsFiltering)
            filterSome();
        return;
    }
    m_Order->step();
    if (!m_Order->isDone())
        return;
    m_Sorted = m_Order->take();
    m_Order.reset();
    applyOrder();
}

// The first piece at once, so that a list of ordinary length is there at once.
void ShownCandidates::work()
{
    step();
    if (m_Candidates.rowCount() <= int(kAtOnce))
        finishQuietly();
    if (!isWorking()) {
        m_Timer.stop();
    } else if (!m_Timer.isActive()) {
        m_Timer.start();
    }
    emit changed();
}

void ShownCandidates::finish()
{
    if (!isWorking())
        return;
    finishQuietly();
    m_Timer.stop();
    emit changed();
}

void ShownCandidates::finishQuietly()
{
    while (isWorking())
        step();
}

// ---- Objects that go

void ShownCandidates::forgetDeletedObjects(int current)
{
    const std::vector<int> places = m_Candidates.forgetDeletedObjects();
    if (places.empty())
        return;
    // The next one that stays, or else the one before it.
    int heir = kNone;
    bool isBehindCurrent = current == kNone;
    for (const int candidate : m_Rows) {
        isBehindCurrent = isBehindCurrent || candidate == current;
        const int place = places[std::size_t(candidate)];
        if (place == kNone)
            continue;
        heir = place;
        if (isBehindCurrent)
            break;
    }
    const auto move = [&places](std::vector<int> &candidates) {
        for (int &candidate : candidates)
            candidate = places[std::size_t(candidate)];
        std::erase(candidates, kNone);
    };
    beginResetModel();
    move(m_Rows);
    endResetModel();
    move(m_Sorted);
    m_Wanted = heir;
    if (m_Order != nullptr)
        m_Order = std::make_unique<CandidateOrder>(m_Candidates, m_Column, m_Direction);
    if (m_IsFiltering) {
        m_Current = heir;
        m_WasShown.assign(m_Sorted.size(), false);
        if (heir != kNone)
            m_WasShown[std::size_t(heir)] = true;
        startFilter(m_Sorted);
    }
    work();
}

} // namespace TAMBO::services

#include "moc_ShownCandidates.cpp"
