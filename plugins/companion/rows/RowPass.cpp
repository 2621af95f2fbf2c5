// SPDX-License-Identifier: GPL-3.0-or-later
#include "RowPass.h"

#include "Alignment.h"
#include "AlignmentWindow.h"

#include <QMainWindow>

#include <utility>

namespace companion {

namespace {

// Between two looks at the clock, of which one takes as long as a short row.
constexpr unsigned long kRowsOfAPass = 16;

} // namespace

RowPass::RowPass(TAMBO::AlignmentWindow &window, Begin begin, Look look)
    : m_Window(&window), m_Begin(std::move(begin)), m_Look(std::move(look))
{ }

bool RowPass::goOn(std::chrono::microseconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    const TAMBO::Alignment *const alignment = m_Window == nullptr ? nullptr : m_Window->alignment();
    if (alignment == nullptr) {
        m_Alignment = nullptr;
        return false;
    }
    if (alignment != m_Alignment || alignment->layoutRevision() != m_Revision) {
        m_Alignment = alignment;
        m_Revision = alignment->layoutRevision();
        m_Row = 0;
        m_IsAtTheEnd = false;
        m_Begin(*alignment);
    }
    const unsigned long rows = alignment->height();
    while (!m_IsAtTheEnd && m_Row < rows) {
        m_IsAtTheEnd = !m_Look(*alignment, m_Row++);
        if (m_Row % kRowsOfAPass == 0 && std::chrono::steady_clock::now() >= end)
            break;
    }
    m_IsAtTheEnd = m_IsAtTheEnd || m_Row == rows;
    m_Percent = m_IsAtTheEnd ? 100 : static_cast<int>(m_Row * 100 / rows);
    return !m_IsAtTheEnd;
}

bool RowPass::isDone() const
{
    return m_IsAtTheEnd && m_Alignment != nullptr && m_Window != nullptr &&
           m_Window->alignment() == m_Alignment && m_Alignment->layoutRevision() == m_Revision;
}

bool finish(RowPass &pass, const QString &what, TAMBO::AlignmentWindow &window)
{
    return finish(
               {[&pass](auto most) { return pass.goOn(most); }, [&pass] { return pass.percent(); }},
               what, window.mainWindow()) &&
           pass.isDone();
}

} // namespace companion
