// SPDX-License-Identifier: GPL-3.0-or-later
#include "WorkbenchMenus.h"

#include "Logger.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>
#include <exception>
#include <utility>

WorkbenchMenu::WorkbenchMenu(const QString &title, Fill fill)
{
    TAMBO::services::WorkbenchMenus::instance().add(*this, title, std::move(fill));
}

WorkbenchMenu::~WorkbenchMenu()
{
    TAMBO::services::WorkbenchMenus::instance().remove(*this);
}

namespace TAMBO::services {

namespace {

void logFailure(const QString &title, const QString &cause)
{
    Logger::Write(QStringLiteral("The menu \"%1\" could not be filled: %2").arg(title, cause),
                  Logger::Severity::Warning);
}

} // namespace

WorkbenchMenus &WorkbenchMenus::instance()
{
    // Never destroyed: menus of libraries that stay mapped go after everything else.
    static auto *const menus = new WorkbenchMenus;
    return *menus;
}

void WorkbenchMenus::add(const WorkbenchMenu &owner, const QString &title, WorkbenchMenu::Fill fill)
{
    m_Entries.push_back({&owner, title, std::move(fill), nullptr});
    show(m_Entries.back());
}

void WorkbenchMenus::remove(const WorkbenchMenu &owner)
{
    const auto found = std::ranges::find(m_Entries, &owner, &Entry::owner);
    if (found == m_Entries.end())
        return;
    const QPointer<QMenu> menu = found->menu;
    m_Entries.erase(found);
    delete menu;
}

void WorkbenchMenus::setMenuBar(QMenuBar &bar, QAction *before)
{
    m_Bar = &bar;
    m_Before = before;
    for (Entry &entry : m_Entries)
        show(entry);
}

void WorkbenchMenus::show(Entry &entry)
{
    if (m_Bar == nullptr || !entry.fill)
        return;
    auto *const menu = new QMenu(entry.title, m_Bar);
    menu->setToolTipsVisible(true);
    m_Bar->insertMenu(m_Before, menu);
    entry.menu = menu;
    const QString title = entry.title;
    // Whoever fills it may make another menu, so the entry is not looked at afterwards.
    const WorkbenchMenu::Fill fill = entry.fill;
    try {
        fill(*menu);
    } catch (const std::exception &thrown) {
        logFailure(title, QString::fromLocal8Bit(thrown.what()));
    } catch (...) {
        logFailure(title, QStringLiteral("it threw something unknown."));
    }
}

} // namespace TAMBO::services
