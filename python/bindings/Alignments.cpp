// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentDetails.h"
#include "AlignmentNumbers.h"
#include "AlignmentTable.h"
#include "Changes.h"
#include "Declarations.h"
#include "NamedObjects.h"
#include "Places.h"
#include "RowTexts.h"
#include "Rows.h"
#include "Space.h"
#include "TableChanges.h"
#include "Trees.h"

#include <pybind11/stl.h>

#include <algorithm>
#include <functional>

namespace TAMBO::script {

namespace {

std::size_t rowCount(const AlignmentReference &self)
{
    return (*self).table().rowCount();
}

std::size_t rowOf(const Alignment &alignment, py::ssize_t row)
{
    return placeOf(row, alignment.table().rowCount(), "row");
}

std::size_t columnOf(const Alignment &alignment, py::ssize_t column)
{
    return placeOf(column, alignment.width(), "column");
}

// Counts are what a caller may have got wrong by sign.
unsigned long countOf(py::ssize_t count)
{
    if (count < 0)
        throw py::value_error("a negative count: " + std::to_string(count));
    return static_cast<unsigned long>(count);
}

// ---- Reading

std::vector<std::string> names(const AlignmentReference &self)
{
    const AlignmentTable &table = (*self).table();
    std::vector<std::string> found;
    found.reserve(table.rowCount());
    for (std::size_t row = 0; row < table.rowCount(); ++row)
        found.push_back(table.row(row).name());
    return found;
}

RowReference rowNamed(const AlignmentReference &self, const std::string &name)
{
    const AlignmentTable &table = (*self).table();
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        if (table.row(row).name() == name)
            return RowReference(self, row);
    }
    throw py::key_error("no row is called " + name);
}

py::object item(const AlignmentReference &self, const py::object &named)
{
    if (py::isinstance<py::str>(named))
        return py::cast(rowNamed(self, named.cast<std::string>()));
    if (py::isinstance<py::slice>(named)) {
        py::list rows;
        for (const std::size_t row : placesOf(named, rowCount(self), "row"))
            rows.append(RowReference(self, row));
        return rows;
    }
    return py::cast(RowReference(self, placeOf(named.cast<py::ssize_t>(), rowCount(self), "row")));
}

bool holds(const AlignmentReference &self, const py::object &what)
{
    if (py::isinstance<py::str>(what)) {
        const std::vector<std::string> all = names(self);
        return std::find(all.begin(), all.end(), what.cast<std::string>()) != all.end();
    }
    return py::isinstance<RowReference>(what) &&
           what.cast<const RowReference &>().alignment() == self;
}

std::string shownAlignment(const AlignmentReference &self)
{
    if (!self.isThere())
        return "<tambo.Alignment, gone>";
    const Alignment &alignment = *self;
    return "<tambo.Alignment " + std::string(py::repr(py::str(alignment.Name()))) + ", " +
           std::to_string(alignment.table().rowCount()) + " rows, " +
           std::to_string(alignment.width()) + " columns>";
}

py::dict columnLines(const AlignmentReference &self)
{
    const Alignment &alignment = *self;
    py::dict lines;
    const std::vector<std::string> tags = AlignmentDetails::columnLines(alignment);
    for (std::size_t i = 0; i < tags.size(); ++i)
        lines[py::str(tags[i])] =
            py::bytes(AlignmentDetails::columnText(alignment, i, 0, alignment.width()))
                .attr("decode")("utf-8", "replace");
    return lines;
}

std::vector<std::pair<std::string, std::string>> pairsOf(const std::vector<Annotation> &annotations)
{
    std::vector<std::pair<std::string, std::string>> pairs;
    pairs.reserve(annotations.size());
    for (const Annotation &said : annotations)
        pairs.emplace_back(said.tag, said.text);
    return pairs;
}

std::vector<Annotation> remarksIn(const AlignmentTable &table)
{
    const AlignmentAnnotation *const annotation = table.annotation();
    return annotation == nullptr ? std::vector<Annotation>() : annotation->remarks();
}

std::vector<std::pair<std::string, std::string>> remarks(const AlignmentReference &self)
{
    return pairsOf(remarksIn((*self).table()));
}

// Those that are not named go.
void setColumnLines(const AlignmentReference &self, const py::dict &lines)
{
    const Alignment &alignment = *self;
    std::vector<Annotation> said;
    for (auto &[tag, text] : textsByTag(lines)) {
        checkTag(tag);
        checkColumnTexts(tag, text, alignment.width());
        said.push_back({std::move(tag), std::move(text)});
    }
    const bool areThere = std::ranges::equal(AlignmentDetails::columnLines(alignment), said, {}, {},
                                             &Annotation::tag);
    changed(*self, [&](Alignment &changing) {
        AlignmentTable &table = changing.table();
        if (!areThere) {
            annotate(table, remarksIn(table), std::move(said), "annotate columns");
            return;
        }
        std::vector<std::string> texts;
        for (Annotation &line : said)
            texts.push_back(std::move(line.text));
        rewriteColumns(table, 0, std::move(texts));
    });
}

void remarkOnAll(const AlignmentReference &self,
                 const std::vector<std::pair<std::string, std::string>> &remarks)
{
    std::vector<Annotation> said = annotationsOf(remarks);
    changed(*self, [&](Alignment &changing) {
        AlignmentTable &table = changing.table();
        const AlignmentAnnotation *const present = table.annotation();
        annotate(table, std::move(said),
                 present == nullptr ? std::vector<Annotation>() : present->lines(table.width()),
                 "write remarks");
    });
}

// ---- Gaps

void insertGaps(const AlignmentReference &self, py::ssize_t row, py::ssize_t column,
                py::ssize_t count)
{
    Alignment &alignment = *self;
    const std::size_t line = rowOf(alignment, row);
    const std::size_t at = cutOf(column, alignment.width(), "column");
    const unsigned long gaps = countOf(count);
    changed(alignment, [&](Alignment &changing) { changing.insertGaps(line, at, gaps); });
}

void moveGaps(const AlignmentReference &self, py::ssize_t row, py::ssize_t from, py::ssize_t count,
              py::ssize_t to)
{
    Alignment &alignment = *self;
    const std::size_t line = rowOf(alignment, row);
    const unsigned long gaps = countOf(count);
    const std::size_t begin = cutOf(from, alignment.width(), "column");
    const std::size_t place = cutOf(to, alignment.width(), "column");
    if (begin + gaps > alignment.width() || place + gaps > alignment.width())
        throw py::index_error("the gaps reach beyond the last column");
    if (alignment.residueCount(line, begin + gaps) != alignment.residueCount(line, begin))
        throw py::value_error("not all cells from column " + std::to_string(begin) + " to " +
                              std::to_string(begin + gaps) + " are gaps");
    changed(alignment, [&](Alignment &changing) { changing.moveGaps(line, begin, gaps, place); });
}

void drag(const AlignmentReference &self, py::ssize_t row, py::ssize_t from, py::ssize_t to,
          bool single)
{
    Alignment &alignment = *self;
    const std::size_t line = rowOf(alignment, row);
    const std::size_t begin = columnOf(alignment, from);
    const std::size_t end = columnOf(alignment, to);
    changed(alignment, [&](Alignment &changing) { changing.moveGap(line, begin, end, single); });
}

void push(const AlignmentReference &self, const py::object &rows, const py::object &columns,
          const std::string &to)
{
    if (to != "left" && to != "right")
        throw py::value_error("residues are pushed to 'left' or to 'right', and not to '" + to +
                              "'");
    Alignment &alignment = *self;
    const std::vector<bool> lines = flagsOf(rows, alignment.table().rowCount(), "row");
    const Alignment::Range range = rangeOf(columns, alignment.width(), "column");
    changed(alignment,
            [&](Alignment &changing) { changing.pushResidues(lines, range, to == "left"); });
}

// ---- Columns and rows

void insertColumns(const AlignmentReference &self, py::ssize_t column, py::ssize_t count)
{
    Alignment &alignment = *self;
    const std::size_t at = cutOf(column, alignment.width(), "column");
    const unsigned long gaps = countOf(count);
    changed(alignment, [&](Alignment &changing) { changing.insertGapCol(at, gaps); });
}

void removeColumns(const AlignmentReference &self, const py::object &columns)
{
    Alignment &alignment = *self;
    const std::vector<bool> chosen = flagsOf(columns, alignment.width(), "column");
    changed(alignment, [&](Alignment &changing) { changing.removeColumns(chosen); });
}

void removeRows(const AlignmentReference &self, const py::object &rows)
{
    Alignment &alignment = *self;
    const std::vector<bool> chosen = flagsOf(rows, alignment.table().rowCount(), "row");
    changed(alignment, [&](Alignment &changing) { changing.removeRows(chosen); });
}

void moveRow(const AlignmentReference &self, py::ssize_t from, py::ssize_t to)
{
    Alignment &alignment = *self;
    const std::size_t begin = rowOf(alignment, from);
    const std::size_t end = rowOf(alignment, to);
    changed(alignment, [&](Alignment &changing) { changing.bubbleRow(begin, end); });
}

std::vector<unsigned long> orderNamed(const AlignmentReference &self, const py::object &order)
{
    if (py::isinstance<TreeValue>(order))
        return rowOrder(order.cast<const TreeValue &>(), self);
    const std::size_t count = rowCount(self);
    std::vector<unsigned long> places;
    std::vector<bool> isNamed(count);
    for (const py::handle row : order) {
        const std::size_t place = placeOf(row.cast<py::ssize_t>(), count, "row");
        if (isNamed[place])
            throw py::value_error("row " + std::to_string(place) + " is named twice");
        isNamed[place] = true;
        places.push_back(place);
    }
    if (places.size() != count)
        throw py::value_error(std::to_string(places.size()) + " places for " +
                              std::to_string(count) + " rows");
    return places;
}

void reorder(const AlignmentReference &self, const py::object &order)
{
    Alignment &alignment = *self;
    const std::vector<unsigned long> places = orderNamed(self, order);
    changed(alignment, [&](Alignment &changing) { changing.reorderRows(places); });
}

void combine(const AlignmentReference &self, const AlignmentReference &other)
{
    const Alignment &added = *other;
    changed(*self, [&](Alignment &changing) { changing.combine(added); });
}

AlignmentReference part(const AlignmentReference &self, const py::object &rows,
                        const py::object &columns, const std::optional<std::string> &name)
{
    Alignment &alignment = *self;
    const std::vector<bool> lines = flagsOf(rows, alignment.table().rowCount(), "row");
    const std::vector<bool> cells = flagsOf(columns, alignment.width(), "column");
    const Alignment *made = nullptr;
    changed(
        *Space::instance(),
        [&](Space &) { made = alignment.duplicate(lines, cells, name.value_or(alignment.Name())); },
        Publisher::Add);
    if (made == nullptr)
        throw RefusedError("no alignment was made");
    return AlignmentReference(const_cast<Alignment &>(*made));
}

std::vector<AlignmentReference> alignments()
{
    std::vector<AlignmentReference> found;
    ProcessModel::get();
    for (Compound *const object : *Space::instance()) {
        if (auto *const alignment = dynamic_cast<Alignment *>(object))
            found.emplace_back(*alignment);
    }
    return found;
}

void declareEdits(py::class_<AlignmentReference> &type)
{
    type.def("insert_gaps", &insertGaps, py::arg("row"), py::arg("column"), py::arg("count") = 1,
             "Cells of the row from the column on move right by count, into the gaps at its end as "
             "far as "
             "there are; the alignment gets wider by the rest.")
        .def("move_gaps", &moveGaps, py::arg("row"), py::arg("start"), py::arg("count"),
             py::arg("to"),
             "The gaps [start, start + count) of a row come to stand at [to, to + count).")
        .def("drag", &drag, py::arg("row"), py::arg("start"), py::arg("end"),
             py::arg("single") = false,
             "As a cell that is dragged in the editor: the run of gaps around it, with single the "
             "one gap, "
             "or from a residue on what follows it.")
        .def("push", &push, py::arg("rows") = py::none(), py::arg("columns") = py::none(),
             py::arg("to") = "left",
             "The residues of the rows come to stand side by side at one end of the columns, "
             "'left' or "
             "'right'; those outside of the columns stay.")
        .def("insert_columns", &insertColumns, py::arg("column"), py::arg("count") = 1,
             "So many columns of gaps before a column; before width, behind the last one.")
        .def("remove_columns", &removeColumns, py::arg("columns"),
             "They go with the residues in them, which stay in their sequences.")
        .def("remove_rows", &removeRows, py::arg("rows"), "They go; their sequences stay loaded.")
        .def("move_row", &moveRow, py::arg("start"), py::arg("end"),
             "The row that stands at start comes to stand at end; the rows between close up.")
        .def("reorder", &reorder, py::arg("order"),
             "The row that stands at order[i] comes to stand at i; order names each row once. Or "
             "the rows come to stand as the leaves of a Tree do, from top to bottom; a ValueError "
             "when these are not its leaves.")
        .def("add_rows", &addRows, py::arg("chains") = py::none(), py::arg("texts") = py::none(),
             "Rows behind the others. Of chains alone: a row without gaps for each, from column 0 "
             "on. Of texts alone, pairs of a name and letters with '-' for gaps: a row of a new "
             "sequence for each. Of both, where texts are letters with gaps: of each chain as its "
             "text says. The alignment gets as wide as the longest one. A ValueError, and nothing "
             "is changed, when a text has other letters than its chain, or what is no letter.")
        .def("combine", &combine, py::arg("other"),
             "Adds the rows that the other alignment has more, matched along the first common "
             "sequence.")
        .def("part", &part, py::arg("rows") = py::none(), py::arg("columns") = py::none(),
             py::arg("name") = py::none(),
             "A new alignment of the cells in these rows and columns, in their order here, over "
             "the same "
             "sequences. Without a name it has that of this one, with a number if it is taken.");
}

} // namespace

