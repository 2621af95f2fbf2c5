// SPDX-License-Identifier: GPL-3.0-or-later
#include "ThreadWork.h"

#include <utility>

namespace companion {

ThreadWork::ThreadWork(std::function<void(const Stop &stop)> work)
    : m_End(std::async(std::launch::async, [this, work = std::move(work)] { work(m_Stop); }))
{ }

ThreadWork::~ThreadWork()
{
    m_Stop = true;
    if (!m_IsDone)
        m_End.wait();
}

bool ThreadWork::isDone(std::chrono::microseconds most)
{
    if (!m_IsDone && m_End.wait_for(most) == std::future_status::ready) {
        m_IsDone = true;
        m_End.get();
    }
    return m_IsDone;
}

} // namespace companion
