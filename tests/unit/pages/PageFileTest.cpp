// SPDX-License-Identifier: GPL-3.0-or-later
// PDF pages as files of PDF and PostScript.
#include "PageFile.h"

#include "support/ExpectMessage.h"
#include "support/PrintedFile.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>

#include <gtest/gtest.h>

namespace PageFileTest {

class PageFileTest : public testing::Test
{
protected:
    QString path(const QString &name) const { return m_Folder.filePath(name); }
    // Pages with their number, as words, and a red square.
    QString pages(int count, const QPageLayout::Orientation orientation = QPageLayout::Portrait,
                  const QFont &font = QFont("DejaVu Sans Mono", 20))
    {
        QPdfWriter writer(path("pages.pdf"));
        writer.setResolution(72);
        writer.setPageLayout(
            QPageLayout(QPageSize(QPageSize::A4), orientation, QMarginsF(0, 0, 0, 0)));
        QPainter painter(&writer);
        painter.setFont(font);
        for (int number = 1; number <= count; ++number) {
            if (number > 1)
                writer.newPage();
            painter.drawText(100, 100, QStringLiteral("Page no. %1, Größe Ω").arg(number));
            painter.fillRect(QRect(300, 300, 50, 50), QColor(255, 0, 0));
        }
        return path("pages.pdf");
    }
    QString write(const QString &name, const QByteArray &bytes)
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return path(name);
    }
    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_Folder;
};

TEST_F(PageFileTest, PdfIsTakenOverAsItIs)
{
    const QString pdf = pages(2);
    EXPECT_EQ(Pages::writePageFile(pdf, {path("out.pdf"), {}, {}}), "");
    EXPECT_EQ(read(path("out.pdf")), read(pdf));
}

TEST_F(PageFileTest, PostScriptShowsTheSamePages)
{
    const QString pdf = pages(3);
    EXPECT_EQ(Pages::writePageFile(pdf, {path("out.ps"), "three pages", {}}), "");
    const PrintedFile wanted(pdf);
    const PrintedFile made(path("out.ps"));
    ASSERT_TRUE(made.isPostScript());
    ASSERT_EQ(made.pageCount(), 3);
    EXPECT_EQ(made.title(), "three pages");
    EXPECT_TRUE(made.embedsItsFonts());
    EXPECT_FALSE(made.bytes().contains("/FontType 3 def")) << "outlines, not pictures of letters";
    for (int page = 0; page < 3; ++page) {
        EXPECT_EQ(made.text(page), wanted.text(page));
        EXPECT_TRUE(made.text(page).contains(QStringLiteral("Page no. %1, Größe Ω").arg(page + 1)))
            << made.text(page).toStdString();
        EXPECT_EQ(made.image(page).pixelColor(325, 325), QColor(255, 0, 0));
        EXPECT_EQ(made.image(page).pixelColor(290, 325), QColor(Qt::white));
    }
}

TEST_F(PageFileTest, TextIsFoundInThePostScriptItself)
{
    EXPECT_EQ(Pages::writePageFile(pages(2), {path("out.ps"), {}, {}}), "");
    const QString text = PrintedFile(path("out.ps")).foundText().simplified();
    EXPECT_TRUE(text.startsWith(QStringLiteral("Page no. 1, Größe Ω"))) << text.toStdString();
    EXPECT_TRUE(text.endsWith(QStringLiteral("Page no. 2, Größe Ω"))) << text.toStdString();
}

TEST_F(PageFileTest, TextIsFoundWhateverTheFont)
{
    for (const char *family : {"DejaVu Serif", "DejaVu Sans", "Nimbus Mono PS", "Nimbus Roman"}) {
        const QString pdf = pages(1, QPageLayout::Portrait, QFont(family, 14));
        EXPECT_EQ(Pages::writePageFile(pdf, {path("out.ps"), {}, {}}), "");
        EXPECT_EQ(PrintedFile(path("out.ps")).text(0), PrintedFile(pdf).text(0)) << family;
    }
}

TEST_F(PageFileTest, EachPageHasItsOwnSize)
{
    QPdfWriter writer(path("pages.pdf"));
    QPainter painter;
    for (const QPageLayout::Orientation side : {QPageLayout::Portrait, QPageLayout::Landscape}) {
        writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A5), side, QMarginsF()));
        if (!painter.isActive())
            painter.begin(&writer);
        else
            writer.newPage();
        painter.drawText(100, 100, "text");
    }
    painter.end();
    EXPECT_EQ(Pages::writePageFile(path("pages.pdf"), {path("out.ps"), {}, {}}), "");
    const PrintedFile made(path("out.ps"));
    ASSERT_EQ(made.pageCount(), 2);
    const QImage upright = made.image(0);
    EXPECT_LT(upright.width(), upright.height());
    EXPECT_EQ(made.image(1).size(), upright.size().transposed());
    EXPECT_TRUE(made.text(1).contains("text"));
}

