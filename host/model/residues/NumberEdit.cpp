// SPDX-License-Identifier: GPL-3.0-or-later
#include "NumberEdit.h"

#include "GroupNumberEdit.h"
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

// As runs of numbers that follow each other.
void NumberEdit::store(const ResidueNumbers &numbers, EditWriter &out) const
{
    out.tag(EditTag::ResidueNumbers);
    out.reference(m_Owner);
    std::vector<std::pair<std::size_t, SequenceNumber>> runs;
    SequenceNumber next;
    for (std::size_t i = 0; !numbers.isDefault() && i < m_Owner.residueCount(); ++i) {
        SequenceNumber number = numbers.at(i);
        if (runs.empty() || !(number == next))
            runs.emplace_back(i, number);
        next = ++number;
    }
    out.number(runs.size());
    for (const auto &[index, number] : runs) {
        out.number(index);
        storeNumber(number, out);
    }
}

void NumberEdit::store(EditWriter &out) const
{
    store(m_Numbers, out);
}

void NumberEdit::storeInverse(EditWriter &out) const
{
    store(m_Slot.numbers, out);
}

bool NumberEdit::fits() const
{
    return true;
}

LoadedEdit NumberEdit::load(ResidueOwner &owner, NumberSlot &slot, EditReader &in)
{
    auto edit = std::make_unique<NumberEdit>(owner, slot);
    edit->m_Numbers = {};
    const std::size_t runs = in.count(3);
    std::size_t last = 0;
    for (std::size_t run = 0; run < runs; ++run) {
        const std::size_t index = in.number();
        const bool isBehind = run == 0 ? index == 0 : index > last;
        if (!isBehind || index >= owner.residueCount())
            in.fail("residue numbers are out of order");
        last = index;
        edit->m_Numbers.append(index, loadNumber(in));
    }
    if (in.failed())
        return in.failure();
    return LoadedEdit(std::move(edit));
}

} // namespace TAMBO
