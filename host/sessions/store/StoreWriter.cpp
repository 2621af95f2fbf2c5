// SPDX-License-Identifier: GPL-3.0-or-later
#include "StoreWriter.h"

#include "StoreFile.h"

#include <iterator>
#include <memory>
#include <system_error>
#include <utility>

namespace TAMBO::sessions {

namespace {

bool isSame(const std::optional<Failure> &one, const std::optional<Failure> &other)
{
    if (!one || !other)
        return one.has_value() == other.has_value();
    return one->kind == other->kind && one->cause == other->cause;
}

} // namespace

// The file as the thread sees it: opened when it is needed, and again when it could not be.
class StoreWriter::Target
{
public:
    explicit Target(const std::filesystem::path &file) : m_File(file) { }

    [[nodiscard]] Result<void> write(const Entries &entries)
    {
        if (m_Store == nullptr) {
            auto opened = StoreFile::open(m_File, StoreFile::Kind::Live);
            if (!opened)
                return opened.error();
            m_Store = std::move(opened.value());
            m_HasBegun = true;
        }
        if (!m_Store->isInPlace())
            return Failure(FailureKind::NotFound, "it was moved or deleted", {m_File.string()});
        return m_Store->write(entries);
    }

    // There is nothing to go on from: what was written before is in no file that anybody finds.
    [[nodiscard]] bool isLost(const Failure &failure) const noexcept
    {
        return m_HasBegun &&
               (failure.kind == FailureKind::NotFound || failure.kind == FailureKind::BadInput);
    }

    void clear()
    {
        m_Store.reset();
        m_HasBegun = false;
        std::error_code ignored;
        for (const char *const ending : {"", "-wal", "-journal"})
            std::filesystem::remove(m_File.string() + ending, ignored);
    }

private:
    std::filesystem::path m_File;
    std::unique_ptr<StoreFile> m_Store;
    bool m_HasBegun = false;
};

StoreWriter::StoreWriter(std::filesystem::path file, std::function<void()> changed)
    : StoreWriter(std::move(file), std::move(changed), Limits())
{ }

StoreWriter::StoreWriter(std::filesystem::path file, std::function<void()> changed,
                         const Limits &limits)
    : m_File(std::move(file)),
      m_Changed(std::move(changed)),
      m_Limits(limits),
      m_Thread([this] { run(); })
{ }

StoreWriter::~StoreWriter()
{
    {
        const std::lock_guard lock(m_Mutex);
        m_IsEnding = true;
    }
    m_Work.notify_one();
    m_Thread.join();
}

// ---- What the owner calls

void StoreWriter::put(StoreEntry entry)
{
    std::vector<StoreEntry> entries;
    entries.push_back(std::move(entry));
    put(std::move(entries));
}

void StoreWriter::put(std::vector<StoreEntry> entries)
{
    bool isNews = false;
    {
        const std::lock_guard lock(m_Mutex);
        m_Status.handed += entries.size();
        if (m_Status.hasGivenUp)
            return;
        if (!m_NextSince)
            m_NextSince = Clock::now();
        if (!m_Status.waitingSince)
            m_Status.waitingSince = m_NextSince;
        for (StoreEntry &entry : entries) {
            m_WaitingBytes += bytesOf(entry);
            m_Waiting.push_back(std::move(entry));
        }
        if (m_WaitingBytes > m_Limits.waitingBytes) {
            giveUp();
            isNews = true;
        }
    }
    if (isNews && m_Changed)
        m_Changed();
    m_Work.notify_one();
}

StoreWriter::Status StoreWriter::status() const
{
    const std::lock_guard lock(m_Mutex);
    return m_Status;
}

bool StoreWriter::waitUntilDurable(std::chrono::milliseconds most)
{
    std::unique_lock lock(m_Mutex);
    const std::uint64_t wanted = m_Status.handed;
    m_Done.wait_for(lock, most, [&] { return m_Status.durable >= wanted || m_Status.hasGivenUp; });
    return m_Status.durable >= wanted && !m_Status.hasGivenUp;
}

void StoreWriter::abandon()
{
    const std::lock_guard lock(m_Mutex);
    giveUp();
}

void StoreWriter::startAnew()
{
    {
        const std::lock_guard lock(m_Mutex);
        giveUp();
        ++m_Generation;
        m_IsToStartAnew = true;
        m_Status.hasGivenUp = false;
        m_Status.durable = m_Status.handed;
    }
    m_Work.notify_one();
}

void StoreWriter::giveUp()
{
    m_Waiting.clear();
    m_WaitingBytes = 0;
    m_Status.hasGivenUp = true;
    m_Status.waitingSince.reset();
    m_NextSince.reset();
    m_Done.notify_all();
}

// ---- The thread

void StoreWriter::run()
{
    Target target(m_File);
    std::unique_lock lock(m_Mutex);
    while (true) {
        m_Work.wait(lock, [this] { return hasWork() || m_IsEnding; });
        if (!hasWork())
            return;
        const bool isLast = m_IsEnding;
        writeBatch(lock, target);
        if (isLast || !m_Status.problem || !hasWork())
            continue;
        m_Work.wait_for(lock, m_Limits.retryAfter,
                        [this] { return m_IsToStartAnew || m_IsEnding; });
    }
}

void StoreWriter::writeBatch(std::unique_lock<std::mutex> &lock, Target &target)
{
    const bool isAnew = std::exchange(m_IsToStartAnew, false);
    const std::uint64_t generation = m_Generation;
    const bool isEnding = m_IsEnding;
    Entries batch = std::exchange(m_Waiting, {});
    const std::size_t bytes = m_WaitingBytes;
    const std::optional<Clock::time_point> since = std::exchange(m_NextSince, {});
    lock.unlock();

    if (isAnew)
        target.clear();
    const Result<void> done = batch.empty() ? Result<void>() : target.write(batch);

    lock.lock();
    const std::optional<Failure> before = m_Status.problem;
    m_Status.problem = done ? std::nullopt : std::optional(done.error());
    // Else the batch counts for nothing any more.
    if (generation == m_Generation && !m_Status.hasGivenUp) {
        if (done) {
            m_Status.durable += batch.size();
            m_WaitingBytes -= bytes;
            m_Status.waitingSince = m_NextSince;
        } else if (isEnding || target.isLost(done.error())) {
            giveUp();
        } else {
            std::move(m_Waiting.begin(), m_Waiting.end(), std::back_inserter(batch));
            m_Waiting = std::move(batch);
            m_NextSince = since;
        }
    }
    m_Done.notify_all();
    if (m_Changed && !isSame(before, m_Status.problem)) {
        lock.unlock();
        m_Changed();
        lock.lock();
    }
}

} // namespace TAMBO::sessions
