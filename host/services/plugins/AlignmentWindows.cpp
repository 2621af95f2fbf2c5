// SPDX-License-Identifier: GPL-3.0-or-later
#include "AlignmentWindows.h"

#include "AlignmentWindow.h"
#include "AlignmentWindowObserver.h"

namespace TAMBO::services {

AlignmentWindows &AlignmentWindows::instance()
{
    // Never destroyed: observers of plug-ins may still go while the program ends.
    static auto *const windows = new AlignmentWindows;
    return *windows;
}

void AlignmentWindows::open(AlignmentWindow &window)
{
    if (isOpen(window))
        return;
    m_Open.push_back(&window);
    m_Used.push_back(&window);
    m_Observers.each([&](AlignmentWindowObserver &observer) { observer.windowOpened(window); });
}

void AlignmentWindows::close(AlignmentWindow &window)
{
    if (!isOpen(window))
        return;
    forget(window);
    m_Observers.each([&](AlignmentWindowObserver &observer) { observer.windowGoing(window); });
}

void AlignmentWindows::activate(AlignmentWindow &window)
{
    if (!isOpen(window))
        return;
    std::erase(m_Used, &window);
    m_Used.push_back(&window);
    m_Observers.each([&](AlignmentWindowObserver &observer) { observer.windowActivated(window); });
}

void AlignmentWindows::forget(AlignmentWindow &window)
{
    std::erase(m_Open, &window);
    std::erase(m_Used, &window);
}

bool AlignmentWindows::isOpen(const AlignmentWindow &window) const
{
    return std::ranges::find(m_Open, &window) != m_Open.end();
}

AlignmentWindow *AlignmentWindows::lastUsed() const
{
    return m_Used.empty() ? nullptr : m_Used.back();
}

} // namespace TAMBO::services

namespace TAMBO {

AlignmentWindowObserver::AlignmentWindowObserver()
{
    services::AlignmentWindows::instance().observers().add(this);
}

AlignmentWindowObserver::~AlignmentWindowObserver()
{
    services::AlignmentWindows::instance().observers().remove(this);
}

void AlignmentWindowObserver::windowOpened(AlignmentWindow &) { }

void AlignmentWindowObserver::windowGoing(AlignmentWindow &) { }

void AlignmentWindowObserver::windowActivated(AlignmentWindow &) { }

} // namespace TAMBO
