// SPDX-License-Identifier: GPL-3.0-or-later
#include "Rows.h"

#include "AlignmentAnnotation.h"
#include "AlignmentDetails.h"
#include "AlignmentTable.h"
#include "Changes.h"
#include "Declarations.h"
#include "NamedObjects.h"
#include "Places.h"
#include "Residues.h"
#include "Space.h"
#include "TableChanges.h"

#include <pybind11/stl.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <vector>

namespace TAMBO::script {

RowReference::RowReference(const AlignmentReference &alignment, std::size_t row)
    : m_Alignment(alignment), m_Chain((*alignment).table().row(row).sequence()), m_Hint(row)
{ }

std::size_t RowReference::index() const
{
    const AlignmentTable &table = (*m_Alignment).table();
    const Peptide &chain = *m_Chain;
    if (m_Hint < table.rowCount() && &table.row(m_Hint).sequence() == &chain)
        return m_Hint;
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        if (&table.row(row).sequence() == &chain)
            return m_Hint = row;
    }
    throw GoneError("the row is no more in the alignment");
}

std::string RowReference::text(std::size_t begin, std::size_t end) const
{
    const AlignmentRow &row = (*m_Alignment).table().row(index());
    const std::string_view letters = row.sequence().letters();
    std::string text(end - begin, '-');
    row.forEachRun(begin, end, [&](unsigned long column, std::uint32_t first, std::uint32_t count) {
        letters.copy(text.data() + (column - begin), count, first);
    });
    return text;
}

namespace {

std::size_t widthOf(const RowReference &row)
{
    return (*row.alignment()).width();
}

std::string wholeText(const RowReference &row)
{
    return row.text(0, widthOf(row));
}

std::string nameOfRow(const RowReference &row)
{
    return (*row.alignment()).table().row(row.index()).name();
}

std::string lettersOfRow(const RowReference &row)
{
    return (*row.alignment()).GetSequence(row.index(), true);
}

py::dict residueLines(const RowReference &row)
{
    const Alignment &alignment = *row.alignment();
    const std::size_t index = row.index();
    py::dict lines;
    const std::vector<std::string> tags = AlignmentDetails::residueLines(alignment, index);
    for (std::size_t i = 0; i < tags.size(); ++i)
        lines[py::str(tags[i])] =
            py::bytes(AlignmentDetails::residueText(alignment, index, i, 0, alignment.width()))
                .attr("decode")("utf-8", "replace");
    return lines;
}

py::object cell(const RowReference &row, const py::object &named)
{
    const std::size_t width = widthOf(row);
    if (!py::isinstance<py::slice>(named)) {
        const std::size_t column = placeOf(named.cast<py::ssize_t>(), width, "column");
        return py::str(row.text(column, column + 1));
    }
    return py::str(wholeText(row)).attr("__getitem__")(named);
}

std::string descriptionOfRow(const RowReference &row)
{
    const RowLabel *const label = (*row.alignment()).table().row(row.index()).label();
    return label == nullptr ? std::string() : label->description;
}

} // namespace

void checkLine(const std::string &text, const char *what)
{
    const bool isLine = std::all_of(text.begin(), text.end(), [](char letter) {
        return static_cast<unsigned char>(letter) >= ' ' && letter != '\x7f';
    });
    if (!isLine)
        throw py::value_error(std::string(what) +
                              " is one line without control characters, and not " +
                              std::string(py::repr(py::str(text))));
}

void checkTag(const std::string &tag)
{
    checkLine(tag, "a tag");
    if (tag.empty() || tag.find(' ') != std::string::npos)
        throw py::value_error("a tag is one word, and not '" + tag + "'");
}

void checkColumnTexts(const std::string &tag, const std::string &text, std::size_t width)
{
    checkLine(text, "a line");
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char letter) {
        return static_cast<unsigned char>(letter) < 0x80;
    });
    if (!isPlain)
        throw py::value_error("line " + tag + " has other characters than those of ASCII");
    if (text.size() != width)
        throw py::value_error("line " + tag + " has " + std::to_string(text.size()) +
                              " characters for " + std::to_string(width) + " columns");
}

