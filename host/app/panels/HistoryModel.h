// SPDX-License-Identifier: GPL-3.0-or-later
// The steps of the history around the present as a list; steps that are taken back are at its end.
#pragma once

#include <QAbstractListModel>

#include <cstddef>

namespace TAMBO {
class History;
}

namespace TAMBO::app {

class HistoryModel : public QAbstractListModel
{
    Q_OBJECT

public:
    // So many steps before and after the present are listed: nobody jumps farther by eye, and the
    // list costs the same after a day's work as after a minute's.
    static constexpr std::size_t kReach = 500;

    // history outlives the model.
    explicit HistoryModel(const History &history, QObject *parent = nullptr);

    // Reads the history anew.
    void refresh();
    // The row that stands for the present, and the position that a row stands for.
    [[nodiscard]] int presentRow() const;
    [[nodiscard]] std::size_t positionOf(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    const History &m_History;
    // The first position listed, the last one, and the present.
    std::size_t m_First = 0;
    std::size_t m_Last = 0;
    std::size_t m_Present = 0;
};

} // namespace TAMBO::app
