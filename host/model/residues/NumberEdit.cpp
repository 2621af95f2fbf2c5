// SPDX-License-Identifier: GPL-3.0-or-later
#include "NumberEdit.h"

#include "ResidueOwner.h"
#include "Revisions.h"

#include <utility>
#include <vector>

namespace TAMBO {

NumberEdit::NumberEdit(ResidueOwner &owner, NumberSlot &slot)
    : m_Owner(owner), m_Slot(slot), m_Numbers(slot.numbers)
{ }

NumberEdit::~NumberEdit() = default;

void NumberEdit::close() noexcept
{
    m_Slot.open = nullptr;
}

std::unique_ptr<Edit> NumberEdit::apply()
{
    auto inverse = std::make_unique<NumberEdit>(m_Owner, m_Slot);
    m_Slot.numbers = std::move(m_Numbers);
    growNumberingRevision();
    return inverse;
}

std::unique_ptr<Edit> NumberEdit::repeat()
{
    std::vector<std::pair<std::size_t, SequenceNumber>> elsewhere;
    for (std::size_t i = 0; i < m_Owner.residueCount(); ++i) {
        const SequenceNumber number = m_Numbers.at(i);
        if (&m_Owner.dataOwner(i) != &m_Owner && !(number == m_Slot.numbers.at(i)))
            elsewhere.emplace_back(i, number);
    }
    std::unique_ptr<Edit> inverse = apply();
    for (const auto &[index, number] : elsewhere)
        m_Owner.setNumber(index, number);
    return inverse;
}

std::size_t NumberEdit::bytes() const
{
    return sizeof(*this) - sizeof(m_Numbers) + m_Numbers.bytes();
}

Compound *NumberEdit::subject() const
{
    return &m_Owner;
}

} // namespace TAMBO
