// SPDX-License-Identifier: GPL-3.0-or-later
// A look at all rows of the alignment that a window shows, in slices between events.
#pragma once

#include "SlicedWork.h"

#include <QPointer>
#include <QString>

#include <functional>

namespace TAMBO {
class Alignment;
class AlignmentWindow;
} // namespace TAMBO

namespace companion {

class RowPass
{
public:
    // Forgets what has been seen: it is called at the begin, and again when the alignment has
    // changed or the window shows another one.
    using Begin = std::function<void(const TAMBO::Alignment &)>;
    // False when no further row needs to be looked at.
    using Look = std::function<bool(const TAMBO::Alignment &, unsigned long row)>;

    RowPass(TAMBO::AlignmentWindow &window, Begin begin, Look look);

    // What has been seen is of no use any more.
    void reset() noexcept { m_Alignment = nullptr; }
    // For about that time; false when nothing is left, or no alignment is shown.
    bool goOn(std::chrono::microseconds most);
    // From 0 to 100.
    [[nodiscard]] int percent() const noexcept { return m_Percent; }
    // What has been seen is what the window shows now.
    [[nodiscard]] bool isDone() const;

private:
    QPointer<TAMBO::AlignmentWindow> m_Window;
    Begin m_Begin;
    Look m_Look;
    const TAMBO::Alignment *m_Alignment = nullptr;
    unsigned long m_Revision = 0;
    unsigned long m_Row = 0;
    bool m_IsAtTheEnd = false;
    int m_Percent = 0;
};

// To its end, over the window. False when the user has cancelled it.
[[nodiscard]] bool finish(RowPass &pass, const QString &what, TAMBO::AlignmentWindow &window);

} // namespace companion
