// SPDX-License-Identifier: GPL-3.0-or-later
// Which letters glyphs stand for, and their names in PostScript.
#include "GlyphNames.h"
#include "SetupFilter.h"

#include "support/ExpectMessage.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include <gtest/gtest.h>

namespace GlyphNamesTest {

using Pages::GlyphNames;
using Pages::SetupFilter;

// A file with one font, whose glyphs stand for letters as the table says.
QByteArray fileWith(const QByteArray &table)
{
    const QList<QByteArray> objects = {
        "<< /Type /Font\n/Subtype /Type0\n/DescendantFonts [2 0 R]\n/ToUnicode 4 0 R>>\n",
        "<< /Type /Font\n/Subtype /CIDFontType2\n/FontDescriptor 3 0 R\n>>\n",
        "<< /Type /FontDescriptor\n/FontName /QA+Serif\n>>\n",
        "<< /Length 1 >>\nstream\n1 beginbfrange\n" + table + "\nendbfrange\nendstream\n"};
    QByteArray file = "%PDF-1.4\n";
    QByteArray places = "0000000000 65535 f \n";
    for (qsizetype i = 0; i < objects.size(); ++i) {
        places += QByteArray::number(file.size()).rightJustified(10, '0') + " 00000 n \n";
        file += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "endobj\n";
    }
    const QByteArray start = QByteArray::number(file.size());
    return file + "xref\n0 " + QByteArray::number(objects.size() + 1) + "\n" + places +
           "trailer\n<<\n>>\nstartxref\n" + start + "\n%%EOF\n";
}

QHash<int, QByteArray> namesIn(const QByteArray &table)
{
    return GlyphNames(fileWith(table)).of("QA+Serif");
}

const QByteArray kPart = "/FontName /QA+Serif_00 def\n"
                         "dup 1 /c01 put\n"
                         "/c01 1 def\n"
                         "/c02 2 def\n"
                         "FontName currentdict end definefont pop\n"
                         "/c01 1 def\n";

TEST(GlyphNames, ARangeCountsOn)
{
    EXPECT_EQ(namesIn("<0003> <0005> <0041>"),
              (QHash<int, QByteArray>{{3, "uni0041"}, {4, "uni0042"}, {5, "uni0043"}}));
}

TEST(GlyphNames, AListNamesOneGlyphAfterTheOther)
{
    EXPECT_EQ(namesIn("<0001> <0002> [<03A9> <00e9> ]\n<0007> <0007> <002D>"),
              (QHash<int, QByteArray>{{1, "uni03A9"}, {2, "uni00E9"}, {7, "uni002D"}}));
}

TEST(GlyphNames, SeveralLettersInOneGlyphAreOneName)
{
    EXPECT_EQ(
        namesIn("<0001> <0002> [<00660069> <D83DDE00>]\n<0005> <0006> <D83DDE00>"),
        (QHash<int, QByteArray>{
            {1, "uni00660069"}, {2, "uniD83DDE00"}, {5, "uniD83DDE00.g5"}, {6, "uniD83DDE01"}}));
}

TEST(GlyphNames, AGlyphWithoutALetterHasNoName)
{
    EXPECT_EQ(namesIn("<0000> <0000> <0000>\n<0001> <0003> [<0041>]"),
              (QHash<int, QByteArray>{{1, "uni0041"}}));
}

TEST(GlyphNames, TwoGlyphsOfOneLetterDiffer)
{
    EXPECT_EQ(namesIn("<0001> <0002> [<0041> <0041>]"),
              (QHash<int, QByteArray>{{1, "uni0041"}, {2, "uni0041.g2"}}));
}

TEST(GlyphNames, RubbishHasNone)
{
    EXPECT_TRUE(namesIn("").isEmpty());
    EXPECT_TRUE(namesIn("<0001> <0000> <0041>").isEmpty());
    EXPECT_TRUE(namesIn("<0001> <0001> <41>").isEmpty());
    EXPECT_TRUE(namesIn("<0001> <0001> []").isEmpty());
    const QByteArray good = fileWith("<0001> <0001> <0041>");
    for (qsizetype length = 0; length < good.size(); ++length) {
        const GlyphNames cut(good.first(length));
        EXPECT_EQ(cut.applied(kPart).isEmpty(), false);
    }
    for (const QByteArray start : {"-5", "99999999", "7", "x", "184467440737095516150"}) {
        QByteArray bad = good.first(good.indexOf("startxref")) + "startxref\n" + start;
        EXPECT_TRUE(GlyphNames(bad).of("QA+Serif").isEmpty()) << start.toStdString();
    }
}

TEST(GlyphNames, TheToolkitsFilesAreUnderstood)
{
    QBuffer buffer;
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
    QPdfWriter writer(&buffer);
    QPainter painter(&writer);
    painter.setFont(QFont("DejaVu Sans", 12));
    painter.drawText(100, 100, QStringLiteral("AZé"));
    painter.end();
    const QByteArray file = buffer.data();
    const qsizetype at = file.indexOf("/FontName /") + 11;
    const QHash<int, QByteArray> names =
        GlyphNames(file).of(file.sliced(at, file.indexOf('\n', at) - at).trimmed());
    QByteArrayList found = names.values();
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, (QByteArrayList{"uni0041", "uni005A", "uni00E9"}));
}

