// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that give the residues of the column range new numbers and secondary structure.
#include "DataAdder.h"
#include "DataMaker.h"
#include "DataPoint.h"
#include "KALMO2.h"
#include "View.h"

#include <QInputDialog>
#include <QPointer>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace {

using TAMBO::Alignment;
using TAMBO::SequenceNumber;

// What the header marks, as far as there are columns; nothing when it marks none.
std::optional<Alignment::Range> workingRange(const Panel &header, const Alignment &alignment)
{
    const Alignment::Range range{header.begin(), std::min(header.end(), alignment.width())};
    if (range.first >= range.second)
        return std::nullopt;
    return range;
}

// The first column from begin on in which the row holds a residue, or end.
unsigned long firstResidue(const Alignment &alignment, unsigned long row, unsigned long begin,
                           unsigned long end)
{
    while (begin < end && alignment.getItem(row, begin) == nullptr)
        ++begin;
    return begin;
}

// A number that the workbench refuses is offered to it once, not for every residue.
void renumber(const Alignment &alignment, unsigned long row, unsigned long begin, unsigned long end,
              SequenceNumber number)
{
    for (unsigned long col = begin; col < end; ++col) {
        auto *residue = dynamic_cast<TAMBO::Group *>(alignment.getItem(row, col));
        if (residue == nullptr)
            continue;
        residue->SetSeqId(number);
        if (!number.isValid())
            return;
        ++number;
    }
}

// Empty when one of them belongs to an element already.
std::vector<TAMBO::Compound *> freeResidues(const Alignment &alignment,
                                            const Alignment::Range &range)
{
    std::vector<TAMBO::Compound *> residues;
    for (unsigned long col = range.first; col < range.second; ++col) {
        TAMBO::Compound *item = alignment.getItem(0, col);
        if (item == nullptr)
            continue;
        const auto *residue = dynamic_cast<const TAMBO::Residue *>(item);
        if (residue != nullptr && residue->GetSSE() != nullptr)
            return {};
        residues.push_back(item);
    }
    return residues;
}

} // namespace

namespace ZEP {

void KALMO2::RangeReNumber()
{
    const Alignment *const alignment = m_Data;
    if (alignment == nullptr)
        return;
    const std::optional<Alignment::Range> range = workingRange(*m_Header, *alignment);
    if (!range)
        return;
    const QPointer<KALMO2> alive(this);
    {
        const DataPoint<Alignment> guard(this, m_Data);
        if (!guard.m_good)
            return;
        for (unsigned long row = 0; row < guard->height(); ++row) {
            const unsigned long begin = firstResidue(*guard, row, range->first, range->second);
            if (begin == range->second)
                continue;
            const auto *first = dynamic_cast<const TAMBO::Group *>(guard->getItem(row, begin));
            if (first == nullptr)
                continue;
            const SequenceNumber old = first->GetSeqId();
            const QString name = QString::fromStdString(guard->GetSeqName(row));
            bool isAnswered = false;
            const QString answer =
                QInputDialog::getText(nullptr, QStringLiteral("Renumber %1").arg(name),
                                      QStringLiteral("Enter new initial number"), QLineEdit::Normal,
                                      QString::fromStdString(old.getValue()), &isAnswered);
            // The dialog runs an event loop, in which the alignment may have been deleted.
            if (!alive || m_Data != alignment)
                return;
            if (!isAnswered || answer.isEmpty())
                continue;
            const SequenceNumber number(answer.toLatin1().toStdString());
            if (number == old)
                continue;
            // Others hear of it before this window shows it.
            m_HeaderCanvas->makeItems(m_NumberingItems);
            renumber(*guard, row, begin, range->second, number);
        }
    }
    // Whoever heard of it may have closed this window.
    if (alive)
        commUpdate();
}

void KALMO2::RangeAddSSE()
{
    const Alignment *const alignment = m_Data;
    if (alignment == nullptr)
        return;
    const std::optional<Alignment::Range> range = workingRange(*m_Header, *alignment);
    if (!range)
        return;
    const QPointer<KALMO2> alive(this);
    const DataAdder<Alignment> guard(this, m_Data);
    if (!guard.m_good)
        return;
    constexpr std::size_t kFewestResidues = 3;
    const std::vector<TAMBO::Compound *> residues = freeResidues(*guard, *range);
    if (residues.size() < kFewestResidues)
        return;
    bool isAnswered = false;
    const QString answer =
        QInputDialog::getText(this, QStringLiteral("Make SSE"),
                              QStringLiteral("Choose type of SSE (H,E,T)"), QLineEdit::Normal,
                              QStringLiteral("H"), &isAnswered)
            .trimmed();
    if (!alive || m_Data != alignment || !isAnswered || answer.isEmpty())
        return;
    // Kept: which types there are is the workbench's to say.
    const char type = answer.toLatin1().front();
    TAMBO::DataMaker::makeSSE(guard->GetSeq(0), std::string("unk") + type, residues, type);
    Populate(m_Data);
}

} // namespace ZEP
