// SPDX-License-Identifier: GPL-3.0-or-later
#include "Residues.h"

#include "Atom.h"
#include "Changes.h"
#include "Element.h"
#include "Peptide.h"
#include "Places.h"
#include "Structure.h"

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace TAMBO::script {

namespace {

// Of a residue, which may be tied to that of a chain: the atom is the chain's then.
struct AtomReference
{
    ResidueReference residue;
    std::size_t index;

    [[nodiscard]] const Atom &operator*() const
    {
        const Peptide &chain = *residue.chain;
        if (index >= chain.atomCount(residue.index))
            throw GoneError("the residue is no more tied to the chain whose atom this is");
        return *chain.atom(residue.index, index);
    }

    friend bool operator==(const AtomReference &, const AtomReference &) = default;
};

std::size_t hashOf(const ResidueReference &residue)
{
    return std::hash<std::uint64_t>()(std::uint64_t(residue.chain.number().identity) << 32 |
                                      residue.index);
}

py::array arrayOf(const Vertex &place)
{
    constexpr float nothing = std::numeric_limits<float>::quiet_NaN();
    py::array_t<float> values(3);
    values.mutable_at(0) = place.isDefined() ? place.x() : nothing;
    values.mutable_at(1) = place.isDefined() ? place.y() : nothing;
    values.mutable_at(2) = place.isDefined() ? place.z() : nothing;
    return values;
}

std::string numberOf(const ResidueReference &self)
{
    return (*self.chain).number(self.index).getValue();
}

void setNumber(const ResidueReference &self, const std::string &text)
{
    const SequenceNumber number(text);
    if (!number.isValid())
        throw py::value_error("'" + text +
                              "' is no number of a residue, as '12', '-3' or '60A' are");
    changed(*self.chain, [&](Peptide &changing) { changing.setNumber(self.index, number); });
}

std::string insertionCode(const ResidueReference &self)
{
    const char code = (*self.chain).number(self.index).insertionCode();
    return code == ' ' ? "" : std::string(1, code);
}

std::string elementType(const ResidueReference &self)
{
    const Element *const element = (*self.chain).elementAt(self.index);
    return std::string(1, element == nullptr ? '-' : element->TypeCode());
}

std::vector<AtomReference> atomsOf(const ResidueReference &self)
{
    std::vector<AtomReference> atoms;
    for (std::size_t i = 0; i < (*self.chain).atomCount(self.index); ++i)
        atoms.push_back({self, i});
    return atoms;
}

AtomReference atomNamed(const ResidueReference &self, const std::string &name)
{
    const Peptide &chain = *self.chain;
    for (std::size_t i = 0; i < chain.atomCount(self.index); ++i) {
        if (chain.atom(self.index, i)->name() == name)
            return {self, i};
    }
    throw py::key_error("no atom is called " + name);
}

std::string shownResidue(const ResidueReference &self)
{
    if (!self.chain.isThere())
        return "<tambo.Residue, gone>";
    return "<tambo.Residue " + numberOf(self) + ' ' + (*self.chain).typeName(self.index) + " of " +
           std::string(py::repr(py::str((*self.chain).sequenceName()))) + '>';
}

std::string shownAtom(const AtomReference &self)
{
    if (!self.residue.chain.isThere())
        return "<tambo.Atom, gone>";
    return "<tambo.Atom " + std::string((*self).name()) + " of " + shownResidue(self.residue) + '>';
}

ResidueReference residueAt(const ChainReference &chain, py::ssize_t place)
{
    return {chain, placeOf(place, (*chain).residueCount(), "residue")};
}

std::optional<ResidueReference> residueOfNumber(const ChainReference &reference,
                                                const std::string &text)
{
    const Peptide &chain = *reference;
    const SequenceNumber number(text);
    for (std::size_t i = 0; number.isValid() && i < chain.residueCount(); ++i) {
        if (chain.number(i) == number)
            return ResidueReference{reference, i};
    }
    return std::nullopt;
}

void declareAtoms(py::module_ &module)
{
    py::class_<AtomReference>(
        module, "Atom",
        "An atom of a residue. Of a residue that is tied to one of a chain it "
        "is the chain's. It raises GoneError while the chain is gone.")
        .def_readonly("residue", &AtomReference::residue, "The residue that it was asked of.")
        .def_property_readonly(
            "name", [](const AtomReference &self) { return std::string((*self).name()); },
            "As the file has it, without blanks: 'CA'.")
        .def_property_readonly(
            "element", [](const AtomReference &self) { return std::string((*self).element()); },
            "Its symbol: 'C', 'SE'.")
        .def_property_readonly(
            "position", [](const AtomReference &self) { return arrayOf((*self).place()); },
            "An array of 3 of float32, in Angstrom; a copy.")
        .def_property_readonly(
            "b_factor", [](const AtomReference &self) { return (*self).bFactor(); },
            "The isotropic displacement in square Angstrom, 8 pi^2 <u^2>, or what programs write "
            "into that column; 0 when the file does not say.")
        .def_property_readonly(
            "occupancy", [](const AtomReference &self) { return (*self).occupancy(); },
            "From 0 to 1; 1 when the file does not say.")
        .def(
            "__eq__",
            [](const AtomReference &self, const AtomReference &other) { return self == other; },
            py::is_operator())
        .def("__hash__",
             [](const AtomReference &self) {
                 return hashOf(self.residue) ^ std::hash<std::size_t>()(self.index << 40);
             })
        .def("__repr__", &shownAtom);
}

} // namespace

py::object residuesNamed(const ChainReference &chain, const py::object &named)
{
    if (py::isinstance<py::str>(named)) {
        const auto found = residueOfNumber(chain, named.cast<std::string>());
        if (!found)
            throw py::key_error("no residue has the number " + named.cast<std::string>());
        return py::cast(*found);
    }
    if (!py::isinstance<py::slice>(named))
        return py::cast(residueAt(chain, named.cast<py::ssize_t>()));
    py::list residues;
    for (const std::size_t place : placesOf(named, (*chain).residueCount(), "residue"))
        residues.append(ResidueReference{chain, place});
    return residues;
}

bool holdsResidue(const ChainReference &chain, const py::object &what)
{
    if (py::isinstance<py::str>(what))
        return residueOfNumber(chain, what.cast<std::string>()).has_value();
    return py::isinstance<ResidueReference>(what) &&
           what.cast<const ResidueReference &>().chain == chain;
}

std::optional<StructureReference> structureOf(const Peptide &chain)
{
    auto *structure = dynamic_cast<Structure *>(chain.Parent());
    chain.forEachTiedChain([&structure](const Peptide &tied) {
        if (structure == nullptr)
            structure = dynamic_cast<Structure *>(tied.Parent());
    });
    return structure == nullptr ? std::nullopt : std::optional(StructureReference(*structure));
}

void declareResidues(py::module_ &module)
{
    py::class_<ResidueReference> type(
        module, "Residue",
        "A residue of a chain or a sequence: a place in it, which stays the same. One that is tied "
        "to a chain has that one's number, color, secondary structure, position and atoms, and a "
        "letter of its own. It raises GoneError while the chain is gone.");
    declareAtoms(module);
    type.def_readonly("chain", &ResidueReference::chain, "The chain or sequence that it is of.")
        .def_readonly("index", &ResidueReference::index, "Its place there, from 0.")
        .def_property(
            "number", &numberOf, &setNumber,
            "As files write it, with the insertion code: '12', '60A'. Can be set; a ValueError "
            "when the text is no number. Chain.renumber() numbers many.")
        .def_property_readonly(
            "sequence_number",
            [](const ResidueReference &self) { return (*self.chain).number(self.index).number(); },
            "The number without the insertion code.")
        .def_property_readonly("insertion_code", &insertionCode, "A letter, or ''.")
        .def_property_readonly(
            "letter",
            [](const ResidueReference &self) {
                return std::string(1, (*self.chain).letter(self.index));
            },
            "One, as rows show it.")
        .def_property_readonly(
            "type_name",
            [](const ResidueReference &self) { return (*self.chain).typeName(self.index); },
            "'ALA', 'MSE'.")
        .def_property_readonly("secondary_structure", &elementType,
                               "'H', 'E' or 'T' by the element that it is in, or '-'.")
        .def_property(
            "color",
            [](const ResidueReference &self) { return (*self.chain).ownColor(self.index).argb(); },
            [](const ResidueReference &self, std::uint32_t color) {
                changed(*self.chain,
                        [&](Peptide &changing) { changing.setColor(self.index, Color(color)); });
            },
            "0xAARRGGBB. Can be set, also as 0xRRGGBB, which is opaque.")
        .def_property(
            "selected",
            [](const ResidueReference &self) { return (*self.chain).isSelected(self.index); },
            [](const ResidueReference &self, bool selected) {
                changed(*self.chain,
                        [&](Peptide &changing) { changing.setSelected(self.index, selected); });
            },
            "As all windows show it. Can be set; no step of undo.")
        .def_property_readonly(
            "ca_position",
            [](const ResidueReference &self) {
                return arrayOf((*self.chain).position(self.index));
            },
            "An array of 3 of float32, in Angstrom; nan where there is no CA atom.")
        .def_property_readonly("atoms", &atomsOf,
                               "In the order of the file; none without a structure.")
        .def("__getitem__", &atomNamed, py::arg("name"),
             "An atom by its name: residue['CA']; a KeyError when there is none.")
        .def(
            "__eq__",
            [](const ResidueReference &self, const ResidueReference &other) {
                return self == other;
            },
            py::is_operator())
        .def("__hash__", &hashOf)
        .def("__repr__", &shownResidue);
}

} // namespace TAMBO::script
