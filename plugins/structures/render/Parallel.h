// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <system_error>
#include <thread>
#include <vector>

namespace structures {

// Of a picture at most; 0 for as many as there are processors. The picture does not depend on it.
inline std::atomic<unsigned> s_MostThreads = 0;

// Calls work(i) for each i below count, on as many threads as there are processors, this one
// included. Returns when all is done. The work must not throw.
template <typename Work> void inParallel(std::size_t count, const Work &work)
{
    const unsigned wanted = s_MostThreads;
    const std::size_t threads = std::min<std::size_t>(
        count, wanted > 0 ? wanted : std::max(1U, std::thread::hardware_concurrency()));
    std::atomic<std::size_t> next = 0;
    const auto run = [&] {
        for (std::size_t i = next++; i < count; i = next++)
            work(i);
    };
    std::vector<std::jthread> others;
    try {
        for (std::size_t i = 1; i < threads; ++i)
            others.emplace_back(run);
    } catch (const std::system_error &) {
        // Then there are fewer.
    }
    run();
}

} // namespace structures
