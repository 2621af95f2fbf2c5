// SPDX-License-Identifier: GPL-3.0-or-later
#include "LetterCopy.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace LetterCopyTest {

using namespace TAMBO;

TEST(LetterCopy, BothWaysCopyTheLettersThatAreAskedFor)
{
    std::mt19937_64 random(3);
    std::string text(64 + kCopyReadSlack, '?');
    for (std::size_t i = 0; i < 64; ++i)
        text[i] = static_cast<char>('!' + i);
    for (unsigned round = 0; round < 2000; ++round) {
        std::uint64_t letters = random();
        if (round % 4 == 1)
            letters |= random() | random();
        if (round % 4 == 2)
            letters &= random() & random();
        if (round < 2)
            letters = round == 0 ? 0 : ~std::uint64_t{};
        std::string expected;
        for (std::size_t i = 0; i < 64; ++i)
            if ((letters >> i & 1) != 0)
                expected += text[i];
        for (auto *copy : {copyLetters, copyLetterRuns}) {
            std::string room(64 + kCopyWriteSlack, '\0');
            const char *end = copy(room.data(), text.data(), letters);
            EXPECT_EQ(std::string_view(room.data(), static_cast<std::size_t>(end - room.data())),
                      expected);
        }
    }
}

} // namespace LetterCopyTest
