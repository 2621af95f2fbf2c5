// SPDX-License-Identifier: GPL-3.0-or-later
// Loads plug-ins and keeps a record of each, good or bad. Nothing is ever unloaded: objects of a
// plug-in's classes may live until the program ends.
#pragma once

#include "PluginRecord.h"

#include <QString>

#include <deque>
#include <optional>

namespace TAMBO::services {

class PluginLoader
{
public:
    // kit: what this workbench has, which decides what it takes.
    explicit PluginLoader(const KitNumber &kit = {}) : m_Kit(kit) { }

    // Reads what stands beside the library and leaves the library alone. A file that is known
    // already gives its record; one that was missing is looked for again. The record stays where it
    // is for the life of the loader.
    const PluginRecord &add(const QString &file);
    // One that is not to be used, since counts has its name.
    const PluginRecord &addOverruled(const QString &file, const QString &counts);
    // Opens the library of one that was found. Every symbol is resolved at once.
    const PluginRecord &open(const PluginRecord &plugin);
    const PluginRecord &load(const QString &file) { return open(add(file)); }

    // In the order in which they became known.
    [[nodiscard]] const std::deque<PluginRecord> &records() const noexcept { return m_Records; }
    // Null when no plug-in of this file name, path aside, is known.
    [[nodiscard]] const PluginRecord *find(const QString &name) const;

    // False when the plug-in cannot be used or throws.
    bool execute(const PluginRecord &plugin);
    // Nothing when the plug-in cannot be used or throws.
    [[nodiscard]] std::optional<bool> isDone(const PluginRecord &plugin);
    // Asks every plug-in, the last one first, whether it is done, and lets it clean up if not.
    // False, with a line in the log for each, when some are not done even then.
    bool shutDown();

private:
    struct Functions
    {
        void (*execute)() = nullptr;
        bool (*isDone)() = nullptr;
        void (*cleanup)() = nullptr;
    };

    PluginRecord &recordOf(const QString &file);
    void describe(PluginRecord &record, const QString &asFound) const;
    static void open(PluginRecord &record, Functions &functions);
    [[nodiscard]] std::size_t indexOf(const PluginRecord &plugin) const;
    template <typename Function> bool call(std::size_t index, const char *name, Function function);

    KitNumber m_Kit;
    std::deque<PluginRecord> m_Records;
    // By place in m_Records.
    std::deque<Functions> m_Functions;
};

} // namespace TAMBO::services
