// SPDX-License-Identifier: GPL-3.0-or-later
// One object on one line, whatever the texts hold.
#include "JsonText.h"

#include <gtest/gtest.h>

namespace JsonTextTest {

using TAMBO::app::JsonText;

std::string written(std::string_view text)
{
    JsonText json;
    json.value(text);
    return json.text();
}

TEST(JsonText, MembersKeepTheirOrder)
{
    JsonText json;
    json.beginObject();
    json.key("name");
    json.value("x");
    json.key("rows");
    json.value(std::uint64_t{6});
    json.key("empty");
    json.beginArray();
    json.endArray();
    json.key("letters");
    json.beginArray();
    json.value(std::uint64_t{1});
    json.value(std::uint64_t{2});
    json.endArray();
    json.endObject();
    EXPECT_EQ(json.text(), R"({"name": "x", "rows": 6, "empty": [], "letters": [1, 2]})");
}

TEST(JsonText, ObjectsInAnArrayAreSeparated)
{
    JsonText json;
    json.beginArray();
    for (std::uint64_t i = 0; i < 2; ++i) {
        json.beginObject();
        json.key("i");
        json.value(i);
        json.endObject();
    }
    json.endArray();
    EXPECT_EQ(json.text(), R"([{"i": 0}, {"i": 1}])");
}

TEST(JsonText, QuotesAndControlCharactersAreEscaped)
{
    EXPECT_EQ(written("a\"b\\c\nd\te\x01"
                      "f\x7f"),
              R"("a\"b\\c\nd\te\u0001f\u007f")");
}

TEST(JsonText, WellFormedTextOfAnyLanguageStays)
{
    EXPECT_EQ(written("Åtta α 😀"), "\"Åtta α 😀\"");
}

TEST(JsonText, BytesThatAreNoTextAreReplaced)
{
    const std::string replacement = "\xef\xbf\xbd";
    EXPECT_EQ(written("a\xff"
                      "b"),
              "\"a" + replacement + "b\"");
    // Latin-1, a cut sequence, an overlong form, a surrogate.
    EXPECT_EQ(written("\xe4"), '"' + replacement + '"');
    EXPECT_EQ(written("\xe2\x82"), '"' + replacement + replacement + '"');
    EXPECT_EQ(written("\xc0\x80"), '"' + replacement + replacement + '"');
    EXPECT_EQ(written("\xed\xa0\x80"), '"' + replacement + replacement + replacement + '"');
}

} // namespace JsonTextTest
