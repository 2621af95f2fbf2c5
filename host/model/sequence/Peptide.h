// SPDX-License-Identifier: GPL-3.0-or-later
// A chain of a structure, or a sequence without one: letters, numbers, colours and flags of its
// residues in arrays, and the handles over them made on demand.
#pragma once

#include "NamedCompound.h"
#include "ObjectContainer.h"
#include "Records.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO {

class Atom;
class ColorEdit;
class Element;
class LetterColors;
class NumberEdit;
class Peptide;
class ResidueColors;
class ResidueHandles;
class ResidueNumbers;
class ResidueSelection;
class ResidueTies;
class StructureContents;

// One residue of one peptide.
struct ResiduePlace
{
    Peptide *peptide = nullptr;
    std::size_t index = 0;

    friend bool operator==(const ResiduePlace &, const ResiduePlace &) = default;
};

// A residue may be tied to one of a chain: it keeps its own letter and shares selection, colour,
// number, secondary structure, atoms and position with the chain's residue. The operations below
// follow the tie themselves.
class Peptide final : public NamedCompound, public ObjectContainer
{
public:
    // Number 1 for the first residue.
    Peptide(std::string name, std::string letters);
    // A chain with its atoms and groups.
    explicit Peptide(ChainRecord &&record);
    ~Peptide() override;

    // The peptide that an object is, or null.
    [[nodiscard]] static Peptide *from(Compound *object) noexcept;
    // The place of a residue handle as it was asked for, ties not followed; null peptide for any
    // other object.
    [[nodiscard]] static ResiduePlace placeOf(const Compound *residue) noexcept;

    // How the rows of an alignment call it: "1abc_A" for a chain of a structure.
    [[nodiscard]] std::string sequenceName() const;

    // ---- Residues. An index must be below residueCount().

    [[nodiscard]] std::size_t residueCount() const noexcept { return m_Letters.size(); }
    [[nodiscard]] char letter(std::size_t index) const noexcept { return m_Letters[index]; }
    [[nodiscard]] std::string_view letters() const noexcept { return m_Letters; }
    // At the same address from the first call on.
    [[nodiscard]] Residue *residue(std::size_t index);
    // Where the data of a residue are: the chain's residue if it is tied, otherwise itself.
    [[nodiscard]] ResiduePlace resolve(std::size_t index) const noexcept;

    // Three letters; a modified residue has its own.
    [[nodiscard]] std::string typeName(std::size_t index) const;
    [[nodiscard]] Vertex position(std::size_t index) const;
    // To be called when atoms have moved.
    void updatePositions();
    // The positions of the residues [begin, end) that have one; the other entries are left alone.
    void readPositions(std::size_t begin, std::size_t end, Vertex *out) const;
    [[nodiscard]] Element *elementAt(std::size_t index) const noexcept;
    [[nodiscard]] std::size_t atomCount(std::size_t index) const noexcept;
    // False when no residue can have an atom.
    [[nodiscard]] bool hasAtoms() const noexcept;
    [[nodiscard]] Atom *atom(std::size_t index, std::size_t atom) const noexcept;

    [[nodiscard]] SequenceNumber number(std::size_t index) const;
    // Whether residues that are not tied to a chain count otherwise than from 1.
    [[nodiscard]] bool hasOwnNumbers() const noexcept;
    // Refused, with one line in the log for a change, when the number is invalid.
    void setNumber(std::size_t index, const SequenceNumber &number);
    // The number from which this residue and those behind it count, in ascending order of index. No
    // edit: for a peptide that is being made.
    void presetNumber(std::size_t index, const SequenceNumber &number);

    // As Compound::GetColor() of the residue: the mark of selection mixed in.
    [[nodiscard]] Color displayColor(std::size_t index) const noexcept;
    [[nodiscard]] Color ownColor(std::size_t index) const noexcept;
    // Whether one of the residues [begin, end) has another colour than that of its type.
    [[nodiscard]] bool hasOwnColors(std::size_t begin, std::size_t end) const;
    // Without a colour the residue has that of its type.
    void setColor(std::size_t index, std::optional<Color> color);
    // Each of the residues by its letter here.
    void setColors(const ResidueSelection &residues, const LetterColors &colors);
    // Residues that have a position, each by the choice that stands at its index; choice 0 leaves
    // it alone.
    void setPositionedColors(std::string choices, const LetterColors &colors);

