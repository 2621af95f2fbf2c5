// SPDX-License-Identifier: GPL-3.0-or-later
#include "LateWindow.h"

#include "WhenPainted.h"

#include <QWidget>
#include <QWindow>

#include <utility>

namespace TAMBO::app {

LateWindow::LateWindow(std::function<QWidget &()> window) : m_Window(std::move(window))
{
    m_Patience.setSingleShot(true);
    connect(&m_Patience, &QTimer::timeout, this,
            [this] { m_Other == nullptr ? showNow() : showBelowNow(); });
}

LateWindow::~LateWindow() = default;

void LateWindow::expect()
{
    m_IsExpected = true;
    // From when events are looked at: what comes before is no wait for the file.
    QTimer::singleShot(0, this, [this] {
        if (m_IsExpected && m_Other == nullptr)
            m_Patience.start(kPatienceMilliseconds);
    });
}

void LateWindow::showNow()
{
    if (!m_IsExpected)
        return;
    m_IsExpected = false;
    m_Patience.stop();
    m_Window().show();
}

void LateWindow::showBelow(QWidget &other)
{
    if (!m_IsExpected)
        return;
    m_Other = &other;
    m_Patience.start(kLongestMilliseconds);
    whenPainted(
        *this,
        [this] { return m_Other == nullptr ? QList<QWidget *>() : QList<QWidget *>{m_Other}; },
        [this] { m_Patience.start(kRestMilliseconds); });
}

// Most window managers put a window that does not ask for the focus below the one that has it, for
// the others the other one is raised.
void LateWindow::showBelowNow()
{
    if (!m_IsExpected)
        return;
    if (m_Other == nullptr || !m_Other->isVisible())
        return showNow();
    m_IsExpected = false;
    m_Patience.stop();
    QWidget &window = m_Window();
    window.setAttribute(Qt::WA_ShowWithoutActivating);
    window.show();
    window.setAttribute(Qt::WA_ShowWithoutActivating, false);
    m_Other->raise();
}

} // namespace TAMBO::app

#include "moc_LateWindow.cpp"
