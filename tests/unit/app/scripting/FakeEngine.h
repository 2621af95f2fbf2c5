// SPDX-License-Identifier: GPL-3.0-or-later
// Runs what a test gives it, in place of Python.
#pragma once

#include "ScriptEngine.h"

#include <QDeadlineTimer>

#include <functional>

class FakeEngine : public TAMBO::scripting::ScriptEngine
{
public:
    using Host = TAMBO::scripting::ScriptHost;
    using Outcome = TAMBO::scripting::ScriptOutcome;

    Outcome run(const std::filesystem::path &file,
                const std::vector<std::string> &arguments) override
    {
        m_Files.push_back(file.string());
        m_Arguments = arguments;
        return m_Act(*m_Host);
    }
    bool isComplete(const std::string &source) override
    {
        return !source.ends_with(':') && (source.find(':') == source.npos || source.back() == '\n');
    }
    Outcome execute(const std::string &source) override
    {
        m_Sources.push_back(source);
        return m_Act(*m_Host);
    }
    Completion complete(const std::string &source, std::size_t cursor) override
    {
        m_CompletedAt = cursor;
        const std::size_t dot = source.rfind('.', cursor);
        Completion found{dot == source.npos ? 0 : dot + 1, {}};
        const std::string typed = source.substr(found.start, cursor - found.start);
        for (const std::string word : {"alignments", "alignment", "open", "undo"}) {
            if (word.starts_with(typed))
                found.words.push_back(word);
        }
        return found;
    }
    void forget() override { }

    // As a script that does nothing else until then; false when it is stopped, or too long.
    static bool breatheUntil(Host &host, const std::function<bool()> &condition)
    {
        const QDeadlineTimer deadline(60'000);
        while (!condition()) {
            if (!host.breathe() || deadline.hasExpired())
                return false;
        }
        return true;
    }

    Host *m_Host = nullptr;
    std::function<Outcome(Host &)> m_Act = [](Host &) { return Outcome(); };
    std::vector<std::string> m_Files;
    std::vector<std::string> m_Arguments;
    std::vector<std::string> m_Sources;
    std::size_t m_CompletedAt = 0;
};
