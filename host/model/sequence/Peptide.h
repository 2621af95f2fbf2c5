// SPDX-License-Identifier: GPL-3.0-or-later
// A chain of a structure, or a sequence without one: letters, numbers, colours and flags of its
// residues in arrays, and the handles over them made on demand.
#pragma once

#include "ObjectContainer.h"
#include "PeptideExtras.h"
#include "Records.h"
#include "ResidueOwner.h"
#include "SequenceText.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace TAMBO {

class LetterColors;
class ModelPlaces;
class ObjectReader;
class Peptide;
class ResidueSelection;
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
class Peptide final : public ResidueOwner, public ObjectContainer
{
public:
    // Number 1 for the first residue.
    Peptide(std::string_view name, std::string_view letters);
    explicit Peptide(SequenceText &&text) noexcept;
    // A chain with its atoms and groups.
    explicit Peptide(ChainRecord &&record);
    // Of what writeContent() has left; fails when there is none.
    [[nodiscard]] static std::unique_ptr<Peptide> read(ObjectReader &in);
    ~Peptide() override;

    // The peptide that an object is, or null.
    [[nodiscard]] static Peptide *from(Compound *object) noexcept;
    // The place of a residue handle as it was asked for, ties not followed; null peptide for any
    // other object.
    [[nodiscard]] static ResiduePlace placeOf(const Compound *residue) noexcept;

    // How the rows of an alignment call it: "1abc_A" for a chain of a structure.
    [[nodiscard]] std::string sequenceName() const;

    // ---- Residues. An index must be below residueCount().

    [[nodiscard]] std::size_t residueCount() const noexcept override
    {
        return m_Text.letterCount();
    }
    [[nodiscard]] char letter(std::size_t index) const noexcept override
    {
        return m_Text.letter(index);
    }
    [[nodiscard]] std::string_view letters() const noexcept { return m_Text.letters(); }
    [[nodiscard]] Residue *residue(std::size_t index) const override;
    // Where the data of a residue are: the chain's residue if it is tied, otherwise itself.
    [[nodiscard]] ResiduePlace resolve(std::size_t index) const noexcept;
    [[nodiscard]] const Compound &dataOwner(std::size_t index) const noexcept override;

    [[nodiscard]] std::string typeName(std::size_t index) const override;
    // As long as the residue stays what it is.
    [[nodiscard]] std::string_view typeNameView(std::size_t index) const;
    [[nodiscard]] Vertex position(std::size_t index) const override;
    // To be called when atoms have moved.
    void updatePositions();
    // The positions of the residues [begin, end) that have one; the other entries are left alone.
    void readPositions(std::size_t begin, std::size_t end, Vertex *out) const;
    [[nodiscard]] Element *elementAt(std::size_t index) const noexcept override;
    [[nodiscard]] std::size_t atomCount(std::size_t index) const noexcept override;
    // False when no residue can have an atom.
    [[nodiscard]] bool hasAtoms() const noexcept;
    [[nodiscard]] Atom *atom(std::size_t index, std::size_t atom) const noexcept override;
    // All of a residue.
    [[nodiscard]] std::span<Atom> atoms(std::size_t index) const noexcept;
    // Whether there are atoms, or room for them, here and not in a chain that residues are tied to.
    [[nodiscard]] bool hasOwnAtoms() const noexcept;
    // Of its own residues, one after the other.
    [[nodiscard]] std::span<Atom> ownAtoms() const noexcept;
    [[nodiscard]] const ModelPlaces &models() const noexcept;
    // For a chain that is being made.
    void presetModels(ModelPlaces models);
    // The types of the elements that residues of a chain are in, as elementAt() says, at once; 0
    // without.
    [[nodiscard]] std::vector<char> elementTypes() const;

    [[nodiscard]] SequenceNumber number(std::size_t index) const override;
    // Whether residues that are not tied to a chain count otherwise than from 1.
    [[nodiscard]] bool hasOwnNumbers() const noexcept;
    void setNumber(std::size_t index, const SequenceNumber &number) override;
    // The number from which this residue and those behind it count, in ascending order of index. No
    // edit: for a peptide that is being made.
    void presetNumber(std::size_t index, const SequenceNumber &number);

