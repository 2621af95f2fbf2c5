// SPDX-License-Identifier: GPL-3.0-or-later
// A workbench without windows, in which scripts run. The interpreter is one for all cases.
#pragma once

#include "ChangeScope.h"
#include "History.h"
#include "ScriptEngine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

class ScriptFixture : public testing::Test, public TAMBO::scripting::ScriptHost
{
protected:
    using Outcome = TAMBO::scripting::ScriptOutcome;
    using Kind = TAMBO::scripting::OutputKind;

    ScriptFixture();
    ~ScriptFixture() override;

    // ---- ScriptHost

    TAMBO::History &history() override { return m_History; }
    void write(std::string_view text, Kind kind) override;
    bool breathe() override
    {
        ++breaths;
        return !atBreath || atBreath();
    }

    void opened(const TAMBO::Compound &object, const std::filesystem::path &file) override;
    void stepEnded() override
    {
        isStepOpen = isStepOpen || TAMBO::isChanging();
        stepsEnded.push_back(m_History.position());
    }
    SessionValues sessionValues() override { return values; }
    void sessionSaved(const std::filesystem::path &file) override { saved.push_back(file); }

    TAMBO::scripting::ScriptEngine &engine();
    // A file in a folder of the case's own.
    std::filesystem::path write(const std::string &name, const std::string &text);
    Outcome run(const std::string &text, const std::vector<std::string> &arguments = {})
    {
        return engine().run(write("script.py", text), arguments);
    }
    // As run(), and it has to end well.
    void runWell(const std::string &text);
    Outcome type(const std::string &source) { return engine().execute(source); }
    // All that was written, of both kinds, and of one.
    [[nodiscard]] std::string shown() const;
    [[nodiscard]] std::string shown(Kind kind) const;
    [[nodiscard]] std::vector<std::string> labels() const;
    // Of the alignments.
    [[nodiscard]] static std::vector<std::string> names();

    TAMBO::History m_History;
    std::filesystem::path folder;
    std::vector<std::pair<Kind, std::string>> written;
    // Names of objects, and their files.
    std::vector<std::pair<std::string, std::filesystem::path>> sources;
    // How many steps there were when one had ended, and whether another had begun.
    std::vector<std::size_t> stepsEnded;
    bool isStepOpen = false;
    SessionValues values;
    std::vector<std::filesystem::path> saved;
    // False stops the script.
    std::function<bool()> atBreath;
    int breaths = 0;
};

void PrintTo(TAMBO::scripting::ScriptOutcome::End end, std::ostream *out);
