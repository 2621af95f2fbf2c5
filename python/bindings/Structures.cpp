// SPDX-License-Identifier: GPL-3.0-or-later
#include "Structure.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "Changes.h"
#include "NamedObjects.h"
#include "Peptide.h"
#include "Places.h"
#include "Space.h"
#include "StructureDetails.h"
#include "StructureFits.h"

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include <cmath>
#include <limits>
#include <optional>

namespace TAMBO::script {

namespace {

std::vector<ChainReference> chains(const StructureReference &self)
{
    const Structure &structure = *self;
    std::vector<ChainReference> found;
    for (std::size_t i = 0; i < structure.objectCount(); ++i)
        found.emplace_back(*structure.chain(i));
    return found;
}

ChainReference chainNamed(const StructureReference &self, const std::string &name)
{
    const Structure &structure = *self;
    for (std::size_t i = 0; i < structure.objectCount(); ++i) {
        if (structure.chain(i)->Name() == name)
            return ChainReference(*structure.chain(i));
    }
    throw py::key_error("no chain is called " + name);
}

std::string shownStructure(const StructureReference &self)
{
    if (!self.isThere())
        return "<tambo.Structure, gone>";
    const Structure &structure = *self;
    return "<tambo.Structure " + std::string(py::repr(py::str(structure.Name()))) + ", " +
           std::to_string(structure.objectCount()) + " chains>";
}

py::array atomPositions(const StructureReference &self)
{
    const StructureTable table = StructureDetails::read(&(*self));
    py::array_t<float> places({py::ssize_t(table.atoms.size()), py::ssize_t(3)});
    float *next = places.mutable_data();
    constexpr float nothing = std::numeric_limits<float>::quiet_NaN();
    for (const AtomDetails &atom : table.atoms) {
        const Vertex &place = atom.position;
        for (const float value : {place.x(), place.y(), place.z()})
            *next++ = place.isDefined() ? value : nothing;
    }
    return places;
}

// A column for each thing that is known of atoms, as lists and arrays.
py::dict atoms(const StructureReference &self)
{
    const StructureTable table = StructureDetails::read(&(*self));
    const auto count = py::ssize_t(table.atoms.size());
    py::list names;
    py::list elements;
    py::list residueNames;
    py::list chainNames;
    py::list numbers;
    py::array_t<float> bFactors(count);
    py::array_t<float> occupancies(count);
    for (py::ssize_t i = 0; i < count; ++i) {
        const AtomDetails &atom = table.atoms[std::size_t(i)];
        const ResidueDetails &residue = table.residues[atom.residue];
        names.append(py::str(atom.name.data(), atom.name.size()));
        elements.append(py::str(atom.element.data(), atom.element.size()));
        residueNames.append(py::str(residue.name.data(), residue.name.size()));
        numbers.append(SequenceNumber(residue.number, residue.insertionCode).getValue());
        chainNames.append(table.chains[residue.chain].chain->Name());
        bFactors.mutable_at(i) = atom.bFactor;
        occupancies.mutable_at(i) = atom.occupancy;
    }
    py::dict found;
    found["chain"] = chainNames;
    found["number"] = numbers;
    found["residue"] = residueNames;
    found["name"] = names;
    found["element"] = elements;
    found["b_factor"] = bFactors;
    found["occupancy"] = occupancies;
    return found;
}

// The rows whose structures have moved, with what they are apart now.
py::list superpose(const AlignmentReference &reference, py::ssize_t fixed, const py::object &rows,
                   const std::optional<double> &prune)
{
    FitChoice choice;
    if (prune) {
        if (!(*prune > 0) || !std::isfinite(*prune))
            throw py::value_error("prune is a distance in Angstrom");
        choice.cutoff = *prune;
    }
    Alignment &alignment = *reference;
    const std::size_t count = alignment.table().rowCount();
    const std::size_t stays = placeOf(fixed, count, "row");
    std::vector<unsigned long> moving;
    if (rows.is_none()) {
        const Compound *const there = StructureFits::structureOf(alignment, stays);
        for (const StructureRow &row : StructureFits::rows(alignment)) {
            if (row.structure != there)
                moving.push_back(row.row);
        }
    } else {
        for (const std::size_t row : placesOf(rows, count, "row"))
            moving.push_back(row);
    }
    std::vector<StructureFit> fits;
    for (const unsigned long row : moving) {
        const StructureFit fit = StructureFits::measure(alignment, stays, row, choice);
        if (!fit.problem.empty())
            throw RefusedError(fit.problem);
    }
    changed(*Space::instance(), [&](Space &) {
        fits = StructureFits::superpose(alignment, stays, moving, choice);
        StructureFits::keepChoice(alignment, choice);
    });
    py::list found;
    for (const StructureFit &fit : fits) {
        if (!fit.problem.empty())
            throw RefusedError(fit.problem);
        py::dict entry;
        entry["row"] = fit.row;
        entry["pairs"] = fit.pairs;
        entry["rmsd"] = fit.rmsd;
        entry["core_pairs"] = fit.corePairs;
        entry["core_rmsd"] = fit.coreRmsd;
        found.append(entry);
    }
    return found;
}

std::vector<StructureReference> structures()
{
    std::vector<StructureReference> found;
    ProcessModel::get();
    for (Compound *const object : *Space::instance()) {
        if (auto *const structure = dynamic_cast<Structure *>(object))
            found.emplace_back(*structure);
    }
    return found;
}

} // namespace

void declareStructures(py::module_ &module)
{
    py::class_<StructureReference> type(
        module, "Structure", "What a structure file holds: chains of residues with atoms.");
    declareObject(type, &shownStructure);
    type.def_property_readonly("chains", &chains, "In the order of the file.")
        .def(
            "__len__", [](const StructureReference &self) { return (*self).objectCount(); },
            "How many chains it has.")
        .def("__getitem__", &chainNamed, py::arg("chain"),
             "A Chain by its name; a KeyError when there is none.")
        .def_property_readonly(
            "code", [](const StructureReference &self) { return (*self).code(); },
            "What files of alignments call it, whatever its name is now.")
        .def_property_readonly(
            "is_model", [](const StructureReference &self) { return (*self).isModel(); },
            "Built by a modelling program, not measured.")
        .def_property_readonly(
            "model_count", [](const StructureReference &self) { return (*self).modelCount(); },
            "How many models its file has; the first one is loaded.")
        .def("atom_positions", &atomPositions,
             "An array of atoms x 3 of float32, in Angstrom, chain by chain in the order of the "
             "file; "
             "nan of an atom without a place.")
        .def("atoms", &atoms,
             "What is known of the atoms beside their places, in the same order: a dictionary of "
             "lists and "
             "arrays.");
    module.def(
        "superpose", &superpose, py::arg("alignment"), py::arg("fixed") = 0,
        py::arg("rows") = py::none(), py::arg("prune") = py::none(),
        "Superposes the structures of the rows, or of all rows, on that of the fixed row, "
        "by the CA atoms of common columns, with the least sum of squared distances (B. K. P. "
        "Horn, J. Opt. Soc. Am. A 4, 629, 1987). With prune the farthest pairs are left out, "
        "some at a time, until none is farther apart than so many Angstrom. Tells of each "
        "row how many pairs it has, and their RMSD in Angstrom; and of those that are not "
        "left out core_pairs and core_rmsd. A RefusedError, and nothing moves, when a row has no "
        "structure, or too few pairs.");
    module.def("structures", &structures, "The structures that are loaded, in their order.");
}

} // namespace TAMBO::script
