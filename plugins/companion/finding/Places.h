// SPDX-License-Identifier: GPL-3.0-or-later
// Places of an alignment by the words that a user types.
#pragma once

#include "CellPlaces.h"

#include <QString>

#include <variant>

namespace TAMBO {
class Alignment;
}

namespace companion {

// A whole column or row, or a cell.
struct ColumnPlace
{
    unsigned long col = 0;
};
struct RowPlace
{
    unsigned long row = 0;
};
// Why there is no such place, for people.
struct NoPlace
{
    QString reason;
};
using Place = std::variant<NoPlace, ColumnPlace, RowPlace, TAMBO::CellIndex>;

// "123" is a column, counted from 1. "A:123B" is the residue with the number 123 and the insertion
// code B of the chain A, or of the row called A; the insertion code may be missing. All else is a
// name: the row called so, else the first whose name begins with it, else the first that has it
// somewhere, whether letters are large or small.
[[nodiscard]] Place findPlace(const TAMBO::Alignment &alignment, const QString &text);

} // namespace companion
