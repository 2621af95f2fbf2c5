// SPDX-License-Identifier: GPL-3.0-or-later
#include "GapEdit.h"

#include "GapEditRun.h"
#include "SlicedWork.h"
#include "Texts.h"

#include <chrono>

namespace companion {

namespace {

void lookAtAll(GapEditRun &run)
{
    while (run.goOn(std::chrono::hours(1))) {
    }
}

} // namespace

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
