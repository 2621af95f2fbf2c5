// SPDX-License-Identifier: GPL-3.0-or-later
// The objects that SelectObject offers, one per row: name, kind, size, and a tick where several can
// be chosen.
#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QString>

#include <map>
#include <vector>

namespace TAMBO {
class Compound;
}

namespace TAMBO::services {

class CandidateModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { NameColumn, KindColumn, SizeColumn, ColumnCount };
    // What rows are sorted by: texts, but sizes as numbers.
    static constexpr int kSortRole = Qt::UserRole;

    enum class Ticks { Without, With };

    // The names and sizes shown are those of this moment.
    CandidateModel(const std::vector<Compound *> &candidates, Ticks ticks,
                   QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

    [[nodiscard]] Compound *object(int row) const { return m_Rows[std::size_t(row)].object; }
    [[nodiscard]] int rowOf(const Compound *object) const;
    [[nodiscard]] bool isTicked(int row) const { return m_Rows[std::size_t(row)].isTicked; }
    void setTicked(int row, bool ticked) { setTicked(std::vector<int>{row}, ticked); }
    // One change for all of them.
    void setTicked(const std::vector<int> &rows, bool ticked);
    [[nodiscard]] int tickedCount() const noexcept { return m_TickedCount; }
    // In the order of the rows.
    [[nodiscard]] std::vector<Compound *> ticked() const;
    // Takes out the rows of objects that have left the workbench since the model was made.
    void forgetDeletedObjects();

private:
    struct Row
    {
        Compound *object = nullptr;
        QString name;
        QString kind;
        QString size;
        qulonglong amount = 0;
        // Was below the root of the objects at the start.
        bool isLoaded = false;
        bool isTicked = false;
    };

    [[nodiscard]] QIcon icon(const QString &kind) const;

    std::vector<Row> m_Rows;
    Ticks m_Ticks;
    int m_TickedCount = 0;
    mutable std::map<QString, QIcon> m_Icons;
};

} // namespace TAMBO::services
