// SPDX-License-Identifier: GPL-3.0-or-later
#include "SuperposePlan.h"

#include "AlignmentTable.h"
#include "FittingCore.h"
#include "Structure.h"
#include "StructureLock.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace TAMBO {

namespace {

using Column = AlignmentTable::Column;

// The CA atoms of a row that belong to one structure.
struct RowPlaces
{
    std::string name;
    // Null when no residue has a CA atom.
    Structure *structure = nullptr;
    // Ascending.
    std::vector<Column> columns;
    std::vector<Vertex> points;
};

struct StructureCount
{
    Structure *structure;
    std::size_t residues;
};

bool mayHaveCoordinates(const Peptide &sequence)
{
    return sequence.hasTies() || dynamic_cast<const Structure *>(sequence.Parent()) != nullptr;
}

// Calls visit(column, structure, point) for the residues of the row that have a CA atom.
template <typename Visit> void forEachPlace(const AlignmentRow &row, Visit visit)
{
    const Peptide &sequence = row.sequence();
    row.forEachResidue(0, row.cells().end(), [&](Column column, std::uint32_t index) {
        const Vertex point = sequence.position(index);
        if (!point.isDefined())
            return;
        Compound *const parent = sequence.resolve(index).peptide->Parent();
        if (auto *const structure = dynamic_cast<Structure *>(parent))
            visit(column, structure, point);
    });
}

RowPlaces placesOf(const AlignmentRow &row)
{
    RowPlaces places;
    places.name = row.name();
    if (!mayHaveCoordinates(row.sequence()) || !row.isWithinSequence())
        return places;
    std::vector<StructureCount> counts;
    forEachPlace(row, [&](Column, Structure *structure, const Vertex &) {
        const auto found = std::ranges::find(counts, structure, &StructureCount::structure);
        if (found == counts.end())
            counts.push_back({structure, 1});
        else
            ++found->residues;
    });
    if (counts.empty())
        return places;
    places.structure = std::ranges::max_element(counts, {}, &StructureCount::residues)->structure;
    forEachPlace(row, [&](Column column, const Structure *structure, const Vertex &point) {
        if (structure == places.structure) {
            places.columns.push_back(column);
            places.points.push_back(point);
        }
    });
    return places;
}

std::vector<Column> commonColumns(const std::vector<RowPlaces> &rows)
{
    std::vector<Column> common = rows.front().columns;
    for (const RowPlaces &row : rows) {
        std::vector<Column> both;
        std::ranges::set_intersection(common, row.columns, std::back_inserter(both));
        common = std::move(both);
    }
    return common;
}

// The points of the columns, all of which the row has.
std::vector<Vertex> pointsAt(const RowPlaces &row, const std::vector<Column> &columns)
{
    std::vector<Vertex> points;
    points.reserve(columns.size());
    std::size_t i = 0;
    for (const Column column : columns) {
        while (row.columns[i] != column)
            ++i;
        points.push_back(row.points[i]);
    }
    return points;
}

// Whether the choice itself is fine.
Result<void> objection(const std::vector<RowPlaces> &rows)
{
    if (rows.size() < 2)
        return Failure{FailureKind::Refused, "Choose two chains or more."};
    for (const RowPlaces &row : rows) {
        if (row.structure == nullptr)
            return Failure{FailureKind::Refused, row.name + " has no coordinates."};
    }
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        const auto other = std::find_if(rows.begin(), row, [&](const RowPlaces &earlier) {
            return earlier.structure == row->structure;
        });
        if (other != row)
            return Failure{FailureKind::Refused,
                           other->name + " and " + row->name + " belong to the same structure, " +
                               row->structure->Name() + ", which moves as a whole."};
    }
    // The first one stays where it is.
    for (auto row = rows.begin() + 1; row != rows.end(); ++row) {
        if (const Compound *const locked = lockWithin(*row->structure))
            return Failure{FailureKind::Refused, locked->GetFQName() + " is locked."};
    }
    return {};
}

std::string countText(std::size_t columns)
{
    if (columns == 0)
        return "no column";
    return columns == 1 ? "1 column" : std::to_string(columns) + " columns";
}

