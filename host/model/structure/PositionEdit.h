// SPDX-License-Identifier: GPL-3.0-or-later
// Moving structures, and the places of their atoms before.
#pragma once

#include "EditBytes.h"
#include "Superposition.h"
#include "Vertex.h"

#include <vector>

namespace TAMBO {

class Structure;

struct StructureMotion
{
    Structure *structure;
    Superposition motion;
};

// Moves every atom of the structures, ligands included, as one recorded change, published as an
// update. False, with a line in the log and nothing moved, when one of them or a chain of it is
// locked. No structure may be named twice.
bool moveStructures(const std::vector<StructureMotion> &motions);

// Keeps the coordinates themselves: rotating back would lose bits of them.
class PositionEdit final : public Edit
{
public:
    // Keeps the places as they are now.
    explicit PositionEdit(std::vector<Structure *> structures);
    ~PositionEdit() override;

    std::unique_ptr<Edit> apply() override;
    std::size_t bytes() const override;
    const char *kind() const override { return "superpose"; }
    EditPart part() const override { return EditPart::Places; }
    Compound *subject() const override;
    bool actsOnWhole() const override { return true; }
    void appendSubjects(std::vector<const Compound *> &out) const override;
    // What is locked among them, else the first structure.
    const Compound *guarded() const override;
    // What one has stored behind its tag.
    [[nodiscard]] static LoadedEdit load(EditReader &in);
    void store(EditWriter &out) const override;
    void storeInverse(EditWriter &out) const override;
    bool fits() const override;

private:
    friend bool moveStructures(const std::vector<StructureMotion> &motions);

    // Calls visit(atom) for every atom of the structure that is somewhere, in an order that only
    // changes of the structure change.
    template <typename Visit> static void forEachAtom(const Structure &structure, Visit visit);
    static void updateChains(const Structure &structure);
    static void move(const StructureMotion &moved);
    void exchange();

    std::vector<Structure *> m_Structures;
    std::vector<Vector<float, 3>> m_Places;
};

} // namespace TAMBO
