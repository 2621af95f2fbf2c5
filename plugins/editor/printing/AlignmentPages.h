// SPDX-License-Identifier: GPL-3.0-or-later
// Paints an alignment on the pages of a printer, in blocks of as many columns as a line takes.
#pragma once

#include "Alignment.h"
#include "PageMeasures.h"
#include "PaintBatch.h"

#include <QColor>
#include <QFont>
#include <QRect>

#include <vector>

class QPainter;
class QPrinter;

namespace ZEP {

class AlignmentPages
{
public:
    // The values are those of KALMO2::PrintStyle.
    enum Style { Slim = 1, Fat = 2, BlackAndWhite = 3 };

    struct Options
    {
        QFont font;
        // Not one of Style: letters are drawn with whatever pen there is.
        int style = Fat;
        // A second line per sequence with the letters of its secondary structure.
        bool withElements = false;
    };

    // painter is active on printer. All measures are in the printer's pixels.
    AlignmentPages(QPainter &painter, QPrinter &printer, const TAMBO::Alignment &alignment,
                   const Options &options);

    void print();

private:
    using Cells = std::vector<TAMBO::Compound *>;

    // Says why not.
    [[nodiscard]] bool isPossible() const;
    void printLegend();
    void printLegendLine(const QString &text);
    // Paints the columns from begin on, as many as fit, and returns the one behind the last.
    unsigned long printBlock(int section, unsigned long begin);
    void write(const QRect &rect, int flags, const QString &text);
    void printLabels(int room);
    void printNumbers(unsigned long col);
    // place: how many columns stand before it in the block.
    void printColumn(unsigned long col, int place);
    void printRuler(int x, const Cells &cells);
    void printResidue(const QRect &cell, const TAMBO::Compound &residue);
    void printElement(const QRect &cell, const TAMBO::Compound &residue);
    [[nodiscard]] int lineOf(unsigned long row) const noexcept;

    QPainter &m_Painter;
    QPrinter &m_Printer;
    const TAMBO::Alignment &m_Alignment;
    Options m_Options;

    PageMeasures m_Measures;

    int m_PageTop = 0;
    int m_BlockTop = 0;
    int m_RowsTop = 0;
    // What the next letter is written with when its style does not say.
    QColor m_Pen;
    PaintBatch m_Batch;
};

} // namespace ZEP
