// SPDX-License-Identifier: GPL-3.0-or-later
// `tambo print` as scripts call it: without a screen, judged by its files and exit status.
#include "ProgramFixture.h"
#include "support/PrintedFile.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QPainter>
#include <QSvgRenderer>

#include <gtest/gtest.h>

namespace PrintProgramTest {

class PrintProgram : public ProgramFixture
{
protected:
    // output stands in the folder of the test.
    Finished print(const QString &file, const QString &output, const QString &style = "bw",
                   const QStringList &more = {})
    {
        return run(QStringList{"print", file, "--style", style, "--output", path(output)} + more);
    }
    static void expectDone(const Finished &call)
    {
        EXPECT_EQ(call.status, 0);
        EXPECT_EQ(call.output, "");
        EXPECT_EQ(call.errors, "");
    }
    static void expectRefused(const Finished &call, int status, const QByteArray &part)
    {
        EXPECT_EQ(call.status, status);
        EXPECT_EQ(call.output, "");
        EXPECT_EQ(call.errors.count('\n'), 1) << call.errors.toStdString();
        EXPECT_TRUE(call.errors.startsWith("tambo: ")) << call.errors.toStdString();
        EXPECT_TRUE(call.errors.contains(part)) << call.errors.toStdString();
    }
    QString path(const QString &name) const { return m_Folder.filePath(name); }
    QString small()
    {
        return write("small.fasta", ">first\nACDEFGHIKLMN\n>second\nAC-EFGHIKLMN\n");
    }
    // Two pages with the font of the settings.
    static QString family() { return SOURCE_DIR "/examples/serine_proteases.ali"; }
    QStringList files() const { return QDir(m_Folder.path()).entryList({"out*"}, QDir::Files); }
};

TEST_F(PrintProgram, PdfAndPostScriptShowTheAlignment)
{
    for (const QString output : {"out.pdf", "out.ps"}) {
        expectDone(print(family(), output));
        const PrintedFile file(path(output));
        EXPECT_EQ(file.isPostScript(), output == "out.ps");
        EXPECT_EQ(file.pageCount(), 2);
        EXPECT_EQ(file.title(), "serine_proteases");
        EXPECT_TRUE(file.embedsItsFonts());
        for (const QString name : {"1A0J_A", "1XXD_A", "221A"})
            EXPECT_TRUE(file.text(0).contains(name)) << output.toStdString();
        EXPECT_FALSE(file.text(1).contains("serine_proteases"));
    }
    EXPECT_EQ(files(), (QStringList{"out.pdf", "out.ps"}));
}

TEST_F(PrintProgram, StylesDiffer)
{
    const auto colorsOf = [&](const QString &style) {
        expectDone(print(family(), "out.pdf", style));
        const QImage page = PrintedFile(path("out.pdf")).image(0, 2);
        int colored = 0;
        for (int y = 0; y < page.height(); ++y)
            for (int x = 0; x < page.width(); ++x)
                colored += page.pixelColor(x, y).saturation() > 20 ? 1 : 0;
        return colored;
    };
    const int fat = colorsOf("fat");
    const int slim = colorsOf("slim");
    EXPECT_GT(fat, 2 * slim);
    EXPECT_GT(slim, 1000);
    EXPECT_EQ(colorsOf("bw"), 0);
}

TEST_F(PrintProgram, PicturesAreOneFilePerPage)
{
    expectDone(print(family(), "out.png", "fat"));
    expectDone(print(family(), "out.svg", "fat"));
    EXPECT_EQ(files(), (QStringList{"out-1.png", "out-1.svg", "out-2.png", "out-2.svg"}));
    const QImage first(path("out-1.png"));
    EXPECT_EQ(first.size(), QSize(1240, 1754));
    EXPECT_NE(first, QImage(path("out-2.png")));
}

TEST_F(PrintProgram, OnePageHasANumberToo)
{
    expectDone(print(small(), "out.b.PNG"));
    EXPECT_EQ(files(), QStringList{"out.b-1.PNG"});
    EXPECT_TRUE(read(path("out.b-1.PNG")).startsWith("\x89PNG"));
}

TEST_F(PrintProgram, PicturesShowThePagesOfThePdf)
{
    expectDone(print(family(), "out.pdf", "fat"));
    expectDone(print(family(), "out.svg", "fat"));
    const PrintedFile pages(path("out.pdf"));
    for (int page = 0; page < 2; ++page) {
        const QImage wanted = pages.image(page, 2).convertToFormat(QImage::Format_RGB32);
        QSvgRenderer drawing(path(QStringLiteral("out-%1.svg").arg(page + 1)));
        ASSERT_TRUE(drawing.isValid());
        QImage made(wanted.size(), QImage::Format_RGB32);
        made.fill(Qt::white);
        QPainter painter(&made);
        drawing.render(&painter);
        painter.end();
        double difference = 0;
        double ink = 0;
        for (int y = 0; y < made.height(); ++y) {
            for (int x = 0; x < made.width(); ++x) {
                difference += std::abs(qGray(made.pixel(x, y)) - qGray(wanted.pixel(x, y)));
                ink += 255 - qGray(wanted.pixel(x, y));
            }
        }
        // Two programs smooth edges in their own ways; another page would differ by all its ink.
        EXPECT_LT(difference, 0.2 * ink) << page;
    }
    EXPECT_LT(QFileInfo(path("out-1.svg")).size(), 1 << 20);
}

TEST_F(PrintProgram, SomeRowsAndColumnsArePrintedAlone)
{
    expectDone(print(family(), "out.pdf", "bw", {"--rows", "2,4-5", "--columns", "40-60"}));
    const PrintedFile file(path("out.pdf"));
    ASSERT_EQ(file.pageCount(), 1);
    EXPECT_EQ(file.title(), "serine_proteases");
    const QString text = file.text(0);
    for (const QString name : {"1ABI_H", "1AU8_A", "1PPF_E"})
        EXPECT_TRUE(text.contains(name)) << name.toStdString();
    EXPECT_FALSE(text.contains("1A0J_A"));
    expectRefused(print(family(), "out2.pdf", "bw", {"--rows", "2-7"}), 1,
                  "the alignment has 6 rows, and no row 7");
    expectRefused(print(family(), "out2.pdf", "bw", {"--columns", "999"}), 1, "303 columns");
    expectRefused(print(family(), "out2.pdf", "bw", {"--alignment", "2"}), 1,
                  "there is 1 alignment, and no number 2");
    EXPECT_EQ(files(), QStringList{"out.pdf"});
}

TEST_F(PrintProgram, SessionsArePrinted)
{
    const QString session = data("sessions/version-4.tambo");
    expectDone(print(session, "out.pdf", "fat", {"--rows", "2-3"}));
    const PrintedFile file(path("out.pdf"));
    EXPECT_EQ(file.title(), "renamed");
    EXPECT_TRUE(file.text(0).contains("5fd1"));
    EXPECT_FALSE(file.text(0).contains("trypsin"));
    expectRefused(print(write("bad.tambo", "nonsense"), "out2.pdf"), 1, "bad.tambo");
}

TEST_F(PrintProgram, TheFontIsTakenForThisRunOnly)
{
    expectDone(print(family(), "out.pdf"));
    EXPECT_EQ(PrintedFile(path("out.pdf")).pageCount(), 2);
    expectDone(print(family(), "out.pdf", "bw", {"--font", "DejaVu Sans,6"}));
    EXPECT_EQ(PrintedFile(path("out.pdf")).pageCount(), 1);
    expectDone(print(family(), "out.pdf"));
    EXPECT_EQ(PrintedFile(path("out.pdf")).pageCount(), 2);
}

TEST_F(PrintProgram, SecondaryStructureIsPrintedForThisRunOnly)
{
    const auto lengthOf = [&](const QStringList &more) {
        expectDone(print(family(), "out.pdf", "bw", more));
        return PrintedFile(path("out.pdf")).text(0).count('e');
    };
    const auto plain = lengthOf({});
    EXPECT_GT(lengthOf({"--sse"}), plain + 20);
    EXPECT_EQ(lengthOf({}), plain);
}

TEST_F(PrintProgram, SettingsPlacesAndRecentFilesOfTheUserStay)
{
    expectDone(print(small(), "out.pdf", "bw", {"--font", "DejaVu Sans,8", "--sse"}));
    QStringList settings;
    QDirIterator all(m_Folder.path(), {"*.ini"}, QDir::Files, QDirIterator::Subdirectories);
    while (all.hasNext())
        settings << all.next();
    EXPECT_EQ(settings, QStringList());
}

TEST_F(PrintProgram, GzippedFilesAndFilesWithOddNamesArePrinted)
{
    const QString odd = write("a b'ü.fasta", ">first\nACD\n>second\nA-D\n");
    expectDone(print(odd, "out ü.pdf"));
    EXPECT_TRUE(PrintedFile(path("out ü.pdf")).text(0).contains("second"));
}

TEST_F(PrintProgram, ABadFileIsNamedAndNothingIsWritten)
{
    expectRefused(print(write("bad.ali", ">P1;a\n\nAC#D*\n"), "out.pdf"), 1, "bad.ali:3: ");
    expectRefused(print(path("none.ali"), "out.pdf"), 1, "none.ali");
    expectRefused(print(write("one.fasta", ">a\nACD\n>b\nACDEF\n"), "out.pdf"), 1,
                  "holds no alignment");
    EXPECT_EQ(files(), QStringList());
}

TEST_F(PrintProgram, TooManySequencesAreRefusedWithTheEditorsWords)
{
    QByteArray text;
    for (int row = 0; row < 200; ++row)
        text += ">row" + QByteArray::number(row) + "\nACD\n";
    const QString file = write("many.fasta", text);
    expectRefused(print(file, "out.pdf"), 1,
                  "Too many sequences to fit in one page. Consider smaller font.");
    EXPECT_EQ(files(), QStringList());
    expectDone(print(file, "out.pdf", "bw", {"--font", "DejaVu Sans Mono,3"}));
}

TEST_F(PrintProgram, AnOutputThatCannotBeWrittenLeavesTheOldFile)
{
    // A folder that is missing, and one in the way.
    ASSERT_TRUE(QDir(m_Folder.path()).mkdir("out-1.svg"));
    expectRefused(print(small(), "out.svg"), 1, "out-1.svg was not written: ");
    for (const QString output : {"none/out.pdf", "none/out.ps", "none/out.svg", "none/out.png"})
        expectRefused(print(small(), output), 1, "was not written: ");
    write("out.pdf", "old");
    expectRefused(print(path("none.ali"), "out.pdf"), 1, "none.ali");
    EXPECT_EQ(read(path("out.pdf")), "old");
    expectDone(print(small(), "out.pdf"));
    EXPECT_TRUE(PrintedFile(path("out.pdf")).isPdf());
}

TEST_F(PrintProgram, AWrongCallIsTold)
{
    expectRefused(run({"print"}), 2, "print needs a file");
    expectRefused(run({"print", small()}), 2, "--style");
    expectRefused(print(small(), "out.jpg"), 2, "--output");
    expectRefused(print(small(), "out.pdf", "wide"), 2, "--style");
    expectRefused(print(small(), "out.pdf", "bw", {"--font", "12"}), 2, "--font");
    expectRefused(print(small(), "out.pdf", "bw", {"--font", "No Such Font,12"}), 2,
                  "no font called No Such Font is installed");
    EXPECT_EQ(files(), QStringList());
}

TEST_F(PrintProgram, WithoutTheEditorThereIsNoPrint)
{
    const Finished call =
        runAlone({"print", small(), "--style", "bw", "--output", path("out.pdf")});
    expectRefused(call, 1, "there is no alignment editor in");
    EXPECT_EQ(files(), QStringList());
}

TEST_F(PrintProgram, TheEditorIsOpenedAndNoOtherPlugin)
{
    // The log would tell that this is no library.
    EXPECT_TRUE(QDir(m_Folder.path()).mkpath("data/plugins"));
    write("data/plugins/aaa.so", "no library");
    expectDone(print(small(), "out.pdf"));
    EXPECT_FALSE(read(path("data/tambo.log")).contains("aaa.so"));
}

} // namespace PrintProgramTest
