// SPDX-License-Identifier: GPL-3.0-or-later
#include "StepFollowers.h"

#include "Compound.h"
#include "Hooks.h"
#include "Space.h"

#include <algorithm>
#include <exception>
#include <string>
#include <unordered_map>

namespace TAMBO {

namespace {

// The one below Space that the object is or is a part of; null when it is out of the tree.
Compound *topOf(const Compound &object)
{
    const Compound *const root = Space::instance();
    const Compound *top = &object;
    while (top->Parent() != nullptr && top->Parent() != root)
        top = top->Parent();
    // Every object is the workbench's, which may change it; edits promise not to.
    return top->Parent() != nullptr ? const_cast<Compound *>(top) : nullptr;
}

StepChanges changesOf(const std::vector<std::unique_ptr<Edit>> &inverses)
{
    StepChanges changes;
    std::unordered_map<const Compound *, std::size_t> places;
    std::vector<const Compound *> holders;
    for (const std::unique_ptr<Edit> &edit : inverses) {
        holders.clear();
        edit->appendHolders(holders);
        const EditPart part = edit->part();
        const bool isOfTop = part == EditPart::Whole || part == EditPart::Arrival;
        for (const Compound *const holder : holders) {
            if (holder == Space::instance())
                continue;
            Compound *const top = topOf(*holder);
            if (top == nullptr) {
                changes.hasDeletions = true;
                continue;
            }
            const auto [place, isFirst] = places.try_emplace(top, changes.objects.size());
            if (isFirst)
                changes.objects.push_back({top, false, true});
            StepChange &change = changes.objects[place->second];
            change.isNew = change.isNew || isOfTop;
            change.isDisplayOnly = change.isDisplayOnly && part == EditPart::Display;
        }
    }
    return changes;
}

} // namespace

StepFollowers &StepFollowers::get()
{
    // Never destroyed: a follower may be a static object that goes later.
    static auto *const followers = new StepFollowers;
    return *followers;
}

void StepFollowers::remove(StepFollower *follower) noexcept
{
    if (m_Calls > 0)
        std::ranges::replace(m_Followers, follower, static_cast<StepFollower *>(nullptr));
    else
        std::erase(m_Followers, follower);
}

void StepFollowers::call(const std::vector<std::unique_ptr<Edit>> &inverses) noexcept
{
    ++m_Calls;
    const std::size_t count = m_Followers.size();
    for (std::size_t i = 0; i < count; ++i) {
        try {
            if (m_Followers[i] == nullptr)
                continue;
            const StepChanges changes = changesOf(inverses);
            m_Followers[i]->stepEnds(changes);
        } catch (const std::exception &error) {
            writeLog(std::string("A plug-in failed to follow a change: ") + error.what(),
                     LogSeverity::Error);
        } catch (...) {
            writeLog("A plug-in failed to follow a change.", LogSeverity::Error);
        }
    }
    if (--m_Calls == 0)
        std::erase(m_Followers, nullptr);
}

} // namespace TAMBO

StepFollower::StepFollower()
{
    TAMBO::StepFollowers::get().add(this);
}

StepFollower::~StepFollower()
{
    TAMBO::StepFollowers::get().remove(this);
}