    // As Compound::GetColor() of the residue: the mark of selection mixed in.
    [[nodiscard]] Color displayColor(std::size_t index) const noexcept;
    [[nodiscard]] Color ownColor(std::size_t index) const noexcept override;
    // Whether one of the residues [begin, end) has another colour than that of its type.
    [[nodiscard]] bool hasOwnColors(std::size_t begin, std::size_t end) const;
    void setColor(std::size_t index, std::optional<Color> color) override;
    // Each of the residues by its letter here.
    void setColors(const ResidueSelection &residues, const LetterColors &colors);
    // All of them.
    void setColors(const LetterColors &colors);
    // Residues that have a position, each by the choice that stands at its index; choice 0 leaves
    // it alone.
    void setPositionedColors(std::string choices, const LetterColors &colors);

    [[nodiscard]] bool isSelected(std::size_t index) const noexcept override;
    void setSelected(std::size_t index, bool selected) override;
    // The residues [begin, end).
    void setSelected(std::size_t begin, std::size_t end, bool selected);
    [[nodiscard]] std::size_t selectedCount() const noexcept;
    void select(std::unique_ptr<ResidueSelection> residues);
    void deselect(const ResidueSelection &residues);
    // Takes the residues that it owns itself out of the selection, and keeps which they were, under
    // a number that is not 0, until they are asked for or others are kept. How many they were.
    std::size_t keepDeselected(std::uint32_t time);
    // Selects what is kept under the number, which is kept no longer. How many these are.
    std::size_t selectKept(std::uint32_t time);
    // What is kept under another number is kept no longer.
    void forgetKept(std::uint32_t otherThan) noexcept;
    // Adds the selected ones of the residues [begin, end).
    void addSelected(std::size_t begin, std::size_t end, ResidueSelection &out) const;

    // ---- Ties

    // Ties count residues from index on to those of chain from first on, in ascending order of
    // index. No edit: for a peptide that is being made.
    void tie(std::size_t index, Peptide &chain, std::size_t first, std::size_t count);
    [[nodiscard]] bool hasTies() const noexcept;
    // Also when its ties have been cut, which undo may take back.
    [[nodiscard]] bool wasTied() const noexcept { return ties() != nullptr; }
    // Cuts every tie to the chain; the residues go on with what they keep themselves.
    void untieFrom(const Peptide &chain);
    // These ties in place of those there are. Each object here or there stands in the tree.
    void retie(ResidueTies ties);
    // In ascending order of their residues here.
    using TieVisitor = std::function<void(const Peptide &chain)>;
    void forEachTiedChain(const TieVisitor &visit) const;

    // ---- Compound

    std::string Name() const override;
    std::string TypeName() const override;
    std::size_t ChildCount() const override;
    Compound *Child(std::size_t index) const override;
    // Of the chain and all its residues.
    void AssignColor(const Color &color) override;
    // All residues.
    void SetSelected(bool selected) override;
    // True when all residues are.
    bool IsSelected() const override;

    // ---- StoredObject

    [[nodiscard]] Compound &asCompound() noexcept override { return *this; }
    [[nodiscard]] CompoundState *ownState() noexcept override { return &state(); }
    [[nodiscard]] const CompoundState *ownState() const noexcept override { return &state(); }
    void storeName(const std::string &name) override { m_Text.setName(name); }
    [[nodiscard]] std::size_t bytes() const noexcept override;
    void writePart(std::size_t part, ObjectWriter &out) const override;
    // The same of a chain, with the structure that it belongs to.
    void writeContent(ObjectWriter &out) const;
    void collectMarks(ObjectMarks &out) const override;
    void restoreMarks(const ObjectMarks &marks) override;
    [[nodiscard]] bool refersToOthers() const noexcept override { return wasTied(); }
    void forEachOther(const OtherVisitor &visit) const override { forEachTiedChain(visit); }
    [[nodiscard]] bool isProtein() const noexcept override { return residueCount() > 0; }
    // Those of residues that are tied are found in their chains already, unless the sequence is
    // asked.
    void collectAtoms(std::vector<Compound *> &out, bool isAsked) const override;

