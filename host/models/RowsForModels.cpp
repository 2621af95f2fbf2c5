// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowsForModels.h"

#include "AlignmentTable.h"
#include "ObjectSpace.h"
#include "Peptide.h"
#include "Structure.h"

#include <algorithm>

namespace TAMBO {

namespace {

bool isOfModels(const Peptide &sequence)
{
    bool isOfModel = true;
    sequence.forEachTiedChain([&isOfModel](const Peptide &chain) {
        const auto *structure = dynamic_cast<const Structure *>(chain.Parent());
        isOfModel = isOfModel && structure != nullptr && structure->isModel();
    });
    return isOfModel;
}

bool mayGetModel(const Peptide &sequence)
{
    return sequence.Parent() == Space::instance() && isOfModels(sequence);
}

} // namespace

RowsForModels::RowsForModels(const std::set<std::string> &rows)
{
    for (const Alignment *alignment : ObjectSpace::get().referrers<Alignment>()) {
        const AlignmentTable &table = alignment->table();
        for (std::size_t row = 0; row < table.rowCount(); ++row) {
            const std::string name = table.row(row).name();
            if (rows.contains(name))
                m_Rows[name].push_back({alignment, &table.row(row).sequence()});
        }
    }
    for (const Compound *object : *Space::instance())
        m_Names.insert(object->Name());
}

std::string RowsForModels::takeName(const std::string &wanted)
{
    std::string name = wanted;
    for (int number = 2; !m_Names.insert(name).second; ++number)
        name = wanted + " (" + std::to_string(number) + ")";
    return name;
}

std::vector<Peptide *> RowsForModels::sequencesOf(const std::string &name) const
{
    std::vector<Peptide *> sequences;
    const auto rows = m_Rows.find(name);
    if (rows == m_Rows.end())
        return sequences;
    for (const FoundRow &row : rows->second) {
        if (mayGetModel(*row.sequence) &&
            std::ranges::find(sequences, row.sequence) == sequences.end())
            sequences.push_back(row.sequence);
    }
    return sequences;
}

std::vector<const Peptide *> RowsForModels::templatesFor(const std::string &target,
                                                         const std::string &name) const
{
    std::vector<const Peptide *> sequences;
    const auto targets = m_Rows.find(target);
    const auto rows = m_Rows.find(name);
    if (targets == m_Rows.end() || rows == m_Rows.end())
        return sequences;
    for (const FoundRow &row : rows->second) {
        const auto isBeside = [&row](const FoundRow &other) {
            return other.alignment == row.alignment;
        };
        if (std::ranges::any_of(targets->second, isBeside))
            sequences.push_back(row.sequence);
    }
    return sequences;
}

} // namespace TAMBO
