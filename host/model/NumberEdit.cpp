// SPDX-License-Identifier: GPL-3.0-or-later
#include "NumberEdit.h"

#include "Peptide.h"
#include "Revisions.h"

#include <utility>

namespace TAMBO {

NumberEdit::NumberEdit(Peptide &peptide)
    : m_Peptide(peptide),
      m_Numbers(peptide.m_Numbers ? std::make_unique<ResidueNumbers>(*peptide.m_Numbers) : nullptr)
{ }

NumberEdit::~NumberEdit() = default;

void NumberEdit::close() noexcept
{
    m_Peptide.m_OpenNumbers = nullptr;
}

std::unique_ptr<Edit> NumberEdit::apply()
{
    auto inverse = std::make_unique<NumberEdit>(m_Peptide);
    m_Peptide.m_Numbers = std::move(m_Numbers);
    growNumberingRevision();
    return inverse;
}

std::size_t NumberEdit::bytes() const
{
    return sizeof(*this) + (m_Numbers ? m_Numbers->bytes() : 0);
}

Compound *NumberEdit::subject() const
{
    return &m_Peptide;
}

} // namespace TAMBO
