// SPDX-License-Identifier: GPL-3.0-or-later
#include "FontNames.h"

#include "support/ExpectMessage.h"

#include <QBuffer>

#include <gtest/gtest.h>

namespace FontNamesTest {

using Pages::FontNames;

class FontNamesTest : public testing::Test
{
protected:
    FontNamesTest() { m_Target.open(QIODevice::WriteOnly); }

    QByteArray written(const QByteArray &file, qsizetype portion)
    {
        m_Target.buffer().clear();
        m_Target.seek(0);
        FontNames names(m_Target);
        for (qsizetype at = 0; at < file.size(); at += portion)
            EXPECT_TRUE(names.write(file.mid(at, portion)));
        EXPECT_TRUE(names.finish());
        return m_Target.data();
    }

    QBuffer m_Target;
};

TEST_F(FontNamesTest, AFontThatIsCalledAsOneBeforeGetsANumber)
{
    const QByteArray file = "%!PS\n"
                            "/FontName /Sans def\n/FontType 42 def\n"
                            "/FontName /Mono def\n"
                            "/FontName /Sans def\n"
                            "/FontName /Sans def\n"
                            "%%EndSetup\n";
    for (const qsizetype portion : {1, 3, 1000})
        EXPECT_EQ(written(file, portion), "%!PS\n"
                                          "/FontName /Sans def\n/FontType 42 def\n"
                                          "/FontName /Mono def\n"
                                          "/FontName /Sans-2 def\n"
                                          "/FontName /Sans-3 def\n"
                                          "%%EndSetup\n")
            << portion;
}

TEST_F(FontNamesTest, ANumberIsNotTheNameOfAnotherFont)
{
    EXPECT_EQ(written("/FontName /A-2 def\n/FontName /A def\n/FontName /A def\n", 7),
              "/FontName /A-2 def\n/FontName /A def\n/FontName /A-3 def\n");
}

TEST_F(FontNamesTest, PagesStayAsTheyAre)
{
    const QByteArray file = "/FontName /A def\n%%EndSetup\n/FontName /A def\n(/FontName /A def)Tj";
    for (const qsizetype portion : {1, 2, 30, 1000})
        EXPECT_EQ(written(file, portion), file) << portion;
}

TEST_F(FontNamesTest, AFileWithoutPagesComesThrough)
{
    EXPECT_EQ(written("%!PS\n/FontName", 2), "%!PS\n/FontName");
    EXPECT_EQ(written("", 1), "");
}

TEST_F(FontNamesTest, ATargetThatTakesNothingIsAFailure)
{
    QBuffer closed;
    ASSERT_TRUE(closed.open(QIODevice::ReadOnly));
    const ExpectMessage message(QtWarningMsg, "QIODevice::write (QBuffer): ReadOnly device");
    FontNames names(closed);
    EXPECT_FALSE(names.write("%%EndSetup\n"));
}

} // namespace FontNamesTest
