// SPDX-License-Identifier: GPL-3.0-or-later
// One comparison of two alignments: rows are matched and copied between events, and compared in a
// thread. It is given up by its end.
#pragma once

#include "RowMatch.h"

#include <QObject>
#include <QTimer>

#include <atomic>
#include <memory>
#include <optional>
#include <thread>

namespace companion {

// Nobody changes it any more.
struct Compared
{
    ComparedLayout here;
    ComparedLayout there;
    std::vector<std::uint32_t> placesHere;
    std::vector<std::uint32_t> placesThere;
    Comparison comparison;
    // LayoutChanges::revision() of the alignments that this is true of; 0 of a former state.
    std::uint64_t revisionHere = 0;
    std::uint64_t revisionThere = 0;

    [[nodiscard]] std::size_t rows() const noexcept { return here.rows.size(); }
};

class CompareJob : public QObject
{
    Q_OBJECT

public:
    // Both are there as long as this. When one of them changes meanwhile, it begins anew.
    CompareJob(const TAMBO::Alignment &here, const OtherRows &there);
    ~CompareJob() override;

    // From the event loop on, finished() or failed() comes, unless this is deleted.
    void start();
    // Of 100.
    [[nodiscard]] int percent() const;

signals:
    void progressed();
    void finished(std::shared_ptr<const companion::Compared> compared);
    // A whole sentence.
    void failed(const QString &cause);

private:
    void begin();
    void goOn();
    void compute();
    void take(const std::shared_ptr<Compared> &compared);
    [[nodiscard]] bool isStale() const;

    const TAMBO::Alignment &m_Here;
    OtherRows m_There;
    std::optional<RowMatch> m_Match;
    std::uint64_t m_RevisionHere = 0;
    std::uint64_t m_RevisionThere = 0;
    QTimer m_Slices;
    QTimer m_Progress;
    std::thread m_Thread;
    std::atomic<bool> m_Stop = false;
    std::atomic<double> m_Done = 0;
};

} // namespace companion
