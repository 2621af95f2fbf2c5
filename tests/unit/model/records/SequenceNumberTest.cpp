// SPDX-License-Identifier: GPL-3.0-or-later
#include "SequenceNumber.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>

using TAMBO::SequenceNumber;

namespace SequenceNumberTest {

struct NumberCase
{
    const char *text;
    bool isValid;
    int number;
    char code;
    const char *value;
};

// Otherwise the bytes are printed, and those between the members are anything.
void PrintTo(const NumberCase &number, std::ostream *out)
{
    *out << '"' << number.text << '"';
}

class SequenceNumberText : public testing::TestWithParam<NumberCase>
{
};

TEST_P(SequenceNumberText, IsAnIntegerWithAnOptionalInsertionLetterOrKeptAsItStands)
{
    const SequenceNumber number(GetParam().text);

    EXPECT_EQ(number.isValid(), GetParam().isValid);
    EXPECT_EQ(number.number(), GetParam().number);
    EXPECT_EQ(number.insertionCode(), GetParam().code);
    EXPECT_EQ(number.getValue(), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, SequenceNumberText,
    testing::Values(
        NumberCase{"12", true, 12, ' ', "12"}, NumberCase{"12A", true, 12, 'A', "12A"},
        NumberCase{"60a", true, 60, 'a', "60a"}, NumberCase{"-3", true, -3, ' ', "-3"},
        NumberCase{"+7", true, 7, ' ', "7"}, NumberCase{"0", true, 0, ' ', "0"},
        NumberCase{"-5B", true, -5, 'B', "-5B"}, NumberCase{"  42 ", true, 42, ' ', "42"},
        NumberCase{"007", true, 7, ' ', "7"},
        NumberCase{"2147483647", true, std::numeric_limits<int>::max(), ' ', "2147483647"},
        NumberCase{"2147483648", false, 0, ' ', "2147483648"}, NumberCase{"", false, 0, ' ', ""},
        NumberCase{"   ", false, 0, ' ', "   "}, NumberCase{"abc", false, 0, ' ', "abc"},
        NumberCase{"A", false, 0, ' ', "A"}, NumberCase{"12AB", false, 0, ' ', "12AB"},
        NumberCase{"1 2", false, 0, ' ', "1 2"}, NumberCase{"12 A", false, 0, ' ', "12 A"},
        NumberCase{"+-5", false, 0, ' ', "+-5"}, NumberCase{"-", false, 0, ' ', "-"},
        NumberCase{"1.5", false, 0, ' ', "1.5"}, NumberCase{"12?", false, 0, ' ', "12?"}));

TEST(SequenceNumber, NextNumberIsTheNextIntegerWithoutALetter)
{
    SequenceNumber number("12A");

    ++number;

    EXPECT_EQ(number.getValue(), "13");
}

TEST(SequenceNumber, NextOfMinusOneIsZero)
{
    SequenceNumber number("-1");
    EXPECT_EQ((++number).getValue(), "0");
}

TEST(SequenceNumber, InvalidNumberStaysInvalidWhenAdvanced)
{
    SequenceNumber number("abc");

    ++number;

    EXPECT_FALSE(number.isValid());
    EXPECT_EQ(number.getValue(), "abc");
}

TEST(SequenceNumber, LargestNumberStaysWhenAdvanced)
{
    SequenceNumber number(std::numeric_limits<int>::max());
    EXPECT_EQ((++number).number(), std::numeric_limits<int>::max());
}

TEST(SequenceNumber, EqualityComparesNumberAndLetter)
{
    EXPECT_EQ(SequenceNumber("12"), SequenceNumber(12));
    EXPECT_EQ(SequenceNumber(" 12"), SequenceNumber("12"));
    EXPECT_EQ(SequenceNumber("12A"), SequenceNumber(12, 'A'));
    EXPECT_NE(SequenceNumber("12"), SequenceNumber("12A"));
    EXPECT_NE(SequenceNumber(""), SequenceNumber("0"));
}

} // namespace SequenceNumberTest
