// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageFormat.h"

#include "HtmlPages.h"
#include "PagedPages.h"
#include "PngPages.h"
#include "SvgPages.h"
#include "Texts.h"

#include <QFileInfo>

namespace companion {

std::optional<PageFormat> pageFormatOf(const QString &file)
{
    const QString ending = QFileInfo(file).suffix().toLower();
    if (ending == QLatin1String("pdf"))
        return PageFormat::Pdf;
    if (ending == QLatin1String("svg"))
        return PageFormat::Svg;
    if (ending == QLatin1String("png"))
        return PageFormat::Png;
    if (ending == QLatin1String("html") || ending == QLatin1String("htm"))
        return PageFormat::Html;
    return std::nullopt;
}

QStringList pageFilters()
{
    return {tr("PDF (*.pdf)"), tr("SVG (*.svg)"), tr("PNG (*.png)"), tr("HTML (*.html *.htm)")};
}

QString endingOf(const QString &filter)
{
    const qsizetype begin = filter.indexOf(QLatin1String("*.")) + 2;
    qsizetype end = begin;
    while (end < filter.size() && filter[end].isLetter())
        ++end;
    return filter.mid(begin, end - begin);
}

QString obstacleOf(PageFormat format, const PagePlan &plan, double dotsOfInch)
{
    if (!plan.layout.obstacle().isEmpty())
        return plan.layout.obstacle();
    if (format == PageFormat::Png)
        return PngPages::obstacle(plan, dotsOfInch);
    if (format == PageFormat::Pdf && plan.layout.pageSize().height() > PdfPages::kLongestPage)
        return tr("The sheet would be %1 cm long, and a page of PDF may have 508 cm. Choose page "
                  "breaks, a smaller font, or fewer rows or columns; or write SVG or HTML.")
            .arg(plan.layout.pageSize().height() / kPointsOfInch * 2.54, 0, 'f', 0);
    return {};
}

std::unique_ptr<PageWriter> makePageWriter(PageFormat format, const PagePlan &plan,
                                           QIODevice &device, double dotsOfInch)
{
    switch (format) {
    case PageFormat::Pdf:
        return std::make_unique<PdfPages>(plan, device);
    case PageFormat::Svg:
        return std::make_unique<SvgPages>(plan, device);
    case PageFormat::Png:
        return std::make_unique<PngPages>(plan, device, dotsOfInch);
    case PageFormat::Html:
        return std::make_unique<HtmlPages>(plan, device);
    }
    return nullptr;
}

} // namespace companion
