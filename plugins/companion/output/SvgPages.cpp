// SPDX-License-Identifier: GPL-3.0-or-later
#include "SvgPages.h"

#include "CellLooks.h"
#include "MarkupText.h"
#include "Ruler.h"
#include "SvgShapes.h"
#include "TrackLabels.h"
#include "TrackPainting.h"

#include <QPainter>

#include <cmath>

namespace companion {

namespace {

// Fonts are measured so much larger, since small ones are rounded to pixels.
constexpr int kLargeFont = 1000;
const QByteArray kGreyText = QByteArrayLiteral(" fill=\"#595959\"");
const QByteArray kEndsThere = QByteArrayLiteral(" text-anchor=\"end\"");

QFont largeFont()
{
    QFont font = pageFont(1);
    font.setPixelSize(kLargeFont);
    return font;
}

} // namespace

QByteArray svgOfTrack(const PagePlan &plan, const PagePart &part, Track track,
                      const ColumnOfTrack &columns)
{
    const double cell = plan.measures.cellWidth * kShapesOfPoint;
    const int height = int(std::lround(trackHeight(plan.measures, track) * kShapesOfPoint));
    const auto edge = [cell, &part](unsigned long col) {
        return int(std::lround(double(col - part.colBegin) * cell));
    };
    SvgShapes shapes({edge(part.colEnd), height});
    QPainter painter(&shapes);
    for (unsigned long col = part.colBegin; col < part.colEnd; ++col)
        paintTrackColumn(painter, track, columns(col),
                         {edge(col), 0, edge(col + 1) - edge(col), height});
    painter.end();
    return shapes.elements();
}

SvgPages::SvgPages(const PagePlan &plan, QIODevice &device)
    : m_Plan(plan), m_Device(device), m_Metrics(largeFont())
{
    const QSizeF &page = plan.layout.pageSize();
    const QByteArray width = markupNumber(page.width());
    const QByteArray height = markupNumber(page.height() * double(plan.layout.pages()));
    write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
          width + "pt\" height=\"" + height + "pt\" viewBox=\"0 0 " + width + ' ' + height +
          "\">\n<title>" + markupText(plan.order.title) +
          "</title>\n<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n"
          "<g font-family=\"DejaVu Sans Mono, Menlo, Consolas, monospace\" font-size=\"" +
          markupNumber(plan.order.fontSize) + "\" xml:space=\"preserve\">\n");
}

SvgPages::~SvgPages() = default;

QString SvgPages::cut(const QString &text, double width) const
{
    const double room = width * kLargeFont / m_Plan.order.fontSize;
    return m_Metrics.horizontalAdvance(text) <= room
               ? text
               : m_Metrics.elidedText(text, Qt::ElideMiddle, room);
}

void SvgPages::addText(const QPointF &baseline, const QByteArray &attributes, const QString &text)
{
    write("<text x=\"" + markupNumber(baseline.x()) + "\" y=\"" + markupNumber(baseline.y()) + '"' +
          attributes + '>' + markupText(text) + "</text>\n");
}

void SvgPages::beginPage(const Page &page)
{
    write("<g class=\"page\" transform=\"translate(0 " +
          markupNumber(double(page.number) * page.size.height()) + ")\">\n");
    if (page.number > 0)
        write("<path d=\"M0 0H" + markupNumber(page.size.width()) +
              "\" stroke=\"#c8c8c8\" stroke-width=\"0.5\"/>\n");
    const double margin = m_Plan.order.margin;
    const double baseline = margin + m_Plan.measures.baseline;
    const QString number = m_Plan.pageText(page.number);
    const double width = page.size.width() - 2 * margin;
    const double numberWidth = double(number.size() + 1) * m_Plan.measures.cellWidth;
    addText({margin, baseline}, " class=\"title\"", cut(m_Plan.order.title, width - numberWidth));
    addText({margin + width, baseline}, " class=\"number\"" + kEndsThere + kGreyText, number);
}

void SvgPages::beginPart(const PagePart &part)
{
    write("<g class=\"block\">\n");
    if (!m_Plan.order.hasRuler)
        return;
    const unsigned long step = rulerStep(double(QString::number(part.colEnd).size()), 1);
    for (const RulerMark &mark : rulerMarks(part.colBegin, part.colEnd, step, 1, 1))
        addText({m_Plan.layout.cellsLeft() +
                     double(mark.col + 1 - part.colBegin) * m_Plan.measures.cellWidth,
                 part.top + m_Plan.measures.baseline},
                " class=\"ruler\"" + kEndsThere + kGreyText, mark.text);
}

