// SPDX-License-Identifier: GPL-3.0-or-later
// The entries of the log as a list, the oldest first.
#pragma once

#include "LogBook.h"

#include <QAbstractListModel>
#include <QIcon>
#include <QTimer>

#include <array>
#include <deque>

namespace TAMBO::app {

// Takes up what was written once per run of the event loop, however many lines that were.
class LogModel : public QAbstractListModel
{
    Q_OBJECT

public:
    // What a list shows is cut to a readable length; TextRole has all of it.
    enum Role { SeverityRole = Qt::UserRole, TextRole, TimeRole };

    explicit LogModel(services::LogBook &book, QObject *parent = nullptr);
    ~LogModel() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    // Forgets what is shown; the file of the log keeps it.
    void clear();

private:
    void take(const services::LogEntry &entry);
    void flush();
    [[nodiscard]] const QIcon &icon(Logger::Severity severity) const;

    services::LogBook &m_Book;
    std::deque<services::LogEntry> m_Entries;
    std::deque<services::LogEntry> m_Fresh;
    // Of the severities, made when first shown: looking one up makes the toolkit search all folders
    // of the desktop's icons.
    mutable std::array<QIcon, 3> m_Icons;
    QTimer m_Timer;
};

} // namespace TAMBO::app
