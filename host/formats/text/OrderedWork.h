// SPDX-License-Identifier: GPL-3.0-or-later
// Work that comes in pieces one after the other, is done several pieces at a time, and whose
// results are put down in the order in which the pieces came.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace TAMBO::formats {

// take() gives the next Piece or null, and put(piece) takes the finished one; neither is called
// while the other is at work. What Piece::work() does may be done while anything else is.
template <typename Piece, typename Take, typename Put> class OrderedWork
{
public:
    OrderedWork(Take take, Put put) : m_Take(std::move(take)), m_Put(std::move(put)) { }

    // Returns when all is done. An exception of any of the three ends it and comes out here.
    void run(bool isWorthThreads)
    {
        constexpr unsigned most = 4;
        const unsigned threads =
            isWorthThreads ? std::clamp(std::thread::hardware_concurrency(), 1U, most) : 1;
        m_MostAhead = 2 * std::size_t{threads};
        std::vector<std::thread> others;
        try {
            for (unsigned i = 1; i < threads; ++i)
                others.emplace_back([this] { work(); });
        } catch (const std::system_error &) {
            // Then there are fewer.
        }
        work();
        for (std::thread &other : others)
            other.join();
        if (m_Exception != nullptr)
            std::rethrow_exception(m_Exception);
    }

private:
    void work() noexcept
    {
        std::unique_lock lock(m_Mutex);
        try {
            while (true) {
                m_HasPut.wait(lock, [this] {
                    return m_Exception != nullptr || m_Taken - m_Finished < m_MostAhead;
                });
                if (m_Exception != nullptr)
                    return;
                std::unique_ptr<Piece> piece = m_Take();
                if (piece == nullptr)
                    return;
                const std::size_t index = m_Taken++;
                lock.unlock();
                piece->work();
                lock.lock();
                m_Done.emplace(index, std::move(piece));
                putDone();
            }
        } catch (...) {
            if (!lock.owns_lock())
                lock.lock();
            m_Exception = std::current_exception();
            m_HasPut.notify_all();
        }
    }
    void putDone()
    {
        for (auto next = m_Done.find(m_Finished); next != m_Done.end();
             next = m_Done.find(m_Finished)) {
            m_Put(std::move(next->second));
            m_Done.erase(next);
            ++m_Finished;
        }
        m_HasPut.notify_all();
    }

    Take m_Take;
    Put m_Put;
    std::mutex m_Mutex;
    std::condition_variable m_HasPut;
    // A thread that the system holds up must not have the others fill the memory behind its piece.
    std::size_t m_MostAhead = 0;
    std::size_t m_Taken = 0;
    std::size_t m_Finished = 0;
    // Those behind one that is still being done.
    std::map<std::size_t, std::unique_ptr<Piece>> m_Done;
    std::exception_ptr m_Exception;
};

template <typename Piece, typename Take, typename Put>
void workInOrder(bool isWorthThreads, Take take, Put put)
{
    OrderedWork<Piece, Take, Put>(std::move(take), std::move(put)).run(isWorthThreads);
}

} // namespace TAMBO::formats
