// SPDX-License-Identifier: GPL-3.0-or-later
// The table of results as a window shows it: a line for each target, of maybe ten thousand. What
// changes is told line by line, so that the selection stays and nothing is sorted in vain.
#pragma once

#include "FamilyResults.h"
#include "ObjectNotes.h"

#include <QAbstractTableModel>
#include <QStringList>

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace TAMBO::app {

class ResultsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    // As in results.tsv.
    enum Column {
        TargetColumn,
        TemplateColumn,
        StateColumn,
        ResiduesColumn,
        ModelledColumn,
        IdentityColumn,
        CoverageColumn,
        GapsColumn,
        RmsColumn,
        CaCountColumn,
        ScoreColumn,
        SecondsColumn,
        HostColumn,
        JobColumn,
        ExitColumn,
        LastLineColumn,
        EngineColumn,
        ModelColumn,
        ColumnCount
    };
    // What lines are sorted by: numbers as numbers, and what is not known behind all others.
    static constexpr int kSortRole = Qt::UserRole;

    struct Counts
    {
        std::size_t all = 0;
        std::size_t ok = 0;
        std::size_t failed = 0;
        std::size_t killed = 0;
        std::size_t running = 0;
        std::size_t notRun = 0;
    };
    using Changes = std::vector<std::pair<std::size_t, families::ResultRow>>;

    explicit ResultsModel(QObject *parent = nullptr);

    // Lines by their places, ascending; those behind the last one are added.
    void take(const Changes &changes);
    // Another list of targets.
    void clear();

    [[nodiscard]] const families::ResultRow &line(int row) const
    {
        return m_Lines[std::size_t(row)].result;
    }
    // As in results.tsv.
    [[nodiscard]] const QStringList &texts(int row) const
    {
        return m_Lines[std::size_t(row)].texts;
    }
    // For the model's properties.
    [[nodiscard]] ObjectNote note(int row, const QString &family) const;
    [[nodiscard]] const Counts &counts() const noexcept { return m_Counts; }
    // For people; and as in results.tsv.
    [[nodiscard]] static QString title(int column);
    [[nodiscard]] static QStringList fieldNames();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Line
    {
        families::ResultRow result;
        QStringList texts;
    };

    [[nodiscard]] static Line lineOf(const families::ResultRow &row);
    [[nodiscard]] QVariant sortKey(const Line &line, int column) const;
    void count(const families::ResultRow &row, bool isThere);

    std::vector<Line> m_Lines;
    Counts m_Counts;
};

} // namespace TAMBO::app