    // ---- ObjectContainer: groups and elements, which follow the residues in the order of children

    [[nodiscard]] std::size_t objectCount() const noexcept override;
    [[nodiscard]] Compound *object(std::size_t index) const noexcept override;
    [[nodiscard]] bool canHold(const Compound &object) const override;
    void insertObject(std::size_t index, std::unique_ptr<Compound> object) override;
    [[nodiscard]] std::unique_ptr<Compound> takeObject(std::size_t index) override;

    // ---- For edits that are made of bytes: where its colours, numbers and ties are

    [[nodiscard]] ColorSlot &colorSlot();
    [[nodiscard]] NumberSlot &numberSlot();
    [[nodiscard]] std::unique_ptr<ResidueTies> &tieSlot() { return extras().ties; }

    // All atoms in tree order; those of tied residues come from their chains.
    void appendAtoms(std::vector<Compound *> &out) const;

private:
    // The handles and ties of a sequence lead to residues that can be changed, whoever asks for
    // them.
    [[nodiscard]] Peptide &self() const noexcept { return const_cast<Peptide &>(*this); }
    // As resolve(), for what only reads.
    struct ReadPlace
    {
        const Peptide &owner;
        std::size_t index;
    };
    [[nodiscard]] ReadPlace readPlace(std::size_t index) const noexcept;
    // Here, whether tied or not.
    [[nodiscard]] Color colorHere(std::size_t index) const noexcept;
    [[nodiscard]] bool isSelectedHere(std::size_t index) const noexcept;
    // Is below a structure.
    [[nodiscard]] bool isChain() const;
    // Null where there is nothing of that kind.
    [[nodiscard]] const ResidueTies *ties() const noexcept
    {
        return m_Extras == nullptr ? nullptr : m_Extras->ties.get();
    }
    [[nodiscard]] const ResidueSelection *selection() const noexcept
    {
        return m_Extras == nullptr ? nullptr : m_Extras->selection.get();
    }
    [[nodiscard]] const StructureContents *contents() const noexcept
    {
        return m_Extras == nullptr ? nullptr : m_Extras->contents.get();
    }
    // Made when they are asked for.
    [[nodiscard]] PeptideExtras &extras() const;
    [[nodiscard]] StructureContents &ownContents();
    void listElements();
    void writeTies(ObjectWriter &out) const;
    void writeStructure(ObjectWriter &out) const;
    void readTiesFrom(ObjectReader &in);
    void readStructure(ObjectReader &in);
    void readObject(ObjectReader &in);
    // Calls visit(owner, first residue there, first residue here, count) for the residues
    // [begin, end), in ascending order.
    template <typename Visit>
    void forEachOwner(std::size_t begin, std::size_t end, Visit visit) const;
    // Here, whether tied or not.
    void storeColors(const ResidueSelection &residues, std::string_view letters,
                     const LetterColors &colors);
    void storeSelected(std::size_t begin, std::size_t end, bool selected);

    SequenceText m_Text;
    mutable std::unique_ptr<PeptideExtras> m_Extras;
};

inline Peptide::ReadPlace Peptide::readPlace(std::size_t index) const noexcept
{
    if (const ResidueTies *const tied = ties()) {
        if (const ResidueTies::Run *const run = tied->find(index))
            return {*run->chain, run->chainFirst + (index - run->first)};
    }
    return {*this, index};
}

template <typename Visit>
void Peptide::forEachOwner(std::size_t begin, std::size_t end, Visit visit) const
{
    if (const ResidueTies *const tied = ties()) {
        for (const ResidueTies::Run &run : tied->runs()) {
            const std::size_t runEnd = std::size_t(run.first) + run.count;
            if (runEnd <= begin)
                continue;
            if (run.first >= end)
                break;
            if (begin < run.first) {
                visit(self(), begin, begin, run.first - begin);
                begin = run.first;
            }
            const std::size_t count = std::min(end, runEnd) - begin;
            visit(*run.chain, run.chainFirst + (begin - run.first), begin, count);
            begin += count;
        }
    }
    if (begin < end)
        visit(self(), begin, begin, end - begin);
}

} // namespace TAMBO