PlannedMove plannedMove(const RowPlaces &row, const std::vector<Vertex> &fixed,
                        const std::vector<Vertex> &moving, double cutoff)
{
    std::vector<PointPair> pairs;
    pairs.reserve(fixed.size());
    for (std::size_t i = 0; i < fixed.size(); ++i)
        pairs.push_back({moving[i], fixed[i]});
    const double before = rootMeanSquareDistance(pairs);
    const auto rmsdMoved = [&pairs](const Superposition &motion) {
        std::vector<PointPair> moved = pairs;
        for (PointPair &pair : moved)
            pair.moving = motion(pair.moving);
        return rootMeanSquareDistance(moved);
    };
    if (cutoff > 0) {
        const FittingCore core = fittingCore(pairs, cutoff);
        const double after = rmsdMoved(core.motion);
        const bool lacksCore = core.pairs.empty();
        std::vector<PointPair> ofCore;
        std::ranges::transform(core.pairs, std::back_inserter(ofCore),
                               [&pairs](std::size_t place) { return pairs[place]; });
        return {row.name,
                {row.structure, core.motion},
                before,
                after,
                lacksCore ? pairs.size() : core.pairs.size(),
                lacksCore ? after : core.rmsd,
                lacksCore,
                lacksCore ? before : rootMeanSquareDistance(ofCore)};
    }
    const Superposition motion(pairs);
    const double after = rmsdMoved(motion);
    return {row.name, {row.structure, motion}, before, after, pairs.size(), after, false, before};
}

} // namespace

std::optional<SuperposableRow> superposableRow(const Alignment &alignment, unsigned long row)
{
    const AlignmentTable &table = alignment.table();
    // Of a million rows few have any.
    if (row >= table.rowCount() || !mayHaveCoordinates(table.row(row).sequence()))
        return std::nullopt;
    const RowPlaces places = placesOf(table.row(row));
    if (places.structure == nullptr)
        return std::nullopt;
    return SuperposableRow{row, places.name, places.structure, places.points.size()};
}

std::vector<SuperposableRow> superposableRows(const Alignment &alignment)
{
    std::vector<SuperposableRow> found;
    for (std::size_t row = 0; row < alignment.table().rowCount(); ++row)
        if (auto superposable = superposableRow(alignment, row))
            found.push_back(*std::move(superposable));
    return found;
}

Result<SuperposePlan> planSuperposition(const Alignment &alignment,
                                        const std::vector<unsigned long> &rows,
                                        const FitChoice &choice)
{
    std::vector<RowPlaces> places;
    for (const unsigned long row : rows) {
        if (row >= alignment.table().rowCount())
            return Failure{FailureKind::NotFound,
                           "The alignment has no row " + std::to_string(row + 1) + "."};
        places.push_back(placesOf(alignment.table().row(row)));
    }
    if (const Result<void> fine = objection(places); !fine)
        return fine.error();
    std::vector<Column> columns = commonColumns(places);
    std::erase_if(columns, [&choice](Column column) {
        return column < choice.begin || column >= choice.end;
    });
    if (columns.size() < kFewestPairs)
        return Failure{FailureKind::Refused,
                       "The chosen chains have CA atoms in " + countText(columns.size()) +
                           (choice.isOfAll() ? " together" : " of the range together") +
                           "; superposing takes 3."};
    SuperposePlan plan{places.front().name, columns.size(), {}};
    const std::vector<Vertex> fixed = pointsAt(places.front(), columns);
    for (const RowPlaces &row : places) {
        const std::vector<Vertex> points = pointsAt(row, columns);
        if (areOnLine(points))
            return Failure{
                FailureKind::Refused,
                "The CA atoms of " + row.name + " in the " + countText(columns.size()) +
                    " of all chosen chains stand in one line, which leaves open how to turn "
                    "them."};
        if (&row != &places.front())
            plan.moves.push_back(plannedMove(row, fixed, points, choice.cutoff));
    }
    return plan;
}

} // namespace TAMBO
