// SPDX-License-Identifier: GPL-3.0-or-later
#include "HtmlPages.h"

#include "CellLooks.h"
#include "MarkupText.h"
#include "Ruler.h"
#include "SvgPages.h"
#include "Texts.h"

#include <QDir>

#include <map>

namespace companion {

namespace {

constexpr qint64 kCopiedAtOnce = 1 << 20;
constexpr char kSpacing[] = "0.05em";

} // namespace

HtmlPages::HtmlPages(const PagePlan &plan, QIODevice &device)
    : m_Plan(plan), m_Device(device), m_Body(QDir::tempPath() + QStringLiteral("/tambo-XXXXXX"))
{
    m_HasFailed = !m_Body.open();
}

HtmlPages::~HtmlPages() = default;

void HtmlPages::add(const QByteArray &text)
{
    if (m_Body.write(text) != text.size())
        m_HasFailed = true;
}

int HtmlPages::classOf(QRgb color)
{
    const auto found = m_Classes.constFind(color);
    return found != m_Classes.constEnd() ? *found : *m_Classes.insert(color, int(m_Classes.size()));
}

void HtmlPages::beginPage(const Page &page)
{
    add("<section>\n");
    if (m_Plan.layout.pages() > 1)
        add("<h2>" + markupText(m_Plan.pageText(page.number)) + "</h2>\n");
}

void HtmlPages::beginPart(const PagePart &part)
{
    add("<table>\n<caption>" +
        markupText(tr("Columns %1 to %2").arg(part.colBegin + 1).arg(part.colEnd)) +
        "</caption>\n<tbody>\n");
    if (!m_Plan.order.hasRuler)
        return;
    // Numbers of columns tell nothing to whoever hears them in front of the rows.
    add("<tr class=\"ruler\" aria-hidden=\"true\">" +
        QByteArray(m_Plan.order.hasNames ? "<td></td>" : "") + "<td class=\"s\">" +
        markupText(rulerText(part.colBegin, part.colEnd)) + "</td>" +
        (m_Plan.order.hasNumbers ? "<td></td>" : "") + "</tr>\n");
}

void HtmlPages::addRow(const PagePart &, const PageRow &row)
{
    QByteArray line = "<tr>";
    if (m_Plan.order.hasNames)
        line += "<th scope=\"row\">" + markupText(row.name) + "</th>";
    line += "<td class=\"s\">";
    for (std::size_t begin = 0, end = 0; begin < row.cells.size(); begin = end) {
        const QRgb ground = m_Plan.order.hasColors ? groundOf(row.cells[begin]) : kWhiteGround;
        QString letters;
        for (; end < row.cells.size() &&
               (!m_Plan.order.hasColors || groundOf(row.cells[end]) == ground);
             ++end)
            letters += QLatin1Char(letterOf(row.cells[end]));
        line += ground == kWhiteGround ? markupText(letters)
                                       : "<span class=\"c" + QByteArray::number(classOf(ground)) +
                                             "\">" + markupText(letters) + "</span>";
    }
    line += "</td>";
    if (m_Plan.order.hasNumbers)
        line += "<td class=\"e\">" + markupText(row.number) + "</td>";
    add(line + "</tr>\n");
}

void HtmlPages::addTracks(const PagePart &part, const ColumnOfTrack &columns)
{
    const unsigned long count = part.colEnd - part.colBegin;
    for (const Track track : m_Plan.order.tracks) {
        const double height = trackHeight(m_Plan.measures, track);
        const QByteArray name = markupText(trackName(track));
        add("<tr class=\"t\">" +
            (m_Plan.order.hasNames ? "<th scope=\"row\">" + name + "</th>" : QByteArray()) +
            "<td class=\"s\"><svg role=\"img\" aria-label=\"" + name +
            "\" preserveAspectRatio=\"none\" viewBox=\"0 0 " +
            markupNumber(double(count) * m_Plan.measures.cellWidth * kShapesOfPoint) + ' ' +
            markupNumber(height * kShapesOfPoint) + "\" style=\"width:calc(" +
            QByteArray::number(qulonglong(count)) + " * (1ch + " + kSpacing + "));height:" +
            markupNumber(height) + "pt\">" + svgOfTrack(m_Plan, part, track, columns) +
            "</svg></td>" + (m_Plan.order.hasNumbers ? "<td></td>" : "") + "</tr>\n");
    }
}

void HtmlPages::addLine(const PagePart &, std::size_t place, const std::string &text)
{
    add("<tr class=\"t\">" +
        (m_Plan.order.hasNames
             ? "<th scope=\"row\">" + markupText(m_Plan.order.lines[place].name) + "</th>"
             : QByteArray()) +
        "<td class=\"s line\">" + markupText(QString::fromLatin1(text)) + "</td>" +
        (m_Plan.order.hasNumbers ? "<td></td>" : "") + "</tr>\n");
}

void HtmlPages::endPart(const PagePart &)
{
    add("</tbody>\n</table>\n");
}

void HtmlPages::endPage(const Page &)
{
    add("</section>\n");
}

QByteArray HtmlPages::head() const
{
    const QByteArray title = markupText(m_Plan.order.title);
    QByteArray text =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n<title>" + title +
        "</title>\n<style>\n"
        "body { font-family: sans-serif; color: #000; background: #fff; }\n"
        "section { break-after: page; }\n"
        "table { border-collapse: collapse; margin: 0 0 1em; font: " +
        markupNumber(m_Plan.order.fontSize) +
        "pt 'DejaVu Sans Mono', Menlo, Consolas, monospace; }\n"
        "caption { text-align: left; font-family: sans-serif; color: #595959; }\n"
        "th, td { padding: 0; }\n"
        "th { font-weight: normal; text-align: left; padding-right: 1em; white-space: pre; }\n"
        ".s { white-space: pre; letter-spacing: " +
        kSpacing +
        "; }\n"
        ".e { padding-left: 1em; text-align: right; }\n"
        ".ruler td, .e, .t th, .line { color: #595959; }\n"
        ".t svg { display: block; margin-top: 0.3em; }\n"
        "span, svg { print-color-adjust: exact; -webkit-print-color-adjust: exact; }\n";
    std::map<int, QRgb> colors;
    for (auto each = m_Classes.begin(); each != m_Classes.end(); ++each)
        colors.emplace(each.value(), each.key());
    for (const auto &[number, color] : colors)
        text += ".c" + QByteArray::number(number) + " { background: " + markupColor(color) + ';' +
                (hasWhiteLetter(color) ? " color: #fff;" : "") + " }\n";
    return text + "</style>\n</head>\n<body>\n<h1>" + title + "</h1>\n";
}

bool HtmlPages::finish(std::chrono::microseconds)
{
    if (m_HasFailed)
        return true;
    if (!m_HasHead) {
        m_HasHead = true;
        m_HasFailed = !m_Body.flush() || !m_Body.seek(0);
        m_Device.write(head());
        return m_HasFailed;
    }
    if (const QByteArray part = m_Body.read(kCopiedAtOnce); !part.isEmpty()) {
        m_HasFailed = m_Device.write(part) != part.size();
        return m_HasFailed;
    }
    m_Device.write("</body>\n</html>\n");
    return true;
}

} // namespace companion
