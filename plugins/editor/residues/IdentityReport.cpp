// SPDX-License-Identifier: GPL-3.0-or-later
#include "IdentityReport.h"

#include "Alignment.h"

#include <algorithm>
#include <string>

namespace {

struct Identity
{
    unsigned long len0 = 0;
    unsigned long lenR = 0;
    // Columns where either row has a residue.
    unsigned long hangs = 0;
    unsigned long identicals = 0;
    unsigned long different = 0;
    // The part of the hangs between the first and the last column where both have one.
    unsigned long overlap = 0;
};

// As the text of a row has it.
constexpr char kGap = '-';

Identity compare(const TAMBO::Alignment &alignment, unsigned long row)
{
    const std::string rowA = alignment.GetSequence(0, false);
    const std::string rowB = alignment.GetSequence(row, false);
    const std::size_t columns = std::min(rowA.size(), rowB.size());
    Identity result;
    std::size_t first = 0;
    std::size_t last = 0;
    for (std::size_t i = 0; i < columns; ++i) {
        const bool a = rowA[i] != kGap;
        const bool b = rowB[i] != kGap;
        result.len0 += a ? 1 : 0;
        result.lenR += b ? 1 : 0;
        result.hangs += a || b ? 1 : 0;
        if (!a || !b)
            continue;
        if (result.identicals + result.different == 0)
            first = i;
        last = i;
        result.identicals += rowA[i] == rowB[i] ? 1 : 0;
        result.different += rowA[i] == rowB[i] ? 0 : 1;
    }
    // Kept: without a column that both have, first and last are the first column of all.
    for (std::size_t i = first; i <= last && i < columns; ++i)
        result.overlap += rowA[i] != kGap || rowB[i] != kGap ? 1 : 0;
    return result;
}

QString fraction(double value)
{
    return QStringLiteral("%1").arg(value, 6, 'f', 2);
}

} // namespace

// The wording, misspellings included, is what people's scripts and habits go by. The value behind
// the pairs is a fraction, not a percentage.
std::optional<QString> identityReport(const TAMBO::Alignment &alignment, unsigned long row)
{
    const Identity id = compare(alignment, row);
    if (id.len0 < 1 || id.lenR < 1 || id.overlap < 1)
        return std::nullopt;
    const auto nameOf = [&alignment](unsigned long r) {
        return QString::fromStdString(alignment.GetSeqName(r));
    };
    const unsigned long pairs = id.identicals + id.different;
    const float pairsFraction = static_cast<float>(id.identicals) / static_cast<float>(pairs);
    const double percent = static_cast<double>(id.identicals) * 100;
    const auto share = [percent](unsigned long of) {
        return fraction(percent / static_cast<double>(of));
    };
    return QStringLiteral("Percentage identity between '%1' and '%2':\n")
               .arg(nameOf(0), nameOf(row)) +
           QStringLiteral("identicals %1\t").arg(id.identicals) +
           QStringLiteral("different %1\n").arg(id.different) +
           QStringLiteral("pairs %1: \t%2\n").arg(pairs).arg(fraction(pairsFraction)) +
           QStringLiteral("seq lenghts %1, %2 : %3, %4\n")
               .arg(id.len0)
               .arg(id.lenR)
               .arg(share(id.len0), share(id.lenR)) +
           QStringLiteral("align lenght %1 ").arg(id.overlap) +
           QStringLiteral("(with hangs %1) : %2 ( %3 )")
               .arg(id.hangs)
               .arg(share(id.overlap), share(id.hangs));
}
