// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that decide which alignment is shown, and make, extend, combine, copy and delete
// alignments.
#include "Check.h"
#include "DataAdder.h"
#include "DataDelete.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "KALMO2.h"
#include "SelectObject.h"
#include "SequenceSelector.h"
#include "Space.h"

#include <QPointer>

#include <algorithm>
#include <optional>
#include <vector>

namespace {

using Compounds = std::vector<TAMBO::Compound *>;

// Collects the alignments among the objects that it is given.
class GetAlignmentObj
{
public:
    explicit GetAlignmentObj(Compounds &alignments) : m_Alignments(alignments) { }

    void operator()(TAMBO::Compound *object)
    {
        // Of a million objects most are none, and a cast that fails goes through all their bases.
        if (object->Kind() == TAMBO::CompoundKind::Alignment)
            m_Alignments.push_back(object);
    }

private:
    Compounds &m_Alignments;
};

Compounds candidateAlignments()
{
    Compounds alignments;
    TAMBO::Space *space = TAMBO::Space::instance();
    std::for_each(space->begin(), space->end(), GetAlignmentObj(alignments));
    return alignments;
}

Compounds candidateSequences()
{
    Compounds sequences;
    TAMBO::GetPeptides(TAMBO::Space::instance(), sequences, true);
    return sequences;
}

// The dialogs run event loops. When they return, the window may have been closed and be gone.

// Empty when the user cancels or chooses nothing.
Compounds chooseSequences(const Compounds &candidates, QWidget *parent, const QString &caption)
{
    Compounds chosen;
    TAMBO::SelectObject dialog(candidates, chosen, parent, caption);
    return dialog.exec() != 0 ? chosen : Compounds();
}

// Null when the user cancels or chooses nothing.
TAMBO::Alignment *chooseAlignment(const Compounds &candidates, QWidget *parent,
                                  const QString &caption)
{
    TAMBO::Compound *chosen = nullptr;
    TAMBO::SelectObject dialog(candidates, chosen, parent, caption);
    return dialog.exec() != 0 ? dynamic_cast<TAMBO::Alignment *>(chosen) : nullptr;
}

// Empty when the user cancels. The dialog is gone before anything is deleted: what is published
// then may close its parent.
std::optional<Compounds> chooseToDelete(const Compounds &candidates, QWidget *parent)
{
    Compounds chosen;
    ZEP::SequenceSelector dialog(candidates, chosen, parent, "Alignment");
    if (dialog.exec() == 0)
        return std::nullopt;
    return chosen;
}

} // namespace

namespace ZEP {

void KALMO2::GetSequences()
{
    const Compounds candidates = candidateSequences();
    if (candidates.empty())
        return;
    const QPointer<KALMO2> alive(this);
    const Compounds chosen = chooseSequences(candidates, this, "sequences");
    if (!alive || chosen.empty())
        return;
    const DataAdder<TAMBO::Space> guard(this, TAMBO::Space::instance());
    if (!guard.m_good)
        return;
    TAMBO::Alignment *newAli = TAMBO::DataMaker::makeAlignment("SeqAli", chosen);
    // NOLINTNEXTLINE(modernize-use-nullptr): the condition's text is part of the message.
    TAMBO_ASSERT(0 != newAli, "KalmoIO", 245);
    Populate(newAli);
}

void KALMO2::AddSequences()
{
    const Compounds candidates = candidateSequences();
    if (m_Data == nullptr || candidates.empty())
        return;
    const QPointer<KALMO2> alive(this);
    const Compounds chosen = chooseSequences(candidates, this, "sequences to add");
    // The dialog runs an event loop, in which the alignment may have been deleted.
    if (!alive || m_Data == nullptr || chosen.empty())
        return;
    const DataPoint<TAMBO::Alignment> guard(this, m_Data);
    if (!guard.m_good)
        return;
    guard->addRows(chosen);
    Populate(m_Data);
}

void KALMO2::GetAlignment()
{
    const Compounds candidates = candidateAlignments();
    if (candidates.empty()) {
        GetSequences();
        return;
    }
    const QPointer<KALMO2> alive(this);
    TAMBO::Alignment *chosen = chooseAlignment(candidates, this, "alignment");
    if (alive && chosen != nullptr)
        Populate(chosen);
}

void KALMO2::CombineAlignment()
{
    if (m_Data == nullptr)
        return;
    const Compounds candidates = candidateAlignments();
    if (candidates.empty())
        return;
    const QPointer<KALMO2> alive(this);
    const TAMBO::Alignment *chosen = chooseAlignment(candidates, this, "Alignment to combine");
    if (!alive || m_Data == nullptr || chosen == nullptr)
        return;
    const DataPoint<TAMBO::Alignment> guard(this, m_Data);
    if (!guard.m_good)
        return;
    guard->combine(*chosen);
    Populate(m_Data);
}

void KALMO2::MergeAlignment()
{
    qDebug("Disabled");
}

void KALMO2::Duplicate()
{
    if (m_Data == nullptr)
        return;
    const DataAdder<TAMBO::Space> guard(this, TAMBO::Space::instance());
    if (!guard.m_good)
        return;
    const TAMBO::Alignment *newAli = m_Data->duplicate(m_Data->height());
    // NOLINTNEXTLINE(modernize-use-nullptr): the condition's text is part of the message.
    TAMBO_ASSERT(0 != newAli, "KalmoIO", 273);
}

// The guard has no originator, so that this window too hears of the deletion.
void KALMO2::DeleteAlignment()
{
    const Compounds candidates = candidateAlignments();
    if (candidates.empty())
        return;
    const QPointer<KALMO2> alive(this);
    const std::optional<Compounds> chosen = chooseToDelete(candidates, this);
    if (!alive || !chosen)
        return;
    const DataDelete<TAMBO::Space> guard(nullptr, TAMBO::Space::instance());
    if (!guard.m_good) {
        qDebug("Failed to delete.");
        return;
    }
    for (TAMBO::Compound *alignment : *chosen) {
        if (alignment == m_Data)
            Clear();
        TAMBO::DataMaker::Destroy(alignment);
    }
}

} // namespace ZEP
