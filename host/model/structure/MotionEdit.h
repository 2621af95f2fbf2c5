// SPDX-License-Identifier: GPL-3.0-or-later
// Another motion of what a structure keeps as its file has it: the atoms' places are a change of
// their own.
#pragma once

#include "EditBytes.h"
#include "RigidMotion.h"

namespace TAMBO {

class Structure;

class MotionEdit final : public Edit
{
public:
    // The structure has something to move.
    MotionEdit(Structure &structure, const RigidMotion &motion)
        : m_Structure(structure), m_Motion(motion)
    { }
    // What one has stored behind its tag.
    [[nodiscard]] static LoadedEdit load(EditReader &in);

    std::unique_ptr<Edit> apply() override;
    std::size_t bytes() const override { return sizeof(*this); }
    const char *kind() const override { return "superpose"; }
    EditPart part() const override { return EditPart::Places; }
    Compound *subject() const override;
    const Compound *guarded() const override;
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    Structure &m_Structure;
    RigidMotion m_Motion;
};

} // namespace TAMBO
