// SPDX-License-Identifier: GPL-3.0-or-later
#include "MotionEdit.h"

#include "Structure.h"
#include "StructureExtras.h"
#include "StructureLock.h"

namespace TAMBO {

std::unique_ptr<Edit> MotionEdit::apply()
{
    RigidMotion &now = m_Structure.extras()->motion;
    auto inverse = std::make_unique<MotionEdit>(m_Structure, now);
    now = m_Motion;
    return inverse;
}

Compound *MotionEdit::subject() const
{
    return &m_Structure;
}

const Compound *MotionEdit::guarded() const
{
    const Compound *const locked = lockWithin(m_Structure);
    return locked != nullptr ? locked : &m_Structure;
}

void MotionEdit::store(EditWriter &out) const
{
    out.tag(EditTag::Motion);
    out.reference(m_Structure);
    m_Motion.write(out);
}

void MotionEdit::storeInverse(EditWriter &out) const
{
    MotionEdit(m_Structure, m_Structure.extras()->motion).store(out);
}

bool MotionEdit::fits() const
{
    return m_Structure.extras() != nullptr;
}

LoadedEdit MotionEdit::load(EditReader &in)
{
    auto *const structure = in.reference<Structure>();
    const RigidMotion motion = RigidMotion::read(in);
    if (in.failed())
        return in.failure();
    return LoadedEdit(std::make_unique<MotionEdit>(*structure, motion));
}

} // namespace TAMBO
