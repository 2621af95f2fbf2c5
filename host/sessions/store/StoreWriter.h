// SPDX-License-Identifier: GPL-3.0-or-later
// Writes a live store in a thread of its own. Handing something over never waits for the disk: what
// cannot be written is kept and tried again.
#pragma once

#include "Result.h"
#include "StoreRecord.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace TAMBO::sessions {

class StoreWriter
{
public:
    using Clock = std::chrono::steady_clock;

    struct Limits
    {
        // Of entries that wait. When the disk takes nothing for so long, they are given up.
        std::size_t waitingBytes = std::size_t(512) << 20;
        std::chrono::milliseconds retryAfter{1000};
    };

    struct Status
    {
        // How many entries have been handed over, and how many of them are on the disk.
        std::uint64_t handed = 0;
        std::uint64_t durable = 0;
        // Why the last attempt failed; none when all is well.
        std::optional<Failure> problem;
        // Entries have been given up, and everything that comes is: the store ends before them. To
        // be made good by startAnew().
        bool hasGivenUp = false;
        // Since when the oldest entry waits; none when all are on the disk.
        std::optional<Clock::time_point> waitingSince;
    };

    // changed is called in the writer's thread when a problem comes, goes or becomes another one.
    StoreWriter(std::filesystem::path file, std::function<void()> changed, const Limits &limits);
    explicit StoreWriter(std::filesystem::path file, std::function<void()> changed = {});
    // Makes one more attempt to write what waits.
    ~StoreWriter();
    StoreWriter(const StoreWriter &) = delete;
    StoreWriter &operator=(const StoreWriter &) = delete;

    // Any thread. Entries are written in the order of the calls.
    void put(StoreEntry entry);
    // All of them or none is on the disk, whatever happens.
    void put(std::vector<StoreEntry> entries);
    [[nodiscard]] Status status() const;
    // Waits until all that has been handed over so far is on the disk. False when that takes
    // longer, or when entries have been given up.
    [[nodiscard]] bool waitUntilDurable(std::chrono::milliseconds most);
    // What waits and what comes is written no more. The file is closed with the object.
    void abandon();
    // Gives up what waits and what is in the file. The owner hands everything over once more, from
    // the state on.
    void startAnew();

private:
    using Entries = std::vector<StoreEntry>;
    class Target;

    void run();
    // Called with the lock, which is given back meanwhile.
    void writeBatch(std::unique_lock<std::mutex> &lock, Target &target);
    void giveUp();
    [[nodiscard]] bool hasWork() const noexcept { return !m_Waiting.empty() || m_IsToStartAnew; }

    const std::filesystem::path m_File;
    const std::function<void()> m_Changed;
    const Limits m_Limits;

    mutable std::mutex m_Mutex;
    std::condition_variable m_Work;
    std::condition_variable m_Done;
    Entries m_Waiting;
    // With the batch that the thread has.
    std::size_t m_WaitingBytes = 0;
    // Of the entries behind that batch.
    std::optional<Clock::time_point> m_NextSince;
    Status m_Status;
    // Grows with each start anew, so that a batch from before it counts for nothing.
    std::uint64_t m_Generation = 0;
    bool m_IsToStartAnew = false;
    bool m_IsEnding = false;
    std::thread m_Thread;
};

} // namespace TAMBO::sessions
