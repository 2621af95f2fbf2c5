// SPDX-License-Identifier: GPL-3.0-or-later
#include "GapEditRun.h"

#include "DataPoint.h"
#include "SlicedWork.h"
#include "StepName.h"
#include "Texts.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>

namespace companion {

namespace {

// Between two looks at the clock.
constexpr unsigned long kRowsPlannedAtOnce = 256;

const char *stepNameOf(const GapEdit &edit)
{
    switch (edit.kind) {
    case GapEdit::Kind::Insert:
        return "Insert gaps";
    case GapEdit::Kind::RemoveBefore:
    case GapEdit::Kind::RemoveBehind:
        return "Remove gaps";
    case GapEdit::Kind::Slide:
        return "Slide residues";
    case GapEdit::Kind::Move:
        return "Move gaps";
    case GapEdit::Kind::PushLeft:
        return "Push residues left";
    case GapEdit::Kind::PushRight:
        return "Push residues right";
    }
    return "";
}

void lookAtAll(GapEditRun &run)
{
    while (run.goOn(std::chrono::hours(1))) {
    }
}

} // namespace

GapEditRun::GapEditRun(const TAMBO::Alignment &alignment, const GapEdit &edit,
                       const KeptColumns &kept)
    : m_Alignment(alignment), m_Edit(edit), m_Kept(kept)
{
    begin();
}

void GapEditRun::begin()
{
    m_Rows.emplace(m_Alignment, m_Edit, m_Kept);
    m_Revision = m_Alignment.layoutRevision();
    m_NextRow = m_Edit.block.rowBegin;
    m_RowEnd = std::min(m_Edit.block.rowEnd, m_Alignment.height());
    m_Outcome = {true, {}, 0};
    m_HasResidues = false;
    m_Growth = 0;
    m_Moves.clear();
    if (const QString reason = m_Rows->refusal(); !reason.isEmpty())
        refuse(reason);
}

void GapEditRun::refuse(const QString &reason)
{
    m_Outcome = {false, reason, 0};
    m_NextRow = m_RowEnd;
}

bool GapEditRun::goOn(std::chrono::microseconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    if (m_Alignment.layoutRevision() != m_Revision)
        begin();
    while (m_NextRow < m_RowEnd) {
        for (unsigned long i = 0; i < kRowsPlannedAtOnce && m_NextRow < m_RowEnd; ++i)
            lookAtRow(m_NextRow++);
        if (std::chrono::steady_clock::now() >= end)
            break;
    }
    if (m_NextRow < m_RowEnd)
        return true;
    if (m_Outcome.isDone && !m_HasResidues)
        refuse(m_Rows->withoutResidues());
    return false;
}

void GapEditRun::lookAtRow(unsigned long row)
{
    m_Steps.clear();
    const RowPlan plan = m_Rows->plan(row, m_Steps);
    if (!plan.refusal.isEmpty()) {
        refuse(plan.refusal);
        return;
    }
    m_HasResidues = m_HasResidues || plan.hasResidues;
    if (std::abs(plan.moved) > std::abs(m_Outcome.moved))
        m_Outcome.moved = plan.moved;
    if (const unsigned long growth = m_Rows->growth(row, m_Steps); growth > m_Growth) {
        m_Growth = growth;
        m_WidestRow = row;
    }
    for (const GapStep &step : m_Steps)
        m_Moves.push_back({row, step.from, step.count, step.to});
}

int GapEditRun::percent() const
{
    constexpr unsigned long all = 100;
    const unsigned long begin = std::min(m_Edit.block.rowBegin, m_RowEnd);
    return static_cast<int>((m_NextRow - begin) * all / std::max(1UL, m_RowEnd - begin));
}

Outcome GapEditRun::apply(TAMBO::Alignment &alignment)
{
    lookAtAll(*this);
    if (!m_Outcome.isDone || m_Outcome.moved == 0)
        return m_Outcome;
    DataPoint<TAMBO::Alignment> guard(nullptr, &alignment);
    if (!guard.m_good) {
        refuse(tr("“%1” cannot be changed now.").arg(QString::fromStdString(alignment.Name())));
        return m_Outcome;
    }
    switch (change(alignment)) {
    case TAMBO::Alignment::GapsMoved::All:
        break;
    case TAMBO::Alignment::GapsMoved::TooWide:
        refuse(tr("“%1” would make the alignment too wide.")
                   .arg(QString::fromStdString(alignment.GetSeqName(m_WidestRow))));
        break;
    case TAMBO::Alignment::GapsMoved::GivenUp:
        m_Outcome = {};
        break;
    }
    return m_Outcome;
}

TAMBO::Alignment::GapsMoved GapEditRun::change(TAMBO::Alignment &alignment)
{
    const StepName name(stepNameOf(m_Edit));
    if (!m_Rows->pushesTogether())
        return alignment.moveGaps(m_Moves);
    pushRows(alignment);
    return TAMBO::Alignment::GapsMoved::All;
}

void GapEditRun::pushRows(TAMBO::Alignment &alignment) const
{
    const TAMBO::CellBlock &block = m_Edit.block;
    std::vector<bool> rows(m_RowEnd);
    std::fill(rows.begin() + static_cast<std::ptrdiff_t>(block.rowBegin), rows.end(), true);
    alignment.pushResidues(rows, {block.colBegin, std::min(block.colEnd, alignment.width())},
                           m_Edit.kind == GapEdit::Kind::PushLeft);
}

Outcome checkGapEdit(const TAMBO::Alignment &alignment, const GapEdit &edit,
                     const KeptColumns &kept)
{
    GapEditRun run(alignment, edit, kept);
    lookAtAll(run);
    return run.outcome();
}

Outcome applyGapEdit(TAMBO::Alignment &alignment, const GapEdit &edit, const KeptColumns &kept)
{
    GapEditRun run(alignment, edit, kept);
    lookAtAll(run);
    return run.apply(alignment);
}

Outcome applyGapEdit(TAMBO::Alignment &alignment, const GapEdit &edit, const KeptColumns &kept,
                     QWidget *over)
{
    GapEditRun run(alignment, edit, kept);
    const bool isDone =
        finish({[&](auto most) { return run.goOn(most); }, [&] { return run.percent(); }},
               tr("Looking at the gaps…"), over);
    return isDone ? run.apply(alignment) : Outcome();
}

} // namespace companion
