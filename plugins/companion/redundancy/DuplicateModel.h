// SPDX-License-Identifier: GPL-3.0-or-later
// Duplicate rows as a table.
#pragma once

#include "DuplicateRows.h"

#include <QAbstractTableModel>

#include <functional>

namespace companion {

class DuplicateModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Row, Name, SameAs, Residues, ColumnCount };

    explicit DuplicateModel(QObject *parent = nullptr);
    ~DuplicateModel() override;

    // What the table asks for.
    struct Rows
    {
        std::function<QString(unsigned long row)> name;
        std::function<unsigned long(unsigned long row)> residues;
    };
    void show(DuplicateGroups groups, Rows rows);

    [[nodiscard]] const DuplicateGroups &groups() const noexcept { return m_Groups; }
    [[nodiscard]] const DuplicateRow &at(int row) const { return m_Groups.at(std::size_t(row)); }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    DuplicateGroups m_Groups;
    Rows m_Rows;
};

} // namespace companion
