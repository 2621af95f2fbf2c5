// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentPages.h"

#include "Check.h"
#include "LetterColor.h"

#include <QElapsedTimer>
#include <QPainter>
#include <QPrinter>

#include <algorithm>
#include <string>

namespace ZEP {

namespace {

// Of a block besides its rows: the ruler, the marks of conservation, and one left free.
constexpr int kOtherLines = 3;
constexpr int kLongestLabel = 10;
constexpr int kNumberLabelLength = 4;
constexpr int kRulerStep = 10;

QString textOf(char letter)
{
    return QString(QLatin1Char(letter));
}

QString numberOf(const TAMBO::Compound &residue)
{
    const auto *group = dynamic_cast<const TAMBO::Group *>(&residue);
    return group == nullptr ? QString() : QString::fromStdString(group->GetSeqId().getValue());
}

// Every row holds a residue of the same letter.
bool isConserved(const std::vector<TAMBO::Compound *> &cells)
{
    if (cells.size() < 2 || cells.front() == nullptr)
        return false;
    const char letter = cells.front()->TypeCode();
    return std::all_of(cells.begin(), cells.end(), [letter](const TAMBO::Compound *cell) {
        return cell != nullptr && cell->TypeCode() == letter;
    });
}

} // namespace

AlignmentPages::AlignmentPages(QPainter &painter, QPrinter &printer,
                               const TAMBO::Alignment &alignment, const Options &options)
    : m_Painter(painter),
      m_Printer(printer),
      m_Alignment(alignment),
      m_Options(options),
      m_RowCount(alignment.height())
{ }

void AlignmentPages::print()
{
    measure();
    makeLabels();
    const int linesPerPage = m_Printer.height() / m_LineHeight;
    const int blockLines = m_RowLines + kOtherLines;
    if (linesPerPage < blockLines) {
        qDebug("Too many sequences to fit in one page.\nConsider smaller font.");
        return;
    }
    QElapsedTimer timer;
    timer.start();
    qDebug("Starting to print...");
    m_Painter.setPen(Qt::black);
    // Kept: the title's baseline is the very top of the page.
    m_Painter.drawText(0, 0, QString::fromStdString(m_Alignment.Name()));
    printLegend();

    const unsigned long width = m_Alignment.width();
    int section = 0;
    for (unsigned long col = 0; col < width;) {
        const unsigned long next = printBlock(section, col);
        if (next == col) {
            qDebug("Page too narrow for one column.");
            break;
        }
        col = next;
        ++section;
        qDebug("Printed section %d.", section);
        // Kept: the legend takes no block's place, so that the last one may leave the page.
        if (section < linesPerPage / blockLines)
            continue;
        section = 0;
        if (col >= width)
            break;
        qDebug("Printing next page...");
        m_Printer.newPage();
        m_PageTop = 0;
    }
    qDebug("Printed in %8d msec", static_cast<int>(timer.elapsed()));
}

void AlignmentPages::measure()
{
    m_Painter.setFont(m_Options.font);
    const QFontMetrics metrics = m_Painter.fontMetrics();
    int widest = metrics.boundingRect(QLatin1Char('-')).width();
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        widest = std::max(widest, metrics.boundingRect(QLatin1Char(letter)).width());
    m_CellWidth = widest + 4;
    m_NumberWidth = metrics.boundingRect(QStringLiteral("000M")).width();
    m_LineHeight = std::max(metrics.lineSpacing(), 1);
    m_LinesPerRow = m_Options.withElements ? 2 : 1;
    m_RowLines = static_cast<int>(m_RowCount) * m_LinesPerRow;
}

void AlignmentPages::makeLabels()
{
    QStringList names;
    qsizetype namesLen = 0;
    for (unsigned long row = 0; row < m_RowCount; ++row) {
        names << QString::fromStdString(m_Alignment.GetSeqName(row));
        namesLen = std::max(namesLen, names.back().size());
        m_Labels << QStringLiteral("[%1]").arg(row + 1, 2);
    }
    TAMBO_ASSERT(1 < namesLen, "KalmoIO", 391);
    m_HasLegend = namesLen > kLongestLabel;
    if (m_HasLegend) {
        qDebug("Sequence names are rather long, truncating.");
        m_LabelLength = kNumberLabelLength;
    } else {
        m_Labels = names;
        m_LabelLength = static_cast<int>(namesLen);
    }
}

void AlignmentPages::printLegend()
{
    if (!m_HasLegend)
        return;
    for (unsigned long row = 0; row < m_RowCount; ++row) {
        const QString name = QString::fromStdString(m_Alignment.GetSeqName(row));
        // Kept: as wide as the page is high.
        m_Painter.drawText(QRect(0, m_PageTop, m_Printer.height(), m_LineHeight),
                           Qt::AlignLeft | Qt::TextDontClip,
                           m_Labels[static_cast<qsizetype>(row)] + ' ' + name);
        m_PageTop += m_LineHeight;
    }
}

unsigned long AlignmentPages::printBlock(int section, unsigned long begin)
{
    m_Painter.setPen(Qt::black);
    m_BlockTop = m_PageTop + section * (m_RowLines + kOtherLines) * m_LineHeight;
    m_RowsTop = m_BlockTop + 2 * m_LineHeight;
    printLabels();
    printNumbers(begin);
    const int left = m_LabelWidth + m_NumberWidth + m_CellWidth / 2;
    const int fitting = std::max(0, (m_Printer.width() - left) / m_CellWidth);
    const unsigned long end =
        std::min(m_Alignment.width(), begin + static_cast<unsigned long>(fitting));
    for (unsigned long col = begin; col < end; ++col) {
        const int k = static_cast<int>(col - begin);
        printColumn(col, left + k * m_CellWidth, k + 1, fitting);
    }
    return end;
}

// Kept: labels get more room in later blocks than they need, which is not to be seen.
void AlignmentPages::printLabels()
{
    const bool isFirst = m_LabelWidth == 0;
    const int room = isFirst ? m_LabelLength * m_CellWidth : m_LabelWidth * m_CellWidth;
    int widest = 0;
    for (unsigned long row = 0; row < m_RowCount; ++row) {
        QRect drawn;
        m_Painter.drawText(QRect(0, lineOf(row), room, m_LineHeight),
                           Qt::AlignLeft | Qt::TextDontClip, m_Labels[static_cast<qsizetype>(row)],
                           &drawn);
        widest = std::max(widest, drawn.width());
    }
    if (isFirst)
        m_LabelWidth = widest + m_CellWidth / 2;
}

void AlignmentPages::printNumbers(unsigned long col)
{
    for (unsigned long row = 0; row < m_RowCount; ++row) {
        const TAMBO::Compound *cell = m_Alignment.getItem(row, col);
        if (cell != nullptr)
            m_Painter.drawText(QRect(m_LabelWidth, lineOf(row), m_NumberWidth, m_LineHeight),
                               Qt::AlignRight | Qt::TextDontClip, numberOf(*cell));
    }
}

void AlignmentPages::printColumn(unsigned long col, int x, int place, int columnsInBlock)
{
    const Cells cells = m_Alignment.getCol(col);
    if (place % (columnsInBlock + 1) % kRulerStep == 0)
        printRuler(x, cells);
    if (isConserved(cells)) {
        m_Painter.setPen(Qt::black);
        m_Painter.drawText(QRect(x, m_BlockTop + m_LineHeight, m_CellWidth, m_LineHeight),
                           Qt::AlignCenter, QStringLiteral("*"));
    }
    bool isSelected = false;
    for (unsigned long row = 0; row < m_RowCount; ++row) {
        const QRect cell(x, lineOf(row), m_CellWidth, m_LineHeight);
        const TAMBO::Compound *residue = cells[row];
        if (residue == nullptr) {
            m_Painter.setPen(Qt::lightGray);
            m_Painter.drawText(cell, Qt::AlignCenter, QStringLiteral("-"));
            continue;
        }
        printResidue(cell, *residue);
        if (m_Options.withElements)
            printElement(cell.translated(0, m_LineHeight), *residue);
        isSelected = isSelected || residue->IsSelected();
    }
    if (isSelected) {
        m_Painter.setPen(Qt::black);
        m_Painter.drawRect(x, m_RowsTop, m_CellWidth, m_LineHeight * m_RowLines);
    }
}

void AlignmentPages::printRuler(int x, const Cells &cells)
{
    const TAMBO::Compound *first = cells.front();
    m_Painter.setPen(Qt::black);
    m_Painter.drawText(QRect(x - 2 * m_CellWidth, m_BlockTop, 5 * m_CellWidth, m_LineHeight),
                       Qt::AlignCenter, first == nullptr ? QStringLiteral("|") : numberOf(*first));
}

void AlignmentPages::printResidue(const QRect &cell, const TAMBO::Compound &residue)
{
    const QColor color = residue.GetColor().toQColor();
    switch (m_Options.style) {
    case Fat:
        m_Painter.fillRect(cell, color);
        m_Painter.setPen(letterColorOn(color));
        break;
    case Slim:
        m_Painter.setPen(color == QColor(Qt::white) ? QColor(Qt::black) : color);
        break;
    case BlackAndWhite:
        m_Painter.setPen(Qt::black);
        break;
    default:
        qDebug("Impossible printing style");
        break;
    }
    m_Painter.drawText(cell, Qt::AlignCenter, textOf(residue.TypeCode()));
}

void AlignmentPages::printElement(const QRect &cell, const TAMBO::Compound &residue)
{
    const auto *place = dynamic_cast<const TAMBO::Residue *>(&residue);
    const TAMBO::Compound *element = place == nullptr ? nullptr : place->GetSSE();
    if (element == nullptr)
        return;
    m_Painter.setPen(Qt::gray);
    m_Painter.drawText(cell, Qt::AlignCenter, textOf(element->TypeCode()).toLower());
}

int AlignmentPages::lineOf(unsigned long row) const noexcept
{
    return m_RowsTop + static_cast<int>(row) * m_LinesPerRow * m_LineHeight;
}

} // namespace ZEP
