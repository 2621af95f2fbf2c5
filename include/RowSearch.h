// SPDX-License-Identifier: GPL-3.0-or-later
// The search for a pattern in the rows of an alignment, in a thread of its own.
#pragma once

#include "Alignment.h"
#include "Export.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

class QWidget;

class TAMBO_API RowSearch
{
public:
    enum class Language {
        // "." is any cell, "-" a gap, any other character the residue of that code. Matches may
        // overlap.
        Cells,
        // A regular expression in the toolkit's syntax, over one character per column with "-" for
        // a gap. Matches do not overlap.
        Expression
    };

    // [begin, end)
    struct Columns
    {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;

        friend bool operator==(const Columns &, const Columns &) = default;
    };

    struct Row
    {
        // How often the row has the expression.
        unsigned long count = 0;
        // What the matches cover, in ascending order; those that touch are one.
        std::vector<Columns> columns;
        // An expression that matched no column ended the search of the row there.
        bool hasEmptyMatch = false;
        // Why the search of the row was given up, and in which column; empty when it was not.
        QString problem;
        unsigned long problemColumn = 0;
    };

    struct Found
    {
        // What is wrong with the expression, and where; then no row has it.
        QString mistake;
        // One for each row of the alignment.
        std::vector<Row> rows;
    };

    // Returns when all rows are searched: as they are then, if they have changed meanwhile. Windows
    // repaint, and after a while a dialog over window offers to cancel. Nothing when the user did,
    // or when the window or the alignment has gone; whoever calls this has to expect both.
    static std::optional<Found> Run(QWidget *window, const TAMBO::Alignment &alignment,
                                    const QString &pattern, Language language);
};
