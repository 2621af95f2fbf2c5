// SPDX-License-Identifier: GPL-3.0-or-later
#include "PageFileRun.h"
#include "PagesFixture.h"
#include "support/PrintedFile.h"

#include <QImage>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <csignal>
#include <map>
#include <sys/resource.h>

namespace PageFilesTest {

using companion::PageFileRun;
using companion::PageOrder;
using companion::PagePlan;
using companion::Track;

// As a full disk does.
class NoRoom
{
public:
    explicit NoRoom(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_Before);
        const rlimit limit{bytes, m_Before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
        m_Handler = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~NoRoom()
    {
        setrlimit(RLIMIT_FSIZE, &m_Before);
        std::signal(SIGXFSZ, m_Handler);
    }
    NoRoom(const NoRoom &) = delete;
    NoRoom &operator=(const NoRoom &) = delete;

private:
    rlimit m_Before{};
    void (*m_Handler)(int) = nullptr;
};

class PageFiles : public PagesFixture
{
protected:
    PageFiles() : m_Shown(randomRows(30, 170)) { paint(m_Shown); }

    PageOrder order() const
    {
        PageOrder wanted = orderOfAll(m_Shown);
        wanted.paper = {420, 595};
        return wanted;
    }
    // A picture of an upper left corner of a cell, of points a pixel.
    static QRgb cornerOf(const QImage &image, const PagePlan &plan, const Recording::Line &line,
                         std::size_t i, double scale)
    {
        const double x = plan.layout.cellsLeft() + (double(i) + 0.1) * plan.measures.cellWidth;
        const double y =
            plan.layout.rowTop(line.part, line.place) + 0.08 * plan.measures.lineHeight;
        return image.pixel(int(x * scale), int(y * scale));
    }
    static int farthest(QRgb one, QRgb other)
    {
        return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                         std::abs(qBlue(one) - qBlue(other))});
    }
    // Of all elements of the name and class, in their order.
    static QStringList textsOf(const QByteArray &file, const QString &element, const QString &kind)
    {
        QXmlStreamReader in(file);
        QStringList texts;
        while (!in.atEnd()) {
            in.readNext();
            if (in.isStartElement() && in.name() == element &&
                (kind.isEmpty() || in.attributes().value("class") == kind))
                texts << in.readElementText(QXmlStreamReader::IncludeChildElements);
        }
        EXPECT_FALSE(in.hasError())
            << in.errorString().toStdString() << " in line " << in.lineNumber();
        return texts;
    }
    static QStringList letters(const Recording &pages)
    {
        QStringList lines;
        for (const Recording::Line &line : pages.lines)
            lines << QString::fromStdString(line.letters);
        return lines;
    }

    TAMBO::Alignment &m_Shown;
};

// ---- PDF

TEST_F(PageFiles, PdfHasEveryRowAsTextOnItsPage)
{
    PageOrder wanted = order();
    wanted.tracks = {Track::Conservation, Track::Logo};
    const PagePlan plan(wanted, m_Shown);
    ASSERT_EQ(write(m_Shown, plan, path("out.pdf")), "");
    const PrintedFile pdf(path("out.pdf"));
    const Recording pages = recorded(m_Shown, plan);
    ASSERT_GT(pages.pages, 2U);
    EXPECT_EQ(pdf.pageCount(), int(pages.pages));
    EXPECT_EQ(pdf.title(), "random");
    EXPECT_EQ(pdf.pageSize(), QSizeF(420, 595));
    EXPECT_TRUE(pdf.embedsItsFonts());
    std::vector<QString> texts;
    for (std::size_t page = 0; page < pages.pages; ++page) {
        texts.push_back(pdf.text(int(page)));
        EXPECT_TRUE(
            texts.back().contains(QStringLiteral("Page %1 of %2").arg(page + 1).arg(pages.pages)));
        EXPECT_TRUE(texts.back().startsWith("random"));
    }
    std::vector<qsizetype> at(pages.pages, 0);
    for (const Recording::Line &line : pages.lines) {
        // In this order, and each behind the one before.
        for (const std::string &part : {line.name, line.letters, line.number}) {
            const qsizetype found =
                texts[line.page].indexOf(QString::fromStdString(part), at[line.page]);
            ASSERT_GE(found, 0) << part << " on page " << line.page << ":\n"
                                << texts[line.page].toStdString();
            at[line.page] = found;
        }
    }
}

