// SPDX-License-Identifier: GPL-3.0-or-later
// The step under way: how deep guards and operations are nested, the inverses so far, and what is
// to be published when the outermost one ends.
#pragma once

#include "Edit.h"
#include "Hooks.h"
#include "Publisher.h"

#include <array>
#include <memory>
#include <set>
#include <string>
#include <vector>

class Subscriber;

namespace TAMBO {

// An edit that takes in further changes of its step. It is told when the step ends.
class GrowingEdit : public Edit
{
public:
    virtual void close() noexcept = 0;
};

class ChangeSession
{
public:
    [[nodiscard]] static ChangeSession &get();

    void open() noexcept { ++m_Depth; }
    // Ends the step when it is the outermost.
    void close() noexcept;
    [[nodiscard]] bool isOpen() const noexcept { return m_Depth > 0; }

    // A guard of that type was granted.
    void noteGuard(Publisher::ActionType action, Subscriber *originator) noexcept;
    void publishAtEnd(Publisher::ActionType action) noexcept;
    // An originator that is gone is never compared with a new subscriber at its address.
    void forget(const Subscriber *originator) noexcept;

    void setRecorder(EditRecorder *recorder) noexcept { m_Recorder = recorder; }
    [[nodiscard]] EditRecorder *recorder() const noexcept { return m_Recorder; }
    [[nodiscard]] bool isRecording() const noexcept { return m_Recorder != nullptr; }
    void record(std::unique_ptr<Edit> inverse);
    void recordGrowing(std::unique_ptr<GrowingEdit> inverse);
    void releaseLater(std::unique_ptr<Edit> edit) { m_Released.push_back(std::move(edit)); }

    void writeLogOnce(const std::string &message, LogSeverity severity);

private:
    struct Publication
    {
        bool isDue = false;
        // Not notified; null when the guards of the type differ in it.
        Subscriber *originator = nullptr;
    };

    void handToRecorder();

    unsigned m_Depth = 0;
    EditRecorder *m_Recorder = nullptr;
    std::array<Publication, 3> m_Publications;
    std::vector<std::unique_ptr<Edit>> m_Step;
    std::vector<GrowingEdit *> m_Growing;
    std::vector<std::unique_ptr<Edit>> m_Released;
    std::set<std::string> m_Logged;
};

} // namespace TAMBO
