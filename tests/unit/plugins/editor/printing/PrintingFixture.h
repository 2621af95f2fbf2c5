// SPDX-License-Identifier: GPL-3.0-or-later
// Prints of editor windows, and where on their pages things are to be found.
#pragma once

#include "PageRecorder.h"
#include "WindowFixture.h"

#include "DataMaker.h"

#include <QPainter>

#include <memory>
#include <tuple>

// What drawIt painted and said.
struct Print
{
    std::unique_ptr<PageRecorder> printer;
    QStringList messages;

    [[nodiscard]] const std::vector<PaintedText> &texts() const { return printer->texts(); }
    [[nodiscard]] const std::vector<PaintedRect> &rects() const { return printer->rects(); }
    [[nodiscard]] int pages() const { return printer->pageCount(); }
    [[nodiscard]] std::vector<PaintedText> called(const QString &text) const
    {
        std::vector<PaintedText> found;
        for (const PaintedText &painted : texts())
            if (painted.text == text)
                found.push_back(painted);
        return found;
    }
    // What is painted with its middle in a place, in the order of painting.
    [[nodiscard]] std::vector<PaintedText> in(const QRectF &place, int page = 0) const
    {
        std::vector<PaintedText> found;
        for (const PaintedText &painted : texts())
            if (painted.page == page && place.contains(painted.box.center()))
                found.push_back(painted);
        return found;
    }
    [[nodiscard]] QString textIn(const QRectF &place, int page = 0) const
    {
        QString text;
        for (const PaintedText &painted : in(place, page))
            text += painted.text;
        return text;
    }
    // From the first page to the last, and on each as one reads.
    [[nodiscard]] std::vector<PaintedRect> fills() const
    {
        std::vector<PaintedRect> found;
        for (const PaintedRect &painted : rects())
            if (painted.fill.isValid())
                found.push_back(painted);
        std::sort(found.begin(), found.end(), [](const PaintedRect &a, const PaintedRect &b) {
            return std::tuple(a.page, a.rect.top(), a.rect.left()) <
                   std::tuple(b.page, b.rect.top(), b.rect.left());
        });
        return found;
    }
    [[nodiscard]] std::vector<PaintedRect> frames() const
    {
        std::vector<PaintedRect> found;
        for (const PaintedRect &painted : rects())
            if (painted.outline.isValid())
                found.push_back(painted);
        return found;
    }
};

// Where the parts of a block stand, worked out from the font alone. Sections count on their page.
struct PageLayout
{
    PageLayout(QPrinter &printer, const QFont &font, int rowCount, const QStringList &labels,
               bool withElements = false)
        : measures(font, printer),
          rows(rowCount),
          linesPerRow(withElements ? 2 : 1),
          blockLines(rowCount * linesPerRow + 3),
          blocksPerPage(printer.height() / measures.line / blockLines)
    {
        int widest = 0;
        for (const QString &label : labels)
            widest = std::max(widest, PageMeasures::width(label, font, printer));
        labelWidth = widest + measures.cell / 2;
        left = labelWidth + measures.number + measures.cell / 2;
        columns = (printer.width() - left) / measures.cell;
    }

    [[nodiscard]] int top(int section) const
    {
        return legend + section * blockLines * measures.line;
    }
    [[nodiscard]] int line(int row, int section) const
    {
        return top(section) + (2 + row * linesPerRow) * measures.line;
    }
    [[nodiscard]] QRect cell(int row, int place, int section = 0) const
    {
        return {left + place * measures.cell, line(row, section), measures.cell, measures.line};
    }
    // Below the cell.
    [[nodiscard]] QRect element(int row, int place, int section = 0) const
    {
        return cell(row, place, section).translated(0, measures.line);
    }
    [[nodiscard]] QRect ruler(int place, int section = 0) const
    {
        return {left + (place - 2) * measures.cell, top(section), 5 * measures.cell, measures.line};
    }
    [[nodiscard]] QRect mark(int place, int section = 0) const
    {
        return {left + place * measures.cell, top(section) + measures.line, measures.cell,
                measures.line};
    }
    [[nodiscard]] QRect label(int row, int section = 0) const
    {
        return {0, line(row, section), labelWidth, measures.line};
    }
    [[nodiscard]] QRect number(int row, int section = 0) const
    {
        return {labelWidth, line(row, section), measures.number, measures.line};
    }
    [[nodiscard]] QRect frame(int place, int section = 0) const
    {
        return {left + place * measures.cell, line(0, section), measures.cell,
                measures.line * rows * linesPerRow};
    }
    // All rows of the print, read back cell by cell.
    [[nodiscard]] std::vector<std::string> rowsOf(const Print &print, int width) const
    {
        std::vector<std::string> texts(static_cast<std::size_t>(rows));
        for (int col = 0; col < width; ++col) {
            const int block = col / columns;
            for (int row = 0; row < rows; ++row)
                texts[static_cast<std::size_t>(row)] +=
                    print
                        .textIn(cell(row, col % columns, block % blocksPerPage),
                                block / blocksPerPage)
                        .toStdString();
        }
        return texts;
    }

