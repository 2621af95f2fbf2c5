// SPDX-License-Identifier: GPL-3.0-or-later
#include "History.h"

#include "ChangeScope.h"
#include "Compound.h"
#include "Publisher.h"
#include "StepJournal.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

History::~History()
{
    if (editRecorder() == this)
        setEditRecorder(nullptr);
}

void History::begin()
{
    m_Recorded.clear();
    m_Own.reset();
}

void History::record(std::unique_ptr<Edit> inverse)
{
    // Undo itself is no new step.
    if (m_IsApplying)
        releaseLater(std::move(inverse));
    else
        m_Recorded.push_back(std::move(inverse));
}

void History::describe(const std::string &name, std::size_t own)
{
    m_Name = name;
    m_Own = own;
}

void History::end()
{
    if (m_Recorded.empty())
        return;
    m_IsAsTravelled = false;
    losePathsBehind(m_Position);
    drop(m_Steps.begin() + std::ptrdiff_t(m_Position), m_Steps.end());
    HistoryStep &step = m_Steps.emplace_back(std::exchange(m_Recorded, {}));
    step.setNumber(++m_LastState);
    if (m_Own)
        step.describe(m_Name, *m_Own);
    m_Bytes += m_Steps.back().bytes();
    m_Position = m_Steps.size();
    keepLimit();
    tellChange();
}

bool History::undo()
{
    return canUndo() && goTo(m_Position - 1);
}

bool History::redo()
{
    return canRedo() && goTo(m_Position + 1);
}

bool History::goTo(std::size_t position)
{
    if (position > m_Steps.size() || isChanging() || Publisher::isPublishing())
        return false;
    if (position == m_Position)
        return true;

    const Compound *locked = m_Steps[stepTowards(position)].lock();
    auto journey = Journey::Lock;
    if (locked == nullptr) {
        // What arrives meanwhile is a new step.
        const ArrivalPause pause;
        m_IsApplying = true;
        const bool wasAsTravelled = std::exchange(m_IsAsTravelled, true);
        journey = travelTo(position, true, &locked);
        if (journey == Journey::GivenUp)
            m_IsAsTravelled = wasAsTravelled;
        m_IsApplying = false;
    }
    if (journey == Journey::Lock && modelHooks().refused)
        modelHooks().refused(*locked);
    else if (journey == Journey::Damage)
        refuse("Undo and redo stop at the step \"" + label(stepTowards(position)) +
               "\": what the session has of it does not fit the objects, or would take more memory "
               "than there is.");
    return journey == Journey::There;
}

std::uint64_t History::state() const noexcept
{
    return m_Position == 0 ? m_FirstState : m_Steps[m_Position - 1].number();
}

std::optional<std::size_t> History::stepsTo(std::uint64_t state) const noexcept
{
    if (state == m_FirstState)
        return m_Forgotten;
    const auto found = std::ranges::find(m_Steps, state, &HistoryStep::number);
    if (found == m_Steps.end())
        return std::nullopt;
    return m_Forgotten + std::size_t(found - m_Steps.begin()) + 1;
}

std::optional<std::uint64_t> History::stateAfter(std::size_t steps) const noexcept
{
    if (steps < m_Forgotten || steps - m_Forgotten > m_Steps.size())
        return std::nullopt;
    return steps == m_Forgotten ? m_FirstState : m_Steps[steps - m_Forgotten - 1].number();
}

std::size_t History::stepTowards(std::size_t position) const noexcept
{
    return position < m_Position ? m_Position - 1 : m_Position;
}

