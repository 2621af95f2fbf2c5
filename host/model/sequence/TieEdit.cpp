// SPDX-License-Identifier: GPL-3.0-or-later
#include "TieEdit.h"

#include "ObjectSpace.h"
#include "Peptide.h"

#include <utility>

namespace TAMBO {

TieEdit::TieEdit(Peptide &peptide, std::unique_ptr<ResidueTies> ties)
    : m_Peptide(peptide), m_Ties(std::move(ties))
{ }

TieEdit::~TieEdit() = default;

std::unique_ptr<Edit> TieEdit::apply()
{
    auto inverse = std::make_unique<TieEdit>(m_Peptide, std::move(m_Peptide.m_Ties));
    m_Peptide.m_Ties = std::move(m_Ties);
    ObjectSpace::get().noteTies(m_Peptide);
    Peptide::growAllRevisions();
    return inverse;
}

std::size_t TieEdit::bytes() const
{
    return sizeof(*this) + (m_Ties ? m_Ties->bytes() : 0);
}

Compound *TieEdit::subject() const
{
    return &m_Peptide;
}

} // namespace TAMBO