TEST(GlyphNames, GlyphsOfAKnownFontAreRenamed)
{
    const GlyphNames names(fileWith("<0001> <0001> <0041>"));
    EXPECT_EQ(names.applied(kPart), "/FontName /QA+Serif_00 def\n"
                                    "dup 1 /uni0041 put\n"
                                    "/uni0041 1 def\n"
                                    "/c02 2 def\n"
                                    "FontName currentdict end definefont pop\n"
                                    "/c01 1 def\n");
}

TEST(GlyphNames, TheSecondPartOfAFontCountsFrom256)
{
    const GlyphNames names(fileWith("<0101> <0101> <0041>"));
    QByteArray second = kPart;
    second.replace("_00", "_01");
    EXPECT_EQ(names.applied(kPart), kPart);
    EXPECT_TRUE(names.applied(second).contains("\n/uni0041 1 def\n"));
}

TEST(GlyphNames, UnknownFontsStayAsTheyAre)
{
    QByteArray other = kPart;
    other.replace("QA", "QB");
    EXPECT_EQ(GlyphNames(fileWith("<0001> <0001> <0041>")).applied(other), other);
    EXPECT_EQ(GlyphNames("no pdf").applied(kPart), kPart);
}

// ---- On the way to the target

class SetupFilterTest : public testing::Test
{
protected:
    SetupFilterTest() { m_Target.open(QIODevice::WriteOnly); }

    QByteArray filtered(const QByteArray &file, qsizetype portion)
    {
        m_Target.buffer().clear();
        m_Target.seek(0);
        SetupFilter filter(GlyphNames(fileWith("<0001> <0001> <0041>")), m_Target);
        for (qsizetype at = 0; at < file.size(); at += portion) {
            const QByteArray part = file.mid(at, portion);
            EXPECT_EQ(filter.write(part), part.size());
        }
        EXPECT_TRUE(filter.finish());
        return m_Target.data();
    }

    QBuffer m_Target;
};

TEST_F(SetupFilterTest, OnlyWhatComesBeforeTheFirstPageIsChanged)
{
    const QByteArray pages = "%%EndSetup\n%%Page: 1 1\n" + kPart + "%%EOF\n";
    const QByteArray named = GlyphNames(fileWith("<0001> <0001> <0041>")).applied(kPart);
    for (const qsizetype portion : {1, 2, 7, 1000})
        EXPECT_EQ(filtered(kPart + pages, portion), named + pages) << portion;
}

TEST_F(SetupFilterTest, AFileWithoutPagesComesThrough)
{
    EXPECT_EQ(filtered("%!PS\n", 2), "%!PS\n");
}

TEST_F(SetupFilterTest, ATargetThatTakesNothingIsAFailure)
{
    QBuffer closed;
    ASSERT_TRUE(closed.open(QIODevice::ReadOnly));
    SetupFilter filter(GlyphNames(QByteArray()), closed);
    const ExpectMessage message(QtWarningMsg, "QIODevice::write (QBuffer): ReadOnly device");
    filter.write("%%EndSetup\n");
    EXPECT_FALSE(filter.finish());
}

} // namespace GlyphNamesTest
