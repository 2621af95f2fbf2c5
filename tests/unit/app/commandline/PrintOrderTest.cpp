// SPDX-License-Identifier: GPL-3.0-or-later
// What the words behind `tambo print` mean.
#include "PrintOrder.h"

#include <gtest/gtest.h>

namespace PrintOrderTest {

using TAMBO::app::parsePrintOrder;
using TAMBO::app::PrintOrder;
using Words = std::vector<std::string>;

std::string errorOf(const Words &words)
{
    const TAMBO::Result<PrintOrder> order = parsePrintOrder(words);
    return order ? std::string("none") : order.error().message();
}

TEST(PrintOrder, AFileAStyleAndAnOutputAreEnough)
{
    const auto order = parsePrintOrder({"a.ali", "--style", "slim", "--output", "o.pdf"});
    ASSERT_TRUE(order) << order.error().message();
    EXPECT_EQ(order.value().file, "a.ali");
    EXPECT_EQ(order.value().style, PrintOrder::Style::Slim);
    EXPECT_EQ(order.value().output, "o.pdf");
    EXPECT_EQ(order.value().kind, PrintOrder::Kind::Pdf);
    EXPECT_EQ(order.value().font, "");
    EXPECT_FALSE(order.value().withElements);
}

TEST(PrintOrder, OptionsMayStandAnywhere)
{
    const auto order = parsePrintOrder(
        {"--sse", "--font", "DejaVu Sans,8", "--output", "o.PS", "a.ali", "--style", "bw"});
    ASSERT_TRUE(order) << order.error().message();
    EXPECT_EQ(order.value().file, "a.ali");
    EXPECT_EQ(order.value().style, PrintOrder::Style::BlackAndWhite);
    EXPECT_EQ(order.value().kind, PrintOrder::Kind::PostScript);
    EXPECT_EQ(order.value().font, "DejaVu Sans,8");
    EXPECT_TRUE(order.value().withElements);
}

TEST(PrintOrder, TheEndingTellsTheKind)
{
    const std::vector<std::pair<std::string, PrintOrder::Kind>> kinds = {
        {"a.pdf", PrintOrder::Kind::Pdf},
        {"a.ps", PrintOrder::Kind::PostScript},
        {"a.b.SVG", PrintOrder::Kind::Svg},
        {"d/.png", PrintOrder::Kind::Png}};
    for (const auto &[output, kind] : kinds) {
        const auto order = parsePrintOrder({"a", "--style", "fat", "--output", output});
        ASSERT_TRUE(order) << output;
        EXPECT_EQ(order.value().kind, kind) << output;
        EXPECT_EQ(order.value().style, PrintOrder::Style::Fat);
    }
}

TEST(PrintOrder, PlacesAreCountedFromOneAndRangesHaveTheirEnds)
{
    using Ranges = std::vector<PrintOrder::Range>;
    const auto order = parsePrintOrder({"a", "--style", "fat", "--output", "o.pdf", "--alignment",
                                        "2", "--rows", "1-5,8", "--columns", "10-10"});
    ASSERT_TRUE(order) << order.error().message();
    EXPECT_EQ(order.value().alignment, 2U);
    EXPECT_EQ(order.value().rows, (Ranges{{0, 5}, {7, 8}}));
    EXPECT_EQ(order.value().columns, (Ranges{{9, 10}}));
    for (const std::string wrong : {"0", "5-1", "x", "1,", "-3", "1-", "1-2-3", "0-2"})
        EXPECT_EQ(errorOf({"a", "--style", "fat", "--output", "o.pdf", "--rows", wrong}),
                  "--rows needs places that count from 1, as in 1-5,8, instead of \"" + wrong +
                      '"');
    for (const std::string wrong : {"0", "x", "1-2"})
        EXPECT_EQ(errorOf({"a", "--style", "fat", "--output", "o.pdf", "--alignment", wrong}),
                  "--alignment needs a number that counts from 1 instead of \"" + wrong + '"');
}

TEST(PrintOrder, AfterTwoDashesEverythingIsAFile)
{
    const auto order = parsePrintOrder({"--style", "fat", "--output", "o.ps", "--", "--sse"});
    ASSERT_TRUE(order) << order.error().message();
    EXPECT_EQ(order.value().file, "--sse");
    EXPECT_FALSE(order.value().withElements);
}

TEST(PrintOrder, WhatIsWrongIsSaid)
{
    EXPECT_EQ(errorOf({}), "print needs a file");
    EXPECT_EQ(errorOf({"--style", "fat", "--output", "o.ps"}), "print needs a file");
    EXPECT_EQ(errorOf({"a", "b", "--style", "fat", "--output", "o.ps"}), "print takes one file");
    EXPECT_EQ(errorOf({""}), "print takes one file");
    EXPECT_EQ(errorOf({"a", "--output", "o.ps"}), "print needs --style fat, slim or bw");
    EXPECT_EQ(errorOf({"a", "--style", "Fat", "--output", "o.ps"}),
              "print needs --style fat, slim or bw");
    for (const std::string output : {"o", "o.jpg", "pdf"})
        EXPECT_EQ(errorOf({"a", "--style", "fat", "--output", output}),
                  "print needs --output with a name that ends in .pdf, .ps, .svg or .png");
    EXPECT_EQ(errorOf({"a", "--style", "fat"}),
              "print needs --output with a name that ends in .pdf, .ps, .svg or .png");
    EXPECT_EQ(errorOf({"a", "--style"}), "--style needs a value");
    EXPECT_EQ(errorOf({"a", "--output", ""}), "--output needs a value");
    EXPECT_EQ(errorOf({"a", "--frobnicate"}), "unknown option --frobnicate of print");
}

} // namespace PrintOrderTest
