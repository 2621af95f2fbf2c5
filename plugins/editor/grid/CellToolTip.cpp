// SPDX-License-Identifier: GPL-3.0-or-later
#include "CellToolTip.h"

#include "Alignment.h"
#include "Space.h"

namespace {

// Empty for a sequence that is no part of a structure. A row of its own may be tied to a chain; the
// atoms, which both share, know the chain.
QString chainOf(const TAMBO::Compound &residue)
{
    const TAMBO::Compound *atom = residue.Child(0);
    const bool hasOwner = atom != nullptr && atom->Parent() != nullptr;
    const TAMBO::Compound *chain = (hasOwner ? *atom->Parent() : residue).Parent();
    if (chain == nullptr || chain->Parent() == nullptr ||
        chain->Parent() == TAMBO::Space::instance())
        return {};
    return QStringLiteral(", chain %1").arg(QString::fromStdString(chain->Name()));
}

QString residueText(const TAMBO::Compound &residue)
{
    const QString type = QString::fromStdString(residue.TypeName());
    QString text = QStringLiteral("%1 (%2)").arg(type).arg(QLatin1Char(residue.TypeCode()));
    if (const auto *group = dynamic_cast<const TAMBO::Group *>(&residue))
        text += QLatin1Char(' ') + QString::fromStdString(group->GetSeqId().getValue());
    return text + chainOf(residue);
}

} // namespace

QString cellToolTip(const TAMBO::Alignment &alignment, unsigned long row, unsigned long col)
{
    const TAMBO::Compound *residue = alignment.getItem(row, col);
    return QStringLiteral("%1\ncolumn %2\n%3")
        .arg(QString::fromStdString(alignment.GetSeqName(row)), QString::number(col + 1),
             residue == nullptr ? QStringLiteral("gap") : residueText(*residue));
}
