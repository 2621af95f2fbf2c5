// SPDX-License-Identifier: GPL-3.0-or-later
// The search for redundant rows of the alignment that a window shows: rows are copied between
// events, and compared in a thread.
#pragma once

#include "RedundantRows.h"
#include "RowPass.h"

#include <QObject>
#include <QTimer>

#include <atomic>
#include <memory>
#include <vector>

namespace companion {

class ThreadWork;

// The copy is kept for the next search, as long as the alignment does not change.
class RedundancySearch : public QObject
{
    Q_OBJECT

public:
    // In bytes, of the copy.
    static constexpr std::uint64_t kMostBytes = std::uint64_t(1) << 30;

    explicit RedundancySearch(TAMBO::AlignmentWindow &window);
    ~RedundancySearch() override;

    // From the event loop on, finished() or failed() comes, unless it is cancelled or started anew.
    void start(const RedundancyRule &rule);
    void cancel();
    [[nodiscard]] bool isRunning() const { return m_Slices.isActive(); }

    // By row, of what the window showed when it was finished.
    [[nodiscard]] const std::vector<RedundantRow> &found() const noexcept { return m_Found; }
    [[nodiscard]] const ComparedRows &rows() const noexcept { return m_Rows; }
    // Whether that is what the window shows now.
    [[nodiscard]] bool isOfNow() const { return m_Copying.isDone(); }

signals:
    // Of 100.
    void progressed(int percent);
    void finished();
    // A whole sentence.
    void failed(const QString &cause);

private:
    void goOn();
    [[nodiscard]] bool isTooLarge() const;

    TAMBO::AlignmentWindow &m_Window;
    RedundancyRule m_Rule;
    ComparedRows m_Rows;
    RowPass m_Copying;
    std::vector<RedundantRow> m_Found;
    bool m_HasNoMemory = false;
    std::atomic<double> m_Done = 0;
    // Ends before what it works on.
    std::unique_ptr<ThreadWork> m_Comparing;
    QTimer m_Slices;
};

} // namespace companion
