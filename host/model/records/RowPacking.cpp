// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowPacking.h"

#include <utility>

namespace TAMBO {

PackedRow packed(RowRecord &&row)
{
    PackedRow result{SequenceText(row.name, row.sequence.letters),
                     OccupancyRow(row.sequence.occupancy),
                     row.sequence.width,
                     {}};
    row.sequence = {};
    const bool isPlain = row.description.empty() && *row.link == StructureLink() &&
                         row.chainBreaks.empty() && row.annotations.empty() &&
                         row.residueAnnotations.empty();
    if (isPlain)
        return result;
    RowLabel &label = result.label.change();
    label.description = std::move(row.description);
    label.link = std::move(row.link);
    label.chainBreaks = std::move(row.chainBreaks);
    label.annotations = std::move(row.annotations);
    label.residueAnnotations = std::move(row.residueAnnotations);
    return result;
}

RowRecord unpacked(PackedRow &&row)
{
    RowRecord result;
    result.name = row.text.name();
    result.sequence.letters = row.text.letters();
    row.text = {};
    result.sequence.occupancy = row.cells.columns(0, row.width);
    row.cells = {};
    result.sequence.width = row.width;
    if (row.label.isUsual())
        return result;
    RowLabel &label = row.label.change();
    result.description = std::move(label.description);
    result.link = std::move(label.link);
    result.chainBreaks = std::move(label.chainBreaks);
    result.annotations = std::move(label.annotations);
    result.residueAnnotations = std::move(label.residueAnnotations);
    return result;
}

void unpackRows(AlignmentRecord &alignment)
{
    alignment.rows.reserve(alignment.rows.size() + alignment.packed.size());
    alignment.packed.takeEach(
        [&](PackedRow &&row) { alignment.rows.push_back(unpacked(std::move(row))); });
}

} // namespace TAMBO
