// SPDX-License-Identifier: GPL-3.0-or-later
#include "RenameEdit.h"

#include "Compound.h"
#include "StoredObject.h"

namespace TAMBO {

std::unique_ptr<Edit> RenameEdit::apply()
{
    auto inverse = std::make_unique<RenameEdit>(m_Object, m_Object.Name());
    StoredObject::from(&m_Object)->storeName(m_Name);
    return inverse;
}

void RenameEdit::store(EditWriter &out) const
{
    out.tag(EditTag::Name);
    out.reference(m_Object);
    out.text(m_Name);
}

void RenameEdit::storeInverse(EditWriter &out) const
{
    RenameEdit(m_Object, m_Object.Name()).store(out);
}

bool RenameEdit::fits() const
{
    return stateOf(m_Object) != nullptr &&
           StoredObject::from(&m_Object)->allowedName(m_Name) == m_Name;
}

LoadedEdit RenameEdit::load(EditReader &in)
{
    Compound *const object = in.reference();
    const std::string_view name = in.text();
    if (in.failed())
        return in.failure();
    return LoadedEdit(std::make_unique<RenameEdit>(*object, std::string(name)));
}

} // namespace TAMBO
