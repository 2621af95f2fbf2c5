// SPDX-License-Identifier: GPL-3.0-or-later
// The step under way: how deep guards and operations are nested, the inverses so far, and what is
// to be published when the outermost one ends. Steps that are interrupted by an arrival wait below
// it.
#pragma once

#include "Edit.h"
#include "Hooks.h"
#include "Publisher.h"
#include "StepJournal.h"

#include <array>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
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

    void open() noexcept
    {
        if (m_Step.depth++ == 0)
            tellJournal();
    }
    // Ends the step when it is the outermost.
    void close() noexcept;
    [[nodiscard]] bool isOpen() const noexcept { return m_Step.depth > 0; }

    // Begins a step of its own, in the state before the step under way, and ends it: what that step
    // had done is done again then, before anybody hears of the new one.
    void interrupt();
    void resume() noexcept;
    // At once, or as soon as nothing is being published.
    void whenNothingIsPublished(std::function<void()> task);
    void pauseArrivals() noexcept { ++m_Pauses; }
    void endPause() noexcept;

    // A guard of that type was granted.
    void noteGuard(Publisher::ActionType action, Subscriber *originator) noexcept;
    void publishAtEnd(Publisher::ActionType action) noexcept;
    // An originator that is gone is never compared with a new subscriber at its address.
    void forget(const Subscriber *originator) noexcept;

    void setRecorder(EditRecorder *recorder) noexcept { m_Recorder = recorder; }
    [[nodiscard]] EditRecorder *recorder() const noexcept { return m_Recorder; }
    [[nodiscard]] bool isRecording() const noexcept { return m_Recorder != nullptr; }
    void setJournal(StepJournal *journal) noexcept { m_Journal = journal; }
    [[nodiscard]] StepJournal *journal() const noexcept { return m_Journal; }
    // Of one row of an alignment, before it changes or goes to another place.
    void tellOfRow(const Compound &alignment, std::size_t row) noexcept;
    void tellOfMove(const Compound &alignment, std::size_t from, std::size_t to) noexcept;
    void record(std::unique_ptr<Edit> inverse);
    void recordGrowing(std::unique_ptr<GrowingEdit> inverse);
    // Whether the step has changed nothing yet, and what it changes from now on can be taken back.
    [[nodiscard]] bool canTakeBack() const noexcept
    {
        return isRecording() && isOpen() && m_Step.inverses.empty();
    }
    // All that the step has changed; it goes on as if it had just begun.
    void takeBackChanges();
    void releaseLater(std::unique_ptr<Edit> edit) { m_Step.released.push_back(std::move(edit)); }

    // What the user reads of the step; a name given on a level farther out wins.
    void nameStep(const std::string &name);

    // The step under way is one that was made before, with what followers had added.
    void beginReplay(const std::string &name);
    // The changes so far are its maker's.
    void endOwn() noexcept { m_Step.own = m_Step.inverses.size(); }
    // Takes the changes of the step back, which has done nothing then.
    void discard();

    // False when it is there already.
    bool writeLogOnce(const std::string &message, LogSeverity severity);
    // A part of the step was refused: that is news for the user when nothing else is done.
    void noteRefusal(const std::string &reason, const Compound &locked);
    // For whoever hears of it at once: the step's end does not tell it any more.
    [[nodiscard]] std::string takeRefusal() noexcept;

private:
    struct Publication
    {
        bool isDue = false;
        // Not notified; null when the guards of the type differ in it.
        Subscriber *originator = nullptr;
    };

    struct Growing
    {
        GrowingEdit *edit;
        // The place of what it does among the stored edits.
        std::size_t stored;
    };

    struct Step
    {
        unsigned depth = 0;
        std::array<Publication, 3> publications;
        std::vector<std::unique_ptr<Edit>> inverses;
        std::vector<Growing> growing;
        // For the journal: what the step has done, one by one. One that grows is empty until it is
        // closed.
        std::vector<std::string> stored;
        // How many of them are its maker's own, once followers have been called.
        std::optional<std::size_t> ownStored;
        std::vector<std::unique_ptr<Edit>> released;
        std::set<std::string> logged;
        std::string refusal;
        // The object that is locked. A step that has changed something forgets both.
        const Compound *refusing = nullptr;
        // Most steps have none.
        std::unique_ptr<const std::string> name;
        // The level on which it was named.
        unsigned nameDepth = 0;
        // How many of the inverses are of its maker, once followers have been called.
        std::optional<std::size_t> own;
    };
    struct Interrupted
    {
        Step step;
        // What takes the step's changes up again, from the last to the first.
        std::vector<std::unique_ptr<Edit>> undone;
    };

    // Something is about to change.
    void tellJournal() noexcept;
    void closeGrowing() noexcept;
    [[nodiscard]] bool isJournaled() const noexcept
    {
        return m_Journal != nullptr && m_Recorder != nullptr && !m_Recorder->isTravelling();
    }
    void note(const Edit &inverse);
    void keep(std::unique_ptr<Edit> inverse);
    void handToJournal();
    // At the end of a step.
    void callFollowers() noexcept;
    void handToRecorder();
    // The step becomes two, around what arrives.
    void endFirstPart(Step &step);
    void takeBack(Interrupted &interrupted);
    void repeat(const std::vector<std::unique_ptr<Edit>> &undone);
    static void publish(const Step &ended) noexcept;
    void runWaiting() noexcept;

    EditRecorder *m_Recorder = nullptr;
    StepJournal *m_Journal = nullptr;
    Step m_Step;
    std::vector<Interrupted> m_Interrupted;
    std::deque<std::function<void()>> m_Waiting;
    unsigned m_Pauses = 0;
    bool m_IsFollowing = false;
    bool m_IsReplaying = false;
};

} // namespace TAMBO