History::Journey History::travelTo(std::size_t position, bool isByHand, const Compound **locked)
{
    const ChangeScope scope(Publisher::Update);
    const std::size_t start = m_Position;
    const auto kind = isByHand ? LongWork::Kind::Reading : LongWork::Kind::Fixed;
    auto journey = Journey::There;
    while (position != m_Position && journey == Journey::There) {
        const std::size_t next = stepTowards(position);
        if (isByHand && (*locked = m_Steps[next].lock()) != nullptr) {
            journey = Journey::Lock;
        } else if (const auto toggled = toggle(next, kind); toggled != HistoryStep::Toggled::Done) {
            const bool isDamaged = toggled == HistoryStep::Toggled::Damaged;
            journey = isDamaged ? Journey::Damage : Journey::GivenUp;
        }
    }
    // These were done a moment ago.
    while (journey == Journey::GivenUp && m_Position != start)
        static_cast<void>(toggle(stepTowards(start), LongWork::Kind::Fixed));
    if (StepJournal *const journal = this->journal(); journal && journey != Journey::GivenUp)
        journal->travelled(stepsDone());
    keepLimit();
    tellChange();
    return journey;
}

HistoryStep::Toggled History::toggle(std::size_t index, LongWork::Kind kind)
{
    HistoryStep &step = m_Steps[index];
    const std::size_t before = step.bytes();
    const auto toggled = step.toggle(kind);
    if (toggled == HistoryStep::Toggled::Done) {
        m_Bytes += step.bytes() - before;
        m_Position = step.isDone() ? index + 1 : index;
    }
    return toggled;
}

void History::forEachPastStep(const Visitor &visit) const
{
    for (std::size_t step = m_Position; step > 0; --step) {
        const HistoryStep &past = m_Steps[step - 1];
        if (!visit({past.edits(), [&past] { return past.label(); }, m_Forgotten + step - 1,
                    past.isTrusted()}))
            return;
    }
}

StepJournal *History::journal() const noexcept
{
    return editRecorder() == this ? stepJournal() : nullptr;
}

std::string History::label(std::size_t step) const
{
    return step < m_Steps.size() ? m_Steps[step].label() : std::string();
}

std::string History::undoLabel() const
{
    return canUndo() ? label(m_Position - 1) : std::string();
}

std::string History::redoLabel() const
{
    return canRedo() ? label(m_Position) : std::string();
}

void History::setLimit(std::size_t bytes)
{
    m_Limit = bytes;
    keepLimit();
    tellChange();
}

void History::drop(std::vector<HistoryStep>::iterator first,
                   std::vector<HistoryStep>::iterator last)
{
    forgetOwned(first, last);
    for (auto step = first; step != last; ++step) {
        m_Bytes -= step->bytes();
        // Not freed at once: a window may show an object that goes until it has been told.
        for (std::unique_ptr<Edit> &edit : step->takeEdits())
            releaseLater(std::move(edit));
    }
    m_Steps.erase(first, last);
}

void History::keepLimit()
{
    while (m_Bytes > m_Limit) {
        const bool isFirst = m_Position > 1;
        if (isFirst)
            dropFirst();
        else if (m_Steps.size() > m_Position + 1)
            dropLast();
        else
            return;
        if (StepJournal *const journal = this->journal())
            journal->forgotten(isFirst);
    }
}

void History::dropFirst()
{
    m_ForgottenChanges.add(m_Steps.front(), m_Forgotten);
    m_FirstState = m_Steps.front().number();
    drop(m_Steps.begin(), m_Steps.begin() + 1);
    --m_Position;
    ++m_Forgotten;
}

void History::dropLast()
{
    losePathsBehind(m_Steps.size() - 1);
    drop(m_Steps.end() - 1, m_Steps.end());
}

void History::clear()
{
    drop(m_Steps.begin(), m_Steps.end());
    m_Recorded.clear();
    m_Position = 0;
    m_FirstState = ++m_LastState;
    m_Forgotten = 0;
    m_ForgottenChanges.clear();
    m_Saved.clear();
    m_Written.clear();
    for (auto &[number, mark] : m_Kept)
        mark.clear();
    if (StepJournal *const journal = this->journal())
        journal->cleared();
    tellChange();
}

void History::setChangeCallback(std::function<void()> callback)
{
    m_ChangeCallback = std::move(callback);
}

void History::tellChange()
{
    ++m_Revision;
    if (m_ChangeCallback)
        m_ChangeCallback();
}

} // namespace TAMBO
