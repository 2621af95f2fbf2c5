// SPDX-License-Identifier: GPL-3.0-or-later
// Objects of plug-ins that are called one after the other, and may come and go meanwhile. One that
// throws stays in the list and is called no more. The list itself must outlive the call.
#pragma once

#include "Logger.h"

#include <QString>

#include <algorithm>
#include <exception>
#include <utility>
#include <vector>

namespace TAMBO::services {

template <typename Called> class CallList
{
public:
    // what: the kind of object, for the log.
    explicit CallList(const char *what) : m_What(what) { }

    // Before the first one for which goesBefore(added, other) holds.
    template <typename GoesBefore> void add(Called *added, GoesBefore goesBefore)
    {
        const auto place = std::ranges::find_if(
            m_Entries, [&](const Entry &other) { return goesBefore(*added, *other.called); });
        m_Entries.insert(place, {added, ++m_LastNumber});
    }
    void add(Called *added) { m_Entries.push_back({added, ++m_LastNumber}); }
    void remove(const Called *removed)
    {
        std::erase_if(m_Entries, [=](const Entry &entry) { return entry.called == removed; });
    }
    void clear() { m_Entries.clear(); }

    // Those included that have failed.
    template <typename Predicate> [[nodiscard]] bool any(Predicate predicate) const
    {
        return std::ranges::any_of(
            m_Entries, [&](const Entry &entry) { return predicate(std::as_const(*entry.called)); });
    }
    template <typename Change> void changeAll(Change change)
    {
        for (const Entry &entry : m_Entries)
            change(*entry.called);
    }

    // Calls those that are in the list now and still are when it is their turn, until one gives
    // true, which is given back.
    template <typename Call> Called *firstOf(Call call)
    {
        const std::vector<Entry> round = m_Entries;
        for (const Entry &entry : round) {
            if (give(entry, call))
                return entry.called;
        }
        return nullptr;
    }
    template <typename Call> void each(Call call)
    {
        (void)firstOf([&call](Called &called) {
            call(called);
            return false;
        });
    }
    // Calls that one, when it is in the list.
    template <typename Call> bool one(const Called *wanted, Call call)
    {
        const auto entry = std::ranges::find(m_Entries, wanted, &Entry::called);
        return entry != m_Entries.end() && give(Entry(*entry), call);
    }

private:
    struct Entry
    {
        Called *called = nullptr;
        // Another object may come to the same address.
        unsigned long number = 0;
        bool hasFailed = false;
    };

    [[nodiscard]] Entry *find(const Entry &wanted)
    {
        const auto found = std::ranges::find(m_Entries, wanted.number, &Entry::number);
        return found == m_Entries.end() ? nullptr : &*found;
    }
    template <typename Call> bool give(const Entry &wanted, Call &call)
    {
        const Entry *entry = find(wanted);
        if (entry == nullptr || entry->hasFailed)
            return false;
        try {
            return call(*wanted.called);
        } catch (const std::exception &error) {
            leaveOut(wanted, QString::fromLocal8Bit(error.what()));
        } catch (...) {
            leaveOut(wanted, QStringLiteral("no reason is given"));
        }
        return false;
    }
    void leaveOut(const Entry &failed, const QString &reason)
    {
        if (Entry *entry = find(failed))
            entry->hasFailed = true;
        Logger::Write(QStringLiteral("%1 of a plug-in has failed and is left out from now on: %2")
                          .arg(QLatin1String(m_What), reason),
                      Logger::Severity::Error);
    }

    const char *m_What;
    std::vector<Entry> m_Entries;
    unsigned long m_LastNumber = 0;
};

} // namespace TAMBO::services