std::vector<std::pair<std::string, std::string>> textsByTag(const py::dict &lines)
{
    std::vector<std::pair<std::string, std::string>> pairs;
    for (const auto &[tag, text] : lines) {
        try {
            pairs.emplace_back(tag.cast<std::string>(), text.cast<std::string>());
        } catch (const py::cast_error &) {
            throw py::type_error("a line is a text by its tag, and not " +
                                 std::string(py::repr(text)) + " by " + std::string(py::repr(tag)));
        }
    }
    return pairs;
}

std::vector<Annotation>
annotationsOf(const std::vector<std::pair<std::string, std::string>> &remarks)
{
    std::vector<Annotation> said;
    for (const auto &[tag, text] : remarks) {
        checkTag(tag);
        checkLine(text, "a remark");
        said.push_back({tag, text});
    }
    return said;
}

namespace {

bool saysTheSame(const RowLabel &one, const RowLabel &other)
{
    return one.name == other.name && one.description == other.description &&
           one.annotations == other.annotations &&
           one.residueAnnotations == other.residueAnnotations;
}

template <typename Change>
void changeLabel(const RowReference &row, const char *kind, const Change &change)
{
    const std::size_t index = row.index();
    changed(*row.alignment(), [&](Alignment &changing) {
        const RowLabel before = labelOf(changing.table().row(index));
        RowLabel label = before;
        change(label, changing.table().row(index));
        if (!saysTheSame(label, before))
            relabelRow(changing.table(), index, std::move(label), kind);
    });
}

// As the workbench renames: a sequence that stands by itself, in all alignments that show it. A
// chain has the name that its file gives it, and a row of it one of its own.
void renameRow(const RowReference &row, const std::string &name)
{
    checkLine(name, "a name");
    if (name.empty())
        throw py::value_error("a name is empty");
    const RowLabel *const label = (*row.alignment()).table().row(row.index()).label();
    Peptide &chain = *row.chain();
    if ((label == nullptr || label->name.empty()) && chain.Parent() == Space::instance())
        rename(chain, name);
    else
        changeLabel(row, "rename row",
                    [&](RowLabel &changing, const AlignmentRow &) { changing.name = name; });
}

void describeRow(const RowReference &row, const std::string &text)
{
    checkLine(text, "a description");
    changeLabel(row, "describe row",
                [&](RowLabel &label, const AlignmentRow &) { label.description = text; });
}

using Pairs = std::vector<std::pair<std::string, std::string>>;

void setRemarks(const RowReference &row, const Pairs &remarks)
{
    const std::vector<Annotation> said = annotationsOf(remarks);
    changeLabel(row, "annotate row",
                [&](RowLabel &label, const AlignmentRow &) { label.annotations = said; });
}

// Residues that the row does not show keep what is said of them.
std::string textOfResidues(const RowLabel &label, const AlignmentRow &row, const std::string &tag,
                           const std::string &columns)
{
    std::string text;
    for (const Annotation &said : label.residueAnnotations) {
        if (said.tag == tag)
            text = said.text;
    }
    row.forEachResidue(0, columns.size(), [&](std::size_t column, std::uint32_t index) {
        const std::size_t place = index - label.firstResidue;
        if (place >= text.size())
            text.resize(place + 1, AlignmentAnnotation::kNothing);
        text[place] = columns[column];
    });
    return text;
}

void setResidueLines(const RowReference &row, const Pairs &lines)
{
    const std::size_t width = (*row.alignment()).width();
    for (const auto &[tag, text] : lines) {
        checkTag(tag);
        checkColumnTexts(tag, text, width);
    }
    changeLabel(row, "annotate row", [&](RowLabel &label, const AlignmentRow &cells) {
        std::vector<Annotation> said;
        for (const auto &[tag, text] : lines)
            said.push_back({tag, textOfResidues(label, cells, tag, text)});
        label.residueAnnotations = std::move(said);
    });
}

void setResidueLinesOf(const RowReference &row, const py::dict &lines)
{
    setResidueLines(row, textsByTag(lines));
}

std::vector<std::pair<std::string, std::string>> remarksOfRow(const RowReference &row)
{
    std::vector<std::pair<std::string, std::string>> remarks;
    if (const RowLabel *const label = (*row.alignment()).table().row(row.index()).label()) {
        for (const Annotation &said : label->annotations)
            remarks.emplace_back(said.tag, said.text);
    }
    return remarks;
}

ResidueReference residueOfRow(const RowReference &row, std::uint32_t ordinal)
{
    return {row.chain(), (*row.alignment()).table().row(row.index()).residueIndex(ordinal)};
}

std::vector<ResidueReference> residuesOfRow(const RowReference &row)
{
    std::vector<ResidueReference> residues;
    const std::uint32_t count = (*row.alignment()).table().row(row.index()).cells().residues();
    for (std::uint32_t i = 0; i < count; ++i)
        residues.push_back(residueOfRow(row, i));
    return residues;
}

std::optional<ResidueReference> residueInColumn(const RowReference &row, py::ssize_t column)
{
    const std::size_t place = placeOf(column, widthOf(row), "column");
    const OccupancyRow &cells = (*row.alignment()).table().row(row.index()).cells();
    if (!cells.isResidue(place))
        return std::nullopt;
    return residueOfRow(row, cells.rank(place));
}

std::string shownRow(const RowReference &row)
{
    if (!row.alignment().isThere())
        return "<tambo.Row, gone>";
    constexpr std::size_t most = 40;
    const std::size_t width = widthOf(row);
    return "<tambo.Row " + std::to_string(row.index()) + ' ' +
           std::string(py::repr(py::str(nameOfRow(row)))) + ": " +
           row.text(0, std::min(width, most)) + (width > most ? "...>" : ">");
}

} // namespace

