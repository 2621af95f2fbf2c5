// SPDX-License-Identifier: GPL-3.0-or-later
// Undo and redo of every recorded change of the model, across all windows. Owned by the workbench.
#pragma once

#include "ForgottenChanges.h"
#include "HistoryStep.h"
#include "PastSteps.h"
#include "SavedMarks.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TAMBO {

class Alignment;
class Compound;
class FreedObjects;
class KeptState;
class StepJournal;
class Structure;
struct StateMark;

// A top-level object with changes that are in no file.
struct UnsavedObject
{
    Compound *object;
    EditParts parts;
};

class History final : public EditRecorder, public PastSteps
{
public:
    static constexpr std::size_t kDefaultLimit = std::size_t(256) << 20;

    History() = default;
    ~History() override;

    // ---- EditRecorder

    void begin() override;
    void record(std::unique_ptr<Edit> inverse) override;
    void describe(const std::string &name, std::size_t own) override;
    void end() override;
    [[nodiscard]] bool isTravelling() const noexcept override { return m_IsApplying; }

    // ---- PastSteps

    void forEachPastStep(const Visitor &visit) const override;
    [[nodiscard]] std::size_t stepsToSaved(const Compound &object) const override
    {
        return m_Saved.stepsOf(object);
    }

    // ---- Moving along the steps. Refused, with nothing changed, inside a guard, while changes are
    // published, and when an object of the step is locked.

    [[nodiscard]] bool canUndo() const noexcept { return m_Position > 0; }
    [[nodiscard]] bool canRedo() const noexcept { return m_Position < m_Steps.size(); }
    bool undo();
    bool redo();
    // To the state after the first position steps. Stops where a step is refused, and is false
    // then.
    bool goTo(std::size_t position);
    // The last change was one of these, and no new step.
    [[nodiscard]] bool isAsTravelled() const noexcept { return m_IsAsTravelled; }

    // ---- The list, oldest step first

    [[nodiscard]] std::size_t size() const noexcept { return m_Steps.size(); }
    // How many of the steps are done.
    [[nodiscard]] std::size_t position() const noexcept { return m_Position; }
    // "move gap in SeqAli", or with the name of the step for the kind; empty beyond the last step.
    [[nodiscard]] std::string label(std::size_t step) const;
    // Of the step that undo() or redo() would carry out; empty without one.
    [[nodiscard]] std::string undoLabel() const;
    [[nodiscard]] std::string redoLabel() const;

    // ---- Memory

    // Beyond the limit the steps farthest away are dropped; the next one to undo and the next one
    // to redo are always kept.
    void setLimit(std::size_t bytes);
    [[nodiscard]] std::size_t limit() const noexcept { return m_Limit; }
    [[nodiscard]] std::size_t bytes() const noexcept { return m_Bytes; }
    // Forgets all steps, and with them what is saved.
    void clear();

    // ---- States, for whoever saves all of them at once

    // The number of the present state: undo and redo lead back to it, and no other state of this
    // run of the program has it.
    [[nodiscard]] std::uint64_t state() const noexcept;
    // After how many steps the state comes, those that the history has forgotten included; nothing
    // when no step leads there. The other way round for whoever keeps that beyond this run.
    [[nodiscard]] std::optional<std::size_t> stepsTo(std::uint64_t state) const noexcept;
    [[nodiscard]] std::optional<std::uint64_t> stateAfter(std::size_t steps) const noexcept;
    // Which of the objects are what they were in that state, as far as files hold them. None, when
    // no step leads there.
    [[nodiscard]] std::vector<bool> areAsInState(const std::vector<const Compound *> &objects,
                                                 std::uint64_t state) const;

    // ---- Unsaved work

    void markSaved(const Compound &object);
    // To a file that lacks something. It counts as saved in that state once somebody has accepted
    // that.
    void markWritten(const Compound &object);
    void acceptWritten(const Compound &object);
    // The same for the state that the object was in when it was kept, whatever has been done with
    // it since then. Nothing happens when the object is gone.
    void markSaved(const KeptState &state);
    void markWritten(const KeptState &state);
    // What the steps between the object's saved state and now have changed of it.
    [[nodiscard]] EditParts unsavedParts(const Compound &object) const;
    [[nodiscard]] bool isModified(const Compound &object) const;
    // In the order of the tree. Sequences that an alignment shows are saved with it.
    [[nodiscard]] std::vector<UnsavedObject> unsavedObjects() const;
    // How many steps have changed something that is in no file. Of those that the history has
    // forgotten, the last one for each part of an object; a step of a great many edits counts
    // without a look into it when nothing has been saved since.
    [[nodiscard]] std::size_t unsavedSteps() const;
    // Another number after each change of the list, the position or a saved mark.
    [[nodiscard]] std::uint64_t revision() const noexcept { return m_Revision; }
    // Structures that the alignment shows by residue numbers which no file of theirs has.
    [[nodiscard]] std::vector<const Structure *>
    renumberedStructures(const Alignment &alignment) const;

