// SPDX-License-Identifier: GPL-3.0-or-later
// The history as bytes, and what is made of these again.
#include "Compound.h"
#include "EditLoading.h"
#include "History.h"
#include "StepObjects.h"
#include "StoredObject.h"

#include <algorithm>
#include <utility>

namespace TAMBO {

namespace {

constexpr std::size_t kMostAdded = 0x3fffffff;

void storeMarks(const SavedMarks &marks, EditWriter &out)
{
    // The order of the table is another one in each run.
    std::vector<std::pair<std::uint32_t, const Compound *>> objects;
    for (const auto &[object, mark] : marks.all())
        objects.emplace_back(identityOf(*object), object);
    std::ranges::sort(objects);
    out.number(objects.size());
    for (const auto &[identity, object] : objects) {
        const SavedMarks::Mark mark = *marks.find(*object);
        out.reference(*object);
        out.number(mark.steps);
        out.number(mark.lost.number());
    }
}

EditParts loadParts(EditReader &in)
{
    return EditParts::ofNumber(static_cast<std::uint32_t>(in.number(~std::uint32_t(0))));
}

const Compound *loadHolder(EditReader &in, const StepObjects &objects)
{
    const Compound *const object = in.reference();
    if (object != nullptr && !objects.holds(*object))
        in.fail("a mark is of an object that belongs to nothing");
    return object;
}

SavedMarks loadMarks(EditReader &in, const StepObjects &objects)
{
    SavedMarks marks;
    for (std::size_t count = in.count(3); count > 0; --count) {
        const Compound *const object = loadHolder(in, objects);
        const std::size_t steps = in.number();
        const EditParts lost = loadParts(in);
        if (!in.failed())
            marks.mark(*object, {steps, lost});
    }
    return marks;
}

} // namespace

// ---- Steps

void HistoryStep::store(EditWriter &out) const
{
    out.flag(m_IsDone);
    out.text(m_Name == nullptr ? std::string_view() : *m_Name);
    out.number(m_Added);
    out.number(m_Edits.size());
    for (const std::unique_ptr<Edit> &edit : m_Edits)
        edit->store(out);
}

Result<HistoryStep> HistoryStep::load(EditReader &in)
{
    const bool isDone = in.flag();
    const std::string name(in.text());
    const std::size_t added = in.number(kMostAdded);
    std::vector<std::unique_ptr<Edit>> edits;
    for (std::size_t count = in.count(3); count > 0; --count) {
        LoadedEdit edit = loadEdit(in);
        if (!edit)
            return edit.error();
        edits.push_back(std::move(edit.value()));
    }
    if (edits.size() <= added)
        in.fail("a step has no changes");
    if (in.failed())
        return in.failure();
    HistoryStep step(std::move(edits));
    step.m_IsDone = isDone;
    step.m_IsTrusted = false;
    step.describe(name, step.m_Edits.size() - added);
    return step;
}

// ---- All of them

std::vector<const Compound *> History::ownedObjects() const
{
    std::vector<const Compound *> owned;
    for (const HistoryStep &step : m_Steps)
        step.appendOwned(owned);
    return owned;
}

bool History::consistsOf(std::size_t begin, std::size_t end, const EditTest &test) const
{
    return std::all_of(m_Steps.begin() + std::ptrdiff_t(begin),
                       m_Steps.begin() + std::ptrdiff_t(end),
                       [&](const HistoryStep &step) { return step.consistsOf(test); });
}

void History::storeStep(std::size_t step, EditWriter &out) const
{
    m_Steps[step].store(out);
}

void History::storeState(EditWriter &out) const
{
    out.number(m_Steps.size());
    out.number(m_Position);
    out.number(m_Forgotten);
    out.flag(m_IsAsTravelled);
    storeMarks(m_Saved, out);
    storeMarks(m_Written, out);
    out.number(m_ForgottenChanges.size());
    m_ForgottenChanges.forEach([&](const Compound &holder, EditPart part, std::size_t index) {
        out.reference(holder);
        out.number(static_cast<std::uint64_t>(part));
        out.number(index);
    });
}

Result<void> History::loadStep(EditReader &in)
{
    Result<HistoryStep> step = HistoryStep::load(in);
    if (!step)
        return step.error();
    m_Bytes += step.value().bytes();
    m_Steps.push_back(std::move(step.value()));
    m_Steps.back().setNumber(++m_LastState);
    return {};
}

Result<void> History::loadState(EditReader &in)
{
    const std::size_t steps = in.number();
    const std::size_t position = in.number(m_Steps.size());
    const std::size_t forgotten = in.number();
    const bool isAsTravelled = in.flag();
    StepObjects objects(m_Steps);
    SavedMarks saved = loadMarks(in, objects);
    SavedMarks written = loadMarks(in, objects);
    ForgottenChanges changes;
    for (std::size_t count = in.count(3); count > 0; --count) {
        const Compound *const holder = loadHolder(in, objects);
        const auto part =
            static_cast<EditPart>(in.number(static_cast<std::uint64_t>(EditPart::HeaderNumbers)));
        const std::size_t index = in.number();
        if (!in.failed())
            changes.restore(*holder, part, index);
    }
    for (std::size_t i = 0; i < m_Steps.size(); ++i) {
        if (m_Steps[i].isDone() != (i < position))
            in.fail("steps are done out of order");
    }
    // Whoever asks what has changed goes by these numbers.
    if (steps != m_Steps.size() || std::max(saved.latest(), written.latest()) > forgotten + steps)
        in.fail("steps are missing");
    if (!in.failed() && !objects.areInOrder(position))
        in.fail("a step changes an object that is not there then");
    if (in.failed())
        return in.failure();
    m_Position = position;
    m_Forgotten = forgotten;
    m_IsAsTravelled = isAsTravelled;
    m_Saved = std::move(saved);
    m_Written = std::move(written);
    m_ForgottenChanges = std::move(changes);
    keepLimit();
    tellChange();
    return {};
}

} // namespace TAMBO
