// SPDX-License-Identifier: GPL-3.0-or-later
#include "ValueBytes.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace ValueBytesTest {

using TAMBO::ValueReader;
using TAMBO::ValueWriter;

constexpr std::uint64_t kMostUnsigned = std::numeric_limits<std::uint64_t>::max();
constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();

std::string bytesOfNumber(std::uint64_t value)
{
    ValueWriter out;
    out.number(value);
    return out.take();
}

std::string bytesOfSigned(std::int64_t value)
{
    ValueWriter out;
    out.signedNumber(value);
    return out.take();
}

TEST(ValueBytes, NumberTakesAByteForSevenBits)
{
    EXPECT_EQ(bytesOfNumber(0), std::string(1, '\0'));
    EXPECT_EQ(bytesOfNumber(127), "\x7f");
    EXPECT_EQ(bytesOfNumber(128), "\x80\x01");
    EXPECT_EQ(bytesOfNumber(300), "\xac\x02");
    EXPECT_EQ(bytesOfNumber(kMostUnsigned).size(), 10U);
}

TEST(ValueBytes, SignedNumberIsSmallOnEitherSideOfZero)
{
    EXPECT_EQ(bytesOfSigned(0), std::string(1, '\0'));
    EXPECT_EQ(bytesOfSigned(-1), "\x01");
    EXPECT_EQ(bytesOfSigned(1), "\x02");
    EXPECT_EQ(bytesOfSigned(-64), "\x7f");
    EXPECT_EQ(bytesOfSigned(kLeast).size(), 10U);
}

TEST(ValueBytes, RealAndWordsAreLittleEndian)
{
    ValueWriter out;
    out.real(1.0F);
    EXPECT_EQ(out.take(), std::string_view("\0\0\x80\x3f", 4));
    out.real(1.0);
    EXPECT_EQ(out.take(), std::string_view("\0\0\0\0\0\0\xf0\x3f", 8));
    out.words(std::array<std::uint64_t, 1>{0x0102030405060708});
    EXPECT_EQ(out.take(), "\x08\x07\x06\x05\x04\x03\x02\x01");
}

TEST(ValueBytes, NumberOfEveryLengthComesBack)
{
    ValueWriter out;
    std::vector<std::uint64_t> numbers{0, kMostUnsigned};
    for (unsigned bit = 0; bit < 64; ++bit) {
        const std::uint64_t power = std::uint64_t(1) << bit;
        numbers.insert(numbers.end(), {power - 1, power, power + 1});
    }
    for (const std::uint64_t number : numbers)
        out.number(number);
    ValueReader in(out.bytes());
    for (const std::uint64_t number : numbers)
        EXPECT_EQ(in.number(), number);
    EXPECT_TRUE(in.atEnd());
    EXPECT_FALSE(in.failed());
}

TEST(ValueBytes, SignedNumberOfEveryLengthComesBack)
{
    ValueWriter out;
    std::vector<std::int64_t> numbers{0, kMost, kLeast};
    for (unsigned bit = 0; bit < 63; ++bit) {
        const std::int64_t power = std::int64_t(1) << bit;
        numbers.insert(numbers.end(), {power - 1, power, -power, -power - 1});
    }
    for (const std::int64_t number : numbers)
        out.signedNumber(number);
    ValueReader in(out.bytes());
    for (const std::int64_t number : numbers)
        EXPECT_EQ(in.signedNumber(), number);
    EXPECT_TRUE(in.atEnd());
    EXPECT_FALSE(in.failed());
}

TEST(ValueBytes, OtherValuesComeBackToTheBit)
{
    const std::array<std::uint64_t, 3> words{1, 0, kMostUnsigned};
    const std::string text("a\0b\xff", 4);
    ValueWriter out;
    out.flag(true);
    out.text(text);
    out.real(-0.0F);
    out.real(std::numeric_limits<double>::denorm_min());
    out.real(std::numeric_limits<float>::quiet_NaN());
    out.words(words);
    out.raw("end");
    out.character('\x80');
    out.flag(false);
    ValueReader in(out.bytes());
    EXPECT_TRUE(in.flag());
    EXPECT_EQ(in.text(), text);
    EXPECT_TRUE(std::signbit(in.real32()));
    EXPECT_EQ(in.real64(), std::numeric_limits<double>::denorm_min());
    EXPECT_TRUE(std::isnan(in.real32()));
    std::array<std::uint64_t, 3> read{};
    in.words(read);
    EXPECT_EQ(read, words);
    EXPECT_EQ(in.raw(3), "end");
    EXPECT_EQ(in.character(), '\x80');
    EXPECT_FALSE(in.flag());
    EXPECT_TRUE(in.atEnd());
    EXPECT_FALSE(in.failed());
}

TEST(ValueBytes, TakingTheBytesBeginsAnew)
{
    ValueWriter out;
    out.text("one");
    EXPECT_EQ(out.size(), 4U);
    EXPECT_EQ(out.take(), "\3one");
    out.flag(true);
    EXPECT_EQ(out.bytes(), "\1");
    out.clear();
    EXPECT_EQ(out.size(), 0U);
}

struct Damage
{
    std::string name;
    std::string bytes;
    void (*read)(ValueReader &);
    std::string cause;
};

std::ostream &operator<<(std::ostream &out, const Damage &damage)
{
    return out << damage.name;
}

class ValueDamage : public testing::TestWithParam<Damage>
{
};

