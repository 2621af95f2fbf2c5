// SPDX-License-Identifier: GPL-3.0-or-later
// The registered subscribers, told in the order in which they came.
#pragma once

#include "Publisher.h"

#include <cstddef>
#include <vector>

class Subscriber;

namespace TAMBO {

class SubscriberList
{
public:
    [[nodiscard]] static SubscriberList &get();

    void add(Subscriber *subscriber) { m_Subscribers.push_back(subscriber); }
    void remove(Subscriber *subscriber) noexcept;

    // Guards are refused between the two.
    void beginPublishing() noexcept { m_IsPublishing = true; }
    void endPublishing() noexcept { m_IsPublishing = false; }
    [[nodiscard]] bool isPublishing() const noexcept { return m_IsPublishing; }

    // Whoever registers meanwhile is not told, and whoever has gone is not either.
    void notify(Publisher::ActionType action, const Subscriber *originator) noexcept;

private:
    // Null where one has gone during a notification.
    std::vector<Subscriber *> m_Subscribers;
    bool m_IsPublishing = false;
    bool m_IsNotifying = false;
};

} // namespace TAMBO
