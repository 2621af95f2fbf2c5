// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowContents.h"

#include "ShownObjects.h"
#include "Space.h"

#include <QWidget>

#include <vector>

namespace TAMBO::services {

namespace {

bool isInSpace(const Compound *object)
{
    const Compound *const root = Space::instance();
    while (object != nullptr && object != root)
        object = object->Parent();
    return object != nullptr;
}

} // namespace

WindowContents &WindowContents::instance()
{
    // Never destroyed: windows may still go while the program ends.
    static auto *const contents = new WindowContents;
    return *contents;
}

void WindowContents::set(QWidget *window, Compound *object)
{
    Compound *const before = of(window);
    if (window == nullptr || before == object)
        return;
    disconnect(window, &QObject::destroyed, this, nullptr);
    if (object == nullptr) {
        m_Shown.erase(window);
    } else {
        m_Shown[window] = {window, object};
        connect(window, &QObject::destroyed, this, [this](QObject *gone) { m_Shown.erase(gone); });
    }
    emit changed(window, before, object);
}

Compound *WindowContents::of(const QWidget *window) const
{
    const auto found = m_Shown.find(window);
    return found == m_Shown.end() ? nullptr : found->second.object;
}

// What has been deleted can be asked until everybody has heard of it.
void WindowContents::commDelete()
{
    std::vector<QWidget *> emptied;
    for (const auto &[key, shown] : m_Shown)
        if (!isInSpace(shown.object))
            emptied.push_back(shown.window);
    for (QWidget *window : emptied)
        set(window, nullptr);
}

} // namespace TAMBO::services

void ShownObjects::Set(QWidget *window, TAMBO::Compound *object)
{
    TAMBO::services::WindowContents::instance().set(window, object);
}

TAMBO::Compound *ShownObjects::Of(const QWidget *window)
{
    return TAMBO::services::WindowContents::instance().of(window);
}

#include "moc_WindowContents.cpp"