TEST_F(PageFiles, PdfHasTheColorsOfTheCells)
{
    const PagePlan plan(order(), m_Shown);
    ASSERT_EQ(write(m_Shown, plan, path("out.pdf")), "");
    const PrintedFile pdf(path("out.pdf"));
    constexpr int kScale = 4;
    std::size_t wrong = 0;
    std::size_t cells = 0;
    const Recording pages = recorded(m_Shown, plan);
    std::map<std::size_t, QImage> images;
    for (const Recording::Line &line : pages.lines) {
        if (!images.contains(line.page))
            images[line.page] = pdf.image(int(line.page), kScale);
        for (std::size_t i = 0; i < line.grounds.size(); ++i, ++cells)
            wrong +=
                farthest(cornerOf(images[line.page], plan, line, i, kScale), line.grounds[i]) > 1;
    }
    EXPECT_EQ(cells, 30U * 170U);
    EXPECT_EQ(wrong, 0U);
}

TEST_F(PageFiles, WithoutColorsPagesAreBlackOnWhite)
{
    PageOrder wanted = order();
    wanted.hasColors = false;
    const PagePlan plan(wanted, m_Shown);
    ASSERT_EQ(write(m_Shown, plan, path("out.png"), 96), "");
    const QImage image(path("out.png"));
    int colored = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            colored += qRed(pixel) != qGreen(pixel) || qGreen(pixel) != qBlue(pixel);
        }
    EXPECT_EQ(colored, 0);
}

TEST_F(PageFiles, ASheetThatIsTooLongForPdfIsRefused)
{
    TAMBO::Alignment &tall = large(1500, 10);
    PageOrder wanted = orderOfAll(tall);
    wanted.hasBreaks = false;
    const QString error = write(tall, PagePlan(wanted, tall), path("out.pdf"));
    EXPECT_TRUE(error.contains("a page of PDF may have 508 cm. Choose page breaks"))
        << error.toStdString();
    EXPECT_EQ(files(), QStringList());
    EXPECT_EQ(write(tall, PagePlan(wanted, tall), path("out.svg")), "");
}

// ---- SVG

TEST_F(PageFiles, SvgHasEveryRowAsTextInOrder)
{
    PageOrder wanted = order();
    wanted.tracks = {Track::Occupancy, Track::Logo};
    const PagePlan plan(wanted, m_Shown);
    ASSERT_EQ(write(m_Shown, plan, path("out.svg")), "");
    const QByteArray svg = read(path("out.svg"));
    const Recording pages = recorded(m_Shown, plan);
    EXPECT_EQ(textsOf(svg, "text", "row"), letters(pages));
    QStringList names;
    QStringList ends;
    for (const Recording::Line &line : pages.lines) {
        names << QString::fromStdString(line.name);
        if (!line.number.empty())
            ends << QString::fromStdString(line.number);
    }
    EXPECT_EQ(textsOf(svg, "text", "name"), names);
    EXPECT_EQ(textsOf(svg, "text", "end"), ends);
    EXPECT_EQ(textsOf(svg, "text", "title").size(), qsizetype(pages.pages));
    EXPECT_EQ(textsOf(svg, "text", "number").front(),
              QStringLiteral("Page 1 of %1").arg(pages.pages));
    EXPECT_EQ(textsOf(svg, "g", "values").size(), qsizetype(2 * pages.trackParts));
    EXPECT_FALSE(svg.contains("NaN"));
}

TEST_F(PageFiles, SvgHasARectangleOfTheColorBehindEachCell)
{
    PageOrder wanted = order();
    wanted.hasBreaks = false;
    const PagePlan plan(wanted, m_Shown);
    ASSERT_EQ(write(m_Shown, plan, path("out.svg")), "");
    // By line, from left to right.
    std::map<double, std::map<double, std::pair<double, QRgb>>> rects;
    QXmlStreamReader in(read(path("out.svg")));
    while (!in.atEnd())
        if (in.readNext() == QXmlStreamReader::StartElement && in.name() == u"rect") {
            const auto number = [&in](const char *name) {
                return in.attributes().value(QLatin1String(name)).toDouble();
            };
            rects[number("y")][number("x")] = {
                number("width"), QColor(in.attributes().value("fill").toString()).rgb()};
        }
    std::size_t wrong = 0;
    for (const Recording::Line &line : recorded(m_Shown, plan).lines) {
        // The numbers of the file are rounded.
        const auto nearest = rects.lower_bound(plan.layout.rowTop(line.part, line.place) - 0.01);
        ASSERT_NE(nearest, rects.end());
        const auto &row = nearest->second;
        for (std::size_t i = 0; i < line.grounds.size(); ++i) {
            const double middle =
                plan.layout.cellsLeft() + (double(i) + 0.5) * plan.measures.cellWidth;
            auto found = row.upper_bound(middle);
            QRgb color = companion::kWhiteGround;
            if (found != row.begin() && middle < (--found)->first + found->second.first)
                color = found->second.second;
            wrong += color != line.grounds[i];
        }
    }
    EXPECT_EQ(wrong, 0U);
}

