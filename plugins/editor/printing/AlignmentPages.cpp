// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentPages.h"

#include "Check.h"
#include "LetterColor.h"
#include "Logger.h"
#include "ResidueItem.h"

#include <QElapsedTimer>
#include <QPainter>
#include <QPrinter>

#include <algorithm>
#include <string>
#include <utility>

namespace ZEP {

namespace {

constexpr int kRulerStep = 10;

QString textOf(char letter)
{
    return QString(QLatin1Char(letter));
}

// Kept to the left also when the text runs to the left, and never cut off.
constexpr int kLeft = Qt::AlignLeft | Qt::AlignAbsolute | Qt::TextDontClip;
constexpr int kRight = Qt::AlignRight | Qt::AlignAbsolute | Qt::TextDontClip;
constexpr int kCentre = Qt::AlignCenter | Qt::TextDontClip;

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
      m_Measures(options.font, printer, alignment, options.withElements)
{ }

void AlignmentPages::print()
{
    m_Painter.setFont(m_Options.font);
    const qsizetype namesLen = m_Measures.longestName;
    TAMBO_ASSERT(1 < namesLen, "KalmoIO", 391);
    if (m_Measures.hasLegend)
        qDebug("Sequence names are rather long, truncating.");
    if (!isPossible())
        return;
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
        col = printBlock(section, col);
        ++section;
        qDebug("Printed section %d.", section);
        // Kept: the legend takes no block's place, so that the last one may leave the page.
        if (section < m_Measures.linesPerPage / m_Measures.blockLines)
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

bool AlignmentPages::isPossible() const
{
    switch (m_Measures.obstacle()) {
    case PageMeasures::Obstacle::TooManyRows:
        qDebug("Too many sequences to fit in one page.\nConsider smaller font.");
        break;
    case PageMeasures::Obstacle::TooNarrow:
        qDebug("Page too narrow for one column.");
        break;
    case PageMeasures::Obstacle::None:
        return true;
    }
    Logger::Write(m_Measures.obstacleText());
    return false;
}

void AlignmentPages::printLegend()
{
    if (!m_Measures.hasLegend)
        return;
    for (unsigned long row = 0; row < m_Measures.rowCount; ++row) {
        const QString name = QString::fromStdString(m_Alignment.GetSeqName(row));
        printLegendLine(m_Measures.labels[static_cast<qsizetype>(row)] + ' ' + name);
        m_PageTop += m_Measures.lineHeight;
    }
}

// A line that would leave the paper is made smaller until it fits: a name is of use as a whole.
void AlignmentPages::printLegendLine(const QString &text)
{
    // Kept: as wide as the page is high.
    const QRect room(0, 0, m_Printer.height(), m_Measures.lineHeight);
    const double fitting =
        static_cast<double>(m_Printer.width()) / m_Painter.boundingRect(room, kLeft, text).width();
    m_Painter.save();
    m_Painter.translate(0, m_PageTop);
    if (fitting < 1)
        m_Painter.scale(fitting, fitting);
    m_Painter.drawText(room, kLeft, text);
    m_Painter.restore();
}

unsigned long AlignmentPages::printBlock(int section, unsigned long begin)
{
    m_Pen = Qt::black;
    m_BlockTop = m_PageTop + section * m_Measures.blockLines * m_Measures.lineHeight;
    m_RowsTop = m_BlockTop + 2 * m_Measures.lineHeight;
    // Kept: labels get more room in later blocks than they need, which is not to be seen.
    printLabels((begin == 0 ? m_Measures.labelLength : m_Measures.labelWidth) *
                m_Measures.cellWidth);
    printNumbers(begin);
    const unsigned long end =
        std::min(m_Alignment.width(), begin + static_cast<unsigned long>(m_Measures.blockColumns));
    for (unsigned long col = begin; col < end; ++col)
        printColumn(col, static_cast<int>(col - begin));
    m_Batch.paint(m_Painter);
    return end;
}

void AlignmentPages::write(const QRect &rect, int flags, const QString &text)
{
    m_Batch.write(rect, flags, text, m_Pen);
}

void AlignmentPages::printLabels(int room)
{
    for (unsigned long row = 0; row < m_Measures.rowCount; ++row)
        write(QRect(0, lineOf(row), room, m_Measures.lineHeight), kLeft,
              m_Measures.labels[static_cast<qsizetype>(row)]);
}

void AlignmentPages::printNumbers(unsigned long col)
{
    for (unsigned long row = 0; row < m_Measures.rowCount; ++row) {
        const TAMBO::Compound *cell = m_Alignment.getItem(row, col);
        if (cell != nullptr)
            write(QRect(m_Measures.labelWidth, lineOf(row), m_Measures.numberWidth,
                        m_Measures.lineHeight),
                  kRight, numberOf(*cell));
    }
}

void AlignmentPages::printColumn(unsigned long col, int place)
{
    const int x = m_Measures.firstColumn + place * m_Measures.cellWidth;
    const Cells cells = m_Alignment.getCol(col);
    if ((place + 1) % kRulerStep == 0)
        printRuler(x, cells);
    if (isConserved(cells)) {
        m_Pen = Qt::black;
        write(QRect(x, m_BlockTop + m_Measures.lineHeight, m_Measures.cellWidth,
                    m_Measures.lineHeight),
              kCentre, QStringLiteral("*"));
    }
    bool isSelected = false;
    for (unsigned long row = 0; row < m_Measures.rowCount; ++row) {
        const QRect cell(x, lineOf(row), m_Measures.cellWidth, m_Measures.lineHeight);
        const TAMBO::Compound *residue = cells[row];
        if (residue == nullptr) {
            m_Pen = Qt::lightGray;
            write(cell, kCentre, QStringLiteral("-"));
            continue;
        }
        printResidue(cell, *residue);
        if (m_Options.withElements)
            printElement(cell.translated(0, m_Measures.lineHeight), *residue);
        isSelected = isSelected || residue->IsSelected();
    }
    if (isSelected) {
        m_Pen = Qt::black;
        m_Batch.frame(
            {x, m_RowsTop, m_Measures.cellWidth, m_Measures.lineHeight * m_Measures.rowLines});
    }
}

void AlignmentPages::printRuler(int x, const Cells &cells)
{
    const TAMBO::Compound *first = cells.front();
    m_Pen = Qt::black;
    write(QRect(x - 2 * m_Measures.cellWidth, m_BlockTop, 5 * m_Measures.cellWidth,
                m_Measures.lineHeight),
          kCentre, first == nullptr ? QStringLiteral("|") : numberOf(*first));
}

void AlignmentPages::printResidue(const QRect &cell, const TAMBO::Compound &residue)
{
    // Paper is as white as the cells of the screen, and shines through as they do.
    const QColor color = ResidueItem::shownColor(residue.GetColor());
    switch (m_Options.style) {
    case Fat:
        m_Batch.fill(cell, color);
        m_Pen = letterColorOn(color);
        break;
    case Slim:
        m_Pen = color == QColor(Qt::white) ? QColor(Qt::black) : color;
        break;
    case BlackAndWhite:
        m_Pen = Qt::black;
        break;
    default:
        qDebug("Impossible printing style");
        break;
    }
    write(cell, kCentre, textOf(residue.TypeCode()));
}

void AlignmentPages::printElement(const QRect &cell, const TAMBO::Compound &residue)
{
    const auto *place = dynamic_cast<const TAMBO::Residue *>(&residue);
    const TAMBO::Compound *element = place == nullptr ? nullptr : place->GetSSE();
    if (element == nullptr)
        return;
    m_Pen = Qt::gray;
    write(cell, kCentre, textOf(element->TypeCode()).toLower());
}

int AlignmentPages::lineOf(unsigned long row) const noexcept
{
    return m_RowsTop + static_cast<int>(row) * m_Measures.linesPerRow * m_Measures.lineHeight;
}

} // namespace ZEP
