// SPDX-License-Identifier: GPL-3.0-or-later
#include "RedundancySearch.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "SlicedWork.h"
#include "ThreadWork.h"

#include <new>
#include <utility>

namespace companion {

namespace {

constexpr auto kBetweenLooks = std::chrono::milliseconds(40);
// Copying takes about as much of the time.
constexpr int kCopyingShare = 10;
constexpr int kComparingShare = 90;

} // namespace

RedundancySearch::RedundancySearch(TAMBO::AlignmentWindow &window)
    : m_Window(window),
      m_Copying(
          window,
          [this](const TAMBO::Alignment &alignment) {
              m_Rows = ComparedRows(alignment.width());
              m_Rows.reserve(alignment.height());
          },
          [this](const TAMBO::Alignment &alignment, unsigned long row) {
              m_Rows.add(alignment.GetSequence(row, false), alignment.hasPositions(row));
              return true;
          })
{
    connect(&m_Slices, &QTimer::timeout, this, &RedundancySearch::goOn);
}

RedundancySearch::~RedundancySearch() = default;

void RedundancySearch::cancel()
{
    m_Slices.stop();
    m_Comparing.reset();
    m_Found.clear();
}

void RedundancySearch::start(const RedundancyRule &rule)
{
    cancel();
    m_Rule = rule;
    m_Done = 0;
    m_HasNoMemory = false;
    m_Slices.start(0);
}

bool RedundancySearch::isTooLarge() const
{
    const TAMBO::Alignment &alignment = *m_Window.alignment();
    return ComparedRows::bytesOf(alignment.height(), alignment.width()) > kMostBytes;
}

void RedundancySearch::goOn()
{
    if (m_Window.alignment() == nullptr) {
        cancel();
        emit failed(tr("No alignment is shown."));
        return;
    }
    if (isTooLarge()) {
        cancel();
        emit failed(tr("The alignment is too large to compare its rows: %L1 rows by %L2 columns.")
                        .arg(m_Window.alignment()->height())
                        .arg(m_Window.alignment()->width()));
        return;
    }
    if (m_Comparing != nullptr && m_Comparing->isDone()) {
        m_Slices.stop();
        m_Comparing.reset();
        if (m_HasNoMemory)
            emit failed(tr("There is not enough memory to compare the rows."));
        else
            emit finished();
        return;
    }
    if (m_Comparing != nullptr) {
        emit progressed(kCopyingShare + int(m_Done * kComparingShare));
        return;
    }
    if (m_Copying.goOn(kSlice)) {
        emit progressed(m_Copying.percent() * kCopyingShare / 100);
        return;
    }
    m_Slices.setInterval(kBetweenLooks);
    m_Comparing = std::make_unique<ThreadWork>([this](const ThreadWork::Stop &stop) {
        try {
            auto found = redundantRows(m_Rows, m_Rule, [&](double done) {
                m_Done = done;
                return !stop;
            });
            if (found)
                m_Found = std::move(*found);
        } catch (const std::bad_alloc &) {
            m_HasNoMemory = true;
        }
    });
}

} // namespace companion