TEST_F(PageFileTest, ATitleIsOneLineOfLimitedLength)
{
    const QString pdf = pages(1);
    for (const QString &title : {QStringLiteral("two\nlines"), QStringLiteral("a (b) \\ %%EOF"),
                                 QString(400, QChar(0x00e9)), QStringLiteral("Größe")}) {
        EXPECT_EQ(Pages::writePageFile(pdf, {path("out.ps"), title, {}}), "");
        const QByteArray bytes = read(path("out.ps"));
        const qsizetype at = bytes.indexOf("\n%%Title: ") + 1;
        const QByteArray line = bytes.sliced(at, bytes.indexOf('\n', at) - at);
        EXPECT_LE(line.size(), 255);
        EXPECT_TRUE(("%%Title: " + title.simplified()).startsWith(QString::fromUtf8(line)));
        EXPECT_GE(line.size(), std::min<qsizetype>(254, title.simplified().size()));
        EXPECT_EQ(PrintedFile(path("out.ps")).pageCount(), 1);
    }
}

TEST_F(PageFileTest, ATargetThatTakesNothingIsAFailure)
{
    QBuffer closed;
    ASSERT_TRUE(closed.open(QIODevice::ReadOnly));
    const MessageRecorder quiet;
    EXPECT_EQ(Pages::writePostScript(read(pages(1)), {}, {}, closed), "the conversion failed");
}

TEST_F(PageFileTest, PagesThatLieOnTheirSideStayUpright)
{
    const QString pdf = pages(1, QPageLayout::Landscape);
    EXPECT_EQ(Pages::writePageFile(pdf, {path("out.ps"), {}, {}}), "");
    const PrintedFile made(path("out.ps"));
    EXPECT_GT(made.pageSize().width(), made.pageSize().height());
    EXPECT_EQ(made.image(0).pixelColor(325, 325), QColor(255, 0, 0));
    EXPECT_TRUE(made.text(0).contains("Page no. 1"));
}

TEST_F(PageFileTest, ProgressIsToldPageByPage)
{
    std::vector<std::pair<int, int>> told;
    const QString error = Pages::writePageFile(
        pages(3),
        {path("out.ps"), {}, [&](int page, int count) { told.emplace_back(page, count); }});
    EXPECT_EQ(error, "");
    EXPECT_EQ(told, (std::vector<std::pair<int, int>>{{1, 3}, {2, 3}, {3, 3}}));
}

TEST_F(PageFileTest, AnOldFileIsReplaced)
{
    const QString pdf = pages(1);
    write("out.ps", "old");
    EXPECT_EQ(Pages::writePageFile(pdf, {path("out.ps"), {}, {}}), "");
    EXPECT_TRUE(PrintedFile(path("out.ps")).isPostScript());
    EXPECT_EQ(QDir(m_Folder.path()).entryList(QDir::Files), (QStringList{"out.ps", "pages.pdf"}));
}

TEST_F(PageFileTest, PagesThatBrokeOffAreNotTaken)
{
    const QByteArray whole = read(pages(2));
    const QString half = write("half.pdf", whole.first(whole.size() / 2));
    EXPECT_TRUE(Pages::isCompletePdf(path("pages.pdf")));
    EXPECT_FALSE(Pages::isCompletePdf(half));
    EXPECT_FALSE(Pages::isCompletePdf(path("none.pdf")));
    EXPECT_FALSE(Pages::isCompletePdf(write("empty.pdf", "")));
    for (const QString target : {"out.ps", "out.pdf"}) {
        write(target, "old");
        EXPECT_EQ(Pages::writePageFile(half, {path(target), {}, {}}),
                  path(target) +
                      " was not written: the pages broke off; is there room on the disk?");
        EXPECT_EQ(read(path(target)), "old");
    }
}

TEST_F(PageFileTest, WhatIsNoPdfIsNotConverted)
{
    const QString rubbish = write("rubbish.pdf", "rubbish\n%%EOF\n");
    EXPECT_EQ(Pages::writePageFile(rubbish, {path("out.ps"), {}, {}}),
              path("out.ps") + " was not written: the pages cannot be read back");
    EXPECT_FALSE(QFileInfo::exists(path("out.ps")));
}

TEST_F(PageFileTest, APlaceThatCannotBeWrittenIsTold)
{
    const QString pdf = pages(1);
    for (const QString target : {"none/out.ps", "none/out.pdf"}) {
        const QString error = Pages::writePageFile(pdf, {path(target), {}, {}});
        EXPECT_TRUE(error.startsWith(path(target) + " was not written: ")) << error.toStdString();
        EXPECT_FALSE(error.contains('\n'));
    }
    ASSERT_TRUE(QDir(m_Folder.path()).mkdir("folder.ps"));
    EXPECT_NE(Pages::writePageFile(pdf, {path("folder.ps"), {}, {}}), "");
}

} // namespace PageFileTest
