// SPDX-License-Identifier: GPL-3.0-or-later
#include "SubscriberList.h"

#include "Hooks.h"
#include "Subscriber.h"

#include <algorithm>
#include <exception>

namespace TAMBO {

SubscriberList &SubscriberList::get()
{
    // Never destroyed: a subscriber may be a static object that goes later.
    static auto *const list = new SubscriberList;
    return *list;
}

void SubscriberList::remove(Subscriber *subscriber) noexcept
{
    if (m_IsNotifying)
        std::ranges::replace(m_Subscribers, subscriber, static_cast<Subscriber *>(nullptr));
    else
        std::erase(m_Subscribers, subscriber);
}

void SubscriberList::notify(Publisher::ActionType action, const Subscriber *originator) noexcept
{
    m_IsNotifying = true;
    const std::size_t count = m_Subscribers.size();
    for (std::size_t i = 0; i < count; ++i) {
        Subscriber *const subscriber = m_Subscribers[i];
        if (subscriber == nullptr || subscriber == originator)
            continue;
        try {
            switch (action) {
            case Publisher::Update:
                subscriber->commUpdate();
                break;
            case Publisher::Add:
                subscriber->commAdd();
                break;
            case Publisher::Delete:
                subscriber->commDelete();
                break;
            }
        } catch (const std::exception &error) {
            writeLog(std::string("A view failed to follow a change: ") + error.what(),
                     LogSeverity::Error);
        } catch (...) {
            writeLog("A view failed to follow a change.", LogSeverity::Error);
        }
    }
    m_IsNotifying = false;
    std::erase(m_Subscribers, nullptr);
}

} // namespace TAMBO
