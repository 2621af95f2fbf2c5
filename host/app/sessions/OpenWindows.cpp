// SPDX-License-Identifier: GPL-3.0-or-later
#include "OpenWindows.h"

#include "Alignment.h"
#include "AlignmentWindow.h"
#include "AlignmentWindows.h"
#include "ObjectIndex.h"
#include "ValueBytes.h"
#include "WindowState.h"

#include <QMainWindow>
#include <QPointer>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace TAMBO::app {

namespace {

constexpr auto kWindowsForm = WindowState::Form::WithDocks;
constexpr std::size_t kMostWindows = 200;

struct KeptWindow
{
    WindowState state;
    // Which of them was used when, the last one with the highest number.
    std::uint64_t use = 0;
};

std::uint64_t useOf(AlignmentWindow *window)
{
    const std::vector<AlignmentWindow *> &used = services::AlignmentWindows::instance().used();
    return std::uint64_t(std::ranges::find(used, window) - used.begin());
}

Result<std::vector<KeptWindow>> readWindows(std::string_view content)
{
    ValueReader in(content);
    const std::uint64_t form = in.number();
    if (form < std::uint64_t(WindowState::Form::WithoutFont) || form > std::uint64_t(kWindowsForm))
        in.fail("its form is unknown");
    std::vector<KeptWindow> kept;
    for (std::uint64_t left = in.number(kMostWindows); left > 0 && !in.failed(); --left) {
        const std::uint64_t use = in.number();
        kept.push_back({WindowState::read(in, WindowState::Form(form)), use});
    }
    if (!in.atEnd())
        in.fail("there is something behind its end");
    if (in.failed())
        return Failure(FailureKind::BadInput, in.cause());
    return kept;
}

} // namespace

OpenWindows::OpenWindows(Doors doors) : m_Doors(std::move(doors)) { }

OpenWindows::~OpenWindows() = default;

std::vector<AlignmentWindow *> OpenWindows::windows() const
{
    std::vector<AlignmentWindow *> open = AlignmentWindow::All();
    std::erase_if(open, [this](const AlignmentWindow *window) {
        return window->mainWindow()->isHidden() || !m_Doors.canShowIn(*window->mainWindow());
    });
    if (open.size() > kMostWindows)
        open.resize(kMostWindows);
    return open;
}

std::string OpenWindows::store() const
{
    std::vector<AlignmentWindow *> shown = windows();
    std::erase_if(shown, [](const AlignmentWindow *window) { return !window->alignment(); });
    m_HadAny = m_HadAny || !shown.empty();
    if (shown.empty() && !m_Waiting.empty())
        return m_Waiting;
    if (!m_HadAny)
        return {};
    ValueWriter out;
    out.number(std::uint64_t(kWindowsForm));
    out.number(shown.size());
    for (AlignmentWindow *const window : shown) {
        out.number(useOf(window));
        WindowState::of(*window).write(out);
    }
    return out.take();
}

AlignmentWindow *OpenWindows::open(Alignment &alignment) const
{
    for (AlignmentWindow *const window : windows()) {
        if (window->alignment() != nullptr)
            continue;
        m_Doors.showIn(*window->mainWindow(), alignment);
        return window;
    }
    return AlignmentWindow::Of(m_Doors.open(alignment));
}

Result<void> OpenWindows::load(std::string_view content, const ObjectIndex &objects)
{
    const Result<std::vector<KeptWindow>> kept = readWindows(content);
    if (!kept)
        return kept.error();
    m_AreLoaded = true;
    m_HadAny = true;
    std::vector<std::pair<std::uint64_t, QPointer<AlignmentWindow>>> opened;
    for (const KeptWindow &window : kept.value()) {
        auto *const alignment = dynamic_cast<Alignment *>(objects.find(window.state.alignment()));
        if (alignment == nullptr || alignment->Parent() == nullptr)
            continue;
        AlignmentWindow *const shown = open(*alignment);
        if (shown == nullptr) {
            // Those that are open count from now on.
            if (opened.empty())
                m_Waiting = content;
            break;
        }
        window.state.apply(*shown);
        opened.emplace_back(window.use, shown);
    }
    std::ranges::stable_sort(opened, {}, [](const auto &window) { return window.first; });
    for (const auto &[use, window] : opened) {
        if (window != nullptr)
            window->mainWindow()->raise();
    }
    if (!opened.empty() && opened.back().second != nullptr)
        opened.back().second->mainWindow()->activateWindow();
    return {};
}

void OpenWindows::clear()
{
    m_AreLoaded = false;
    m_HadAny = false;
    m_Waiting.clear();
}

} // namespace TAMBO::app