    [[nodiscard]] bool isSelected(std::size_t index) const noexcept;
    void setSelected(std::size_t index, bool selected);
    // The residues [begin, end).
    void setSelected(std::size_t begin, std::size_t end, bool selected);
    [[nodiscard]] std::size_t selectedCount() const noexcept;
    void select(const ResidueSelection &residues);
    // Adds the selected ones of the residues [begin, end).
    void addSelected(std::size_t begin, std::size_t end, ResidueSelection &out) const;

    // ---- Ties

    // Ties count residues from index on to those of chain from first on, in ascending order of
    // index. No edit: for a peptide that is being made.
    void tie(std::size_t index, Peptide &chain, std::size_t first, std::size_t count);
    [[nodiscard]] bool hasTies() const noexcept;
    // Also when its ties have been cut, which undo may take back.
    [[nodiscard]] bool wasTied() const noexcept { return m_Ties != nullptr; }
    // Cuts every tie to the chain; the residues go on with what they keep themselves.
    void untieFrom(const Peptide &chain);
    // These ties in place of those there are. Each object here or there stands in the tree.
    void retie(ResidueTies ties);
    // In ascending order of their residues here.
    using TieVisitor = std::function<void(const Peptide &chain)>;
    void forEachTiedChain(const TieVisitor &visit) const;

    // ---- Compound

    std::string TypeName() const override;
    std::size_t ChildCount() const override;
    Compound *Child(std::size_t index) const override;
    // Of the chain and all its residues.
    void AssignColor(const Color &color) override;
    // All residues.
    void SetSelected(bool selected) override;
    // True when all residues are.
    bool IsSelected() const override;

    // ---- ObjectContainer: groups and elements, which follow the residues in the order of children

    [[nodiscard]] Compound &asCompound() noexcept override { return *this; }
    [[nodiscard]] std::size_t objectCount() const noexcept override;
    [[nodiscard]] Compound *object(std::size_t index) const noexcept override;
    void insertObject(std::size_t index, std::unique_ptr<Compound> object) override;
    [[nodiscard]] std::unique_ptr<Compound> takeObject(std::size_t index) override;

    // All atoms in tree order; those of tied residues come from their chains.
    void appendAtoms(std::vector<Compound *> &out) const;
    // What it occupies, everything below it included.
    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    friend class ColorEdit;
    friend class NumberEdit;
    friend class TieEdit;

    [[nodiscard]] StructureContents &contents();
    void listElements();
    // Calls visit(owner, first residue there, first residue here, count) for the residues
    // [begin, end), in ascending order.
    template <typename Visit>
    void forEachOwner(std::size_t begin, std::size_t end, Visit visit) const;
    // What undoes the colouring under way; null when nobody keeps it.
    [[nodiscard]] ColorEdit *openColors();
    // Here, whether tied or not.
    void storeColor(std::size_t index, std::optional<Color> color);
    void storeColors(const ResidueSelection &residues, std::string_view letters,
                     const LetterColors &colors);
    void storeAllColors(std::string_view letters, const LetterColors &colors);
    void storeSelected(std::size_t begin, std::size_t end, bool selected);
    static void growAllRevisions() noexcept;

    std::string m_Letters;
    // Each is made when first needed: a sequence of an alignment file needs none of them.
    std::unique_ptr<ResidueNumbers> m_Numbers;
    std::unique_ptr<ResidueColors> m_Colors;
    std::unique_ptr<ResidueSelection> m_Selection;
    std::unique_ptr<ResidueHandles> m_Handles;
    std::unique_ptr<ResidueTies> m_Ties;
    std::unique_ptr<StructureContents> m_Contents;
    // The edits of the step under way that still grow; owned by the step.
    ColorEdit *m_OpenColors = nullptr;
    NumberEdit *m_OpenNumbers = nullptr;
};

} // namespace TAMBO
