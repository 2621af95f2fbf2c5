// SPDX-License-Identifier: GPL-3.0-or-later
// What a file said of a whole alignment and of its columns. Owned by the table of an alignment that
// has any; most have none.
#pragma once

#include "OccupancyRow.h"
#include "Records.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace TAMBO {

class ValueReader;
class ValueWriter;

class AlignmentAnnotation
{
public:
    using Column = std::uint64_t;

    // Where nothing is known of a column or residue.
    static constexpr char kNothing = '.';

    // Each of the lines has one character a column.
    AlignmentAnnotation(std::vector<Annotation> remarks, std::vector<Annotation> lines);

    [[nodiscard]] const std::vector<Annotation> &remarks() const noexcept { return m_Remarks; }
    // As wide as the alignment.
    [[nodiscard]] std::vector<Annotation> lines(Column width) const;

    [[nodiscard]] std::vector<std::string> tags() const;
    // What one of them says of the columns [begin, begin + count), which the alignment has.
    [[nodiscard]] std::string text(std::size_t line, Column begin, Column count) const;

    // What the lines say of the columns [begin, begin + count).
    [[nodiscard]] std::vector<std::string> texts(Column begin, Column count) const;
    // Overwrites as many columns as the texts have characters.
    void setTexts(Column begin, const std::vector<std::string> &texts);
    // What stands at column and behind it moves right; nothing is known of the new columns.
    void insertColumns(Column column, Column count);
    void removeColumns(Column column, Column count);
    // The same of many, in one pass; runs in ascending order.
    void openColumns(const std::vector<GapRun> &runs);
    void closeColumns(const std::vector<GapRun> &runs);
    // How many characters the lines have.
    [[nodiscard]] std::uint64_t characters() const noexcept;
    // How many lines go on behind the column.
    [[nodiscard]] std::uint64_t linesBehind(Column column) const noexcept;

    void write(ValueWriter &out) const;
    [[nodiscard]] static std::unique_ptr<AlignmentAnnotation> read(ValueReader &in);

    // On the heap, itself included.
    [[nodiscard]] std::size_t bytes() const noexcept;

private:
    std::vector<Annotation> m_Remarks;
    // Nothing is known of columns behind the end of a line, so an alignment may grow or take back
    // columns at its end without a look at them.
    std::vector<Annotation> m_Lines;
};

// What annotations occupy on the heap.
[[nodiscard]] std::size_t bytesOf(const std::vector<Annotation> &annotations) noexcept;
void writeAnnotations(const std::vector<Annotation> &annotations, ValueWriter &out);
[[nodiscard]] std::vector<Annotation> readAnnotations(ValueReader &in);

} // namespace TAMBO
