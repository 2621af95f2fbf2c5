// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogModel.h"

#include "PlainText.h"

#include <QApplication>
#include <QColor>
#include <QPalette>
#include <QPixmap>
#include <QStyle>

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

} // namespace

LogModel::LogModel(services::LogBook &book, QObject *parent)
    : QAbstractListModel(parent), m_Book(book)
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
    const std::size_t all = m_Entries.size() + m_Fresh.size();
    if (all > services::LogBook::kEntries) {
        const std::size_t gone = all - services::LogBook::kEntries;
        beginRemoveRows({}, 0, int(gone - 1));
        m_Entries.erase(m_Entries.begin(), m_Entries.begin() + std::ptrdiff_t(gone));
        endRemoveRows();
    }
    const int first = int(m_Entries.size());
    beginInsertRows({}, first, first + int(m_Fresh.size()) - 1);
    m_Entries.insert(m_Entries.end(), m_Fresh.begin(), m_Fresh.end());
    m_Fresh.clear();
    endInsertRows();
}

void LogModel::clear()
{
    m_Fresh.clear();
    beginResetModel();
    m_Entries.clear();
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
    return parent.isValid() ? 0 : int(m_Entries.size());
}

QVariant LogModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const services::LogEntry &entry = m_Entries[std::size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return QStringLiteral("%1  %2").arg(entry.time.toString(QStringLiteral("HH:mm:ss")),
                                            beginOf(entry.text, kLongestLine).replace(u'\n', u' '));
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
    default:
        return {};
    }
}

} // namespace TAMBO::app

#include "moc_LogModel.cpp"
