// SPDX-License-Identifier: GPL-3.0-or-later
// What the line of a comparison does with the alignments.
#include "CompareBar.h"

#include "DataMaker.h"
#include "DataPoint.h"
#include "SlicedWork.h"
#include "Space.h"
#include "StepName.h"
#include "TakeOver.h"
#include "Texts.h"
#include "WorkbenchCommands.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace companion {

// "12–30", or "12".
QString stretchText(const Stretch &stretch)
{
    return stretch.end - stretch.begin == 1
               ? QString::number(stretch.end)
               : QStringLiteral("%1–%2").arg(stretch.begin + 1).arg(stretch.end);
}

// ---- Taking over

bool CompareBar::canTakeOver()
{
    QString reason;
    if (!isActive())
        reason = companion::tr("Nothing is compared: choose Compare With first.");
    else if (!isFresh())
        reason = companion::tr("The alignments are still being compared.");
    else if (m_Compared->comparison.stretches.empty())
        reason = companion::tr("There is no difference in what both have.");
    if (!reason.isEmpty())
        m_Tell(reason);
    return reason.isEmpty();
}

void CompareBar::takeOver()
{
    if (!canTakeOver())
        return;
    const std::optional<std::size_t> stretch = stretchAtHand();
    if (!stretch) {
        m_Tell(companion::tr("Go to a difference first."));
        return;
    }
    const Stretch at = m_Compared->comparison.stretches[*stretch];
    takeOver({at}, {}, companion::tr("Take over columns %1").arg(stretchText(at)));
}

void CompareBar::takeOverInBlock()
{
    if (!canTakeOver())
        return;
    const std::optional<TAMBO::CellBlock> block = m_Block();
    if (!block) {
        m_Tell(companion::tr("There is no block: put the cell cursor into the rows first."));
        return;
    }
    std::vector<Stretch> stretches;
    for (const Stretch &one : m_Compared->comparison.stretches)
        if (one.begin < block->colEnd && block->colBegin < one.end)
            stretches.push_back(one);
    if (stretches.empty()) {
        m_Tell(companion::tr("Both are the same in the columns of the block."));
        return;
    }
    std::vector<bool> rows(shown()->height());
    for (unsigned long row = block->rowBegin; row < block->rowEnd && row < rows.size(); ++row)
        rows[row] = true;
    const Stretch all{stretches.front().begin, stretches.back().end, 0, 0};
    takeOver(std::move(stretches), std::move(rows),
             companion::tr("Take over columns %1 in the block").arg(stretchText(all)));
}

void CompareBar::takeOverAll()
{
    if (!canTakeOver())
        return;
    const std::vector<Stretch> all = m_Compared->comparison.stretches;
    const Stretch ends{all.front().begin, all.back().end, 0, 0};
    takeOver(all, {}, companion::tr("Take over columns %1").arg(stretchText(ends)));
}

void CompareBar::takeOver(std::vector<Stretch> stretches, std::vector<bool> rows,
                          const QString &name)
{
    TAMBO::Alignment &alignment = *shown();
    const std::shared_ptr<const Compared> compared = m_Compared;
    if (rows.empty())
        rows.assign(alignment.height(), true);
    TakeOver work({&alignment, &compared->here, &compared->there, &compared->placesHere,
                   std::move(stretches), std::move(rows)});
    const QPointer<CompareBar> self(this);
    const bool isDone = finish(
        {[&](auto most) { return isFresh() && work.goOn(most); }, [&] { return work.percent(); }},
        companion::tr("Laying out the columns…"), this);
    if (self == nullptr || !isDone || !isFresh())
        return;
    if (work.misfit()) {
        m_Tell(companion::tr("%1 has residues there that the other one does not have. Nothing was "
                             "taken over.")
                   .arg(QString::fromStdString(alignment.GetSeqName(*work.misfit()))));
        return;
    }
    if (work.changedRows() == 0) {
        m_Tell(companion::tr("The rows are the same there."));
        return;
    }
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &alignment);
        const StepName step(name.toStdString());
        if (!change.m_good ||
            !TAMBO::RowLayouts::place(alignment, work.range(), work.count(), work.cells())) {
            m_Tell(companion::tr("The alignment cannot be changed now."));
            return;
        }
    }
    m_Tell(work.changedRows() == 1
               ? companion::tr("%1: 1 row changed.").arg(name)
               : companion::tr("%1: %2 rows changed.").arg(name).arg(work.changedRows()));
    followEdits();
}

// ---- The other one

void CompareBar::showOther()
{
    if (m_Other != nullptr) {
        TAMBO::WorkbenchCommands::showAlignment(kCompareCaller, *m_Other);
        return;
    }
    if (!canTakeOver())
        return;
    TAMBO::Alignment &alignment = *shown();
    const std::shared_ptr<const Compared> compared = m_Compared;
    const std::vector<Stretch> &all = compared->comparison.stretches;
    TakeOver work({&alignment, &compared->here, &compared->there, &compared->placesHere, all,
                   std::vector<bool>(alignment.height(), true)});
    const QPointer<CompareBar> self(this);
    const bool isDone = finish(
        {[&](auto most) { return isFresh() && work.goOn(most); }, [&] { return work.percent(); }},
        companion::tr("Laying out the columns…"), this);
    if (self == nullptr || !isDone || !isFresh())
        return;
    if (work.misfit()) {
        m_Tell(companion::tr("%1 has residues that it did not have then. It cannot be shown.")
                   .arg(QString::fromStdString(alignment.GetSeqName(*work.misfit()))));
        return;
    }
    TAMBO::Alignment *copy = nullptr;
    {
        DataPoint<TAMBO::Space> change(nullptr, TAMBO::Space::instance());
        if (!change.m_good)
            return;
        const StepName step("Show a former state of " + alignment.Name());
        copy = alignment.duplicate(std::vector<bool>(alignment.height(), true),
                                   std::vector<bool>(alignment.width(), true),
                                   alignment.Name() + " (compared)");
        if (copy == nullptr)
            return;
        // All or nothing: a copy as it is now would pass for the former state.
        if (!TAMBO::RowLayouts::place(*copy, work.range(), work.count(), work.cells())) {
            TAMBO::DataMaker::Destroy(copy);
            copy = nullptr;
        }
    }
    if (self == nullptr)
        return;
    if (copy == nullptr) {
        m_Tell(companion::tr("The former state cannot be laid out. Nothing was made."));
        return;
    }
    compareWith(*copy);
    if (const std::size_t leftOut = compared->placesThere.size() - compared->rows(); leftOut > 0)
        m_Tell(companion::tr("Rows of the former state that are left out, since they are not here "
                             "any more: %1.")
                   .arg(leftOut));
    TAMBO::WorkbenchCommands::showAlignment(kCompareCaller, *copy);
}

} // namespace companion
