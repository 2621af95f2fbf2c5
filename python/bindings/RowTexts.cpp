// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowTexts.h"

#include "AlignmentTable.h"
#include "Changes.h"
#include "DataMaker.h"
#include "GappedSequence.h"
#include "ObjectFactory.h"
#include "Peptide.h"
#include "Space.h"
#include "TableChanges.h"

#include <pybind11/stl.h>

#include <algorithm>
#include <memory>

namespace TAMBO::script {

namespace {

GappedSequence cellsOfText(const std::string &name, const std::string &text)
{
    for (const char cell : text) {
        const bool isLetter =
            (cell >= 'A' && cell <= 'Z') || (cell >= 'a' && cell <= 'z') || cell == '*';
        if (!isLetter && cell != '-' && cell != '.' && cell != '~')
            throw py::value_error("row " + name +
                                  " has a character that is neither a letter nor a gap: " +
                                  std::string(py::repr(py::str(std::string(1, cell)))));
    }
    GappedSequence cells;
    cells.append(text);
    return cells;
}

Peptide &sequenceOf(const std::string &name, const std::string &letters)
{
    Peptide *const made = Peptide::from(DataMaker::makeSequence(name, letters));
    if (made == nullptr)
        throw py::value_error("row " + name + " cannot be made: a row has a name and letters");
    return *made;
}

// New rows, checked before anything is changed.
struct TextRow
{
    std::string name;
    GappedSequence cells;
    // Null for one that gets a sequence of its own.
    Peptide *chain = nullptr;
};

std::vector<TextRow> rowsOfTexts(const py::object &texts)
{
    std::vector<TextRow> rows;
    for (const py::handle entry : texts) {
        auto [name, text] = entry.cast<NamedRow>();
        GappedSequence cells = cellsOfText(name, text);
        if (name.empty() || cells.letters.empty())
            throw py::value_error("row " + std::to_string(rows.size()) + " of the texts has no " +
                                  (name.empty() ? "name" : "letters"));
        rows.push_back({std::move(name), std::move(cells), nullptr});
    }
    return rows;
}

std::vector<TextRow> rowsOfChains(const std::vector<ChainReference> &chains,
                                  const std::vector<std::string> &texts)
{
    if (chains.size() != texts.size())
        throw py::value_error(std::to_string(texts.size()) + " texts for " +
                              std::to_string(chains.size()) + " chains");
    std::vector<TextRow> rows;
    for (std::size_t i = 0; i < chains.size(); ++i) {
        Peptide &chain = *chains[i];
        GappedSequence cells = cellsOfText(chain.sequenceName(), texts[i]);
        if (cells.letters != chain.letters())
            throw py::value_error("the letters of text " + std::to_string(i) +
                                  " are not those of " + chain.sequenceName());
        rows.push_back({chain.sequenceName(), std::move(cells), &chain});
    }
    return rows;
}

void addTextRows(Alignment &alignment, const std::vector<TextRow> &rows)
{
    for (const TextRow &row : rows) {
        if (row.cells.width > AlignmentTable::kMostColumns)
            throw py::value_error("row " + row.name + " is too long");
    }
    changed(
        *Space::instance(),
        [&](Space &) {
            AlignmentTable::Rows made;
            for (const TextRow &row : rows) {
                Peptide &chain =
                    row.chain != nullptr ? *row.chain : sequenceOf(row.name, row.cells.letters);
                made.push_back(
                    std::make_unique<AlignmentRow>(chain, OccupancyRow(row.cells.occupancy)));
            }
            addRowsTo(alignment.table(), std::move(made));
        },
        Publisher::Add);
}

} // namespace

AlignmentReference newAlignment(const std::string &name, const std::vector<NamedRow> &rows)
{
    AlignmentRecord record;
    record.name = name;
    for (const auto &[rowName, text] : rows) {
        if (text.size() != rows.front().second.size())
            throw py::value_error("row " + rowName + " has " + std::to_string(text.size()) +
                                  " columns, and the first one " +
                                  std::to_string(rows.front().second.size()));
        RowRecord &row = record.rows.emplace_back();
        row.name = rowName;
        row.sequence = cellsOfText(rowName, text);
    }
    Alignment *made = nullptr;
    changed(
        *Space::instance(), [&](Space &) { made = ObjectFactory::adopt(std::move(record)); },
        Publisher::Add);
    if (made == nullptr)
        throw RefusedError("no alignment was made");
    return AlignmentReference(*made);
}

void addRows(const AlignmentReference &self,
             const std::optional<std::vector<ChainReference>> &chains, const py::object &texts)
{
    Alignment &alignment = *self;
    if (!chains && texts.is_none())
        throw py::type_error("rows are added of chains, of texts, or of both");
    if (!texts.is_none()) {
        if (alignment.IsLocked())
            throw RefusedError(alignment.Name() + " is locked");
        addTextRows(alignment, chains
                                   ? rowsOfChains(*chains, texts.cast<std::vector<std::string>>())
                                   : rowsOfTexts(texts));
        return;
    }
    std::vector<Compound *> sequences;
    sequences.reserve(chains->size());
    for (const ChainReference &chain : *chains)
        sequences.push_back(&(*chain));
    changed(alignment, [&](Alignment &changing) { changing.addRows(sequences); });
}

} // namespace TAMBO::script