    // ---- Beyond the program's run. What is told to a StepJournal leads from a state that was
    // stored to the present one.

    // The objects that go with the steps. Whoever stores the steps stores them, too, and loads them
    // first.
    [[nodiscard]] std::vector<const Compound *> ownedObjects() const;
    // Whether that holds of all edits of the steps in [begin, end).
    using EditTest = std::function<bool(const Edit &edit)>;
    [[nodiscard]] bool consistsOf(std::size_t begin, std::size_t end, const EditTest &test) const;
    void storeStep(std::size_t step, EditWriter &out) const;
    // All that is not in the steps.
    void storeState(EditWriter &out) const;
    // Into a history without steps: all of these, oldest first, and then the state. After a failure
    // it is to be cleared.
    [[nodiscard]] Result<void> loadStep(EditReader &in);
    [[nodiscard]] Result<void> loadState(EditReader &in);

    // Called after every change of the list, the position or a saved mark.
    void setChangeCallback(std::function<void()> callback);
    // Called before top-level objects, or parts of them, are freed for good.
    using FreeCallback = std::function<void(const FreedObjects &freed)>;
    void setFreeCallback(FreeCallback callback) { m_FreeCallback = std::move(callback); }

private:
    friend class HistoryReplay;
    friend class KeptState;
    [[nodiscard]] std::size_t keepState(const Compound &object);
    void dropState(std::size_t number) { m_Kept.erase(number); }

    // Of all steps there have ever been.
    [[nodiscard]] std::size_t stepsDone() const noexcept { return m_Forgotten + m_Position; }
    // What differs between the state after saved steps and the present one; costs what the steps
    // in between have changed. An object may come several times.
    void forEachChangeSince(std::size_t saved, const HistoryStep::ChangeVisitor &visit) const;
    void forEachChangeOf(std::size_t first, std::size_t end,
                         const HistoryStep::ChangeVisitor &visit) const;
    // The same of each object since it was saved itself, or as a part of its top-level object.
    using UnsavedVisitor =
        std::function<void(const Compound &top, const Compound &holder, EditPart part)>;
    // What the step of that number, counted as marks do it, has changed, and whether it is done.
    [[nodiscard]] bool isUnsaved(const Compound &top, std::size_t step, bool isDone) const
    {
        return isDone == (step >= m_Saved.stepsOf(top));
    }
    void forEachUnsavedChange(const UnsavedVisitor &visit) const;
    [[nodiscard]] EditParts partsByRows(const Compound &object, std::size_t saved) const;
    void save(const Compound &object, const SavedMarks::Mark &mark);
    // Before the undone steps from first on are dropped.
    void losePathsBehind(std::size_t first);
    void forgetOwned(std::vector<HistoryStep>::iterator first,
                     std::vector<HistoryStep>::iterator last);

    [[nodiscard]] std::size_t stepTowards(std::size_t position) const noexcept;
    enum class Journey {
        There,
        // What it stopped at on the way.
        Lock,
        Damage,
        // The user has given it up, and it is where it began.
        GivenUp
    };
    // By hand or as it was done before, when nobody may give it up and no lock matters.
    [[nodiscard]] Journey travelTo(std::size_t position, bool isByHand, const Compound **locked);
    [[nodiscard]] HistoryStep::Toggled toggle(std::size_t index, LongWork::Kind kind);
    void dropFirst();
    void dropLast();
    // Null when another history records, too.
    [[nodiscard]] StepJournal *journal() const noexcept;
    void tellMark(const Compound &object, const StateMark &mark) const;
    void drop(std::vector<HistoryStep>::iterator first, std::vector<HistoryStep>::iterator last);
    void keepLimit();
    void tellChange();

    std::vector<HistoryStep> m_Steps;
    std::size_t m_Position = 0;
    // Of the state before the first step, and the last one that was given.
    std::uint64_t m_FirstState = 0;
    std::uint64_t m_LastState = 0;
    std::vector<std::unique_ptr<Edit>> m_Recorded;
    // Of what is being recorded.
    std::string m_Name;
    std::optional<std::size_t> m_Own;
    std::size_t m_Limit = kDefaultLimit;
    std::size_t m_Bytes = 0;
    // Steps that the limit has dropped from the beginning, and what they have changed.
    std::size_t m_Forgotten = 0;
    ForgottenChanges m_ForgottenChanges;
    SavedMarks m_Saved;
    SavedMarks m_Written;
    // One mark each, by their numbers.
    std::map<std::size_t, SavedMarks> m_Kept;
    std::size_t m_LastKept = 0;
    std::function<void()> m_ChangeCallback;
    FreeCallback m_FreeCallback;
    std::uint64_t m_Revision = 0;
    bool m_IsApplying = false;
    bool m_IsAsTravelled = false;
};

} // namespace TAMBO
