// SPDX-License-Identifier: GPL-3.0-or-later
// One search of all rows of an alignment: texts of rows go to a thread in batches, while the window
// repaints and the user may cancel.
#pragma once

#include "RowSearch.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QProgressDialog>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

class QEventLoop;
class QLabel;

namespace TAMBO::services {

class RowMatcher;

class SearchRun
{
    Q_DECLARE_TR_FUNCTIONS(SearchRun)

public:
    SearchRun(QWidget *window, const Alignment &alignment, const QString &pattern,
              RowSearch::Language language);
    ~SearchRun();
    SearchRun(const SearchRun &) = delete;
    SearchRun &operator=(const SearchRun &) = delete;

    [[nodiscard]] std::optional<RowSearch::Found> run();

private:
    // Rows that the thread has. Kept alive by it, since it may outlive a search that is cancelled.
    struct Batch;
    using Hash = std::size_t;

    // All rows as they are now, but for those known already. False when that has no end.
    [[nodiscard]] bool findInAllRows();
    [[nodiscard]] bool find(const std::shared_ptr<Batch> &batch);
    // Until the thread's end, which ends the loop. False when there is no use in going on.
    [[nodiscard]] bool wait(QEventLoop &loop, const Batch &batch);
    void waitForUser(QEventLoop &loop, const Batch &batch);
    void openDialog();
    [[nodiscard]] QString progressText(const Batch &batch) const;
    [[nodiscard]] bool isOrphaned() const;
    [[nodiscard]] bool isAlignmentThere() const;

    QPointer<QWidget> m_Window;
    const bool m_HasWindow;
    const Alignment &m_Alignment;
    QString m_Pattern;
    QString m_Name;
    std::shared_ptr<RowMatcher> m_Matcher;
    QElapsedTimer m_Clock;
    QPointer<QProgressDialog> m_Dialog;
    QPointer<QLabel> m_Label;
    bool m_IsCancelled = false;

    unsigned long m_RowCount = 0;
    std::vector<RowSearch::Row> m_Rows;
    std::vector<Hash> m_Hashes;
    // What was found in rows before they changed, by their text.
    std::unordered_map<Hash, RowSearch::Row> m_Known;
};

} // namespace TAMBO::services