void declareAlignments(py::module_ &module)
{
    declareRows(module);
    py::class_<AlignmentReference> type(
        module, "Alignment", "Rows of sequences with gaps; rows and columns count from 0.");
    declareObject(type, &shownAlignment);
    type.def("__len__", &rowCount, "How many rows it has.")
        .def(
            "__iter__",
            [](const py::object &self) {
                return py::reinterpret_steal<py::object>(PySeqIter_New(self.ptr()));
            },
            "Its rows, in their order.")
        .def("__getitem__", &item, py::arg("row"),
             "A Row by its place, or the first one of a name; the list of those of a slice. An "
             "IndexError or a KeyError when there is none.")
        .def("__contains__", &holds, py::arg("row"),
             "Whether a Row is one of it, or one has the name.")
        .def_property_readonly(
            "width", [](const AlignmentReference &self) { return (*self).width(); },
            "How many columns it has.")
        .def_property_readonly(
            "shape",
            [](const AlignmentReference &self) {
                return py::make_tuple(rowCount(self), (*self).width());
            },
            "Rows and columns.")
        .def_property_readonly("names", &names, "The names of the rows.")
        .def_property(
            "annotations", &columnLines, &setColumnLines,
            "What its file says of the columns ('#=GC' of Stockholm): a dictionary of texts by "
            "their tags, a character for each column, '.' where nothing is said; a copy. Can be "
            "set to other lines. A ValueError when a text is not as long as the alignment is "
            "wide.")
        .def_property(
            "remarks", &remarks, &remarkOnAll,
            "What its file says of all of it ('#=GF' of Stockholm): pairs of a tag and a text, in "
            "order; a tag may come again. Can be set.")
        .def("letters", &letters, py::arg("rows") = py::none(), py::arg("columns") = py::none(),
             py::arg("gap") = "-",
             "An array of rows x columns of uint8: the codes of the letters, and of gap, which is "
             "one "
             "character. Rows come in the order in which they are named; columns are a slice. A "
             "copy: "
             "changing it changes nothing else.")
        .def(
            "occupancy", &occupancy, py::arg("rows") = py::none(), py::arg("columns") = py::none(),
            "An array of rows x columns of bool: where there are residues. Rows and columns as for "
            "letters().")
        .def("_identities", &identities, py::arg("of"))
        .def(
            "conservation", &conservations,
            "Of each column, from 0 to nearly 1: the Jensen-Shannon divergence, in bits, of its "
            "amino "
            "acids from those of proteins in general, times the share of rows that have one (J. A. "
            "Capra and M. Singh, Bioinformatics 23, 1875, 2007, without windows and with equal "
            "weights of rows). Letters that say no amino acid, as X, count as gaps. An array of "
            "columns of float64.")
        .def(
            "column_distances", &distances,
            "Of each column the mean distance of its CA atoms over all pairs, in Angstrom; nan of "
            "fewer "
            "than two. All structures count as they lie: superpose() lays them upon each other. An "
            "array of columns of float64.")
        .def(
            "neighbor_tree",
            [](const AlignmentReference &self) { return treeOfRows(neighborTree(self), self); },
            "The Tree of neighbor joining (N. Saitou and M. Nei, Mol. Biol. Evol. 4, 406, 1987; "
            "J. A. Studier and K. J. Keppler, 5, 729, 1988). The distance of two rows is the share "
            "of pairs that differ among the columns in which both have a residue; branches that "
            "would be negative have length 0, and the other one of the pair all of its distance "
            "(M. K. Kuhner and J. Felsenstein, 11, 459, 1994). It has no root by itself: "
            "midpoint_rooted() gives it one. Takes time with the third power of the rows. Raises "
            "RefusedError without a row.");
    declareEdits(type);
    module.def("new_alignment", &newAlignment, py::arg("name"), py::arg("rows"),
               "Adds an alignment of rows: pairs of a name and a text of letters, with '-', '.' or "
               "'~' for "
               "gaps. A ValueError when texts differ in length or have other characters.");
    module.def("alignments", &alignments, "The alignments that are loaded, in their order.");
}

} // namespace TAMBO::script
