// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogModel.h"

#include "PlainText.h"

#include <QApplication>
#include <QColor>
#include <QPalette>
#include <QPixmap>
#include <QStyle>

#include <algorithm>
#include <iterator>
#include <utility>

namespace TAMBO::app {

namespace {

// A list shows one line, of which nobody sees more; a tool tip has to fit the screen.
constexpr qsizetype kLongestLine = 500;
constexpr qsizetype kLongestTip = 2000;

QString beginOf(const QString &text, qsizetype length)
{
    return text.size() <= length ? text : text.left(length) + u'…';
}

// Readable on a light and on a dark background.
QVariant severityColor(Logger::Severity severity)
{
    const bool isDark = QApplication::palette().color(QPalette::Base).lightness() < 128;
    switch (severity) {
    case Logger::Severity::Warning:
        return isDark ? QColor(0xf0, 0xb4, 0x4c) : QColor(0x9a, 0x5b, 0x00);
    case Logger::Severity::Error:
        return isDark ? QColor(0xff, 0x7b, 0x72) : QColor(0xb3, 0x1d, 0x1d);
    case Logger::Severity::Info:
        break;
    }
    return {};
}

// Most lines are plain; only the others catch the eye.
QIcon madeIcon(Logger::Severity severity)
{
    const QStyle *style = QApplication::style();
    switch (severity) {
    case Logger::Severity::Warning:
        return style->standardIcon(QStyle::SP_MessageBoxWarning);
    case Logger::Severity::Error:
        return style->standardIcon(QStyle::SP_MessageBoxCritical);
    case Logger::Severity::Info:
        break;
    }
    QPixmap plain(32, 32);
    plain.fill(Qt::transparent);
    return QIcon(plain);
}

// Of several lines, the first of those that matter most.
const services::LogEntry &mostSevere(const std::deque<services::LogEntry> &lines)
{
    return *std::ranges::max_element(lines, {}, &services::LogEntry::severity);
}

bool areForDevelopers(const std::deque<services::LogEntry> &lines)
{
    return std::ranges::all_of(lines, &services::LogEntry::isForDevelopers);
}

} // namespace

LogModel::LogModel(services::LogBook &book, QObject *parent)
    : QAbstractItemModel(parent), m_Book(book)
{
    m_Timer.setSingleShot(true);
    m_Timer.setInterval(0);
    connect(&m_Timer, &QTimer::timeout, this, &LogModel::flush);
    // The book may be written from any thread.
    connect(&book, &services::LogBook::written, this, &LogModel::take);
    for (const services::LogEntry &entry : book.entries())
        take(entry);
    flush();
}

LogModel::~LogModel() = default;

void LogModel::take(const services::LogEntry &entry)
{
    // Of more lines than are kept at all the first ones would go again at once.
    if (m_Fresh.size() == services::LogBook::kEntries)
        m_Fresh.pop_front();
    m_Fresh.push_back(entry);
    if (!m_Timer.isActive())
        m_Timer.start();
}

void LogModel::flush()
{
    if (m_Fresh.empty())
        return;
    const std::size_t all = m_Lines + m_Fresh.size();
    if (all > services::LogBook::kEntries)
        dropOldest(all - services::LogBook::kEntries);
    std::deque<Fold> fresh;
    m_Lines += m_Fresh.size();
    for (auto begin = m_Fresh.begin(); begin != m_Fresh.end();) {
        // What developers read would hold up users in front of their own lines.
        const auto end = std::find_if(begin, m_Fresh.end(), [&](const auto &entry) {
            return entry.command != begin->command ||
                   entry.isForDevelopers != begin->isForDevelopers;
        });
        if (std::size_t(end - begin) > kUnfolded) {
            fresh.push_back({{begin, end}, true});
            begin = end;
        } else {
            for (; begin != end; ++begin)
                fresh.push_back({{*begin}, false});
        }
    }
    m_Fresh.clear();
    const int first = int(m_Folds.size());
    beginInsertRows({}, first, first + int(fresh.size()) - 1);
    std::ranges::move(fresh, std::back_inserter(m_Folds));
    endInsertRows();
}

void LogModel::dropOldest(std::size_t count)
{
    count = std::min(count, m_Lines);
    m_Lines -= count;
    std::size_t whole = 0;
    while (whole < m_Folds.size() && m_Folds[whole].lines.size() <= count)
        count -= m_Folds[whole++].lines.size();
    if (whole > 0) {
        beginRemoveRows({}, 0, int(whole - 1));
        m_Folds.erase(m_Folds.begin(), m_Folds.begin() + std::ptrdiff_t(whole));
        m_Gone += whole;
        endRemoveRows();
    }
    if (count == 0)
        return;
    std::deque<services::LogEntry> &lines = m_Folds.front().lines;
    beginRemoveRows(index(0, 0), 0, int(count - 1));
    lines.erase(lines.begin(), lines.begin() + std::ptrdiff_t(count));
    endRemoveRows();
}

void LogModel::clear()
{
    m_Fresh.clear();
    beginResetModel();
    m_Folds.clear();
    m_Lines = 0;
    endResetModel();
    m_Book.clear();
}

const QIcon &LogModel::icon(Logger::Severity severity) const
{
    QIcon &icon = m_Icons[std::size_t(severity)];
    if (icon.isNull())
        icon = madeIcon(severity);
    return icon;
}

int LogModel::rowCount(const QModelIndex &parent) const
{
    if (!parent.isValid())
        return int(m_Folds.size());
    const bool hasLines = parent.internalId() == 0 && foldOf(parent).isFolded;
    return hasLines ? int(foldOf(parent).lines.size()) : 0;
}

int LogModel::columnCount(const QModelIndex &) const
{
    return 1;
}

// A line below a fold has the fold's place as its id, counted from 1 and from the first one ever.
QModelIndex LogModel::index(int row, int column, const QModelIndex &parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column,
                       parent.isValid() ? quintptr(m_Gone + std::size_t(parent.row()) + 1) : 0);
}

