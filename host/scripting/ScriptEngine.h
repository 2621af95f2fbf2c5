// SPDX-License-Identifier: GPL-3.0-or-later
// What runs scripts on the objects of this process, and what they run in. The workbench opens the
// library that does it when the first script is run: a start costs nothing.
#pragma once

#include "Result.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TAMBO {
class Compound;
class History;
} // namespace TAMBO

namespace TAMBO::scripting {

enum class OutputKind { Output, Error };

struct ScriptOutcome
{
    enum class End { Done, Failed, Stopped };

    End end = End::Done;
    // The last line of the exception: "ValueError: …".
    std::string message;
    // Where: the innermost line of the script's own files. In the console "<console>".
    std::string file;
    // From 1; 0 when it is not known.
    int line = 0;
    // Of that line.
    std::string text;
    // All of the traceback, without our own machinery.
    std::string trace;
    // Steps of undo that stay.
    std::size_t steps = 0;
    // What the script has changed behind them.
    bool hasTakenBack = false;
    // What the script has ended with: sys.exit(2).
    int exitStatus = 0;
};

// The workbench. Lives longer than any run.
class ScriptHost
{
public:
    virtual ~ScriptHost() = default;
    // The one that records the edits of this process.
    virtual History &history() = 0;
    // UTF-8, as it comes; often a part of a line, and maybe a great many of them.
    virtual void write(std::string_view text, OutputKind kind) = 0;
    // In the GUI thread, about 20 times a second. The model may be in the middle of a step. False,
    // once for each time that the user asks for it, raises KeyboardInterrupt in the script; from
    // the second time on again and again, until the script has ended.
    virtual bool breathe() = 0;
    // An object has come from a file, whose name is a full one.
    virtual void opened(const Compound &, const std::filesystem::path &) { }
    // Inside of a run: a step has ended that has changed something, and the next has not begun.
    virtual void stepEnded() { }
    // What a session has beside objects and steps, such as windows: bytes, by their names.
    using SessionValues = std::vector<std::pair<std::string, std::string>>;
    virtual SessionValues sessionValues() { return {}; }
    // A session's file, whose name is a full one, has all that is loaded now.
    virtual void sessionSaved(const std::filesystem::path &) { }
};

// All of it in the GUI thread. A call while another one runs is refused: it fails with a message.
class ScriptEngine
{
public:
    virtual ~ScriptEngine() = default;
    // With names of its own. What it changes is a step of undo, or several when it opens steps
    // itself.
    virtual ScriptOutcome run(const std::filesystem::path &file,
                              const std::vector<std::string> &arguments) = 0;

    // ---- The console, which keeps its names from one input to the next

    // False when another line is to come. What is wrong is complete.
    virtual bool isComplete(const std::string &source) = 0;
    // The value of an expression is written.
    virtual ScriptOutcome execute(const std::string &source) = 0;
    struct Completion
    {
        // What the words stand for begins here, and ends at the cursor.
        std::size_t start = 0;
        std::vector<std::string> words;
    };
    // UTF-8; places count bytes.
    virtual Completion complete(const std::string &source, std::size_t cursor) = 0;
    // The console's names.
    virtual void forget() = 0;
};

// Opens the library at the first call. There is one engine in a process; it works for the host that
// was given last.
[[nodiscard]] Result<ScriptEngine *> scriptEngine(ScriptHost &host);

} // namespace TAMBO::scripting