TEST_P(ValueDamage, Fails)
{
    ValueReader in(GetParam().bytes);
    GetParam().read(in);
    EXPECT_TRUE(in.failed());
    EXPECT_EQ(in.cause(), GetParam().cause);
    // Nothing is left, and all that is asked for is empty.
    EXPECT_EQ(in.left(), 0U);
    EXPECT_EQ(in.number(), 0U);
    EXPECT_EQ(in.signedNumber(), 0);
    EXPECT_EQ(in.text(), "");
    EXPECT_EQ(in.raw(1), "");
    EXPECT_EQ(in.count(), 0U);
    EXPECT_EQ(in.real64(), 0.0);
    EXPECT_EQ(in.character(), '\0');
    EXPECT_FALSE(in.flag());
    EXPECT_EQ(in.cause(), GetParam().cause);
}

const std::string kEndIsMissing = "the end is missing";
const std::string kNumberIsDamaged = "a number is damaged";

INSTANTIATE_TEST_SUITE_P(
    ValueBytes, ValueDamage,
    testing::Values(Damage{"NumberOfNoBytes", "",
                           [](ValueReader &in) { EXPECT_EQ(in.number(), 0U); }, kEndIsMissing},
                    Damage{"NumberThatGoesOnBehindTheEnd", "\x80\x80",
                           [](ValueReader &in) { EXPECT_EQ(in.number(), 0U); }, kEndIsMissing},
                    Damage{"NumberOfMoreThan64Bits", std::string(9, '\xff') + '\2',
                           [](ValueReader &in) { EXPECT_EQ(in.number(), 0U); }, kNumberIsDamaged},
                    Damage{"NumberThatNeverEnds", std::string(40, '\xff'),
                           [](ValueReader &in) { EXPECT_EQ(in.number(), 0U); }, kNumberIsDamaged},
                    Damage{"NumberLongerThanItIs", std::string("\x81\0", 2),
                           [](ValueReader &in) { EXPECT_EQ(in.number(), 0U); }, kNumberIsDamaged},
                    Damage{"NumberAboveTheLimit", "\x08",
                           [](ValueReader &in) { EXPECT_EQ(in.number(7), 0U); },
                           "a number is too large"},
                    Damage{"SignedNumberBelowTheLimit", "\x05",
                           [](ValueReader &in) { EXPECT_EQ(in.signedNumber(-2, 2), 0); },
                           "a number is out of bounds"},
                    Damage{"CountOfMoreThanCanBeThere",
                           "\x03"
                           "1234567",
                           [](ValueReader &in) { EXPECT_EQ(in.count(4), 0U); }, kEndIsMissing},
                    Damage{"TextLongerThanTheBytes", "\x03xy",
                           [](ValueReader &in) { EXPECT_EQ(in.text(), ""); }, kEndIsMissing},
                    Damage{"TextLongerThanMemory", std::string(9, '\xff') + '\1',
                           [](ValueReader &in) { EXPECT_EQ(in.text(), ""); }, kEndIsMissing},
                    Damage{"RealThatIsCutOff", "123",
                           [](ValueReader &in) { EXPECT_EQ(in.real32(), 0.0F); }, kEndIsMissing},
                    Damage{"WordsThatAreCutOff", "123456789012345",
                           [](ValueReader &in) {
                               std::array<std::uint64_t, 2> words{1, 2};
                               in.words(words);
                               EXPECT_EQ(words, (std::array<std::uint64_t, 2>{1, 2}));
                           },
                           kEndIsMissing},
                    Damage{"FlagThatIsNeither", "\2",
                           [](ValueReader &in) { EXPECT_FALSE(in.flag()); }, "a flag is damaged"},
                    Damage{"WhatMeansNothingToTheCaller", "xy",
                           [](ValueReader &in) {
                               in.fail("that is no x");
                               in.fail("nor a y");
                           },
                           "that is no x"}),
    [](const testing::TestParamInfo<Damage> &info) { return info.param.name; });

TEST(ValueBytes, FailureIsWhereItWasFound)
{
    ValueReader in("\1\1\2\1");
    EXPECT_TRUE(in.flag());
    EXPECT_EQ(in.place(), 1U);
    EXPECT_TRUE(in.flag());
    EXPECT_FALSE(in.flag());
    EXPECT_EQ(in.place(), 3U);
    EXPECT_FALSE(in.flag());
    EXPECT_EQ(in.place(), 3U);
}

TEST(ValueBytes, CountThatTheBytesCanHoldIsGiven)
{
    ValueReader in("\2"
                   "12345678");
    EXPECT_EQ(in.count(4), 2U);
    EXPECT_FALSE(in.failed());
}

// Whatever stands there, reading ends, and within the bytes.
TEST(ValueBytes, RandomBytesGiveValuesOrAFailure)
{
    std::mt19937_64 random(11);
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes(random() % 40, '\0');
        for (char &byte : bytes)
            byte = static_cast<char>(random() % 3 == 0 ? random() : random() % 4);
        ValueReader in(bytes);
        std::size_t last = 0;
        while (!in.atEnd()) {
            switch (random() % 7) {
            case 0:
                static_cast<void>(in.number());
                break;
            case 1:
                static_cast<void>(in.signedNumber());
                break;
            case 2:
                EXPECT_LE(in.text().size(), bytes.size());
                break;
            case 3:
                EXPECT_LE(in.count(3) * 3, bytes.size());
                break;
            case 4:
                static_cast<void>(in.flag());
                break;
            case 5:
                static_cast<void>(in.real64());
                break;
            default:
                static_cast<void>(in.character());
                break;
            }
            ASSERT_TRUE(in.failed() || in.place() > last);
            ASSERT_LE(in.place(), bytes.size());
            last = in.place();
        }
        EXPECT_EQ(in.failed(), !in.cause().empty());
    }
}

} // namespace ValueBytesTest
