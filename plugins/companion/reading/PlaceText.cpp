// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlaceText.h"

#include "Alignment.h"
#include "Compound.h"
#include "Space.h"
#include "TieText.h"

#include <QStringList>

namespace companion {

namespace {

QString residueText(const TAMBO::Compound &residue)
{
    QString text = QStringLiteral("%1 (%2)")
                       .arg(QString::fromStdString(residue.TypeName()))
                       .arg(QLatin1Char(residue.TypeCode()));
    if (const auto *group = dynamic_cast<const TAMBO::Group *>(&residue))
        text += QLatin1Char(' ') + QString::fromStdString(group->GetSeqId().getValue());
    if (const TAMBO::Compound *chain = chainOf(residue))
        text += QStringLiteral(", chain ") + QString::fromStdString(chain->Name());
    return text;
}

QString columnText(const TAMBO::Alignment &alignment, unsigned long col)
{
    const TAMBO::AlignmentMajority most = alignment.majority(col);
    if (most.count == 0)
        return QStringLiteral("column of gaps");
    const double share = 100.0 * double(most.count) / double(alignment.height());
    return QStringLiteral("mostly %1, %2 %").arg(QLatin1Char(most.letter)).arg(share, 0, 'f', 0);
}

} // namespace

const TAMBO::Compound *chainOf(const TAMBO::Compound &residue)
{
    // Its atoms, which both share, know the chain.
    const TAMBO::Compound *const atom = residue.Child(0);
    const bool hasOwner = atom != nullptr && atom->Parent() != nullptr;
    const TAMBO::Compound *const chain = (hasOwner ? *atom->Parent() : residue).Parent();
    const bool isOfStructure = chain != nullptr && chain->Parent() != nullptr &&
                               chain->Parent() != TAMBO::Space::instance();
    return isOfStructure ? chain : nullptr;
}

QString placeText(const TAMBO::Alignment &alignment, const TAMBO::CellIndex &cell)
{
    if (cell.row >= alignment.height() || cell.col >= alignment.width())
        return {};
    const TAMBO::Compound *const residue = alignment.getItem(cell.row, cell.col);
    QStringList parts = {
        QString::fromStdString(alignment.GetSeqName(cell.row)),
        residue == nullptr ? QStringLiteral("gap") : residueText(*residue),
        QStringLiteral("row %1 of %2").arg(cell.row + 1).arg(alignment.height()),
        QStringLiteral("column %1 of %2").arg(cell.col + 1).arg(alignment.width()),
        columnText(alignment, cell.col),
    };
    if (const QString tie = tieText(alignment, cell); !tie.isEmpty())
        parts.insert(2, tie);
    return parts.join(QStringLiteral("   ·   "));
}

} // namespace companion
