// SPDX-License-Identifier: GPL-3.0-or-later
#include "HistoryReplay.h"

#include "Compound.h"
#include "EditLoading.h"
#include "History.h"
#include "ObjectsEdit.h"
#include "Space.h"
#include "StepReplay.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace TAMBO {

namespace {

void noteTaken(const Edit &edit, PointerSet<Compound> &taken)
{
    const auto *const moving = dynamic_cast<const ObjectsEdit *>(&edit);
    if (moving == nullptr || !moving->isRemoval())
        return;
    std::vector<const Compound *> members;
    moving->appendSubjects(members);
    for (const Compound *const member : members)
        taken.insert(member);
}

} // namespace

// What is out of the tree goes with the step that has taken it out, and with no other one.
bool HistoryReplay::isAllThere(const Edit &edit, const Taken &taken) const
{
    m_Needed.clear();
    edit.appendNeeded(m_Needed);
    return std::ranges::all_of(m_Needed, [&taken](const Compound *top) {
        while (top->Parent() != nullptr)
            top = top->Parent();
        return top == Space::instance() || taken.contains(top);
    });
}

HistoryReplay::HistoryReplay(History &history, MakeReader makeReader)
    : m_History(history),
      m_MakeReader(std::move(makeReader)),
      m_Limit(history.limit()),
      m_Recorder(editRecorder())
{
    setEditRecorder(&history);
    history.setLimit(std::numeric_limits<std::size_t>::max());
}

HistoryReplay::~HistoryReplay()
{
    m_History.setLimit(m_Limit);
    setEditRecorder(m_Recorder);
}

Result<void> HistoryReplay::replay(std::string_view record)
{
    const std::unique_ptr<EditReader> in = m_MakeReader(record);
    const auto kind = static_cast<StepRecords::Kind>(in->character());
    bool isDone = false;
    switch (kind) {
    case StepRecords::Kind::Step: {
        const StepRecords::Step stored = StepRecords::loadStep(*in);
        return in->failed() ? in->failure() : replayStep(stored);
    }
    case StepRecords::Kind::Travel: {
        const std::size_t steps = in->number();
        isDone = in->atEnd() && !in->failed() && travel(steps);
        break;
    }
    case StepRecords::Kind::Forgotten: {
        const bool isFirst = in->flag();
        isDone = in->atEnd() && !in->failed() && forget(isFirst);
        break;
    }
    case StepRecords::Kind::Cleared:
        isDone = in->atEnd() && !in->failed();
        if (isDone)
            m_History.clear();
        break;
    case StepRecords::Kind::Mark: {
        const Compound *const object = in->reference();
        const StateMark found = StepRecords::loadMark(*in);
        isDone = !in->failed() && mark(*object, found);
        break;
    }
    default:
        break;
    }
    if (!isDone)
        in->fail("it does not follow from what was before");
    return in->failed() ? Result<void>(in->failure()) : Result<void>();
}

LoadedEdit HistoryReplay::edit(std::string_view bytes, const Taken &taken) const
{
    const std::unique_ptr<EditReader> in = m_MakeReader(bytes);
    LoadedEdit edit = loadEdit(*in);
    if (!edit)
        return edit;
    if (!in->atEnd())
        in->fail("there is more than a change");
    else if (!isAllThere(*edit.value(), taken))
        in->fail("it changes an object that is not there then");
    else if (!edit.value()->fits())
        in->fail("a change does not fit the objects");
    return in->failed() ? LoadedEdit(in->failure()) : std::move(edit);
}

Result<void> HistoryReplay::replayStep(const StepRecords::Step &stored)
{
    StepReplay step{std::string(stored.name)};
    Taken taken;
    for (std::size_t i = 0; i < stored.edits.size(); ++i) {
        if (i == stored.own)
            step.endOwn();
        const LoadedEdit made = edit(stored.edits[i], taken);
        if (!made) {
            step.takeBack();
            return made.error();
        }
        // A cast takes its time, and most edits are of rows.
        if (made.value()->actsOnWhole())
            noteTaken(*made.value(), taken);
        step.apply(*made.value());
    }
    return {};
}

bool HistoryReplay::travel(std::size_t steps)
{
    if (steps < m_History.m_Forgotten || steps - m_History.m_Forgotten > m_History.size())
        return false;
    const std::size_t position = steps - m_History.m_Forgotten;
    const std::size_t before = m_History.m_Position;
    m_History.m_IsApplying = true;
    const auto travelTo = [this](std::size_t place) {
        return m_History.travelTo(place, false, nullptr) == History::Journey::There;
    };
    const bool isThere = travelTo(position);
    if (!isThere)
        static_cast<void>(travelTo(before));
    m_History.m_IsApplying = false;
    m_History.m_IsAsTravelled = m_History.m_IsAsTravelled || isThere;
    return isThere;
}

// As the limit does it.
bool HistoryReplay::forget(bool isFirst)
{
    if (isFirst ? m_History.m_Position <= 1 : m_History.size() <= m_History.m_Position + 1)
        return false;
    const ChangeScope scope;
    if (isFirst)
        m_History.dropFirst();
    else
        m_History.dropLast();
    return true;
}

bool HistoryReplay::mark(const Compound &object, const StateMark &mark)
{
    if (mark.steps > m_History.m_Forgotten + m_History.size())
        return false;
    if (mark.isSaved)
        m_History.save(object, {mark.steps, mark.lost});
    else
        m_History.m_Written.mark(object, {mark.steps, mark.lost});
    return true;
}

} // namespace TAMBO
