// SPDX-License-Identifier: GPL-3.0-or-later
#include "EmptiedWindows.h"

#include "Alignment.h"
#include "ChangeScope.h"
#include "Publisher.h"
#include "Space.h"
#include "WindowContents.h"

#include <algorithm>
#include <utility>

namespace TAMBO::app {

namespace {

Compound *inSpace(const Compound *object)
{
    Space &space = *Space::instance();
    const auto found = std::find(space.begin(), space.end(), object);
    return found == space.end() ? nullptr : *found;
}

} // namespace

EmptiedWindows::EmptiedWindows(Show show) : m_Show(std::move(show))
{
    connect(&services::WindowContents::instance(), &services::WindowContents::changed, this,
            &EmptiedWindows::noteContents);
}

// A window that shows something, or has been emptied by hand, is left alone from then on. One that
// is emptied by a deletion is emptied while it is carried out or published; whether the object has
// really gone is seen at the end.
void EmptiedWindows::noteContents(QWidget *window, const Compound *before, const Compound *now)
{
    std::erase_if(m_Entries, [window](const Entry &entry) { return entry.window == window; });
    if (before != nullptr && now == nullptr && (isChanging() || Publisher::isPublishing()))
        m_Entries.push_back({window, before});
}

void EmptiedWindows::follow(bool isTravel)
{
    std::vector<std::pair<QPointer<QWidget>, Alignment *>> back;
    std::erase_if(m_Entries, [&](const Entry &entry) {
        // A closed window may be there a little longer.
        if (entry.window == nullptr || !entry.window->isVisible())
            return true;
        Compound *const object = inSpace(entry.object);
        auto *const alignment = dynamic_cast<Alignment *>(object);
        if (isTravel && alignment != nullptr)
            back.emplace_back(entry.window, alignment);
        return object != nullptr;
    });
    // Showing one changes the list.
    for (const auto &[window, alignment] : back) {
        if (window != nullptr)
            m_Show(*window, *alignment);
    }
}

} // namespace TAMBO::app

#include "moc_EmptiedWindows.cpp"
