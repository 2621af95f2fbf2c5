// SPDX-License-Identifier: GPL-3.0-or-later
// A node of the workbench's object tree, and the residue-level nodes that plug-ins work on.
#pragma once

#include "Color.h"
#include "Export.h"
#include "SequenceNumber.h"
#include "Vertex.h"

#include <cstddef>
#include <string>
#include <vector>

namespace TAMBO {

// What a node of the tree is. Other: of a kind that this list does not know.
enum class CompoundKind {
    Other,
    Space,
    Structure,
    // A sequence with or without coordinates that is a part of a structure.
    Chain,
    // One that stands by itself, in Space.
    Sequence,
    // An amino acid of a chain or a sequence.
    Residue,
    // Anything else that has a number in a chain: a ligand, a nucleotide, an ion.
    Group,
    Atom,
    // A helix, a strand or a turn; TypeCode() tells which.
    Element,
    Alignment
};

// Structures, chains, residues, atoms, secondary-structure elements and alignments are compounds.
// The workbench owns every one of them; a plug-in borrows pointers and looks them up again after a
// commDelete(). All calls are made in the GUI thread.
class TAMBO_API Compound
{
public:
    // The display name.
    virtual std::string Name() const = 0;
    // One letter: a residue's amino-acid code ('X' when unknown), an element's type ('H', 'E',
    // 'T'); '\0' for kinds that have none.
    virtual char TypeCode() const = 0;
    // A residue's three-letter name, an atom's element, otherwise the kind in words.
    virtual std::string TypeName() const = 0;

    virtual ~Compound();
    Compound(const Compound &) = delete;
    Compound &operator=(const Compound &) = delete;

    // The node above; null for the root and for an object that is not in the tree (any more).
    virtual Compound *Parent() const = 0;
    virtual std::size_t ChildCount() const = 0;
    // Null beyond the last child.
    virtual Compound *Child(std::size_t index) const = 0;
    // A locked object refuses guards on itself and on everything below it.
    virtual bool IsLocked() const = 0;

    // Where the object is, in Angstrom: an atom's place, a residue's CA atom. Undefined without.
    virtual Vertex Position() const = 0;

    // The display colour without the mark of selection.
    virtual Color OwnColor() const = 0;
    virtual void AssignColor(const Color &color) = 0;

    virtual void SetSelected(bool selected) = 0;
    virtual bool IsSelected() const = 0;

    // The same for as long as the object exists; of one that was deleted, a chain may be a
    // sequence.
    CompoundKind Kind() const;
    // The names from the top of the tree to this object, joined by "/".
    std::string GetFQName() const;
    // The display colour; of a selected residue, mixed with the selection colour.
    Color GetColor() const;
    void SetColor(const Color &color);
    void ToggleSelected();
    // Pops up the workbench's context menu for this object at the pointer. Returns when the menu
    // is closed; any object, this one included, may be gone by then.
    void ShowMenu();

protected:
    Compound() = default;
};

// A residue-level compound: it carries a residue number.
class TAMBO_API Group : public Compound
{
public:
    virtual SequenceNumber GetSeqId() const = 0;
    // An invalid number is refused with a line in the log, and the old one stays.
    virtual void SetSeqId(const SequenceNumber &number) = 0;

    ~Group() override;
};

class TAMBO_API Residue : public Group
{
public:
    // The secondary-structure element that the residue belongs to, or null.
    virtual Compound *GetSSE() const = 0;

    ~Residue() override;
};

// Append to out every protein chain (every atom) at or below root, in tree order. With recursive
// false only the direct children of root are looked at.
TAMBO_API void GetPeptides(Compound *root, std::vector<Compound *> &out, bool recursive);
TAMBO_API void GetAtoms(Compound *root, std::vector<Compound *> &out, bool recursive);

} // namespace TAMBO
