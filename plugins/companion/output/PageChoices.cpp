// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageChoices.h"

#include "Alignment.h"
#include "WorkbenchValues.h"

#include <QStringList>

#include <algorithm>
#include <numeric>

namespace companion {

namespace {

constexpr char kPagesOf[] = "companion";
constexpr char kPageChoices[] = "pages";
constexpr double kSmallestFont = 2;
constexpr double kLargestFont = 40;
constexpr int kLowestResolution = 36;
constexpr int kHighestResolution = 1200;

} // namespace

const std::vector<QPageSize::PageSizeId> &offeredPapers()
{
    static const std::vector<QPageSize::PageSizeId> kPapers = {
        QPageSize::A4,     QPageSize::A3,    QPageSize::A2,     QPageSize::A5,
        QPageSize::Letter, QPageSize::Legal, QPageSize::Tabloid};
    return kPapers;
}

PageChoices PageChoices::kept()
{
    PageChoices choices;
    const QStringList parts =
        QString::fromStdString(WorkbenchValues::Get(kPagesOf, kPageChoices).value_or(""))
            .split(u' ');
    constexpr qsizetype kParts = 10;
    if (parts.size() != kParts)
        return choices;
    // A number that is none of a paper must not become one.
    const auto paper =
        std::ranges::find(offeredPapers(), parts[0].toInt(),
                          [](QPageSize::PageSizeId each) { return static_cast<int>(each); });
    if (paper != offeredPapers().end())
        choices.paper = *paper;
    choices.isLandscape = parts[1] == u"1";
    choices.hasBreaks = parts[2] == u"1";
    if (const double size = parts[3].toDouble(); size >= kSmallestFont && size <= kLargestFont)
        choices.fontSize = size;
    choices.mostColumns = parts[4].toULong();
    choices.hasNames = parts[5] == u"1";
    choices.hasRuler = parts[6] == u"1";
    choices.hasNumbers = parts[7] == u"1";
    choices.hasColors = parts[8] == u"1";
    if (const int dots = parts[9].toInt(); dots >= kLowestResolution && dots <= kHighestResolution)
        choices.resolution = dots;
    return choices;
}

void PageChoices::keep() const
{
    const QStringList parts = {QString::number(int(paper)),  QString::number(isLandscape),
                               QString::number(hasBreaks),   QString::number(fontSize),
                               QString::number(mostColumns), QString::number(hasNames),
                               QString::number(hasRuler),    QString::number(hasNumbers),
                               QString::number(hasColors),   QString::number(resolution)};
    WorkbenchValues::Set(kPagesOf, kPageChoices, parts.join(u' ').toStdString());
}

PageOrder orderOf(const PageChoices &choices, const TAMBO::Alignment &alignment,
                  const TAMBO::CellBlock &inSight, const PageTracks &tracks)
{
    PageOrder order;
    order.title = QString::fromStdString(alignment.Name());
    TAMBO::CellBlock cells{0, alignment.height(), 0, alignment.width()};
    if (choices.rows == PageRows::InSight) {
        cells.rowBegin = inSight.rowBegin;
        cells.rowEnd = std::min(inSight.rowEnd, alignment.height());
    }
    order.rows.resize(cells.rowEnd - std::min(cells.rowBegin, cells.rowEnd));
    std::iota(order.rows.begin(), order.rows.end(), cells.rowBegin);
    if (choices.rows == PageRows::Selected)
        std::erase_if(order.rows,
                      [&alignment](unsigned long row) { return !alignment.isRowSelected(row); });
    if (choices.columns == PageColumns::Range) {
        cells.colBegin = choices.colBegin;
        cells.colEnd = choices.colEnd;
    } else if (choices.columns == PageColumns::InSight) {
        cells.colBegin = inSight.colBegin;
        cells.colEnd = inSight.colEnd;
    }
    order.colBegin = std::min(cells.colBegin, alignment.width());
    order.colEnd = std::min(cells.colEnd, alignment.width());

    order.paper = QPageSize::size(choices.paper, QPageSize::Point);
    if (choices.isLandscape)
        order.paper.transpose();
    order.hasBreaks = choices.hasBreaks;
    order.fontSize = choices.fontSize;
    order.mostColumns = choices.mostColumns;
    order.hasNames = choices.hasNames;
    order.hasRuler = choices.hasRuler;
    order.hasNumbers = choices.hasNumbers;
    order.hasColors = choices.hasColors;
    if (choices.hasTracks) {
        order.tracks = tracks.tracks;
        order.lines = tracks.lines;
    }
    return order;
}

} // namespace companion