// ---- HTML

TEST_F(PageFiles, HtmlHasTablesWithEveryRowAndNoScript)
{
    PageOrder wanted = order();
    wanted.tracks = {Track::Conservation};
    const PagePlan plan(wanted, m_Shown);
    ASSERT_EQ(write(m_Shown, plan, path("out.html")), "");
    const QByteArray html = read(path("out.html"));
    const Recording pages = recorded(m_Shown, plan);
    QStringList rows;
    QStringList names;
    for (const QString &text : textsOf(html, "td", "s"))
        if (!text.isEmpty() && !text.contains(u' '))
            rows << text;
    EXPECT_EQ(rows, letters(pages));
    for (const Recording::Line &line : pages.lines)
        names << QString::fromStdString(line.name);
    QStringList heads = textsOf(html, "th", "");
    heads.removeAll("Conservation");
    EXPECT_EQ(heads, names);
    EXPECT_EQ(textsOf(html, "caption", "").front(),
              QStringLiteral("Columns 1 to %1").arg(plan.layout.columnsOfBlock()));
    EXPECT_EQ(textsOf(html, "h2", "").size(), qsizetype(pages.pages));
    EXPECT_FALSE(html.toLower().contains("<script"));
    EXPECT_FALSE(html.contains("src="));
}

TEST_F(PageFiles, HtmlHasTheColorsOfTheCellsAsClasses)
{
    const PagePlan plan(order(), m_Shown);
    ASSERT_EQ(write(m_Shown, plan, path("out.htm")), "");
    const QByteArray html = read(path("out.htm"));
    std::map<QString, QRgb> colors;
    const QRegularExpression rule(R"(\.(c\d+) \{ background: (#\w+);)");
    for (auto each = rule.globalMatch(QString::fromUtf8(html)); each.hasNext();) {
        const QRegularExpressionMatch match = each.next();
        colors[match.captured(1)] = QColor(match.captured(2)).rgb();
    }
    std::vector<std::vector<QRgb>> rows;
    QXmlStreamReader in(html);
    bool isRow = false;
    QString kind;
    while (!in.atEnd()) {
        in.readNext();
        if (in.isStartElement() && in.name() == u"td") {
            isRow = in.attributes().value("class") == u"s";
            if (isRow)
                rows.emplace_back();
        }
        if (in.isStartElement() && in.name() == u"span")
            kind = in.attributes().value("class").toString();
        if (in.isCharacters() && isRow)
            rows.back().insert(rows.back().end(), std::size_t(in.text().size()),
                               kind.isEmpty() ? companion::kWhiteGround : colors.at(kind));
        if (in.isEndElement() && in.name() == u"span")
            kind.clear();
        if (in.isEndElement() && in.name() == u"td")
            isRow = false;
    }
    const Recording pages = recorded(m_Shown, plan);
    std::size_t row = 0;
    for (std::size_t i = 0; i < pages.lines.size(); ++i, ++row) {
        // The ruler of the block.
        if (i == 0 || pages.lines[i].part.colBegin != pages.lines[i - 1].part.colBegin)
            ++row;
        ASSERT_EQ(rows.at(row), pages.lines[i].grounds) << i;
    }
}

// ---- PNG

