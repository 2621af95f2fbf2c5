// SPDX-License-Identifier: GPL-3.0-or-later
#include "Disputes.h"

#include "LayoutChanges.h"
#include "Refit.h"
#include "Space.h"
#include "Texts.h"

#include <algorithm>

namespace companion {

using TAMBO::StructureFit;
using TAMBO::StructureRow;

Disputes::Disputes(const TAMBO::Alignment &alignment, const FitsFound &found)
    : m_Alignment(&alignment),
      m_Rows(found.rows()),
      m_IsAnyElsewhere(std::ranges::any_of(found.fits(), &liesElsewhere))
{
    if (!m_IsAnyElsewhere)
        return;
    m_Keepers = keepersBeside(alignment);
    for (const Keeper &keeper : m_Keepers)
        for (const StructureRow &row : TAMBO::StructureFits::rows(*keeper.alignment))
            m_KeeperOf.try_emplace(row.structure, keeper.name);
}

Disputes::Keepers Disputes::keepersBeside(const TAMBO::Alignment &alignment)
{
    Keepers keepers;
    for (TAMBO::Compound *const object : *TAMBO::Space::instance()) {
        if (object == &alignment || object->Kind() != TAMBO::CompoundKind::Alignment)
            continue;
        auto *const other = dynamic_cast<TAMBO::Alignment *>(object);
        if (other != nullptr && isRefitted(*other))
            keepers.push_back({other, TAMBO::LayoutChanges::revision(*other), other->Name()});
    }
    return keepers;
}

bool Disputes::isUpToDate() const
{
    return !m_IsAnyElsewhere || keepersBeside(*m_Alignment) == m_Keepers;
}

// Its own one, or the one that it is to lie on.
TAMBO::Compound *Disputes::disputedBy(const StructureFit &fit) const
{
    if (!liesElsewhere(fit))
        return nullptr;
    const auto own = std::ranges::find(m_Rows, fit.row, &StructureRow::row);
    if (own != m_Rows.end() && m_KeeperOf.contains(own->structure))
        return own->structure;
    TAMBO::Compound *const first = m_Rows.front().structure;
    return m_KeeperOf.contains(first) ? first : nullptr;
}

bool Disputes::isDisputed(const StructureFit &fit) const
{
    return disputedBy(fit) != nullptr;
}

QString Disputes::text(const std::vector<StructureFit> &fits) const
{
    const TAMBO::Compound *const structure = disputedBy(fits.front());
    const double distance = std::ranges::max(fits, {}, &StructureFit::rmsd).rmsd;
    const QString name = QString::fromStdString(m_Alignment->GetSeqName(fits.front().row));
    const QString who =
        fits.size() == 1
            ? tr("%1 lies %2 Å away").arg(name, QString::number(distance, 'f', 2))
            : tr("%1 and %2 more lie up to %3 Å away")
                  .arg(name, QString::number(fits.size() - 1), QString::number(distance, 'f', 2));
    return tr("%1, for the alignment %2 keeps %3 superposed, too")
        .arg(who, QString::fromStdString(m_KeeperOf.at(structure)),
             QString::fromStdString(structure->Name()));
}

} // namespace companion
