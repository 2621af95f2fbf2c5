// SPDX-License-Identifier: GPL-3.0-or-later
// How large the parts of a printed alignment are, in the printer's pixels, and whether they fit.
#pragma once

#include <QStringList>

class QFont;
class QPrinter;

namespace TAMBO {
class Alignment;
}

namespace ZEP {

struct PageMeasures
{
    enum class Obstacle { None, TooManyRows, TooNarrow };

    // Nothing is painted for it, so that it is known before a printer begins.
    PageMeasures(const QFont &font, const QPrinter &printer, const TAMBO::Alignment &alignment,
                 bool withElements);

    // Why nothing can be printed.
    [[nodiscard]] Obstacle obstacle() const noexcept;
    // As a sentence for the user; empty when there is none.
    [[nodiscard]] QString obstacleText() const;

    unsigned long rowCount = 0;
    int cellWidth = 0;
    int numberWidth = 0;
    int lineHeight = 0;
    int linesPerRow = 1;
    int linesPerPage = 0;
    // The lines of a block that belong to rows, and all of them.
    int rowLines = 0;
    int blockLines = 0;

    QStringList labels;
    bool hasLegend = false;
    // In characters: of the longest name, and what labels are given room for.
    qsizetype longestName = 0;
    int labelLength = 0;
    int labelWidth = 0;
    int firstColumn = 0;
    int blockColumns = 0;

private:
    void makeLabels(const TAMBO::Alignment &alignment);
};

} // namespace ZEP
