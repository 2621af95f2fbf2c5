// SPDX-License-Identifier: GPL-3.0-or-later
#include "Companions.h"

#include "AlignmentWindow.h"
#include "Commands.h"
#include "ProgramFolder.h"
#include "Texts.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>

namespace companion {

namespace {

// When the windows of the start are there.
constexpr auto kTidyAfter = std::chrono::seconds(3);

} // namespace

Companions::Companions()
    : m_Menu(tr("&Alignment"),
             [this](QMenu &menu) { fillMenu(menu, [this] { return lastUsed(); }); })
{
    for (TAMBO::AlignmentWindow *const window : TAMBO::AlignmentWindow::All())
        windowOpened(*window);
    QTimer::singleShot(kTidyAfter, QCoreApplication::instance(), &ProgramFolder::removeLeftBehind);
}

Companions::~Companions() = default;

Companion *Companions::lastUsed() const
{
    const auto found = m_Companions.find(TAMBO::AlignmentWindow::LastUsed());
    return found == m_Companions.end() ? nullptr : &found->second->companion;
}

void Companions::windowOpened(TAMBO::AlignmentWindow &window)
{
    m_Companions.try_emplace(&window, std::make_unique<OfWindow>(window));
}

void Companions::windowGoing(TAMBO::AlignmentWindow &window)
{
    m_Companions.erase(&window);
}

} // namespace companion
