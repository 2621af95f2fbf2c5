// SPDX-License-Identifier: GPL-3.0-or-later
// Loads plug-ins and keeps a record of each, good or bad. Nothing is ever unloaded: objects of a
// plug-in's classes may live until the program ends.
#pragma once

#include <QString>

#include <deque>
#include <optional>
#include <string>

namespace TAMBO::services {

enum class PluginState {
    Loaded,
    MissingFile,
    // Not a library, or one that it needs is missing.
    Broken,
    UnresolvedSymbol,
    // Execute0, IsDone or Cleanup is missing.
    LacksFunction,
    ThrewOnLoad,
    // An exported function threw; it is not called again.
    ThrewInCall,
};

struct PluginRecord
{
    // Full path, and the file's name without it.
    QString file;
    QString name;
    PluginState state = PluginState::Broken;
    // One sentence for the user; empty while all is well.
    QString reason;

    [[nodiscard]] bool isUsable() const noexcept { return state == PluginState::Loaded; }
};

class PluginLoader
{
public:
    // Every symbol is resolved at once. A file that was loaded already gives its record. The record
    // stays where it is for the life of the loader.
    const PluginRecord &load(const QString &file);
    // In order of loading.
    [[nodiscard]] const std::deque<PluginRecord> &records() const noexcept { return m_Records; }
    // Null when no plug-in of this file name, path aside, was tried.
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

    void open(PluginRecord &record, Functions &functions);
    [[nodiscard]] std::size_t indexOf(const PluginRecord &plugin) const;
    template <typename Function> bool call(std::size_t index, const char *name, Function function);

    std::deque<PluginRecord> m_Records;
    // By place in m_Records.
    std::deque<Functions> m_Functions;
};

} // namespace TAMBO::services
