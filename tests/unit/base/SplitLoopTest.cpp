// SPDX-License-Identifier: GPL-3.0-or-later
#include "SplitLoop.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

namespace SplitLoopTest {

using TAMBO::SplitLoop;

// How often each place is come to.
std::vector<int> visits(const SplitLoop &loop, std::size_t places)
{
    std::vector<int> counts(places);
    loop.run([&](std::size_t part) {
        for (std::size_t i = loop.begin(part); i < loop.end(part); ++i)
            ++counts[i];
    });
    return counts;
}

TEST(SplitLoop, EachPlaceIsComeToOnce)
{
    for (const std::size_t places : {0UL, 1UL, 63UL, 99'999UL, 100'000UL, 150'001UL, 1'000'000UL}) {
        for (const std::size_t processors : {0UL, 1UL, 2UL, 3UL, 4UL})
            EXPECT_EQ(visits(SplitLoop(places, processors), places), std::vector<int>(places, 1))
                << places << " places, " << processors << " processors";
    }
}

TEST(SplitLoop, FewPlacesStayTogether)
{
    EXPECT_EQ(SplitLoop(2 * SplitLoop::kLeastOfPart - 1, 4).parts(), 1U);
    EXPECT_EQ(SplitLoop(2 * SplitLoop::kLeastOfPart, 4).parts(), 2U);
}

TEST(SplitLoop, ThereAreNoMorePartsThanProcessors)
{
    EXPECT_EQ(SplitLoop(1'000'000, 2).parts(), 2U);
    EXPECT_EQ(SplitLoop(1'000'000, 1).parts(), 1U);
}

TEST(SplitLoop, PartsBeginAtWholeWordsOfBits)
{
    const SplitLoop loop(1'000'003, 3);
    for (std::size_t part = 0; part < loop.parts(); ++part)
        EXPECT_EQ(loop.begin(part) % SplitLoop::kStep, 0U);
    EXPECT_EQ(loop.end(loop.parts() - 1), 1'000'003U);
}

TEST(SplitLoop, OnlyTheFirstPartIsDoneByWhoeverAsks)
{
    const SplitLoop loop(1'000'000, 2);
    std::vector<std::thread::id> workers(loop.parts());
    loop.run([&](std::size_t part) { workers[part] = std::this_thread::get_id(); });
    EXPECT_EQ(workers[0], std::this_thread::get_id());
    EXPECT_NE(workers[1], std::this_thread::get_id());
}

TEST(SplitLoop, ExceptionOfAnyPartComesOutWhenAllAreDone)
{
    const SplitLoop loop(1'000'000, 4);
    ASSERT_EQ(loop.parts(), 4U);
    std::atomic<int> done = 0;
    const auto work = [&](std::size_t part) {
        ++done;
        if (part == 2)
            throw std::runtime_error("part 2");
    };
    EXPECT_THROW(loop.run(work), std::runtime_error);
    EXPECT_EQ(done, 4);
}

} // namespace SplitLoopTest
