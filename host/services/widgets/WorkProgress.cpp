// SPDX-License-Identifier: GPL-3.0-or-later
#include "WorkProgress.h"

#include "Hooks.h"
#include "ProgressBox.h"

#include <QApplication>

#include <chrono>
#include <utility>

namespace TAMBO::services {

namespace {

qint64 steadyMilliseconds()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

} // namespace

WorkProgress::WorkProgress(WindowInUse windowInUse)
    : m_WindowInUse(std::move(windowInUse)), m_Clock(steadyMilliseconds)
{
    modelHooks().working = [this](const char *what, double share, bool canBeGivenUp) {
        return goesOn(what, share, canBeGivenUp);
    };
    modelHooks().worked = [this] { end(); };
}

WorkProgress::~WorkProgress()
{
    modelHooks().working = nullptr;
    modelHooks().worked = nullptr;
    end();
}

bool WorkProgress::isShown() const noexcept
{
    return m_Box != nullptr;
}

bool WorkProgress::goesOn(const char *what, double share, bool canBeGivenUp)
{
    const qint64 now = m_Clock();
    if (!m_IsUnderWay) {
        m_IsUnderWay = true;
        m_IsStopped = false;
        m_Begin = now;
        m_LastLook = now;
    }
    if (now - m_Begin < kPatience || now - m_LastLook < kBetweenLooks)
        return true;
    if (m_Box == nullptr)
        show(what);
    // Parts of the same work may differ in that.
    m_Box->setStoppable(canBeGivenUp);
    m_Box->setDone(share);
    // Work that an event begins is within this one, and not asked about.
    QCoreApplication::processEvents();
    m_LastLook = m_Clock();
    return !m_IsStopped;
}

void WorkProgress::show(const char *what)
{
    for (QWidget *const window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->updatesEnabled()) {
            window->setUpdatesEnabled(false);
            m_Frozen.emplace_back(window);
        }
    }
    m_Box = new ProgressBox(tr("Please Wait"), QString(), m_WindowInUse());
    m_Box->setObjectName(QStringLiteral("WorkProgress"));
    m_Box->setText(QCoreApplication::translate("LongWork", what));
    m_Box->setWindowModality(Qt::ApplicationModal);
    QObject::connect(m_Box, &ProgressBox::stopped, m_Box, [this] {
        m_IsStopped = true;
        m_Box->setText(tr("Cancelling…"));
    });
    m_Box->show();
}

void WorkProgress::end()
{
    m_IsUnderWay = false;
    delete m_Box;
    for (const QPointer<QWidget> &window : std::exchange(m_Frozen, {})) {
        if (window)
            window->setUpdatesEnabled(true);
    }
}

} // namespace TAMBO::services
