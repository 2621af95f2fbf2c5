// SPDX-License-Identifier: GPL-3.0-or-later
#include "Changes.h"
#include "DataMaker.h"
#include "Element.h"
#include "NamedObjects.h"
#include "Peptide.h"
#include "Places.h"
#include "ResidueTies.h"
#include "Residues.h"
#include "Space.h"
#include "StructureDetails.h"

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

namespace TAMBO::script {

namespace {

std::size_t residueCountOf(const ChainReference &self)
{
    return (*self).residueCount();
}

std::string lettersOfChain(const ChainReference &self)
{
    return std::string((*self).letters());
}

std::string shownChain(const ChainReference &self)
{
    if (!self.isThere())
        return "<tambo.Chain, gone>";
    return "<tambo.Chain " + std::string(py::repr(py::str((*self).sequenceName()))) + ", " +
           std::to_string(residueCountOf(self)) + " residues>";
}

py::list numbers(const ChainReference &self)
{
    const Peptide &chain = *self;
    py::list found;
    for (std::size_t i = 0; i < chain.residueCount(); ++i)
        found.append(chain.number(i).getValue());
    return found;
}

py::list typeNames(const ChainReference &self)
{
    const Peptide &chain = *self;
    py::list found;
    for (std::size_t i = 0; i < chain.residueCount(); ++i)
        found.append(chain.typeName(i));
    return found;
}

// '-' without an element.
std::string secondaryStructure(const ChainReference &self)
{
    const Peptide &chain = *self;
    std::string found;
    for (std::size_t i = 0; i < chain.residueCount(); ++i) {
        const Element *const element = chain.elementAt(i);
        found += element == nullptr ? '-' : element->TypeCode();
    }
    return found;
}

void put(float *to, const Vertex &place)
{
    constexpr float nothing = std::numeric_limits<float>::quiet_NaN();
    to[0] = place.isDefined() ? place.x() : nothing;
    to[1] = place.isDefined() ? place.y() : nothing;
    to[2] = place.isDefined() ? place.z() : nothing;
}

py::array caPositions(const ChainReference &self)
{
    const Peptide &chain = *self;
    py::array_t<float> places({py::ssize_t(chain.residueCount()), py::ssize_t(3)});
    float *next = places.mutable_data();
    for (std::size_t i = 0; i < chain.residueCount(); ++i, next += 3)
        put(next, chain.position(i));
    return places;
}

std::vector<std::uint32_t> colors(const ChainReference &self)
{
    const Peptide &chain = *self;
    std::vector<std::uint32_t> found;
    for (std::size_t i = 0; i < chain.residueCount(); ++i)
        found.push_back(chain.ownColor(i).argb());
    return found;
}

void setColor(const ChainReference &self, const py::object &residues, std::uint32_t color)
{
    Peptide &chain = *self;
    const std::vector<std::size_t> chosen = placesOf(residues, chain.residueCount(), "residue");
    changed(chain, [&](Peptide &changing) {
        for (const std::size_t residue : chosen)
            changing.setColor(residue, Color(color));
    });
}

void renumber(const ChainReference &self, const std::string &first, const py::object &residues)
{
    Peptide &chain = *self;
    const auto [begin, end] = rangeOf(residues, chain.residueCount(), "residue");
    SequenceNumber number(first);
    if (!number.isValid())
        throw py::value_error("'" + first +
                              "' is no number of a residue, as '12', '-3' or '60A' are");
    changed(chain, [&, begin = begin, end = end](Peptide &changing) {
        for (std::size_t residue = begin; residue < end; ++residue, ++number)
            changing.setNumber(residue, number);
    });
}

void makeElement(const ChainReference &self, const std::string &name, const std::string &type,
                 const py::object &residues)
{
    Peptide &chain = *self;
    const std::vector<std::size_t> chosen = placesOf(residues, chain.residueCount(), "residue");
    if (type.size() != 1 || !Element::isType(type.front()))
        throw py::value_error("an element is of type 'H', 'E' or 'T', and not '" + type + "'");
    if (chosen.size() < 3)
        throw py::value_error("an element has three residues at least");
    std::vector<Compound *> members;
    for (const std::size_t residue : chosen) {
        if (chain.elementAt(residue) != nullptr)
            throw py::value_error("residue " + std::to_string(residue) +
                                  " is in an element already");
        members.push_back(chain.residue(residue));
    }
    const Compound *made = nullptr;
    changed(chain, [&](Peptide &changing) {
        made = DataMaker::makeSSE(&changing, name, members, type.front());
    });
    if (made == nullptr)
        throw RefusedError("no element was made");
}

// Pairs of a residue here and one of the chain, in place of the ties there are.
void tie(const ChainReference &self, const ChainReference &to,
         const std::vector<std::pair<py::ssize_t, py::ssize_t>> &pairs)
{
    Peptide &sequence = *self;
    Peptide &chain = *to;
    if (sequence.Parent() != Space::instance())
        throw py::value_error("only a sequence that stands by itself is tied to a chain");
    if (chain.Parent() == Space::instance())
        throw py::value_error("what a sequence is tied to is a chain of a structure");
    ResidueTies ties;
    std::optional<std::size_t> last;
    for (const auto &[here, there] : pairs) {
        const std::size_t residue = placeOf(here, sequence.residueCount(), "residue");
        const std::size_t place = placeOf(there, chain.residueCount(), "residue");
        if (last && residue <= *last)
            throw py::value_error("the residues have to ascend, and " + std::to_string(residue) +
                                  " comes behind " + std::to_string(*last));
        last = residue;
        ties.append({std::uint32_t(residue), 1, std::uint32_t(place), &chain});
    }
    changed(sequence, [&](Peptide &changing) { changing.retie(std::move(ties)); });
}

void untie(const ChainReference &self, const ChainReference &from)
{
    const Peptide &chain = *from;
    changed(*self, [&](Peptide &changing) { changing.untieFrom(chain); });
}

std::vector<ChainReference> tiedTo(const ChainReference &self)
{
    std::vector<ChainReference> found;
    (*self).forEachTiedChain([&](const Peptide &chain) {
        const ChainReference one(const_cast<Peptide &>(chain));
        if (std::find(found.begin(), found.end(), one) == found.end())
            found.push_back(one);
    });
    return found;
}

ChainReference newSequence(const std::string &name, const std::string &text)
{
    Compound *made = nullptr;
    changed(
        *Space::instance(), [&](Space &) { made = DataMaker::makeSequence(name, text); },
        Publisher::Add);
    Peptide *const sequence = Peptide::from(made);
    if (sequence == nullptr)
        throw py::value_error("a sequence has a name and letters alone");
    return ChainReference(*sequence);
}

} // namespace

void declareChains(py::module_ &module)
{
    py::class_<ChainReference> type(
        module, "Chain",
        "A chain of a structure, or a sequence that stands by itself; residues count from 0.");
    declareObject(type, &shownChain);
    declareResidues(module);
    type.def("__len__", &residueCountOf, "How many residues it has.")
        .def(
            "__getitem__", &residuesNamed, py::arg("residue"),
            "A Residue by its place, or by its number as text: chain[0], chain['60A']; the list of "
            "those of a slice of places. An IndexError or a KeyError when there is none.")
        .def(
            "__iter__",
            [](const py::object &self) {
                return py::reinterpret_steal<py::object>(PySeqIter_New(self.ptr()));
            },
            "Its residues, in their order.")
        .def("__contains__", &holdsResidue, py::arg("residue"),
             "Whether it has a Residue, or one of a number.")
        .def_property_readonly(
            "structure", [](const ChainReference &self) { return structureOf(*self); },
            "The Structure that it is a chain of, or that it is tied to first; None without.")
        .def("__str__", &lettersOfChain)
        .def_property_readonly("letters", &lettersOfChain, "One for each residue.")
        .def_property_readonly("numbers", &numbers,
                               "Of the residues, as files write them: '12', '60A'.")
        .def_property_readonly("type_names", &typeNames, "Of the residues: 'ALA', 'MSE'.")
        .def_property_readonly("secondary_structure", &secondaryStructure,
                               "A letter for each residue: H, E, T, or - without.")
        .def_property_readonly("colors", &colors, "Of the residues, as 0xAARRGGBB.")
        .def("set_color", &setColor, py::arg("residues"), py::arg("color"),
             "Residues get a color, 0xAARRGGBB or, opaque, 0xRRGGBB.")
        .def("ca_positions", &caPositions,
             "An array of residues x 3 of float32, in Angstrom; nan where there is no CA atom.")
        .def("renumber", &renumber, py::arg("first"), py::arg("residues") = py::none(),
             "The residues of the slice, or all, count from this number on, as '12' or '60A'; the "
             "next "
             "one has the next number without an insertion code. A ValueError when the text is no "
             "number.")
        .def("make_element", &makeElement, py::arg("name"), py::arg("type"), py::arg("residues"),
             "Makes a helix (type 'H'), strand ('E') or turn ('T') of three residues at least; a "
             "ValueError when one of them is in an element already.");
    type.def_property_readonly("tied_to", &tiedTo,
                               "The chains that residues of the sequence are tied to.")
        .def("tie", &tie, py::arg("chain"), py::arg("pairs"),
             "In place of its ties: pairs of a residue here and one of the chain, whose number, "
             "color, secondary structure and place it shares from now on. Places here ascend; a "
             "ValueError when they do not, when the sequence is a chain itself, or the chain is "
             "none.")
        .def("untie", &untie, py::arg("chain"),
             "Cuts all ties to the chain; residues keep what they have themselves.");
    module.def(
        "new_sequence", &newSequence, py::arg("name"), py::arg("letters"),
        "Adds a sequence that stands by itself. A ValueError when it has no name, or anything but "
        "letters.");
}

} // namespace TAMBO::script
