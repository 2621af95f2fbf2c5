// SPDX-License-Identifier: GPL-3.0-or-later
// Work of a thread on values of its own, which can be given up.
#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <future>

namespace companion {

class ThreadWork
{
public:
    using Stop = std::atomic<bool>;

    // Looks at stop again and again. What it reads and writes outlives this, and nobody else has it
    // before the end. What it throws comes out of isDone().
    explicit ThreadWork(std::function<void(const Stop &stop)> work);
    // Gives it up, and waits for its end.
    ~ThreadWork();
    ThreadWork(const ThreadWork &) = delete;
    ThreadWork &operator=(const ThreadWork &) = delete;

    // Waits for that time at most.
    [[nodiscard]] bool isDone(std::chrono::microseconds most = {});

private:
    Stop m_Stop = false;
    std::future<void> m_End;
    bool m_IsDone = false;
};

// As std::stable_sort; false when it was stopped, which leaves the range in any order.
template <typename Range, typename Before>
[[nodiscard]] bool sortStoppably(Range &range, const Before &before, const ThreadWork::Stop &stop)
{
    struct Stopped
    {
    };
    try {
        std::stable_sort(range.begin(), range.end(), [&](const auto &a, const auto &b) {
            if (stop.load(std::memory_order_relaxed))
                throw Stopped();
            return before(a, b);
        });
    } catch (const Stopped &) {
        return false;
    }
    return true;
}

} // namespace companion
