// SPDX-License-Identifier: GPL-3.0-or-later
#include "CompareJob.h"

#include "LayoutChanges.h"
#include "SlicedWork.h"
#include "Texts.h"

#include <chrono>
#include <new>
#include <utility>

namespace companion {

namespace {

constexpr auto kBetweenTellings = std::chrono::milliseconds(100);
constexpr double kAllPercent = 100;

std::uint64_t revisionOf(const OtherRows &rows)
{
    const auto *const alignment = std::get_if<const TAMBO::Alignment *>(&rows);
    return alignment == nullptr ? 0 : TAMBO::LayoutChanges::revision(**alignment);
}

} // namespace

CompareJob::CompareJob(const TAMBO::Alignment &here, const OtherRows &there)
    : m_Here(here), m_There(there)
{
    connect(&m_Slices, &QTimer::timeout, this, &CompareJob::goOn);
    m_Progress.setInterval(kBetweenTellings);
    connect(&m_Progress, &QTimer::timeout, this, &CompareJob::progressed);
}

CompareJob::~CompareJob()
{
    m_Stop = true;
    if (m_Thread.joinable())
        m_Thread.join();
}

void CompareJob::start()
{
    begin();
    m_Slices.start(0);
}

void CompareJob::begin()
{
    m_RevisionHere = TAMBO::LayoutChanges::revision(m_Here);
    m_RevisionThere = revisionOf(m_There);
    m_Match.emplace(m_Here, m_There);
}

bool CompareJob::isStale() const
{
    return TAMBO::LayoutChanges::revision(m_Here) != m_RevisionHere ||
           revisionOf(m_There) != m_RevisionThere;
}

void CompareJob::goOn()
{
    if (isStale())
        begin();
    if (m_Match->goOn(kSlice))
        return;
    m_Slices.stop();
    if (m_Match->count() < 2) {
        emit failed(companion::tr("They have fewer than two sequences in common."));
        return;
    }
    m_Progress.start();
    compute();
}

void CompareJob::compute()
{
    auto compared = std::make_shared<Compared>();
    compared->here = m_Match->takeHere();
    compared->there = m_Match->takeThere();
    compared->placesHere = m_Match->placesHere();
    compared->placesThere = m_Match->placesThere();
    compared->revisionHere = m_RevisionHere;
    compared->revisionThere = m_RevisionThere;
    m_Match.reset();
    m_Thread = std::thread([this, compared = std::move(compared)] {
        std::shared_ptr<Compared> done;
        try {
            auto found = compare(compared->here, compared->there, [this](double share) {
                m_Done = share;
                return !m_Stop;
            });
            if (!found)
                return;
            compared->comparison = std::move(*found);
            done = compared;
        } catch (const std::bad_alloc &) {
        }
        if (!m_Stop)
            QMetaObject::invokeMethod(
                this, [this, done] { take(done); }, Qt::QueuedConnection);
    });
}

void CompareJob::take(const std::shared_ptr<Compared> &compared)
{
    m_Progress.stop();
    m_Thread.join();
    if (compared == nullptr) {
        emit failed(companion::tr("There is not enough memory for the comparison."));
        return;
    }
    if (!isStale()) {
        emit finished(compared);
        return;
    }
    m_Done = 0;
    start();
}

int CompareJob::percent() const
{
    return int(m_Done * kAllPercent);
}

} // namespace companion
