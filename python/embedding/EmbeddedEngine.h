// SPDX-License-Identifier: GPL-3.0-or-later
// Runs scripts by the Python of this process, in the thread that has made it.
#pragma once

#include "Breathing.h"
#include "Embedding.h"
#include "ScriptEngine.h"
#include "ScriptOutput.h"

#include <pybind11/pybind11.h>

#include <memory>
#include <string>
#include <vector>

namespace TAMBO::scripting {

class EmbeddedEngine final : public ScriptEngine, public script::Embedding
{
public:
    // Python runs.
    EmbeddedEngine();
    // Kept until the process ends.
    ~EmbeddedEngine() override = default;
    // Once; throws what importing the package throws.
    void start();
    void setHost(ScriptHost &host);

    ScriptOutcome run(const std::filesystem::path &file,
                      const std::vector<std::string> &arguments) override;
    bool isComplete(const std::string &source) override;
    ScriptOutcome execute(const std::string &source) override;
    Completion complete(const std::string &source, std::size_t cursor) override;
    void forget() override;

    [[nodiscard]] History &history() override { return m_Host->history(); }
    void opened(const Compound &object, const std::filesystem::path &file) override
    {
        m_Host->opened(object, file);
    }
    void stepEnded() override { m_Host->stepEnded(); }
    std::vector<std::pair<std::string, std::string>> sessionValues() override
    {
        return m_Host->sessionValues();
    }
    void sessionSaved(const std::filesystem::path &file) override { m_Host->sessionSaved(file); }

    // The process ends: what scripts have left open is closed, and nobody is told any more.
    void end();

private:
    // Why nothing can be run now; empty when it can.
    [[nodiscard]] std::string hindrance() const;
    void connectOutput();
    // With what is thrown on the way.
    template <typename Work>
    ScriptOutcome outcomeOfWork(const pybind11::object &runner, const Work &work);
    void flush();
    // Runs the codes one after the other as one step; what is none is left out.
    ScriptOutcome runCodes(const std::string &name, const pybind11::object &runner,
                           const std::vector<pybind11::object> &codes);
    // What was raised; none when nothing was.
    pybind11::object evaluate(const pybind11::object &runner,
                              const std::vector<pybind11::object> &codes);
    // Of what was raised before anything has run.
    ScriptOutcome outcomeOf(pybind11::error_already_set &error, const pybind11::object &runner);
    ScriptOutcome outcomeOf(const pybind11::object &error, const pybind11::object &runner,
                            bool isStopped);

    // Never freed: the interpreter ends with the process.
    ScriptHost *m_Host = nullptr;
    ScriptOutput m_Output;
    Breathing m_Breathing;
    pybind11::module_ m_Workbench;
    pybind11::object m_Console;
    pybind11::object m_FlushText;
    script::RunSteps *m_Steps = nullptr;
    bool m_IsRunning = false;
};

} // namespace TAMBO::scripting
