// SPDX-License-Identifier: GPL-3.0-or-later
#include "GroupNumberEdit.h"

#include "Revisions.h"
#include "Text.h"

#include <limits>

namespace TAMBO {

std::unique_ptr<Edit> GroupNumberEdit::apply()
{
    auto inverse = std::make_unique<GroupNumberEdit>(m_Group, m_Slot, m_Slot);
    m_Slot = m_Number;
    growNumberingRevision();
    return inverse;
}

void GroupNumberEdit::store(EditWriter &out) const
{
    out.tag(EditTag::GroupNumber);
    out.reference(m_Group);
    storeNumber(m_Number, out);
}

void GroupNumberEdit::storeInverse(EditWriter &out) const
{
    GroupNumberEdit(m_Group, m_Slot, m_Slot).store(out);
}

void storeNumber(const SequenceNumber &number, EditWriter &out)
{
    out.signedNumber(number.number());
    out.character(number.insertionCode());
}

SequenceNumber loadNumber(EditReader &in)
{
    using Limits = std::numeric_limits<int>;
    const auto value = static_cast<int>(in.signedNumber(Limits::min(), Limits::max()));
    const char code = in.character();
    if (code != ' ' && !isLetter(code))
        in.fail("a residue number has no proper letter");
    return SequenceNumber(value, code);
}

} // namespace TAMBO
