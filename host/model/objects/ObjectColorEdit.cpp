// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectColorEdit.h"

#include "Revisions.h"

#include <limits>

namespace TAMBO {

std::unique_ptr<Edit> ObjectColorEdit::apply()
{
    auto inverse = std::make_unique<ObjectColorEdit>(m_Object, m_Slot, m_Slot);
    m_Slot = m_Color;
    growColorRevision();
    return inverse;
}

void ObjectColorEdit::store(EditWriter &out) const
{
    out.tag(EditTag::ObjectColor);
    out.reference(m_Object);
    storeColor(m_Color, out);
}

void ObjectColorEdit::storeInverse(EditWriter &out) const
{
    ObjectColorEdit(m_Object, m_Slot, m_Slot).store(out);
}

void storeColor(const std::optional<Color> &color, EditWriter &out)
{
    out.number(color ? std::uint64_t(color->argb()) + 1 : 0);
}

std::optional<Color> loadColor(EditReader &in)
{
    const std::uint64_t value =
        in.number(std::uint64_t(std::numeric_limits<std::uint32_t>::max()) + 1);
    if (value == 0)
        return std::nullopt;
    return Color::fromArgb(static_cast<unsigned>(value - 1));
}

} // namespace TAMBO
