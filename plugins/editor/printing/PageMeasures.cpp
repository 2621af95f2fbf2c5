// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageMeasures.h"

#include "Alignment.h"

#include <QFontMetrics>
#include <QPrinter>

#include <algorithm>
#include <utility>

namespace ZEP {

namespace {

// Of a block besides its rows: the ruler, the marks of conservation, and one left free.
constexpr int kOtherLines = 3;
constexpr int kLongestLabel = 10;
constexpr int kNumberLabelLength = 4;

// As people count, not by the units that a text is stored in.
qsizetype lengthOf(const QString &text)
{
    return text.toUcs4().size();
}

} // namespace

PageMeasures::PageMeasures(const QFont &font, const QPrinter &printer,
                           const TAMBO::Alignment &alignment, bool withElements)
    : rowCount(alignment.height())
{
    const QFontMetrics metrics(font, &printer);
    int widest = metrics.boundingRect(QLatin1Char('-')).width();
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        widest = std::max(widest, metrics.boundingRect(QLatin1Char(letter)).width());
    cellWidth = widest + 4;
    numberWidth = metrics.boundingRect(QStringLiteral("000M")).width();
    lineHeight = std::max(metrics.lineSpacing(), 1);
    linesPerRow = withElements ? 2 : 1;
    linesPerPage = printer.height() / lineHeight;
    rowLines = static_cast<int>(rowCount) * linesPerRow;
    blockLines = rowLines + kOtherLines;
    makeLabels(alignment);
    for (const QString &label : std::as_const(labels))
        labelWidth =
            std::max(labelWidth, metrics.boundingRect(QRect(), Qt::TextDontClip, label).width());
    labelWidth += cellWidth / 2;
    firstColumn = labelWidth + numberWidth + cellWidth / 2;
    blockColumns = (printer.width() - firstColumn) / cellWidth;
}

void PageMeasures::makeLabels(const TAMBO::Alignment &alignment)
{
    QStringList names;
    for (unsigned long row = 0; row < rowCount; ++row) {
        names << QString::fromStdString(alignment.GetSeqName(row));
        longestName = std::max(longestName, lengthOf(names.back()));
        labels << QStringLiteral("[%1]").arg(row + 1, 2);
    }
    hasLegend = longestName > kLongestLabel;
    labelLength = hasLegend ? kNumberLabelLength : static_cast<int>(longestName);
    if (!hasLegend)
        labels = names;
}

PageMeasures::Obstacle PageMeasures::obstacle() const noexcept
{
    if (linesPerPage < blockLines)
        return Obstacle::TooManyRows;
    return blockColumns < 1 && rowCount > 0 ? Obstacle::TooNarrow : Obstacle::None;
}

QString PageMeasures::obstacleText() const
{
    switch (obstacle()) {
    case Obstacle::TooManyRows:
        return QStringLiteral("Nothing was printed: there are more sequences than lines on a page. "
                              "A smaller font helps.");
    case Obstacle::TooNarrow:
        return QStringLiteral("Nothing was printed: the page is too narrow for one column.");
    case Obstacle::None:
        break;
    }
    return {};
}

} // namespace ZEP
