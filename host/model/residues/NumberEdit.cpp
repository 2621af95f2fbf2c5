// SPDX-License-Identifier: GPL-3.0-or-later
#include "NumberEdit.h"

#include "Peptide.h"
#include "Revisions.h"

#include <utility>
#include <vector>

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

std::unique_ptr<Edit> NumberEdit::repeat()
{
    const ResidueNumbers standard;
    const ResidueNumbers &now = m_Peptide.m_Numbers ? *m_Peptide.m_Numbers : standard;
    const ResidueNumbers &wanted = m_Numbers ? *m_Numbers : standard;
    std::vector<std::pair<std::size_t, SequenceNumber>> elsewhere;
    for (std::size_t i = 0; i < m_Peptide.residueCount(); ++i) {
        const SequenceNumber number = wanted.at(i);
        if (m_Peptide.resolve(i).peptide != &m_Peptide && !(number == now.at(i)))
            elsewhere.emplace_back(i, number);
    }
    std::unique_ptr<Edit> inverse = apply();
    for (const auto &[index, number] : elsewhere)
        m_Peptide.setNumber(index, number);
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
