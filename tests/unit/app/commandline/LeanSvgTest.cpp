// SPDX-License-Identifier: GPL-3.0-or-later
// Shorter drawings that show the same.
#include "LeanSvg.h"

#include <gtest/gtest.h>

namespace LeanSvgTest {

using TAMBO::app::leanSvg;

QByteArray drawing(const QByteArray &content)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n<svg>\n<defs>\n</defs>" +
           content + "\n</svg>\n";
}

std::string lean(const QByteArray &content)
{
    QByteArray text = leanSvg(drawing(content));
    EXPECT_TRUE(text.startsWith("<?xml version=\"1.0\"")) << text.toStdString();
    // Outlines that come several times stand in between.
    const bool isEmpty = text.contains("<defs/>");
    text.remove(0, text.indexOf(isEmpty ? "<defs/>" : "</defs>") + 7);
    text.truncate(text.lastIndexOf("</svg>"));
    return text.trimmed().toStdString();
}

TEST(LeanSvg, GroupsThatDrawNothingAreLeftOut)
{
    EXPECT_EQ(lean("<g fill=\"none\" \n>\n</g>\n\n"
                   "<g fill=\"red\" >\n<rect x=\"1\"/>\n</g>\n"
                   "<g fill=\"none\" >\n<text x=\"0\" \n ></text>\n</g>\n"),
              "<g fill=\"red\">\n<rect x=\"1\"/>\n</g>");
}

TEST(LeanSvg, AGroupAroundADrawingGroupStays)
{
    EXPECT_EQ(lean("<g fill=\"red\"><g></g><g fill=\"none\"><rect/></g><g/></g>"),
              "<g fill=\"red\">\n<g fill=\"none\">\n<rect/>\n</g>\n</g>");
}

TEST(LeanSvg, TextStaysWithItsFont)
{
    const QByteArray text = "<g font-family=\"Sans\" font-size=\"9\">\n"
                            "<text x=\"0\">A &lt; B</text>\n</g>";
    EXPECT_EQ(lean(text), text.toStdString());
}

TEST(LeanSvg, WithoutTextThereAreNoFonts)
{
    EXPECT_EQ(lean("<g font-family=\"Sans\" font-size=\"9\" fill=\"red\"><rect/></g>"),
              "<g fill=\"red\">\n<rect/>\n</g>");
}

TEST(LeanSvg, AnOutlineThatComesTwiceIsWrittenOnce)
{
    const QByteArray outline = "M0,0 " + QByteArray("L1.5,2.5 ").repeated(20);
    const auto path = [](const QByteArray &data) {
        return "<path vector-effect=\"none\" fill-rule=\"nonzero\" d=\"" + data + "\"/>";
    };
    const QByteArray other = path("M9,9 " + QByteArray("L1.5,2.5 ").repeated(20));
    const QByteArray brief = path("M0,0");
    const QByteArray content =
        path(outline) + '\n' + other + '\n' + path(outline) + '\n' + brief + '\n' + brief;
    EXPECT_EQ(lean(content), ("<use xlink:href=\"#o1\"/>\n" + other +
                              "\n<use xlink:href=\"#o1\"/>\n" + brief + '\n' + brief)
                                 .toStdString());
    EXPECT_TRUE(leanSvg(drawing(content))
                    .contains("<defs>\n<path id=\"o1\" fill-rule=\"nonzero\" d=\"" + outline +
                              "\"/>\n</defs>"));
}

TEST(LeanSvg, WhatIsMoreThanTheSameOutlineIsAnother)
{
    const QByteArray outline = "M0,0 " + QByteArray("L1.5,2.5 ").repeated(20);
    const QByteArray content = "<path fill-rule=\"nonzero\" d=\"" + outline +
                               "\"/>\n<path fill-rule=\"evenodd\" d=\"" + outline +
                               "\"/>\n<path fill-rule=\"nonzero\" transform=\"scale(2)\" d=\"" +
                               outline + "\"/>";
    EXPECT_EQ(lean(content), content.toStdString());
}

TEST(LeanSvg, WhatIsNoDrawingStays)
{
    for (const QByteArray text : {"", "rubbish", "<svg><g></svg>"})
        EXPECT_EQ(leanSvg(text), text);
}

} // namespace LeanSvgTest