void SvgPages::addRow(const PagePart &part, const PageRow &row)
{
    const PageMeasures &measures = m_Plan.measures;
    const double top = m_Plan.layout.rowTop(part, row.place);
    const double baseline = top + measures.baseline;
    if (m_Plan.order.hasColors)
        addGrounds(row, top);
    if (!row.name.isEmpty())
        addText({m_Plan.order.margin, baseline}, " class=\"name\"",
                cut(row.name, measures.nameWidth - measures.cellWidth / 2));
    addLetters(row, baseline);
    if (!row.number.isEmpty())
        addText({m_Plan.layout.cellsLeft() +
                     double(part.colEnd - part.colBegin) * measures.cellWidth +
                     measures.numberWidth,
                 baseline},
                " class=\"end\"" + kEndsThere + kGreyText, row.number);
}

void SvgPages::addGrounds(const PageRow &row, double top)
{
    const double cell = m_Plan.measures.cellWidth;
    for (std::size_t begin = 0, end = 0; begin < row.cells.size(); begin = end) {
        const QRgb ground = groundOf(row.cells[begin]);
        while (end < row.cells.size() && groundOf(row.cells[end]) == ground)
            ++end;
        if (ground == kWhiteGround)
            continue;
        write("<rect x=\"" + markupNumber(m_Plan.layout.cellsLeft() + double(begin) * cell) +
              "\" y=\"" + markupNumber(top) + "\" width=\"" +
              markupNumber(double(end - begin) * cell) + "\" height=\"" +
              markupNumber(m_Plan.measures.lineHeight) + "\" fill=\"" + markupColor(ground) +
              "\"/>\n");
    }
}

// Each letter has its place; those who know only that of the first one keep the distance.
void SvgPages::addLetters(const PageRow &row, double baseline)
{
    const double cell = m_Plan.measures.cellWidth;
    const double advance = m_Metrics.horizontalAdvance(u'A') * m_Plan.order.fontSize / kLargeFont;
    const double left = m_Plan.layout.cellsLeft() + (cell - advance) / 2;
    const auto isWhite = [this](const TAMBO::AlignmentCell &each) {
        return m_Plan.order.hasColors && hasWhiteLetter(groundOf(each));
    };
    QByteArray text = "<text class=\"row\" y=\"" + markupNumber(baseline) + "\" letter-spacing=\"" +
                      markupNumber(cell - advance) + "\">";
    for (std::size_t begin = 0, end = 0; begin < row.cells.size(); begin = end) {
        QByteArray places;
        QString letters;
        const bool isRunWhite = isWhite(row.cells[begin]);
        for (; end < row.cells.size() && isWhite(row.cells[end]) == isRunWhite; ++end) {
            places += (places.isEmpty() ? "" : " ") + markupNumber(left + double(end) * cell);
            letters += QLatin1Char(letterOf(row.cells[end]));
        }
        text += "<tspan x=\"" + places + (isRunWhite ? "\" fill=\"#ffffff\">" : "\">") +
                markupText(letters) + "</tspan>";
    }
    write(text + "</text>\n");
}

void SvgPages::addTracks(const PagePart &part, const ColumnOfTrack &columns)
{
    for (const PlacedTrack &track : placedTracks(m_Plan, part)) {
        if (m_Plan.order.hasNames)
            addText(nameOfTrack(m_Plan, track), " class=\"track\"" + kGreyText,
                    cut(trackName(track.track),
                        m_Plan.measures.nameWidth - m_Plan.measures.cellWidth / 2));
        write("<g class=\"values\" transform=\"translate(" + markupNumber(track.place.left()) +
              ' ' + markupNumber(track.place.top()) + ") scale(" +
              markupNumber(1 / kShapesOfPoint) + ")\">" +
              svgOfTrack(m_Plan, part, track.track, columns) + "</g>\n");
    }
}

void SvgPages::addLine(const PagePart &part, std::size_t place, const std::string &text)
{
    const PageMeasures &measures = m_Plan.measures;
    const double baseline = topOfLine(m_Plan, part, place) + measures.baseline;
    if (m_Plan.order.hasNames)
        addText({m_Plan.order.margin, baseline}, " class=\"linename\"" + kGreyText,
                cut(m_Plan.order.lines[place].name, measures.nameWidth - measures.cellWidth / 2));
    const double advance = m_Metrics.horizontalAdvance(u'A') * m_Plan.order.fontSize / kLargeFont;
    const double left = m_Plan.layout.cellsLeft() + (measures.cellWidth - advance) / 2;
    QByteArray places;
    for (std::size_t i = 0; i < text.size(); ++i)
        places += (i == 0 ? "" : " ") + markupNumber(left + double(i) * measures.cellWidth);
    write("<text class=\"line\" y=\"" + markupNumber(baseline) + '"' + kGreyText + " x=\"" +
          places + "\">" + markupText(QString::fromLatin1(text)) + "</text>\n");
}

void SvgPages::endPart(const PagePart &)
{
    write("</g>\n");
}

void SvgPages::endPage(const Page &)
{
    write("</g>\n");
}

bool SvgPages::finish(std::chrono::microseconds)
{
    write("</g>\n</svg>\n");
    return true;
}

} // namespace companion