TEST_F(PageFiles, PngHasTheColorsOfTheCellsAtTheChosenResolution)
{
    const PagePlan plan(order(), m_Shown);
    for (const int dots : {96, 150, 301}) {
        ASSERT_EQ(write(m_Shown, plan, path("out.png"), dots), "");
        const QImage image(path("out.png"));
        const double scale = dots / 72.0;
        const Recording pages = recorded(m_Shown, plan);
        EXPECT_EQ(image.width(), qRound(420 * scale));
        EXPECT_EQ(image.height(), qRound(595 * scale) * int(pages.pages));
        EXPECT_NEAR(image.dotsPerMeterX(), dots / 0.0254, 1);
        std::size_t wrong = 0;
        for (const Recording::Line &line : pages.lines)
            for (std::size_t i = 0; i < line.grounds.size(); ++i) {
                const double left = plan.layout.cellsLeft() + double(i) * plan.measures.cellWidth;
                const double top = plan.layout.rowTop(line.part, line.place);
                const int pageTop = qRound(595 * scale) * int(line.page);
                wrong += image.pixel(qRound(left * scale), pageTop + qRound(top * scale)) !=
                         line.grounds[i];
            }
        EXPECT_EQ(wrong, 0U) << dots;
    }
}

TEST_F(PageFiles, APictureThatIsTooLargeIsRefusedWithTheLimitAndWhatToDo)
{
    const PagePlan plan(order(), m_Shown);
    const QString error = write(m_Shown, plan, path("out.png"), 5000);
    EXPECT_TRUE(error.contains("up to 32,767 on a side and 100,000,000 in all"))
        << error.toStdString();
    EXPECT_TRUE(error.contains("Choose a lower resolution"));
    EXPECT_EQ(files(), QStringList());
}

// ---- Names that look like markup

TEST_F(PageFiles, TitlesAndNamesAreEscaped)
{
    const std::string odd = "<b>&\"x\"</b>";
    TAMBO::Alignment &shown = alignment({"AC-DE", "ACGDE", "<&-DE"}, "a <title> & more",
                                        {odd, "tab\x01\x7f", "Größe 中"});
    const PagePlan plan(orderOfAll(shown), shown);
    for (const QString &file : {QStringLiteral("o.svg"), QStringLiteral("o.html")}) {
        ASSERT_EQ(write(shown, plan, path(file)), "");
        const QByteArray text = read(path(file));
        EXPECT_EQ(textsOf(text, "title", "").front(), "a <title> & more");
        const QStringList names =
            file.endsWith("svg") ? textsOf(text, "text", "name") : textsOf(text, "th", "");
        EXPECT_EQ(names, QStringList({QString::fromStdString(odd), QStringLiteral("tab��"),
                                      QStringLiteral("Größe 中")}));
    }
}

TEST_F(PageFiles, PagesMayHaveNeitherNamesNorRulerNorNumbers)
{
    PageOrder wanted = order();
    wanted.hasNames = wanted.hasRuler = wanted.hasNumbers = false;
    const PagePlan plan(wanted, m_Shown);
    ASSERT_EQ(write(m_Shown, plan, path("out.svg")), "");
    const QByteArray svg = read(path("out.svg"));
    for (const char *const kind : {"name", "ruler", "end"})
        EXPECT_EQ(textsOf(svg, "text", kind), QStringList()) << kind;
    EXPECT_EQ(textsOf(svg, "text", "row"), letters(recorded(m_Shown, plan)));
    ASSERT_EQ(write(m_Shown, plan, path("out.html")), "");
    EXPECT_EQ(textsOf(read(path("out.html")), "td", "s"), letters(recorded(m_Shown, plan)));
}

TEST_F(PageFiles, LinesOfCharactersStandBelowTheLastRowsAsText)
{
    TAMBO::AlignmentRecord record;
    record.name = "lines";
    for (const char *const name : {"first", "second"}) {
        TAMBO::RowRecord row;
        row.name = name;
        row.sequence.append("ACDEFGHIKLMNPQRSTVWY");
        record.rows.push_back(std::move(row));
    }
    record.columnAnnotations = {{"SS_cons", "HHHHH.EEEE--TT......"},
                                {"RF", "xxxxx.xxxxxxxxxxxxxx"}};
    TAMBO::Alignment *shown = nullptr;
    {
        const DataPointBase guard(nullptr, Publisher::Add);
        shown = TAMBO::ObjectFactory::adopt(std::move(record));
    }
    PageOrder wanted = orderOfAll(*shown);
    wanted.mostColumns = 7;
    wanted.lines = companion::lineTracks(*shown, {});
    ASSERT_EQ(wanted.lines.size(), 2U);
    const PagePlan plan(wanted, *shown);
    const Recording pages = recorded(*shown, plan);
    QStringList expected;
    for (std::size_t i = 0; i < 2; ++i)
        EXPECT_EQ(pages.notes[i], companion::lineText(*shown, wanted.lines[i], 0, 20));
    for (std::size_t begin = 0; begin < 20; begin += 7)
        for (const std::string &note : pages.notes)
            expected << QString::fromStdString(note.substr(begin, 7));

    ASSERT_EQ(write(*shown, plan, path("out.svg")), "");
    EXPECT_EQ(textsOf(read(path("out.svg")), "text", "line"), expected);
    EXPECT_EQ(textsOf(read(path("out.svg")), "text", "linename").mid(0, 2),
              QStringList({"SS_cons", "RF"}));
    ASSERT_EQ(write(*shown, plan, path("out.html")), "");
    EXPECT_EQ(textsOf(read(path("out.html")), "td", "s line"), expected);
    ASSERT_EQ(write(*shown, plan, path("out.pdf")), "");
    const QString text = PrintedFile(path("out.pdf")).text(0);
    for (const QString &line : expected)
        EXPECT_TRUE(text.contains(line.trimmed())) << line.toStdString();
    ASSERT_EQ(write(*shown, plan, path("out.png")), "");
}

