// SPDX-License-Identifier: GPL-3.0-or-later
#include "Places.h"

#include "Alignment.h"
#include "Compound.h"
#include "PlaceText.h"
#include "Texts.h"

#include <QRegularExpression>

#include <optional>
#include <string>

namespace companion {

namespace {

std::string numberOf(const TAMBO::Compound &residue)
{
    const auto *const group = dynamic_cast<const TAMBO::Group *>(&residue);
    return group == nullptr ? std::string() : group->GetSeqId().getValue();
}

Place column(const TAMBO::Alignment &alignment, const QString &text)
{
    bool isNumber = false;
    const qulonglong col = text.toULongLong(&isNumber);
    if (!isNumber || col == 0 || col > alignment.width())
        return NoPlace{tr("There are columns 1 to %1.").arg(alignment.width())};
    return ColumnPlace{static_cast<unsigned long>(col - 1)};
}

// The row has the name, or shows a chain of that name.
bool isCalled(const TAMBO::Alignment &alignment, unsigned long row, const std::string &name)
{
    if (alignment.GetSeqName(row) == name)
        return true;
    if (!alignment.hasPositions(row))
        return false;
    const TAMBO::Compound *const sequence = alignment.GetSeq(row);
    const TAMBO::Compound *const first = sequence->Child(0);
    const TAMBO::Compound *const chain = first == nullptr ? nullptr : chainOf(*first);
    return chain != nullptr && chain->Name() == name;
}

std::optional<TAMBO::CellIndex> residueIn(const TAMBO::Alignment &alignment, unsigned long row,
                                          const std::string &number)
{
    const TAMBO::Compound *const sequence = alignment.GetSeq(row);
    for (std::size_t i = 0; i < sequence->ChildCount(); ++i) {
        const TAMBO::Compound *const residue = sequence->Child(i);
        if (residue == nullptr || numberOf(*residue) != number)
            continue;
        const unsigned long col = alignment.columnOfResidue(row, i);
        if (col < alignment.width())
            return TAMBO::CellIndex{row, col};
    }
    return std::nullopt;
}

Place residue(const TAMBO::Alignment &alignment, const QString &chain, const QString &number)
{
    bool isKnown = false;
    for (unsigned long row = 0; row < alignment.height(); ++row) {
        if (!isCalled(alignment, row, chain.toStdString()))
            continue;
        isKnown = true;
        if (const auto cell = residueIn(alignment, row, number.toUpper().toStdString()))
            return *cell;
    }
    return NoPlace{isKnown ? tr("%1 has no residue %2 here.").arg(chain, number)
                           : tr("No row is of a chain %1, or called so.").arg(chain)};
}

Place name(const TAMBO::Alignment &alignment, const QString &text)
{
    std::optional<unsigned long> beginning;
    std::optional<unsigned long> within;
    for (unsigned long row = 0; row < alignment.height(); ++row) {
        const QString name = QString::fromStdString(alignment.GetSeqName(row));
        const qsizetype at = name.indexOf(text, 0, Qt::CaseInsensitive);
        if (at == 0 && name.size() == text.size())
            return RowPlace{row};
        if (at == 0 && !beginning)
            beginning = row;
        if (at > 0 && !within)
            within = row;
    }
    if (beginning || within)
        return RowPlace{beginning ? *beginning : *within};
    return NoPlace{tr("No name has \"%1\" in it.").arg(text)};
}

} // namespace

Place findPlace(const TAMBO::Alignment &alignment, const QString &typed)
{
    static const QRegularExpression kColumn(QStringLiteral("^[0-9]+$"));
    static const QRegularExpression kResidue(QStringLiteral("^(.+):\\s*(-?[0-9]+[A-Za-z]?)$"));
    const QString text = typed.trimmed();
    if (text.isEmpty())
        return NoPlace{tr("Type a column, a name, or chain and number as in A:57.")};
    if (kColumn.match(text).hasMatch())
        return column(alignment, text);
    const QRegularExpressionMatch match = kResidue.match(text);
    if (!match.hasMatch())
        return name(alignment, text);
    const Place found = residue(alignment, match.captured(1), match.captured(2));
    // Names may have a colon, too.
    if (const Place named = name(alignment, text);
        std::holds_alternative<NoPlace>(found) && !std::holds_alternative<NoPlace>(named))
        return named;
    return found;
}

} // namespace companion
