// SPDX-License-Identifier: GPL-3.0-or-later
// Small alignments as plain data, and what writers make of them.
#pragma once

#include "AlignmentWriters.h"
#include "FileWriter.h"
#include "Records.h"

#include <string>
#include <utility>
#include <vector>

namespace TAMBO::formats {

[[nodiscard]] inline RowRecord rowOf(const std::string &name, const std::string &text)
{
    RowRecord row;
    row.name = name;
    row.sequence.append(text);
    return row;
}

// Rows of a name and a text with "-" for a gap.
[[nodiscard]] inline AlignmentRecord
recordOf(const std::vector<std::pair<std::string, std::string>> &rows)
{
    AlignmentRecord record;
    record.name = "x";
    for (const auto &[name, text] : rows)
        record.rows.push_back(rowOf(name, text));
    return record;
}

[[nodiscard]] inline WriteOptions optionsOf(const std::string &name)
{
    return writeOptionsNamed(name).value();
}

// What write puts down.
template <typename Write>
[[nodiscard]] std::string textOf(const AlignmentRecord &record, const WriteOptions &options,
                                 Write write)
{
    StringSink sink;
    write(FittedAlignment(record, options), sink);
    return sink.text();
}

} // namespace TAMBO::formats