QModelIndex LogModel::parent(const QModelIndex &child) const
{
    if (!child.isValid() || child.internalId() == 0)
        return {};
    return createIndex(int(child.internalId() - 1 - m_Gone), 0, quintptr(0));
}

const LogModel::Fold &LogModel::foldOf(const QModelIndex &index) const
{
    return m_Folds[index.internalId() == 0 ? std::size_t(index.row())
                                           : std::size_t(index.internalId()) - 1 - m_Gone];
}

const services::LogEntry &LogModel::entryOf(const QModelIndex &index) const
{
    const Fold &fold = foldOf(index);
    return index.internalId() == 0 ? mostSevere(fold.lines) : fold.lines[std::size_t(index.row())];
}

QVariant LogModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const services::LogEntry &entry = entryOf(index);
    const bool isFold = rowCount(index) > 0;
    switch (role) {
    case Qt::DisplayRole: {
        const QString text = beginOf(entry.text, kLongestLine).replace(u'\n', u' ');
        const QString time = entry.time.toString(QStringLiteral("HH:mm:ss"));
        return isFold ? tr("%1  %L2 lines: %3").arg(time).arg(rowCount(index)).arg(text)
                      : QStringLiteral("%1  %2").arg(time, text);
    }
    case Qt::ToolTipRole:
        return plainToolTip(beginOf(entry.text, kLongestTip));
    case TextRole:
        return entry.text;
    case TimeRole:
        return entry.time;
    case Qt::DecorationRole:
        return icon(entry.severity);
    case Qt::ForegroundRole:
        return severityColor(entry.severity);
    case SeverityRole:
        return int(entry.severity);
    case DevelopersRole:
        return isFold ? areForDevelopers(foldOf(index).lines) : entry.isForDevelopers;
    default:
        return {};
    }
}

} // namespace TAMBO::app

#include "moc_LogModel.cpp"
