// SPDX-License-Identifier: GPL-3.0-or-later
#include "FamilyOfAlignment.h"

#include "Alignment.h"
#include "AlignmentTable.h"
#include "Peptide.h"
#include "TemplateRecord.h"

#include <string_view>

namespace TAMBO::app {

namespace {

std::string textOfRow(const AlignmentRow &row, unsigned long width)
{
    std::string text(width, '-');
    const std::string_view letters = row.sequence().letters();
    row.forEachResidue(0, width, [&](AlignmentRow::Column column, std::uint32_t index) {
        text[column] = letters[index];
    });
    return text;
}

} // namespace

families::Family familyOf(const Alignment &alignment, const std::filesystem::path &source)
{
    const AlignmentTable &table = alignment.table();
    families::Family family{alignment.Name(), source, {}};
    family.rows.reserve(table.rowCount());
    for (std::size_t i = 0; i < table.rowCount(); ++i) {
        const AlignmentRow &row = table.row(i);
        family.rows.push_back(
            {row.name(), textOfRow(row, table.width()), hasTemplate(row, table.width())});
    }
    return family;
}

families::TemplateSource templatesOf(const Alignment &alignment)
{
    return [&alignment](std::size_t row) { return templateRecord(alignment, row); };
}

} // namespace TAMBO::app
