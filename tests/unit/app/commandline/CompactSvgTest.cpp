// SPDX-License-Identifier: GPL-3.0-or-later
// Shorter drawings that show the same.
#include "CompactSvg.h"

#include <gtest/gtest.h>

namespace CompactSvgTest {

using TAMBO::app::compactSvg;

QString drawing(const QString &content)
{
    return "<svg>\n<defs>\n</defs>\n" + content + "</svg>\n";
}

TEST(CompactSvg, GroupsThatDrawNothingAreLeftOut)
{
    EXPECT_EQ(compactSvg(drawing("<g fill=\"none\" \n>\n</g>\n\n"
                                 "<g fill=\"red\" >\n<rect x=\"1\"/>\n</g>\n"
                                 "<g fill=\"none\" >\n<text x=\"0\" \n ></text>\n</g>\n")),
              drawing("<g fill=\"red\" >\n<rect x=\"1\"/>\n</g>\n"));
}

TEST(CompactSvg, TextStaysWithItsFont)
{
    const QString text = drawing("<g font-family=\"Sans\" font-size=\"9\" font-weight=\"400\" "
                                 "font-style=\"normal\" >\n<text x=\"0\" >A</text>\n</g>\n");
    EXPECT_EQ(compactSvg(text), text);
}

TEST(CompactSvg, AnOutlineThatComesTwiceIsWrittenOnce)
{
    const QString outline = "M0,0 " + QString("L1.5,2.5 ").repeated(20);
    const QString path = "<path vector-effect=\"none\" fill-rule=\"nonzero\" d=\"%1\"/>\n";
    const QString other = path.arg("M9,9 " + QString("L1.5,2.5 ").repeated(20));
    const QString once = path.arg("M0,0");
    EXPECT_EQ(compactSvg(drawing(path.arg(outline) + other + path.arg(outline) + once + once)),
              "<svg>\n<defs>\n<path id=\"o1\" fill-rule=\"nonzero\" d=\"" + outline +
                  "\"/>\n</defs>\n<use xlink:href=\"#o1\"/>\n" + other +
                  "<use xlink:href=\"#o1\"/>\n" + once + once + "</svg>\n");
}

TEST(CompactSvg, TheSameOutlineWithAnotherRuleIsAnother)
{
    const QString outline = "M0,0 " + QString("L1.5,2.5 ").repeated(20);
    const QString content = "<path fill-rule=\"nonzero\" d=\"" + outline +
                            "\"/>\n<path fill-rule=\"evenodd\" d=\"" + outline + "\"/>\n";
    EXPECT_EQ(compactSvg(drawing(content)), drawing(content));
}

TEST(CompactSvg, WhatIsNoDrawingStays)
{
    EXPECT_EQ(compactSvg(""), "");
    EXPECT_EQ(compactSvg("rubbish"), "rubbish");
}

} // namespace CompactSvgTest