    PageMeasures measures;
    int rows;
    int linesPerRow;
    int blockLines;
    int blocksPerPage;
    int labelWidth = 0;
    int left = 0;
    int columns = 0;
    // Its height.
    int legend = 0;
};

class PrintingFixture : public WindowFixture
{
protected:
    static constexpr QSize kA4{767, 1097};
    static constexpr const char *kWithElements = "[KALMO2]\nFont = DejaVu Sans Mono, 11\n"
                                                 "PrintSSE = true\n";

    static QFont font() { return {"DejaVu Sans Mono", 11}; }

    static Print print(ZEP::KALMO2 &window, int style = ZEP::KALMO2::BlackAndWhite,
                       const QSize &page = kA4)
    {
        Print print;
        print.printer = std::make_unique<PageRecorder>(page);
        const MessageRecorder recorder;
        QPainter painter(print.printer.get());
        window.drawIt(&painter, static_cast<ZEP::KALMO2::PrintStyle>(style));
        painter.end();
        print.messages = recorder.messages();
        return print;
    }
    Print print(TAMBO::Alignment &shown, int style = ZEP::KALMO2::BlackAndWhite,
                const QSize &page = kA4)
    {
        return print(open(shown), style, page);
    }
    // Of a print whose labels are the names.
    static PageLayout layout(Print &print, const TAMBO::Alignment &alignment,
                             bool withElements = false)
    {
        return {*print.printer, font(), static_cast<int>(alignment.height()), namesOf(alignment),
                withElements};
    }
    // Of a print with a legend.
    static PageLayout numberedLayout(Print &print, const TAMBO::Alignment &alignment)
    {
        QStringList labels;
        const int rows = static_cast<int>(alignment.height());
        for (int row = 1; row <= rows; ++row)
            labels << numberLabel(row);
        PageLayout layout(*print.printer, font(), rows, labels);
        layout.legend = rows * layout.measures.line;
        return layout;
    }
    static QStringList namesOf(const TAMBO::Alignment &alignment)
    {
        QStringList names;
        for (unsigned long row = 0; row < alignment.height(); ++row)
            names << QString::fromStdString(alignment.GetSeqName(row));
        return names;
    }
    static QString numberLabel(int number) { return QStringLiteral("[%1]").arg(number, 2); }
    static QStringList textsOf(const std::vector<PaintedText> &painted)
    {
        QStringList texts;
        for (const PaintedText &text : painted)
            texts << text.text;
        return texts;
    }
    // A page that takes so many lines and blocks of so many columns.
    static QSize pageOf(int lines, int width = kA4.width())
    {
        const PageRecorder any(kA4);
        const PageMeasures measures(font(), const_cast<PageRecorder &>(any));
        return {width, lines * measures.line};
    }
    // Different residues without an end.
    static std::string letters(std::size_t count)
    {
        static const std::string kLetters = "ACDEFGHIKLMNPQRSTVWY";
        std::string text;
        while (text.size() < count)
            text += kLetters[(text.size() * 7 + text.size() / 13) % kLetters.size()];
        return text;
    }
    static TAMBO::Compound &residue(const TAMBO::Alignment &alignment, unsigned long row,
                                    unsigned long col)
    {
        return *alignment.getItem(row, col);
    }
    static void addElement(const TAMBO::Alignment &alignment, unsigned long row,
                           unsigned long begin, unsigned long end, char type)
    {
        std::vector<TAMBO::Compound *> residues;
        for (unsigned long col = begin; col < end; ++col)
            residues.push_back(alignment.getItem(row, col));
        ASSERT_NE(TAMBO::DataMaker::makeSSE(alignment.GetSeq(row), "made", residues, type),
                  nullptr);
    }
};
