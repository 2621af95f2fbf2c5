// SPDX-License-Identifier: GPL-3.0-or-later
// The candidates whose names hold a text, in their order or sorted by a column. Of many of them the
// names are looked at piece by piece from the event loop, and what has been found is shown
// meanwhile.
#pragma once

#include "CandidateModel.h"
#include "CandidateOrder.h"

#include <QAbstractTableModel>
#include <QString>
#include <QTimer>

#include <memory>
#include <string>
#include <vector>

namespace TAMBO::services {

class ShownCandidates : public QAbstractTableModel
{
    Q_OBJECT

public:
    // Of so many the names are looked at in one go.
    static constexpr std::size_t kAtOnce = 16384;
    static constexpr int kNone = -1;

    // The candidates outlive it.
    explicit ShownCandidates(CandidateModel &candidates, QObject *parent = nullptr);
    ~ShownCandidates() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    // Below 0: the order of the candidates.
    void sort(int column, Qt::SortOrder order) override;

    // current: the candidate that the user is at, or kNone.
    void setFilter(const QString &text, int current);
    // Takes out the objects that have left the workbench; the current one's heir is wanted() then.
    void forgetDeletedObjects(int current);

    // What has been found so far is not all.
    [[nodiscard]] bool isWorking() const noexcept { return m_IsFiltering || m_Order != nullptr; }
    [[nodiscard]] bool isSorting() const noexcept { return m_Order != nullptr; }
    void finish();

    // The candidates that are shown, from the top.
    [[nodiscard]] const std::vector<int> &rows() const noexcept { return m_Rows; }
    [[nodiscard]] int candidateAt(const QModelIndex &index) const;
    [[nodiscard]] QModelIndex indexOf(int candidate) const;
    // Where the user is to be after the last change: where he was if that is shown still, else at
    // the next one that was shown before, else at the one before it, else at the first. kNone
    // while that is not known, and when nothing is shown.
    [[nodiscard]] int wanted() const noexcept { return m_Wanted; }

signals:
    // Of what is shown, or of how far the work is.
    void changed();

private:
    void work();
    void step();
    void finishQuietly();
    void applyOrder();
    void startFilter(std::vector<int> todo);
    void filterSome();
    void follow(int candidate, bool isFound);
    void publish();
    [[nodiscard]] bool matches(int candidate) const;

    CandidateModel &m_Candidates;
    std::vector<int> m_Rows;
    // All candidates in the order in which they are shown.
    std::vector<int> m_Sorted;
    int m_Column = -1;
    Qt::SortOrder m_Direction = Qt::AscendingOrder;
    std::unique_ptr<CandidateOrder> m_Order;

    QString m_Text;
    // The same in lower case when it is plain, which names mostly are too.
    std::string m_PlainText;

    // Of the filter under way. What is shown is of the one before as long as it is fresh.
    bool m_IsFiltering = false;
    bool m_IsFresh = false;
    std::vector<int> m_Todo;
    std::size_t m_Next = 0;
    std::vector<int> m_Found;
    int m_Current = kNone;
    std::vector<bool> m_WasShown;
    bool m_IsBehindCurrent = false;
    int m_Before = kNone;

    int m_Wanted = kNone;
    QTimer m_Timer;
};

} // namespace TAMBO::services
