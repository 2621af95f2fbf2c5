// SPDX-License-Identifier: GPL-3.0-or-later
// Redundant rows as a table, with a tick at each that is to go.
#pragma once

#include "RedundantRows.h"

#include <QAbstractTableModel>

#include <functional>
#include <vector>

namespace companion {

class RedundancyModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Row, Name, KeptRow, KeptName, Identity, Structure, ColumnCount };

    explicit RedundancyModel(QObject *parent = nullptr);
    ~RedundancyModel() override;

    // What the table asks for; both outlive what is shown.
    struct Rows
    {
        std::function<QString(unsigned long row)> name;
        std::function<bool(unsigned long row)> hasStructure;
    };
    // All of them are ticked.
    void show(std::vector<RedundantRow> found, Rows rows);
    void clear();

    [[nodiscard]] const RedundantRow &at(int row) const { return m_Found.at(std::size_t(row)); }
    [[nodiscard]] int tickedCount() const noexcept { return m_TickedCount; }
    [[nodiscard]] bool isTicked(int row) const { return m_IsTicked.at(std::size_t(row)); }
    void tickAll(bool isTicked);
    void tick(const QList<int> &rows, bool isTicked);
    // For each of so many rows of the alignment whether it is ticked.
    [[nodiscard]] std::vector<bool> tickedRows(unsigned long rows) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void ticksChanged();

private:
    [[nodiscard]] QString structureText(const RedundantRow &found) const;
    void set(std::size_t place, bool isTicked);

    std::vector<RedundantRow> m_Found;
    std::vector<bool> m_IsTicked;
    int m_TickedCount = 0;
    Rows m_Rows;
};

} // namespace companion
