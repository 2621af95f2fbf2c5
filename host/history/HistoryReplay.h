// SPDX-License-Identifier: GPL-3.0-or-later
// What a journal was told, done again: from the model and the history that were stored to those of
// the moment when the program ended.
#pragma once

#include "EditBytes.h"
#include "PointerSet.h"
#include "StepRecords.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace TAMBO {

class Compound;
class History;

class HistoryReplay
{
public:
    // A reader of the bytes that finds the objects there are, and those it has made itself.
    using MakeReader = std::function<std::unique_ptr<EditReader>(std::string_view bytes)>;

    // The history is made the recorder for as long as this lives, has no limit, and nobody keeps a
    // journal.
    HistoryReplay(History &history, MakeReader makeReader);
    ~HistoryReplay();
    HistoryReplay(const HistoryReplay &) = delete;
    HistoryReplay &operator=(const HistoryReplay &) = delete;

    // One record of StepRecords. A failure leaves everything as it was before the record; those
    // behind it have no meaning then.
    [[nodiscard]] Result<void> replay(std::string_view record);

private:
    [[nodiscard]] Result<void> replayStep(const StepRecords::Step &stored);
    // Of a step that has taken these out of the tree so far.
    using Taken = PointerSet<Compound>;
    [[nodiscard]] Result<std::unique_ptr<Edit>> edit(std::string_view bytes,
                                                     const Taken &taken) const;
    [[nodiscard]] bool isAllThere(const Edit &edit, const Taken &taken) const;
    [[nodiscard]] bool travel(std::size_t steps);
    [[nodiscard]] bool forget(bool isFirst);
    [[nodiscard]] bool mark(const Compound &object, const StateMark &mark);

    History &m_History;
    MakeReader m_MakeReader;
    std::size_t m_Limit;
    EditRecorder *m_Recorder;
    // Of the edit that is looked at; kept for its room.
    mutable std::vector<const Compound *> m_Needed;
};

} // namespace TAMBO
