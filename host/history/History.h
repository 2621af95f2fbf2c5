// SPDX-License-Identifier: GPL-3.0-or-later
// Undo and redo of every recorded change of the model, across all windows. Owned by the workbench.
#pragma once

#include "HistoryStep.h"
#include "SavedMarks.h"

#include <functional>
#include <string>
#include <vector>

namespace TAMBO {

class Compound;

class History final : public EditRecorder
{
public:
    static constexpr std::size_t kDefaultLimit = std::size_t(256) << 20;

    History() = default;
    ~History() override;

    // ---- EditRecorder

    void begin() override;
    void record(std::unique_ptr<Edit> inverse) override;
    void end() override;

    // ---- Moving along the steps. Refused, with nothing changed, inside a guard, while changes are
    // published, and when an object of the step is locked.

    [[nodiscard]] bool canUndo() const noexcept { return m_Position > 0; }
    [[nodiscard]] bool canRedo() const noexcept { return m_Position < m_Steps.size(); }
    bool undo();
    bool redo();
    // To the state after the first position steps. Stops where a step is refused, and is false
    // then.
    bool goTo(std::size_t position);

    // ---- The list, oldest step first

    [[nodiscard]] std::size_t size() const noexcept { return m_Steps.size(); }
    // How many of the steps are done.
    [[nodiscard]] std::size_t position() const noexcept { return m_Position; }
    // "move gap in SeqAli"; empty beyond the last step.
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

    // ---- Unsaved work

    void markSaved(const Compound &object);
    // Whether a step between the object's saved state and now has changed it.
    [[nodiscard]] bool isModified(const Compound &object) const;
    // The modified objects that are in the tree, each once.
    [[nodiscard]] std::vector<const Compound *> modifiedObjects() const;

    // Called after every change of the list, the position or a saved mark.
    void setChangeCallback(std::function<void()> callback);

private:
    void toggle(std::size_t index);
    void drop(std::vector<HistoryStep>::iterator first, std::vector<HistoryStep>::iterator last);
    void keepLimit();
    void tellChange() const;

    std::vector<HistoryStep> m_Steps;
    std::size_t m_Position = 0;
    std::vector<std::unique_ptr<Edit>> m_Recorded;
    std::size_t m_Limit = kDefaultLimit;
    std::size_t m_Bytes = 0;
    SavedMarks m_Saved;
    std::function<void()> m_ChangeCallback;
    bool m_IsApplying = false;
};

} // namespace TAMBO
