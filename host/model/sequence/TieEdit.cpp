// SPDX-License-Identifier: GPL-3.0-or-later
#include "TieEdit.h"

#include "ObjectSpace.h"
#include "Revisions.h"

#include <utility>

namespace TAMBO {

TieEdit::TieEdit(StoredObject &sequence, std::unique_ptr<ResidueTies> &slot,
                 std::unique_ptr<ResidueTies> ties)
    : m_Sequence(sequence), m_Slot(slot), m_Ties(std::move(ties))
{ }

TieEdit::~TieEdit() = default;

std::unique_ptr<Edit> TieEdit::apply()
{
    auto inverse = std::make_unique<TieEdit>(m_Sequence, m_Slot, std::move(m_Slot));
    m_Slot = std::move(m_Ties);
    ObjectSpace::get().noteReferences(m_Sequence);
    growAllRevisions();
    return inverse;
}

std::size_t TieEdit::bytes() const
{
    return sizeof(*this) + (m_Ties ? m_Ties->bytes() : 0);
}

Compound *TieEdit::subject() const
{
    return &m_Sequence.asCompound();
}

} // namespace TAMBO
