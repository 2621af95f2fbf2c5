// SPDX-License-Identifier: GPL-3.0-or-later
// The entries of the log, the oldest first. Those of a command that wrote more than a few stand
// below one line, their fold.
#pragma once

#include "LogBook.h"

#include <QAbstractItemModel>
#include <QIcon>
#include <QTimer>

#include <array>
#include <deque>

namespace TAMBO::app {

// Takes up what was written once per run of the event loop, however many lines that were.
class LogModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    // What a list shows is cut to a readable length; TextRole has all of it, of a fold the first
    // line of its highest severity, which is what it shows.
    enum Role { SeverityRole = Qt::UserRole, TextRole, TimeRole, DevelopersRole };
    // So many lines of a command stand beside those of others.
    static constexpr std::size_t kUnfolded = 3;

    explicit LogModel(services::LogBook &book, QObject *parent = nullptr);
    ~LogModel() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    // Forgets what is shown; the file of the log keeps it.
    void clear();

private:
    struct Fold
    {
        std::deque<services::LogEntry> lines;
        bool isFolded = false;
    };

    void take(const services::LogEntry &entry);
    void flush();
    void dropOldest(std::size_t count);
    [[nodiscard]] const Fold &foldOf(const QModelIndex &index) const;
    [[nodiscard]] const services::LogEntry &entryOf(const QModelIndex &index) const;
    [[nodiscard]] const QIcon &icon(Logger::Severity severity) const;

    services::LogBook &m_Book;
    std::deque<Fold> m_Folds;
    // Of all folds together.
    std::size_t m_Lines = 0;
    // Folds that have been forgotten: an index below one has the place that it would have without.
    std::size_t m_Gone = 0;
    std::deque<services::LogEntry> m_Fresh;
    // Of the severities, made when first shown: looking one up makes the toolkit search all folders
    // of the desktop's icons.
    mutable std::array<QIcon, 3> m_Icons;
    QTimer m_Timer;
};

} // namespace TAMBO::app