// ---- What goes wrong

const QStringList kAllFiles = {"out.pdf", "out.svg", "out.png", "out.html"};

TEST_F(PageFiles, WhatIsGivenUpLeavesTheFileAsItWas)
{
    const PagePlan plan(order(), m_Shown);
    for (const QString &file : kAllFiles) {
        put(path(file), "old");
        for (const int slices : {0, 1, 20, 100}) {
            PageFileRun run(m_Shown, plan, path(file), 72);
            for (int i = 0; i < slices && run.goOn(kNoTime); ++i) {
            }
        }
        EXPECT_EQ(read(path(file)), "old");
    }
    EXPECT_EQ(files().size(), kAllFiles.size());
}

TEST_F(PageFiles, PngThatIsGivenUpWhileItIsPackedLeavesTheFileAsItWas)
{
    const PagePlan plan(order(), m_Shown);
    put(path("out.png"), "old");
    {
        PageFileRun run(m_Shown, plan, path("out.png"), 600);
        while (run.done() < 1)
            ASSERT_TRUE(run.goOn(kSomeTime));
        run.goOn(kNoTime);
    }
    EXPECT_EQ(read(path("out.png")), "old");
    EXPECT_EQ(files().size(), 1);
}

TEST_F(PageFiles, AFullDiskIsToldAndLeavesTheFileAsItWas)
{
    const PagePlan plan(order(), m_Shown);
    for (const QString &file : kAllFiles) {
        put(path(file), "old");
        QString error;
        {
            const NoRoom full(2000);
            error = write(m_Shown, plan, path(file));
        }
        EXPECT_TRUE(error.startsWith(path(file) + " was not written: ")) << error.toStdString();
        EXPECT_EQ(read(path(file)), "old");
    }
    EXPECT_EQ(files().size(), kAllFiles.size());
}

TEST_F(PageFiles, WrongTargetsAreTold)
{
    const PagePlan plan(order(), m_Shown);
    EXPECT_EQ(write(m_Shown, plan, path("none/out.pdf")),
              path("none/out.pdf") + " was not written: No such file or directory.");
    ASSERT_TRUE(QDir(m_Folder.path()).mkdir("folder.pdf"));
    EXPECT_EQ(write(m_Shown, plan, path("folder.pdf")),
              path("folder.pdf") + " was not written: there is a folder of that name.");
    EXPECT_EQ(write(m_Shown, plan, path("out.doc")),
              path("out.doc") +
                  " was not written: the ending of the name is none of .pdf, .svg, .png and "
                  ".html.");
    EXPECT_EQ(files(), QStringList("folder.pdf"));
}

TEST_F(PageFiles, AnAlignmentThatIsChangedMeanwhileIsNotWritten)
{
    const PagePlan plan(order(), m_Shown);
    PageFileRun run(m_Shown, plan, path("out.pdf"), 72);
    run.goOn(kNoTime);
    {
        DataPoint<TAMBO::Alignment> change(nullptr, &m_Shown);
        m_Shown.removeRow(0);
    }
    EXPECT_FALSE(run.goOn(kNoTime));
    EXPECT_EQ(run.error(),
              path("out.pdf") + " was not written: the alignment has been changed meanwhile.");
    EXPECT_EQ(files(), QStringList());
}

} // namespace PageFilesTest
