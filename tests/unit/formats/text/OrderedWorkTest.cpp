// SPDX-License-Identifier: GPL-3.0-or-later
#include "OrderedWork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace TAMBO::formats {
namespace OrderedWorkTest {

struct Piece
{
    std::size_t index = 0;
    std::function<void(std::size_t)> act;

    void work() const { act(index); }
};

class OrderedWork : public testing::Test
{
protected:
    // Pieces with their indices, each of which acts so; what was put in which order.
    std::vector<std::size_t> run(std::size_t count, const std::function<void(std::size_t)> &act)
    {
        std::vector<std::size_t> order;
        workInOrder<Piece>(
            true,
            [&]() -> std::unique_ptr<Piece> {
                if (m_Taken == count)
                    return nullptr;
                m_Most = std::max(m_Most, m_Taken + 1 - order.size());
                return std::make_unique<Piece>(Piece{m_Taken++, act});
            },
            [&](std::unique_ptr<Piece> piece) { order.push_back(piece->index); });
        return order;
    }

    const std::size_t m_Threads = std::clamp(std::thread::hardware_concurrency(), 1U, 4U);
    std::atomic<std::size_t> m_Taken = 0;
    std::size_t m_Most = 0;
};

TEST_F(OrderedWork, PiecesArePutInTheOrderInWhichTheyCame)
{
    const std::vector<std::size_t> order = run(1000, [](std::size_t index) {
        if (index % 3 == 0)
            std::this_thread::yield();
    });
    ASSERT_EQ(order.size(), 1000U);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST_F(OrderedWork, FewPiecesAreThereWhileOneIsHeldUp)
{
    const std::vector<std::size_t> order = run(1000, [this](std::size_t index) {
        if (index != 0 || m_Threads == 1)
            return;
        // The others do all that they may meanwhile.
        while (m_Taken < 2 * m_Threads)
            std::this_thread::yield();
        for (int i = 0; i < 10000; ++i)
            std::this_thread::yield();
    });
    EXPECT_EQ(order.size(), 1000U);
    EXPECT_LE(m_Most, 2 * m_Threads);
}

TEST_F(OrderedWork, AnExceptionEndsThoseThatWaitForItsPiece)
{
    EXPECT_THROW(run(1000,
                     [this](std::size_t index) {
                         if (index != 0)
                             return;
                         while (m_Threads > 1 && m_Taken < 2 * m_Threads)
                             std::this_thread::yield();
                         throw std::runtime_error("held up for good");
                     }),
                 std::runtime_error);
    EXPECT_LE(m_Taken, 2 * m_Threads);
}

} // namespace OrderedWorkTest
} // namespace TAMBO::formats