void declareRows(py::module_ &module)
{
    py::class_<RowReference>(module, "Row",
                             "A row of an alignment: a chain or a sequence, with gaps.")
        .def_property_readonly("alignment", &RowReference::alignment,
                               "The alignment that it is a row of.")
        .def_property_readonly("chain", &RowReference::chain,
                               "The chain or sequence that it shows.")
        .def_property_readonly(
            "structure", [](const RowReference &row) { return structureOf(*row.chain()); },
            "The Structure that its chain is of, or its sequence is tied to; None without.")
        .def_property_readonly("residues", &residuesOfRow,
                               "Those that it shows, in their order, as a list.")
        .def("residue_at", &residueInColumn, py::arg("column"),
             "The Residue in a column; None where there is a gap.")
        .def_property_readonly("index", &RowReference::index,
                               "Where it stands in the alignment, from 0.")
        .def_property("name", &nameOfRow, &renameRow,
                      "As the alignment's views show it. Can be set: of a row of a sequence that "
                      "stands by itself the sequence gets the name, as in the workbench; of a row "
                      "of a chain the row alone. What files say beside the name stays.")
        .def_property_readonly("letters", &lettersOfRow,
                               "The letters of its residues, without gaps.")
        .def_property("description", &descriptionOfRow, &describeRow,
                      "What stands behind its name in the file, or ''. Can be set.")
        .def_property("remarks", &remarksOfRow, &setRemarks,
                      "What its file says of the sequence ('#=GS' of Stockholm): pairs of "
                      "a tag and a text, in order; a tag may come again. Can be set, all at once.")
        .def_property(
            "annotations", &residueLines, &setResidueLinesOf,
            "What its file says of the residues ('#=GR' of Stockholm): a dictionary of texts by "
            "their tags, a character for each column, '.' at gaps; a copy. Can be set, all "
            "lines at once: residues keep what is said of them wherever they stand, gaps "
            "get nothing.")
        .def("__str__", &wholeText, "A character for each column, '-' for a gap.")
        .def("__len__", &widthOf, "How many columns the alignment has.")
        .def("__getitem__", &cell, py::arg("column"),
             "The letter of a column, or the text of a slice.")
        .def(
            "column_of",
            [](const RowReference &row, py::ssize_t residue) {
                const Alignment &alignment = *row.alignment();
                const std::size_t index = row.index();
                const std::size_t count = alignment.table().row(index).cells().residues();
                return alignment.columnOfResidue(index, placeOf(residue, count, "residue"));
            },
            py::arg("residue"),
            "The column in which a residue of the row stands; both count from 0.")
        .def(
            "__eq__",
            [](const RowReference &row, const RowReference &other) { return row == other; },
            py::is_operator())
        .def("__hash__",
             [](const RowReference &row) {
                 return std::hash<std::uint64_t>()(std::uint64_t(row.alignment().number().identity)
                                                       << 32 |
                                                   row.chain().number().identity);
             })
        .def("__repr__", &shownRow);
}

} // namespace TAMBO::script
