// SPDX-License-Identifier: GPL-3.0-or-later
// A loop over a great many places, each of which is changed by itself, split among the processors.
#pragma once

#include <algorithm>
#include <cstddef>
#include <exception>
#include <system_error>
#include <thread>
#include <vector>

namespace TAMBO {

class SplitLoop
{
public:
    // A part of fewer places is done before a thread for it has begun.
    static constexpr std::size_t kLeastOfPart = 50'000;
    // Where a part begins, so that a bit for each of its places fills words of its own.
    static constexpr std::size_t kStep = 64;

    explicit SplitLoop(std::size_t places, std::size_t processors = defaultProcessors())
        : m_Places(places)
    {
        const std::size_t parts =
            std::clamp<std::size_t>(places / kLeastOfPart, 1, std::max<std::size_t>(processors, 1));
        m_Length = (places / parts + kStep) / kStep * kStep;
        m_Parts = std::max<std::size_t>((places + m_Length - 1) / m_Length, 1);
    }

    [[nodiscard]] std::size_t parts() const noexcept { return m_Parts; }
    [[nodiscard]] std::size_t begin(std::size_t part) const noexcept { return part * m_Length; }
    [[nodiscard]] std::size_t end(std::size_t part) const noexcept
    {
        return part + 1 < m_Parts ? begin(part + 1) : m_Places;
    }

    // Calls work(part) for each part, all but the first in threads of their own, and returns when
    // all are done. An exception of one of them comes out then.
    template <typename Work> void run(const Work &work) const
    {
        std::vector<std::exception_ptr> failures(m_Parts);
        const auto workAt = [&](std::size_t part) noexcept {
            try {
                work(part);
            } catch (...) {
                failures[part] = std::current_exception();
            }
        };
        std::vector<std::thread> others;
        others.reserve(m_Parts - 1);
        std::size_t started = 1;
        try {
            for (; started < m_Parts; ++started)
                others.emplace_back(workAt, started);
        } catch (const std::system_error &) {
            // Then there are fewer.
        }
        workAt(0);
        for (std::size_t part = started; part < m_Parts; ++part)
            workAt(part);
        for (std::thread &other : others)
            other.join();
        for (const std::exception_ptr &failure : failures) {
            if (failure != nullptr)
                std::rethrow_exception(failure);
        }
    }

private:
    [[nodiscard]] static std::size_t defaultProcessors() noexcept
    {
        constexpr unsigned most = 4;
        return std::min(most, std::thread::hardware_concurrency());
    }

    std::size_t m_Places;
    std::size_t m_Length = 0;
    std::size_t m_Parts = 1;
};

} // namespace TAMBO
